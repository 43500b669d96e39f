// The Win32 implementation of the log's platform port, and its installation on TheLog().
#include "infra/log_platform_win.h"

#include <vector>

#include "win/text_win.h"

namespace {

constexpr DWORD kMaxExpandedFolder = 260;

const wchar_t* AsWide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

bool IsFolder(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Creates every missing folder along the path; the drive, the UNC server and share parts simply
// fail to be created and are passed over.
void CreateFolderChain(const std::string& folder) {
    for (size_t i = 1; i < folder.size(); ++i) {
        if ((folder[i] == '\\' || folder[i] == '/') && folder[i - 1] != '\\' &&
            folder[i - 1] != '/') {
            CreateDirectoryA(folder.substr(0, i).c_str(), nullptr);
        }
    }
    CreateDirectoryA(folder.c_str(), nullptr);
}

// Reads VS_FIXEDFILEINFO from the root block of a version resource, never past its end.
std::string FixedFileVersion(const uint8_t* block, size_t size) {
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
    char text[64];
    snprintf(text, sizeof text, "%u.%u.%u.%u", static_cast<unsigned>(HIWORD(info.dwFileVersionMS)),
             static_cast<unsigned>(LOWORD(info.dwFileVersionMS)),
             static_cast<unsigned>(HIWORD(info.dwFileVersionLS)),
             static_cast<unsigned>(LOWORD(info.dwFileVersionLS)));
    return text;
}

}  // namespace

WinLogPlatform::~WinLogPlatform() {
    CloseFile();
    if (mutex_ != nullptr) {
        CloseHandle(mutex_);
    }
}

uint32_t WinLogPlatform::ProcessId() {
    return GetCurrentProcessId();
}

uint32_t WinLogPlatform::ThreadId() {
    return GetCurrentThreadId();
}

LocalTime WinLogPlatform::Now() {
    SYSTEMTIME t;
    GetLocalTime(&t);
    return LocalTime{t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond, t.wMilliseconds};
}

std::string WinLogPlatform::Narrow(const std::u16string& wide) {
    return NarrowAnsi(WideFromU16(wide));
}

bool WinLogPlatform::PrepareFolder(std::string& folder) {
    char expanded[kMaxExpandedFolder];
    const DWORD needed = ExpandEnvironmentStringsA(folder.c_str(), expanded, kMaxExpandedFolder);
    if (needed == 0 || needed > kMaxExpandedFolder) {
        return false;
    }
    folder = expanded;
    if (folder.empty()) {
        return false;
    }
    if (!IsFolder(folder)) {
        CreateFolderChain(folder);
    }
    return IsFolder(folder);
}

void WinLogPlatform::Lock(const std::u16string& mutexName) {
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

void WinLogPlatform::Unlock() {
    if (mutex_ != nullptr) {
        ReleaseMutex(mutex_);
    }
}

void WinLogPlatform::CloseMutex() {
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

void WinLogPlatform::DebugOutput(const char* text) {
    OutputDebugStringA(text);
}

bool WinLogPlatform::FileIsOpen() {
    return file_ != INVALID_HANDLE_VALUE;
}

bool WinLogPlatform::OpenFile(const std::string& path, bool* existedBefore) {
    CloseFile();
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

uint64_t WinLogPlatform::FileSize() {
    LARGE_INTEGER size;
    if (file_ == INVALID_HANDLE_VALUE || !GetFileSizeEx(file_, &size) || size.QuadPart < 0) {
        return 0;
    }
    return static_cast<uint64_t>(size.QuadPart);
}

bool WinLogPlatform::FileWasDeleted() {
    FILE_STANDARD_INFO info;
    if (file_ == INVALID_HANDLE_VALUE ||
        !GetFileInformationByHandleEx(file_, FileStandardInfo, &info, sizeof info)) {
        return false;
    }
    // Pending deletion (classic semantics) or no name left (POSIX deletion on NTFS).
    return info.DeletePending || info.NumberOfLinks == 0;
}

void WinLogPlatform::CloseFile() {
    if (file_ != INVALID_HANDLE_VALUE) {
        CloseHandle(file_);
        file_ = INVALID_HANDLE_VALUE;
    }
}

bool WinLogPlatform::DeleteLogFile(const std::string& path) {
    return DeleteFileA(path.c_str()) != FALSE;
}

void WinLogPlatform::Append(const char* data, size_t size) {
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

std::string WinLogPlatform::ModulePath() {
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

std::string WinLogPlatform::ModuleVersion() {
    HRSRC resource = FindResourceW(module_, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
    if (resource == nullptr) {
        return {};
    }
    HGLOBAL loaded = LoadResource(module_, resource);
    const void* block = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (block == nullptr) {
        return {};
    }
    return FixedFileVersion(static_cast<const uint8_t*>(block), SizeofResource(module_, resource));
}

void InstallWinLogPlatform(HMODULE module) {
    static WinLogPlatform platform;
    platform.SetModule(module);
    TheLog().SetPlatform(&platform);
}

void CloseLogAtDetach() {
    TheLog().Close();
}
