// The Win32 implementations of the log's ports.
#include "ports/log_ports_win.h"

#include <vector>

#include "ports/version_query.h"
#include "win/text_win.h"

namespace {

const wchar_t* AsWide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

// Reads VS_FIXEDFILEINFO from the root block of a version resource, never past its end.
std::string FixedFileVersionText(const uint8_t* block, size_t size) {
    // VS_VERSIONINFO: wLength, wValueLength, wType, the key "VS_VERSION_INFO" with its
    // terminator, padding to a 32-bit boundary, then the fixed information.
    if (size < 6) {
        return {};
    }
    size_t length = static_cast<size_t>(block[0] | (block[1] << 8));
    const size_t valueLength = static_cast<size_t>(block[2] | (block[3] << 8));
    if (length > size) {
        length = size;
    }
    size_t offset = 6;
    while (offset + 2 <= length && (block[offset] != 0 || block[offset + 1] != 0)) {
        offset += 2;
    }
    offset += 2;
    offset = (offset + 3) & ~static_cast<size_t>(3);
    if (valueLength < sizeof(VS_FIXEDFILEINFO) || offset + sizeof(VS_FIXEDFILEINFO) > length) {
        return {};
    }
    VS_FIXEDFILEINFO info;
    memcpy(&info, block + offset, sizeof info);
    if (info.dwSignature != 0xFEEF04BD) {
        return {};
    }
    return FileVersionText({HIWORD(info.dwFileVersionMS), LOWORD(info.dwFileVersionMS),
                            HIWORD(info.dwFileVersionLS), LOWORD(info.dwFileVersionLS)});
}

}  // namespace

LogFileWin::~LogFileWin() {
    Close();
    if (mutex_ != nullptr) {
        CloseHandle(mutex_);
    }
}

LocalTime ClockWin::Now() {
    SYSTEMTIME t;
    GetLocalTime(&t);
    return LocalTime{t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond, t.wMilliseconds};
}

std::string TextCodecWin::Narrow(const std::u16string& wide) {
    return NarrowAnsi(WideFromU16(wide));
}

std::u16string TextCodecWin::Widen(const std::string& narrow) {
    return U16FromWide(WidenAnsi(narrow));
}

bool FoldersWin::Expand(const std::string& text, size_t maxChars, std::string* expanded) {
    std::vector<char> buffer(maxChars == 0 ? 1 : maxChars);
    const DWORD needed =
        ExpandEnvironmentStringsA(text.c_str(), buffer.data(), static_cast<DWORD>(maxChars));
    if (needed == 0 || needed > maxChars) {
        return false;
    }
    *expanded = buffer.data();
    return true;
}

bool FoldersWin::Exists(const std::string& folder) {
    const DWORD attributes = GetFileAttributesA(folder.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The drive, the UNC server and share parts simply fail to be created and are passed over.
void FoldersWin::Create(const std::string& folder) {
    for (size_t i = 1; i < folder.size(); ++i) {
        if ((folder[i] == '\\' || folder[i] == '/') && folder[i - 1] != '\\' &&
            folder[i - 1] != '/') {
            CreateDirectoryA(folder.substr(0, i).c_str(), nullptr);
        }
    }
    CreateDirectoryA(folder.c_str(), nullptr);
}

void LogFileWin::Lock(const std::u16string& mutexName) {
    if (mutex_ == nullptr) {
        HANDLE created = CreateMutexW(nullptr, FALSE, AsWide(mutexName));
        if (created == nullptr) {
            // Without the guard lines are still written, only not serialised.
            return;
        }
        if (InterlockedCompareExchangePointer(&mutex_, created, nullptr) != nullptr) {
            CloseHandle(created);
        }
    }
    // WAIT_ABANDONED hands over ownership as well: a writer that died holding it ends nothing.
    WaitForSingleObject(mutex_, INFINITE);
}

void LogFileWin::Unlock() {
    if (mutex_ != nullptr) {
        ReleaseMutex(mutex_);
    }
}

void LogFileWin::CloseMutex() {
    if (mutex_ == nullptr) {
        return;
    }
    const DWORD wait = WaitForSingleObject(mutex_, INFINITE);
    if (wait == WAIT_OBJECT_0 || wait == WAIT_ABANDONED) {
        ReleaseMutex(mutex_);
    }
    CloseHandle(mutex_);
    mutex_ = nullptr;
}

bool LogFileWin::Open(const std::string& path, bool* existedBefore) {
    Close();
    // Write sharing as well as read and delete: every process of the printer keeps the file
    // open between its lines, and the named mutex, not the share mode, keeps them apart.
    // Without it a second process's open fails and all its lines are dropped.
    file_ = CreateFileA(path.c_str(), GENERIC_WRITE,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file_ == INVALID_HANDLE_VALUE) {
        return false;
    }
    // OPEN_ALWAYS tells in the last error whether the file was there, without a second look.
    if (existedBefore != nullptr) {
        *existedBefore = GetLastError() == ERROR_ALREADY_EXISTS;
    }
    return true;
}

uint64_t LogFileWin::Size() {
    LARGE_INTEGER size;
    if (file_ == INVALID_HANDLE_VALUE || !GetFileSizeEx(file_, &size) || size.QuadPart < 0) {
        return 0;
    }
    return static_cast<uint64_t>(size.QuadPart);
}

bool LogFileWin::WasDeleted() {
    FILE_STANDARD_INFO info;
    if (file_ == INVALID_HANDLE_VALUE ||
        !GetFileInformationByHandleEx(file_, FileStandardInfo, &info, sizeof info)) {
        return false;
    }
    // Pending deletion (classic semantics) or no name left (POSIX deletion on NTFS).
    return info.DeletePending || info.NumberOfLinks == 0;
}

bool LogFileWin::Truncate() {
    LARGE_INTEGER start{};
    return file_ != INVALID_HANDLE_VALUE && SetFilePointerEx(file_, start, nullptr, FILE_BEGIN) &&
           SetEndOfFile(file_);
}

void LogFileWin::Close() {
    if (file_ != INVALID_HANDLE_VALUE) {
        CloseHandle(file_);
        file_ = INVALID_HANDLE_VALUE;
    }
}

void LogFileWin::Append(const char* data, size_t size) {
    if (file_ == INVALID_HANDLE_VALUE) {
        return;
    }
    // Other processes append to the same file between our lines.
    SetFilePointer(file_, 0, nullptr, FILE_END);
    while (size > 0) {
        const DWORD chunk = size > 0x40000000 ? 0x40000000 : static_cast<DWORD>(size);
        DWORD written = 0;
        if (!WriteFile(file_, data, chunk, &written, nullptr) || written == 0) {
            return;
        }
        data += written;
        size -= written;
    }
}

std::string ModuleIdentityWin::Path() {
    std::vector<wchar_t> path(MAX_PATH);
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(module_, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) {
            return {};
        }
        if (length < path.size()) {
            return NarrowAnsi(std::wstring_view(path.data(), length));
        }
        if (path.size() >= 32768) {
            return {};
        }
        path.resize(path.size() * 2);
    }
}

std::string ModuleIdentityWin::Version() {
    HRSRC resource = FindResourceW(module_, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
    if (resource == nullptr) {
        return {};
    }
    HGLOBAL loaded = LoadResource(module_, resource);
    const void* block = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (block == nullptr) {
        return {};
    }
    return FixedFileVersionText(static_cast<const uint8_t*>(block),
                                SizeofResource(module_, resource));
}
