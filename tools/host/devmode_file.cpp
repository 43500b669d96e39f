// Reads a devmode file (public devmode + private record) that the host is given to start from.
#include "devmode_file.h"

#include <cstring>

#include "wine_printer.h"

namespace {

// dmDriverExtra is a WORD, so no stored devmode is longer than this.
constexpr size_t kMaxFileSize = sizeof(DEVMODEW) + 0xFFFF;

}  // namespace

DevmodeFileStatus LoadDevmodeFile(const std::wstring& path, StoredDevmode& out, std::wstring& why) {
    HANDLE f = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (f == INVALID_HANDLE_VALUE) {
        const DWORD err = GetLastError();
        if (err == ERROR_FILE_NOT_FOUND || err == ERROR_PATH_NOT_FOUND)
            return DevmodeFileStatus::kAbsent;
        why = L"cannot open (" + Win32ErrorText(err) + L")";
        return DevmodeFileStatus::kDamaged;
    }
    LARGE_INTEGER size = {};
    std::vector<uint8_t> bytes;
    bool readOk = GetFileSizeEx(f, &size) && size.QuadPart >= 0 &&
                  static_cast<unsigned long long>(size.QuadPart) <= kMaxFileSize;
    if (readOk) {
        bytes.resize(static_cast<size_t>(size.QuadPart));
        DWORD got = 0;
        readOk = bytes.empty() ||
                 (ReadFile(f, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr) &&
                  got == bytes.size());
    }
    CloseHandle(f);
    if (!readOk) {
        why = L"unreadable or longer than any devmode";
        return DevmodeFileStatus::kDamaged;
    }
    if (bytes.size() < sizeof(DEVMODEW)) {
        why = L"shorter than a public devmode (" + std::to_wstring(bytes.size()) + L" bytes)";
        return DevmodeFileStatus::kDamaged;
    }
    std::memcpy(&out.publicDM, bytes.data(), sizeof(DEVMODEW));
    const size_t dmSize = out.publicDM.dmSize;
    const size_t extra = out.publicDM.dmDriverExtra;
    if (dmSize != sizeof(DEVMODEW) || dmSize + extra != bytes.size()) {
        why = L"dmSize " + std::to_wstring(dmSize) + L" + dmDriverExtra " + std::to_wstring(extra) +
              L" does not match the file's " + std::to_wstring(bytes.size()) + L" bytes";
        return DevmodeFileStatus::kDamaged;
    }
    out.privateDM.assign(bytes.begin() + static_cast<std::ptrdiff_t>(dmSize), bytes.end());
    return DevmodeFileStatus::kLoaded;
}
