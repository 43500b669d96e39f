// CLog: the per-printer diagnostic log (line layout, level filter, dumps, size limit).
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "infra/text_format.h"
#include "ports/log_ports.h"


// Message levels as the callers use them.
enum LogLevel : int {
    kLogError = 2,
    kLogWarning = 3,
    kLogInfo = 4,
    kLogTrace = 5,  // kept-behaviour: Trace lines never written
    kLogDetail = 6,
    kLogDump = 7,
};

enum LogOutputMode : uint8_t { kLogOff = 0, kLogToFile = 1, kLogToDebugger = 2 };

inline constexpr uint64_t kLogSizeLimit = 5242880;  // 5 MiB; checked at every 20th line
inline constexpr uint32_t kLogSizeCheckEvery = 20;
inline constexpr size_t kLogFolderMaxChars = 260;  // the expanded folder, terminator included

class CLog {
  public:
    CLog() = default;
    CLog(const CLog&) = delete;
    CLog& operator=(const CLog&) = delete;

    // Null leaves the log unable to write.
    void SetPorts(const LogPorts* ports) { ports_ = ports; }
    const LogPorts* Ports() const { return ports_; }
    // Lines that the head of a new file carries after the module lines (the operating-system
    // report); called with the log already able to write.
    void SetHeadExtension(std::function<void(CLog&)> extension) {
        headExtension_ = std::move(extension);
    }
    const std::function<void(CLog&)>& HeadExtension() const { return headExtension_; }

    void Open(const std::u16string& printerName, const std::string& folder, uint8_t outputMode,
              uint8_t verbosity, uint32_t dumpFlags);
    void Close();
    void Disable();

    // True when a message of this level would be written; callers with costly arguments ask
    // first.
    bool Enabled(int level) const {
        return outputMode_ != kLogOff && verbosity_ != 0 && level <= verbosity_ &&
               level != kLogTrace;
    }
    void Write(int level, const char* functionName, const char* format, ...) KIV_PRINTF(4, 5);
    void WriteV(int level, const char* functionName, const char* format, va_list args);
    // A hexadecimal dump: the line head and the title, then rows of 16 bytes. Needs dump flag
    // bit 0 as well as the level.
    void Dump(int level, const char* functionName, const char* title, const void* data,
              size_t size);
    void LogFileInfo();

    uint8_t OutputMode() const { return outputMode_; }
    uint8_t Verbosity() const { return verbosity_; }
    uint32_t LineCounter() const { return lineCounter_; }
    const std::string& FilePath() const { return filePath_; }

    // Dumps longer than this many bytes show only their start, followed by " ...".
    static constexpr size_t kDumpCut = 4096;

  private:
    std::string Head(const char* functionName);
    void Emit(const std::string& text);
    void AppendToFile(const std::string& text);
    bool OpenFileWithHead();
    void WriteHead();

    bool UseFolder(const std::string& folder, std::string* expanded);

    const LogPorts* ports_ = nullptr;
    std::function<void(CLog&)> headExtension_;
    uint8_t outputMode_ = kLogOff;
    uint8_t verbosity_ = 0;
    uint32_t lineCounter_ = 0;
    uint32_t dumpFlags_ = 0;
    uint32_t showProcessAndThread_ = 1;
    uint32_t showTime_ = 1;
    bool writingHead_ = false;
    std::string filePath_;
    std::u16string mutexName_;
};

// The process-wide log every part of the plug-in writes to.
CLog& TheLog();

// The cut the line layout applies to a function name: what follows the first "::", or, for a
// name without a scope, everything but its first character.
std::string CutFunctionName(const char* functionName);

// Traces "Begin" on construction and "End (%d)" with the result on destruction.
class TraceScope {
  public:
    TraceScope(const char* functionName, const char* beginText = "Begin") : name_(functionName) {
        TheLog().Write(kLogTrace, name_, "%s", beginText);
    }
    ~TraceScope() { TheLog().Write(kLogTrace, name_, "End (%d)", static_cast<int>(result_)); }
    template <typename T>
    T Return(T result) {
        result_ = static_cast<long long>(result);
        return result;
    }

  private:
    const char* name_;
    long long result_ = 0;
};
