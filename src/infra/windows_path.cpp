// Absolute and relative Windows paths.
#include "infra/windows_path.h"

namespace {

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

bool IsAsciiLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
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
