// FileReaderWin: reads in 64 KiB pieces with read and write sharing, so files in use still read.
#include "ports/file_reader_win.h"

#include <vector>

#include "win/windows_headers_win.h"

bool FileReaderWin::Read(const std::string& path, const Sink& sink) {
    HANDLE file = CreateFileA(path.c_str(), GENERIC_READ,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    std::vector<uint8_t> buffer(64 << 10);
    bool ok = true;
    for (;;) {
        DWORD got = 0;
        if (!ReadFile(file, buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr)) {
            ok = false;
            break;
        }
        if (got == 0)
            break;
        sink(buffer.data(), got);
    }
    CloseHandle(file);
    return ok;
}
