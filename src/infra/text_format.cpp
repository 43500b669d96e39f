// Text helpers every layer shares: printf-style formatting into a string, hexadecimal digits.
#include "infra/text_format.h"

#include <cstdio>

std::string FormatV(const char* format, va_list args) {
    if (format == nullptr) {
        return {};
    }
    va_list sizing;
    va_copy(sizing, args);
    const int length = std::vsnprintf(nullptr, 0, format, sizing);
    va_end(sizing);
    if (length <= 0) {
        return {};
    }
    std::string text(static_cast<size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, args);
    text.resize(static_cast<size_t>(length));
    return text;
}

std::string Format(const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::string text = FormatV(format, args);
    va_end(args);
    return text;
}

int HexDigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

char HexDigitChar(unsigned nibble) {
    return "0123456789ABCDEF"[nibble & 0xFu];
}

void AppendHexEscape(std::string& text, uint8_t byte) {
    text += "\\x";
    text += HexDigitChar(byte >> 4);
    text += HexDigitChar(byte);
}

std::string UpperAscii(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}
