// LogFile: one printer's log file and the named cross-process mutex that guards it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

class LogFile {
  public:
    virtual ~LogFile() = default;
    // The guard is created on first use and waited for without time limit (an abandoned owner
    // counts as released). The owning thread may take it again (the head of a new file is
    // written from inside a locked append); every Lock is matched by one Unlock.
    virtual void Lock(const std::u16string& mutexName) = 0;
    virtual void Unlock() = 0;
    virtual void CloseMutex() = 0;

    virtual bool IsOpen() = 0;
    // Opens for appending, creating when missing, shared for reading, writing and deleting.
    virtual bool Open(const std::string& path, bool* existedBefore) = 0;
    virtual uint64_t Size() = 0;
    // True when the open file was deleted under this process's handle (someone removed the log
    // while it was held); its lines would go nowhere, so the log reopens the file by name.
    virtual bool WasDeleted() = 0;
    virtual void Close() = 0;
    // Empties the open file in place, for every process that holds it.
    virtual bool Truncate() = 0;
    // Appends at the end of the file, wherever other writers left it.
    virtual void Append(const char* data, size_t size) = 0;
};
