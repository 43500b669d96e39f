// VersionQueryWin: the fixed file version and the string values of a file's version block.
#include "ports/version_query_win.h"

#include <cstdio>
#include <cstring>
#include <vector>

#include "win/windows_headers_win.h"

namespace {

// The whole version block of the file; empty when it has none.
std::vector<BYTE> VersionBlock(const std::string& path) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeA(path.c_str(), &ignored);
    std::vector<BYTE> block(size);
    if (size == 0 || !GetFileVersionInfoA(path.c_str(), 0, size, block.data())) {
        block.clear();
    }
    return block;
}

}  // namespace

bool VersionQueryWin::FixedVersion(const std::string& path, FileVersion* version) {
    std::vector<BYTE> block = VersionBlock(path);
    VS_FIXEDFILEINFO* info = nullptr;
    UINT size = 0;
    if (block.empty() ||
        !VerQueryValueA(block.data(), "\\", reinterpret_cast<void**>(&info), &size) ||
        info == nullptr || size < sizeof *info) {
        return false;
    }
    *version = FileVersion{HIWORD(info->dwFileVersionMS), LOWORD(info->dwFileVersionMS),
                           HIWORD(info->dwFileVersionLS), LOWORD(info->dwFileVersionLS)};
    return true;
}

bool VersionQueryWin::StringValue(const std::string& path, const std::string& name,
                                  std::string* value) {
    std::vector<BYTE> block = VersionBlock(path);
    struct Translation {
        WORD language, codePage;
    };
    Translation* translations = nullptr;
    UINT size = 0;
    if (block.empty() || name.size() > 64 ||
        !VerQueryValueA(block.data(), "\\VarFileInfo\\Translation",
                        reinterpret_cast<void**>(&translations), &size) ||
        size < sizeof(Translation)) {
        return false;
    }
    char key[96];
    snprintf(key, sizeof key, "\\StringFileInfo\\%04x%04x\\%s", translations[0].language,
             translations[0].codePage, name.c_str());
    char* text = nullptr;
    if (!VerQueryValueA(block.data(), key, reinterpret_cast<void**>(&text), &size) ||
        text == nullptr) {
        return false;
    }
    // The length counts the terminator when there is one; the text ends at the first NUL.
    *value = std::string(text, strnlen(text, size));
    return true;
}
