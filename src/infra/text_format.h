// Text helpers every layer shares: printf-style formatting into a string, hexadecimal digits.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <string>

// mingw-w64 builds with __USE_MINGW_ANSI_STDIO=1, so the formatting is C99's, not msvcrt's.
#if defined(__MINGW32__)
#define KIV_PRINTF(fmt, args) __attribute__((format(__MINGW_PRINTF_FORMAT, fmt, args)))
#elif defined(__GNUC__)
#define KIV_PRINTF(fmt, args) __attribute__((format(printf, fmt, args)))
#else
#define KIV_PRINTF(fmt, args)
#endif

// Formats with a sizing pass first, so the text has no length limit; a null or failing format
// gives an empty text.
std::string FormatV(const char* format, va_list args);
std::string Format(const char* format, ...) KIV_PRINTF(1, 2);

// The value of one hexadecimal digit (either case), or -1 for any other character.
int HexDigitValue(char c);
// "0123456789ABCDEF"[nibble & 0xF].
char HexDigitChar(unsigned nibble);
// Appends `byte` as the four characters "\xHH" (upper-case digits), the escape the command texts
// read back and the log shows for bytes that are not text.
void AppendHexEscape(std::string& text, uint8_t byte);
// ASCII letters upper-cased, every other byte kept (paths and module names in the ANSI page).
std::string UpperAscii(std::string text);
