// The Win32 implementations of the log's ports: clock, ids, module identity, 8-bit text, debugger
// output, folders, and the log file with its named mutex.
#pragma once

#include <string>

#include "ports/log_ports.h"
#include "win/windows_headers_win.h"

class ClockWin : public Clock {
  public:
    LocalTime Now() override;
};

class ProcessIdsWin : public ProcessIds {
  public:
    uint32_t ProcessId() override { return GetCurrentProcessId(); }
    uint32_t ThreadId() override { return GetCurrentThreadId(); }
};

// The identity of one loaded module (null: the program itself).
class ModuleIdentityWin : public ModuleIdentity {
  public:
    explicit ModuleIdentityWin(HMODULE module = nullptr) : module_(module) {}
    void SetModule(HMODULE module) { module_ = module; }
    std::string Path() override;
    std::string Version() override;

  private:
    HMODULE module_;
};

class TextCodecWin : public TextCodec {
  public:
    std::string Narrow(const std::u16string& wide) override;
    std::u16string Widen(const std::string& narrow) override;
};

class DebugOutputWin : public DebugOutput {
  public:
    void Write(const char* text) override { OutputDebugStringA(text); }
};

class FoldersWin : public Folders {
  public:
    bool Expand(const std::string& text, size_t maxChars, std::string* expanded) override;
    bool Exists(const std::string& folder) override;
    void Create(const std::string& folder) override;
};

class LogFileWin : public LogFile {
  public:
    LogFileWin() = default;
    ~LogFileWin() override;
    LogFileWin(const LogFileWin&) = delete;
    LogFileWin& operator=(const LogFileWin&) = delete;

    void Lock(const std::u16string& mutexName) override;
    void Unlock() override;
    void CloseMutex() override;
    bool IsOpen() override { return file_ != INVALID_HANDLE_VALUE; }
    bool Open(const std::string& path, bool* existedBefore) override;
    uint64_t Size() override;
    bool WasDeleted() override;
    void Close() override;
    bool Truncate() override;
    void Append(const char* data, size_t size) override;

  private:
    // Created on the first Lock; shared by every thread of the process (a Win32 mutex is
    // recursive for its owning thread, which the head of a new file relies on).
    HANDLE mutex_ = nullptr;
    HANDLE file_ = INVALID_HANDLE_VALUE;
};

// The log's ports of one process, gathered.
struct LogPortsWin {
    ClockWin clock;
    ProcessIdsWin ids;
    ModuleIdentityWin module;
    LogFileWin file;
    FoldersWin folders;
    DebugOutputWin debug;
    TextCodecWin text;
    LogPorts Ports() { return {&clock, &ids, &module, &file, &folders, &debug, &text}; }
};
