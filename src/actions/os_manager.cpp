// OSManager: the version record, the classification table and the registry's names and numbers.
#include "actions/os_manager.h"

#include "infra/config.h"

namespace {

constexpr size_t kNameChars = 260;
const char kLogFn[] = "OSManager::LogSystemVersion";
const char kDisplayFn[] = "OSManager::LogDisplayVersion";

}  // namespace

const char* ClassifyWindows(uint32_t major, uint32_t minor, bool registryNumbersFound,
                            uint32_t registryMajor) {
    if (major < 5)
        return "Windows NT";
    if (major == 5) {
        static const char* const kFive[] = {"Windows 2000", "Windows XP", "Windows Server 2003"};
        return minor < 3 ? kFive[minor] : "Other Windows";
    }
    if (major == 6) {
        if (minor == 0)
            return "Windows Vista";
        if (minor == 1)
            return "Windows 7";
        // Without a manifest naming later systems, Windows 8.1 and 10 both report 6.2 or 6.3;
        // the registry's own major number tells them apart.
        if (minor == 2 || minor == 3)
            return registryNumbersFound && registryMajor == 10 ? "Windows 10" : "Windows 8/8.1";
        return "Other Windows";
    }
    return major == 10 && minor == 0 ? "Windows 10" : "Other Windows";
}

bool OSManager::QueryVersion(OsVersionRecord* record) {
    return os_.Query(true, record) || os_.Query(false, record);
}

bool OSManager::ReadText(const char16_t* name, std::u16string* value) {
    return ReadRegistryString(localMachine_, kCurrentVersionKey, name, value, kNameChars);
}

std::string OSManager::GetDisplayVersion() {
    std::u16string value;
    return ReadText(u"DisplayVersion", &value) ? text_.Narrow(value) : std::string();
}

std::string OSManager::GetProductName() {
    std::u16string value;
    return ReadText(u"ProductName", &value) ? text_.Narrow(value) : std::string();
}

std::map<std::string, uint32_t> OSManager::GetVersionMap() {
    OsVersionRecord record;
    if (!QueryVersion(&record))
        return {};
    return {
        {"MajorVersion", record.major}, {"MinorVersion", record.minor}, {"Build", record.build}};
}

bool OSManager::IsWindows7() {
    OsVersionRecord record;
    return QueryVersion(&record) && record.major == 6 && record.minor == 1;
}

bool OSManager::GetCurrentVersionNumbers(uint32_t* major, uint32_t* minor) {
    uint32_t value = 0;
    const bool majorFound =
        ReadRegistryDword(localMachine_, kCurrentVersionKey, u"CurrentMajorVersionNumber", &value);
    if (majorFound)
        *major = value;
    const bool minorFound =
        ReadRegistryDword(localMachine_, kCurrentVersionKey, u"CurrentMinorVersionNumber", &value);
    if (minorFound)
        *minor = value;
    return majorFound && minorFound;
}

void OSManager::LogDisplayVersion(CLog& log) {
    std::u16string value;
    if (ReadText(u"DisplayVersion", &value)) {
        log.Write(kLogInfo, kDisplayFn, "LogSystemVersion: OS-> DisplayVersion: %s",
                  text_.Narrow(value).c_str());
    }
    if (ReadText(u"ProductName", &value)) {
        log.Write(kLogInfo, kDisplayFn, "LogSystemVersion: OS-> ProductName: %s",
                  text_.Narrow(value).c_str());
    }
}

void OSManager::LogSystemVersion(CLog& log) {
    OsVersionRecord record;
    if (!QueryVersion(&record))
        return;
    uint32_t registryMajor = 0, registryMinor = 0;
    if (record.platformId == 2) {
        // The registry numbers matter only where the version record cannot tell 8.1 from 10.
        bool bothFound = false;
        if (record.major == 6 && (record.minor == 2 || record.minor == 3))
            bothFound = GetCurrentVersionNumbers(&registryMajor, &registryMinor);
        log.Write(kLogInfo, kLogFn, "LogSystemVersion: OS-> %s",
                  ClassifyWindows(record.major, record.minor, bothFound, registryMajor));
    }
    log.Write(kLogInfo, kLogFn, "LogSystemVersion: OS-> 64bit");
    LogDisplayVersion(log);
    log.Write(kLogInfo, kLogFn, "LogSystemVersion: OS-> MajorVersion: %d",
              static_cast<int>(record.major));
    log.Write(kLogInfo, kLogFn, "LogSystemVersion: OS-> MinorVersion: %d",
              static_cast<int>(record.minor));
    log.Write(kLogInfo, kLogFn, "LogSystemVersion: OS-> CMajorVersion: %d",
              static_cast<int>(registryMajor));
    log.Write(kLogInfo, kLogFn, "LogSystemVersion: OS-> CMinorVersion: %d",
              static_cast<int>(registryMinor));
    log.Write(kLogInfo, kLogFn, "LogSystemVersion: OS-> Build: %d", static_cast<int>(record.build));
}
