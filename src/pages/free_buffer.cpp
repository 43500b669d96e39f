// ParseFreeBuffer: the Console's "Text(ABC) or Hex(\x0A)" notation of raw command bytes.
#include "pages/free_buffer.h"

#include <optional>

#include "infra/text_format.h"

namespace {

bool IsCSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// The two characters after "\x" read the way a base-16 stol reads them: leading blanks
// skipped, an optional sign, an optional "0x" that needs a digit after it, then as many
// digits as there are. The pair is built as C text, so a NUL ends it early. No digit read
// is the conversion failure; two characters can never overflow.
std::optional<long> ConvertHexPair(char first, char second) {
    char pair[3] = {first, second, '\0'};
    const char* p = pair;
    while (IsCSpace(*p)) {
        ++p;
    }
    bool negative = false;
    if (*p == '+' || *p == '-') {
        negative = *p == '-';
        ++p;
    }
    if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X') && HexDigitValue(p[2]) >= 0) {
        p += 2;
    }
    long value = 0;
    bool anyDigit = false;
    for (; *p != '\0' && HexDigitValue(*p) >= 0; ++p) {
        value = value * 16 + HexDigitValue(*p);
        anyDigit = true;
    }
    if (!anyDigit) {
        return std::nullopt;
    }
    return negative ? -value : value;
}

// A wide character in the hexadecimal pair beyond ASCII cannot be a digit, a blank or a
// sign; it reads as a non-digit, the way its 8-bit replacement would.
char PairChar(char16_t c) {
    if (c == 0) {
        return '\0';
    }
    return c < 0x80 ? static_cast<char>(c) : '?';
}
char PairChar(char c) {
    return c;
}

uint32_t CharValue(char16_t c) {
    return c;
}
uint32_t CharValue(char c) {
    return static_cast<unsigned char>(c);
}

template <typename CharT>
FreeBufferParse Parse(std::basic_string_view<CharT> text) {
    FreeBufferParse result;
    const size_t length = text.size();
    result.bytes.reserve(length);
    size_t i = 0;
    while (i < length) {
        // An escape needs all four characters; a shorter "\x" tail stays as typed.
        if (text[i] == CharT('\\') && i + 4 <= length && text[i + 1] == CharT('x')) {
            std::optional<long> value =
                ConvertHexPair(PairChar(text[i + 2]), PairChar(text[i + 3]));
            if (!value) {
                result.bytes.clear();
                result.error = "invalid stol argument";
                return result;
            }
            result.bytes.push_back(static_cast<uint8_t>(*value));
            i += 4;
            continue;
        }
        uint32_t c = CharValue(text[i]);
        if (c > 0xFF) {
            result.bytes.clear();
            result.error = "Char not ok";
            return result;
        }
        result.bytes.push_back(static_cast<uint8_t>(c));
        ++i;
    }
    return result;
}

}  // namespace

FreeBufferParse ParseFreeBuffer(std::string_view text) {
    return Parse(text);
}

FreeBufferParse ParseFreeBuffer(std::u16string_view text) {
    return Parse(text);
}
