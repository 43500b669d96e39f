// The Win32 side of the log: files, the named mutex, clock, ids and the module's identity.
#pragma once

#include <string>

#include "infra/log.h"
#include "win/windows_headers_win.h"

class WinLogPlatform : public LogPlatform {
  public:
    explicit WinLogPlatform(HMODULE module = nullptr) : module_(module) {}
    ~WinLogPlatform() override;
    WinLogPlatform(const WinLogPlatform&) = delete;
    WinLogPlatform& operator=(const WinLogPlatform&) = delete;

    void SetModule(HMODULE module) { module_ = module; }

    uint32_t ProcessId() override;
    uint32_t ThreadId() override;
    LocalTime Now() override;
    std::string Narrow(const std::u16string& wide) override;
    bool PrepareFolder(std::string& folder) override;
    void Lock(const std::u16string& mutexName) override;
    void Unlock() override;
    void CloseMutex() override;
    void DebugOutput(const char* text) override;
    bool FileIsOpen() override;
    bool OpenFile(const std::string& path, bool* existedBefore) override;
    uint64_t FileSize() override;
    bool FileWasDeleted() override;
    void CloseFile() override;
    bool DeleteLogFile(const std::string& path) override;
    void Append(const char* data, size_t size) override;
    std::string ModulePath() override;
    std::string ModuleVersion() override;

  private:
    HMODULE module_;
    // Created on the first Lock; shared by every thread of the process (a Win32 mutex is
    // recursive for its owning thread, which the head of a new file relies on).
    HANDLE mutex_ = nullptr;
    HANDLE file_ = INVALID_HANDLE_VALUE;
};

// Points TheLog() at the process-wide Win32 platform of the given module; calling it again only
// updates the module.
void InstallWinLogPlatform(HMODULE module);

// Closes the log at process detach (the file and the mutex; nothing is written).
void CloseLogAtDetach();
