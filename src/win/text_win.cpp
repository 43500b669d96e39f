// Conversions between 8-bit text in the ANSI code page, Win32 wide text and core UTF-16 text.
#include "win/text_win.h"

#include "win/windows_headers_win.h"

std::wstring WidenAnsi(std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int needed =
        length > 0 ? MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0) : 0;
    if (needed <= 0)
        return {};
    std::wstring wide(static_cast<size_t>(needed), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), needed);
    return wide;
}

std::string NarrowAnsi(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int needed = length > 0 ? WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0,
                                                        nullptr, nullptr)
                                  : 0;
    if (needed <= 0)
        return {};
    std::string narrow(static_cast<size_t>(needed), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(), needed, nullptr, nullptr);
    return narrow;
}

std::optional<std::string> NarrowAnsiExactly(std::wstring_view text) {
    std::string narrow = NarrowAnsi(text);
    if (WidenAnsi(narrow) != text) {
        return std::nullopt;
    }
    return narrow;
}
