// OSManager: what the plug-in reports about the operating system (log head, Version and Admin
// pages). It keeps no state: every answer is queried afresh.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "infra/log.h"
#include "ports/os_version.h"
#include "ports/registry_hive.h"
#include "ports/text_codec.h"

inline constexpr const char16_t* kCurrentVersionKey =
    u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

class OSManager {
  public:
    OSManager(OsVersion& os, RegistryHive& localMachine, TextCodec& text)
        : os_(os), localMachine_(localMachine), text_(text) {}

    // "DisplayVersion" and "ProductName" as 8-bit text; empty when unreadable.
    std::string GetDisplayVersion();
    std::string GetProductName();
    // "MajorVersion", "MinorVersion", "Build"; empty when the version query fails.
    std::map<std::string, uint32_t> GetVersionMap();
    bool IsWindows7();
    // True only when both registry numbers were found; each out-value is written only when its
    // own value was found.
    bool GetCurrentVersionNumbers(uint32_t* major, uint32_t* minor);

    // The classification and number lines of the log head; nothing when the query fails.
    void LogSystemVersion(CLog& log);
    void LogDisplayVersion(CLog& log);

  private:
    // The extended query first, then the short one.
    bool QueryVersion(OsVersionRecord* record);
    bool ReadText(const char16_t* name, std::u16string* value);

    OsVersion& os_;
    RegistryHive& localMachine_;
    TextCodec& text_;
};

// The classification line's tail ("Windows XP", ...) for an NT-family version; `registryMajor`
// is consulted only for 6.2 and 6.3, and only when both registry numbers were found.
const char* ClassifyWindows(uint32_t major, uint32_t minor, bool registryNumbersFound,
                            uint32_t registryMajor);
