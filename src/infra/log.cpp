// CLog: the per-printer diagnostic log (line layout, level filter, dumps, size limit).
#include "infra/log.h"

#include <cstdio>

#include "infra/text_format.h"
#include "infra/windows_path.h"

namespace {

char DumpCharacter(uint8_t byte) {
    // '%' is masked too (kept-behaviour: Percent in dumps).
    return byte < 32 || byte >= 127 || byte == '%' ? '.' : static_cast<char>(byte);
}

}  // namespace

CLog& TheLog() {
    static CLog log;
    return log;
}

std::string CutFunctionName(const char* functionName) {
    if (functionName == nullptr) {
        return {};
    }
    const std::string name(functionName);
    const size_t scope = name.find("::");
    // kept-behaviour: Log function cut. "Not found" plus two wraps round to 1, so a name without
    // a scope loses its first character.
    const size_t start = scope == std::string::npos ? 1 : scope + 2;
    return start < name.size() ? name.substr(start) : std::string();
}

void CLog::Open(const std::u16string& printerName, const std::string& folder, uint8_t outputMode,
                uint8_t verbosity, uint32_t dumpFlags) {
    Close();
    filePath_.clear();
    outputMode_ = outputMode;
    verbosity_ = verbosity;
    dumpFlags_ = dumpFlags;
    lineCounter_ = 0;
    if (ports_ == nullptr) {
        outputMode_ = kLogOff;
        verbosity_ = 0;
        return;
    }
    if (outputMode == kLogToFile) {
        std::string expanded;
        if (!UseFolder(folder, &expanded)) {
            outputMode_ = kLogOff;
            verbosity_ = 0;
        } else {
            filePath_ =
                expanded + "\\" + PrinterNameForFiles(printerName, *ports_->text) + "_UI.log";
        }
    }
    // The name was formatted into 1024 wide characters, terminator included.
    mutexName_ = u"Global\\M_LOG_" + PrinterNameForFiles(printerName);
    if (mutexName_.size() > 1023) {
        mutexName_.resize(1023);
    }
}

// A folder that is relative, or empty, after expansion would put the log in the working folder of
// whatever process loaded the plug-in (the system folder in the spooler): it counts as unusable.
bool CLog::UseFolder(const std::string& folder, std::string* expanded) {
    Folders& folders = *ports_->folders;
    if (!folders.Expand(folder, kLogFolderMaxChars, expanded) ||
        !IsAbsoluteWindowsPath(*expanded)) {
        return false;
    }
    if (!folders.Exists(*expanded)) {
        folders.Create(*expanded);
    }
    return folders.Exists(*expanded);
}

void CLog::Close() {
    if (ports_ != nullptr) {
        ports_->file->Close();
        ports_->file->CloseMutex();
    }
    lineCounter_ = 0;
}

void CLog::Disable() {
    Close();
    outputMode_ = kLogOff;
    verbosity_ = 0;
    lineCounter_ = 0;
}

void CLog::Write(int level, const char* functionName, const char* format, ...) {
    if (!Enabled(level) || ports_ == nullptr) {
        return;
    }
    va_list args;
    va_start(args, format);
    WriteV(level, functionName, format, args);
    va_end(args);
}

void CLog::WriteV(int level, const char* functionName, const char* format, va_list args) {
    if (!Enabled(level) || ports_ == nullptr) {
        return;
    }
    Emit(Head(functionName) + FormatV(format, args));
}

void CLog::Dump(int level, const char* functionName, const char* title, const void* data,
                size_t size) {
    if (!Enabled(level) || (dumpFlags_ & 1) == 0 || ports_ == nullptr) {
        return;
    }
    const uint8_t* bytes = static_cast<const uint8_t*>(data);
    if (bytes == nullptr) {
        size = 0;
    }
    const size_t shown = size < kDumpCut ? size : kDumpCut;

    std::string text = Head(functionName);
    text += title != nullptr ? title : "";
    text += '\n';
    for (size_t row = 0; row < shown; row += 16) {
        text += Format("%04X:", static_cast<unsigned>(row));
        for (size_t i = row; i < row + 16; ++i) {
            if (i < shown) {
                text += ' ';
                text += HexDigitChar(bytes[i] >> 4);
                text += HexDigitChar(bytes[i]);
            } else {
                text += "   ";
            }
        }
        text += ' ';
        for (size_t i = row; i < row + 16 && i < shown; ++i) {
            text += DumpCharacter(bytes[i]);
        }
        text += '\n';
    }
    if (shown < size) {
        text += " ...";
    }
    Emit(text);
}

void CLog::LogFileInfo() {
    if (ports_ == nullptr) {
        return;
    }
    Write(kLogInfo, "CLog::LogFileInfo", "LogFileInfo(..): Dll File Path: %s",
          ports_->module->Path().c_str());
    Write(kLogInfo, "CLog::LogFileInfo", "LogFileInfo(..): Dll File Version: %s",
          ports_->module->Version().c_str());
    if (headExtension_) {
        headExtension_(*this);
    }
}

std::string CLog::Head(const char* functionName) {
    std::string head;
    if (showProcessAndThread_ != 0) {
        head += Format("[P%04X/T%04X]", static_cast<unsigned>(ports_->ids->ProcessId()),
                       static_cast<unsigned>(ports_->ids->ThreadId()));
    }
    if (showTime_ != 0) {
        const LocalTime t = ports_->clock->Now();
        head += Format("[%04d/%02d/%02d %02d:%02d:%02d:%03d]", t.year, t.month, t.day, t.hour,
                       t.minute, t.second, t.milliseconds);
    }
    head += "[";
    head += CutFunctionName(functionName);
    head += "] ";
    return head;
}

void CLog::Emit(const std::string& text) {
    // Everything below runs under the printer's mutex, including the head of a new file, whose
    // lines come back here and take the (recursive) mutex a second time.
    ports_->file->Lock(mutexName_);
    ++lineCounter_;
    if (outputMode_ == kLogToDebugger) {
        ports_->debug->Write(text.c_str());
        ports_->debug->Write("\n");
    } else if (outputMode_ == kLogToFile) {
        AppendToFile(text);
    }
    ports_->file->Unlock();
}

bool CLog::OpenFileWithHead() {
    bool existed = true;
    if (!ports_->file->Open(filePath_, &existed)) {
        return false;
    }
    if (!existed) {
        WriteHead();
    }
    return ports_->file->IsOpen();
}

void CLog::WriteHead() {
    writingHead_ = true;
    LogFileInfo();
    writingHead_ = false;
}

void CLog::AppendToFile(const std::string& text) {
    if (!writingHead_ && ports_->file->IsOpen() && ports_->file->WasDeleted()) {
        ports_->file->Close();
    }
    if (!ports_->file->IsOpen()) {
        // A head line never opens the file: the head belongs to the file it was begun for.
        if (writingHead_ || !OpenFileWithHead()) {
            return;
        }
    }
    // The size is checked only at every 20th line, and never while the head is being written.
    // The file is emptied through the open handle, under the mutex: every process that holds
    // it moves to the end before each line, so all of them write into the fresh log at once. A
    // deletion would wait for the last holder to close, and the file would grow meanwhile. When
    // emptying fails the line is dropped and the file closed, so an oversized log never grows
    // further by this line; the next line opens it again and counts towards the next check.
    if (!writingHead_ && lineCounter_ % kLogSizeCheckEvery == 0 &&
        ports_->file->Size() > kLogSizeLimit) {
        lineCounter_ = 0;
        if (!ports_->file->Truncate()) {
            ports_->file->Close();
            return;
        }
        WriteHead();
    }
    std::string line;
    line.reserve(text.size() + 1);
    line += text;
    line += '\n';
    ports_->file->Append(line.data(), line.size());
}
