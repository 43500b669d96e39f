// Recording fakes of the log's ports, FakeLogPorts (all of them at once) and ScopedTestLog, which
// points TheLog() at a FakeLogPorts for one test.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "fake_text_codec.h"
#include "text_lines.h"
#include "infra/log.h"

class FakeClock : public Clock {
  public:
    LocalTime now{2026, 3, 5, 14, 7, 9, 42};
    LocalTime Now() override { return now; }
};

class FakeProcessIds : public ProcessIds {
  public:
    uint32_t ProcessId() override { return 0x0A1C; }
    uint32_t ThreadId() override { return 0x0B20; }
};

class FakeModuleIdentity : public ModuleIdentity {
  public:
    std::string Path() override { return "C:\\Drivers\\x64\\3\\KivUI.dll"; }
    std::string Version() override { return "1.2.3.4"; }
};

class FakeDebugOutput : public DebugOutput {
  public:
    std::vector<std::string> debugOutput;  // every text, in order
    void Write(const char* text) override { debugOutput.emplace_back(text); }
};

// Expands "%NAME%" from `environment`; unknown names stay as written, as on Windows.
class FakeFolders : public Folders {
  public:
    std::map<std::string, std::string> environment;
    bool folderUsable = true;                 // Exists answers this
    std::vector<std::string> folderRequests;  // "Expand <text>", "Create <folder>"

    bool Expand(const std::string& text, size_t maxChars, std::string* expanded) override {
        folderRequests.push_back("Expand " + text);
        std::string out = text;
        for (const auto& [name, value] : environment)
            for (size_t at; (at = out.find('%' + name + '%')) != std::string::npos;)
                out.replace(at, name.size() + 2, value);
        *expanded = out;
        return out.size() < maxChars;
    }
    bool Exists(const std::string&) override { return folderUsable; }
    void Create(const std::string& folder) override {
        folderRequests.push_back("Create " + folder);
    }
};

// The log file lives in `file`; the mutex is a nesting count.
class FakeLogFile : public LogFile {
  public:
    bool fileExists = false;         // the log file exists on "disk"
    std::string file;                // its contents
    bool openFails = false;          // Open fails
    bool truncateFails = false;      // Truncate fails
    bool deletedUnderneath = false;  // WasDeleted reports true (once)

    std::vector<std::string> calls;  // "Lock <name>", "Unlock", "Open", "Truncate", ...
    std::string openedPath;          // the path of the last Open
    int lockDepth = 0;
    int maxLockDepth = 0;
    bool fileOpen = false;

    void Lock(const std::u16string& mutexName) override {
        calls.push_back("Lock " + FakeTextCodec().Narrow(mutexName));
        maxLockDepth = std::max(maxLockDepth, ++lockDepth);
    }
    void Unlock() override {
        calls.push_back("Unlock");
        --lockDepth;
    }
    void CloseMutex() override { calls.push_back("CloseMutex"); }
    bool IsOpen() override { return fileOpen; }
    bool Open(const std::string& path, bool* existedBefore) override {
        calls.push_back("Open");
        openedPath = path;
        if (openFails)
            return false;
        *existedBefore = fileExists;
        fileExists = fileOpen = true;
        return true;
    }
    uint64_t Size() override { return file.size(); }
    // Someone removed the file: the "disk" then holds a fresh empty file.
    bool WasDeleted() override {
        const bool deleted = deletedUnderneath;
        if (deleted)
            file.clear(), fileExists = deletedUnderneath = false;
        return deleted;
    }
    void Close() override {
        if (fileOpen)
            calls.push_back("CloseFile");
        fileOpen = false;
    }
    bool Truncate() override {
        calls.push_back("Truncate");
        if (!truncateFails)
            file.clear();
        return !truncateFails;
    }
    void Append(const char* data, size_t size) override {
        if (fileOpen)
            file.append(data, size);
    }
};

struct FakeLogPorts : FakeClock,
                      FakeProcessIds,
                      FakeModuleIdentity,
                      FakeLogFile,
                      FakeFolders,
                      FakeDebugOutput,
                      FakeTextCodec {
    const LogPorts ports{this, this, this, this, this, this, this};
};

// The log's lines (no empty last entry).
inline std::vector<std::string> SplitLines(const std::string& text) {
    return Lines(text);
}

// TheLog() on a FakeLogPorts, opened in output mode 1, for the lifetime of the object. The file
// exists already, so no head is written.
class ScopedTestLog {
  public:
    explicit ScopedTestLog(uint8_t verbosity = kLogDump, uint32_t dumpFlags = 1,
                           const std::u16string& printerName = u"TestPrinter")
        : previous_(TheLog().Ports()) {
        fake_.fileExists = true;
        TheLog().SetPorts(&fake_.ports);
        TheLog().Open(printerName, "C:\\Logs", kLogToFile, verbosity, dumpFlags);
    }
    ~ScopedTestLog() {
        TheLog().Disable();
        TheLog().SetPorts(previous_);
    }
    ScopedTestLog(const ScopedTestLog&) = delete;
    ScopedTestLog& operator=(const ScopedTestLog&) = delete;

    FakeLogPorts& Platform() { return fake_; }
    const std::string& Text() const { return fake_.file; }
    // The lines without the ids and time: "[Func] message"; dump rows stay as they are.
    std::vector<std::string> Bodies() const {
        std::vector<std::string> bodies = SplitLines(fake_.file);
        for (std::string& line : bodies)
            if (line.rfind("[P0A1C/T0B20][", 0) == 0)
                line.erase(0, line.find("][", 13) + 1);
        return bodies;
    }
    // The bodies without "[Func] ": the messages alone.
    std::vector<std::string> Messages() const {
        std::vector<std::string> messages = Bodies();
        for (std::string& line : messages)
            if (line.rfind('[', 0) == 0 && line.find("] ") != std::string::npos)
                line.erase(0, line.find("] ") + 2);
        return messages;
    }

  private:
    FakeLogPorts fake_;
    const LogPorts* previous_;
};
