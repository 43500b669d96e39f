// Conversions between 8-bit text in the ANSI code page, Win32 wide text and core UTF-16 text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

std::wstring WidenAnsi(std::string_view text);
std::string NarrowAnsi(std::wstring_view text);
// The text in the ANSI code page only when it comes back unchanged: a character the code page
// lacks (or only approximates) would otherwise name another file.
std::optional<std::string> NarrowAnsiExactly(std::wstring_view text);

// Win32 and core spell UTF-16 differently; the code units are the same.
inline std::wstring WideFromU16(std::u16string_view text) {
    return std::wstring(text.begin(), text.end());
}
inline std::u16string U16FromWide(std::wstring_view text) {
    return std::u16string(text.begin(), text.end());
}
