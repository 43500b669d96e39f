// How kivhost prints: UTF-8 lines on stdout, flushed at once so a parent reading a pipe sees
// every line even when a later step brings the program down.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

#include "win/windows_headers_win.h"

inline std::string Utf8(const std::wstring& w) {
    if (w.empty())
        return {};
    const int n = WideCharToMultiByte(CP_UTF8, 0, w.data(), static_cast<int>(w.size()), nullptr, 0,
                                      nullptr, nullptr);
    std::string s(static_cast<size_t>(n > 0 ? n : 0), '\0');
    WideCharToMultiByte(CP_UTF8, 0, w.data(), static_cast<int>(w.size()), s.data(), n, nullptr,
                        nullptr);
    return s;
}

// The text inside double quotes on one line: quotes, backslashes and line breaks escaped.
inline std::string Quoted(const std::wstring& w) {
    std::string out = "\"";
    for (char c : Utf8(w)) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                out += c;
        }
    }
    return out + "\"";
}

inline void Out(const char* format, ...) __attribute__((format(gnu_printf, 1, 2)));
inline void Out(const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::vprintf(format, args);
    va_end(args);
    std::fflush(stdout);
}

// --verbose: every step of the host's own work is printed, not only the summary and what the
// user's steps show.
inline bool gVerbose = false;

inline void Detail(const char* format, ...) __attribute__((format(gnu_printf, 1, 2)));
inline void Detail(const char* format, ...) {
    if (!gVerbose)
        return;
    va_list args;
    va_start(args, format);
    std::vprintf(format, args);
    va_end(args);
    std::fflush(stdout);
}

// Reports a failed step; returns false so callers can `return Fail(...)`. Like everything the
// host says it goes to stdout: stderr is Wine's, which run.sh keeps in a log file.
inline bool Fail(const char* step, const std::wstring& why) {
    std::printf("kivhost: error: %s: %s\n", step, Utf8(why).c_str());
    std::fflush(stdout);
    return false;
}

inline std::wstring Hr(HRESULT hr) {
    wchar_t buf[16];
    std::swprintf(buf, 16, L"0x%08lX", static_cast<unsigned long>(hr));
    return buf;
}
