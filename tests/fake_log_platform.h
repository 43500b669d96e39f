// A recording in-memory LogPlatform and ScopedTestLog, which points TheLog() at it for one test.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "infra/log.h"

// Records what the log asks of the operating system; the log file lives in `file`.
class FakeLogPlatform : public LogPlatform {
  public:
    // Knobs a test may set before writing.
    LocalTime now{2026, 3, 5, 14, 7, 9, 42};  // the time every line is stamped with
    bool folderUsable = true;                 // false: PrepareFolder fails
    std::string expandTo;                     // when not empty PrepareFolder replaces the folder
    bool fileExists = false;                  // the log file exists on "disk"
    std::string file;                         // contents of the log file on "disk"
    bool openFails = false;                   // OpenFile fails
    bool deleteFails = false;                 // DeleteLogFile fails
    bool deletedUnderneath = false;           // FileWasDeleted reports true (once)
    std::string modulePath = "C:\\Drivers\\x64\\3\\KivUI.dll";
    std::string moduleVersion = "1.2.3.4";

    // Records a test may read.
    std::vector<std::string> preparedFolders;  // every folder handed to PrepareFolder
    std::vector<std::string> calls;            // "Lock <name>", "Unlock", "Open", "Delete", ...
    std::vector<std::string> debugOutput;      // every DebugOutput text, in order
    std::string openedPath;                    // the path of the last OpenFile
    int lockDepth = 0;                         // current Lock nesting
    int maxLockDepth = 0;                      // deepest Lock nesting seen
    bool fileOpen = false;                     // a handle to the file is open

    uint32_t ProcessId() override { return 0x0A1C; }
    uint32_t ThreadId() override { return 0x0B20; }
    LocalTime Now() override { return now; }
    // Keeps ASCII and shows anything else as '?', as a lossy code-page conversion would.
    std::string Narrow(const std::u16string& wide) override {
        std::string out;
        for (char16_t c : wide) {
            out += c < 0x80 ? static_cast<char>(c) : '?';
        }
        return out;
    }
    bool PrepareFolder(std::string& folder) override {
        preparedFolders.push_back(folder);
        if (!expandTo.empty()) {
            folder = expandTo;
        }
        return folderUsable;
    }
    void Lock(const std::u16string& mutexName) override {
        calls.push_back("Lock " + Narrow(mutexName));
        ++lockDepth;
        if (lockDepth > maxLockDepth) {
            maxLockDepth = lockDepth;
        }
    }
    void Unlock() override {
        calls.push_back("Unlock");
        --lockDepth;
    }
    void CloseMutex() override { calls.push_back("CloseMutex"); }
    void DebugOutput(const char* text) override { debugOutput.emplace_back(text); }
    bool FileIsOpen() override { return fileOpen; }
    bool OpenFile(const std::string& path, bool* existedBefore) override {
        calls.push_back("Open");
        openedPath = path;
        if (openFails) {
            return false;
        }
        if (existedBefore != nullptr) {
            *existedBefore = fileExists;
        }
        fileExists = true;
        fileOpen = true;
        return true;
    }
    uint64_t FileSize() override { return file.size(); }
    // Reports a deletion by another process once; the "disk" then holds a fresh empty file.
    bool FileWasDeleted() override {
        if (!deletedUnderneath) {
            return false;
        }
        deletedUnderneath = false;
        file.clear();
        fileExists = false;
        return true;
    }
    void CloseFile() override {
        if (fileOpen) {
            calls.push_back("CloseFile");
        }
        fileOpen = false;
    }
    bool DeleteLogFile(const std::string&) override {
        calls.push_back("Delete");
        if (deleteFails) {
            return false;
        }
        file.clear();
        fileExists = false;
        return true;
    }
    void Append(const char* data, size_t size) override {
        if (fileOpen) {
            file.append(data, size);
        }
    }
    std::string ModulePath() override { return modulePath; }
    std::string ModuleVersion() override { return moduleVersion; }
};

// Points TheLog() at a FakeLogPlatform and opens it to a file for the lifetime of the object.
// The fake's file exists already, so no head is written unless the test sets fileExists=false.
class ScopedTestLog {
  public:
    // Opens TheLog() in output mode 1 with this verbosity, dump flags and printer name.
    explicit ScopedTestLog(uint8_t verbosity = kLogDump, uint32_t dumpFlags = 1,
                           const std::u16string& printerName = u"TestPrinter",
                           const std::string& folder = "C:\\Logs")
        : previous_(TheLog().Platform()) {
        platform_.fileExists = true;
        TheLog().SetPlatform(&platform_);
        TheLog().Open(printerName, folder, kLogToFile, verbosity, dumpFlags);
    }
    // Leaves TheLog() closed, off, and back on the platform it had before.
    ~ScopedTestLog() {
        TheLog().Disable();
        TheLog().SetPlatform(previous_);
    }
    ScopedTestLog(const ScopedTestLog&) = delete;
    ScopedTestLog& operator=(const ScopedTestLog&) = delete;

    // The fake behind the log, for knobs and records.
    FakeLogPlatform& Platform() { return platform_; }
    // Everything written to the log file so far.
    const std::string& Text() const { return platform_.file; }
    // The file split at line feeds (no empty last entry).
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        size_t start = 0;
        while (start < platform_.file.size()) {
            size_t end = platform_.file.find('\n', start);
            if (end == std::string::npos) {
                end = platform_.file.size();
            }
            lines.push_back(platform_.file.substr(start, end - start));
            start = end + 1;
        }
        return lines;
    }
    // The lines without their "[P..][time]" head: "[Func] message"; dump rows stay as they are.
    std::vector<std::string> Bodies() const {
        std::vector<std::string> bodies;
        for (const std::string& line : Lines()) {
            bodies.push_back(StripHead(line));
        }
        return bodies;
    }
    // The lines without head and "[Func] ": just the messages; dump rows stay as they are.
    std::vector<std::string> Messages() const {
        std::vector<std::string> messages;
        for (const std::string& line : Lines()) {
            std::string body = StripHead(line);
            if (body.size() != line.size() && !body.empty() && body[0] == '[') {
                size_t close = body.find("] ");
                if (close != std::string::npos) {
                    body.erase(0, close + 2);
                }
            }
            messages.push_back(body);
        }
        return messages;
    }
    // Drops the "[P%04X/T%04X]" and "[yyyy/mm/dd hh:mm:ss:mmm]" parts at the start of a line.
    static std::string StripHead(const std::string& line) {
        std::string rest = line;
        if (rest.rfind("[P", 0) == 0) {
            size_t close = rest.find(']');
            if (close != std::string::npos) {
                rest.erase(0, close + 1);
            }
        }
        if (rest.size() > 1 && rest[0] == '[' && rest[1] >= '0' && rest[1] <= '9') {
            size_t close = rest.find(']');
            if (close != std::string::npos) {
                rest.erase(0, close + 1);
            }
        }
        return rest;
    }

  private:
    FakeLogPlatform platform_;
    LogPlatform* previous_;
};
