// Absolute and relative Windows paths.
#include "infra/windows_path.h"

namespace {

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

bool IsAsciiLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool FitsFileName(char16_t c) {
    return c >= 32 && std::u16string_view(u"\\/:*?\"<>|").find(c) == std::u16string_view::npos;
}

}  // namespace

bool IsAbsoluteWindowsPath(std::string_view path) {
    if (path.size() >= 3 && IsAsciiLetter(path[0]) && path[1] == ':' && IsSeparator(path[2])) {
        return true;
    }
    if (path.size() < 5 || !IsSeparator(path[0]) || !IsSeparator(path[1])) {
        return false;
    }
    // A server name, one separator, then a share name.
    const std::string_view rest = path.substr(2);
    size_t server = 0;
    while (server < rest.size() && !IsSeparator(rest[server])) {
        ++server;
    }
    return server > 0 && server + 1 < rest.size() && !IsSeparator(rest[server + 1]);
}

std::u16string PrinterNameForFiles(std::u16string_view printerName) {
    std::u16string name(printerName);
    for (char16_t& c : name) {
        if (!FitsFileName(c)) {
            c = u'_';
        }
    }
    return name;
}

std::string PrinterNameForFiles(std::u16string_view printerName, TextCodec& text) {
    // "?" never survives the wide mapping, so one here stands for a character the code page
    // lacks; as a single byte it is never the second byte of a double-byte character.
    std::string name = text.Narrow(PrinterNameForFiles(printerName));
    for (char& c : name) {
        if (c == '?') {
            c = '_';
        }
    }
    return name;
}
