// The per-printer configuration: its record, the registry port it is read through, and the value
// rules.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Registry value types as the registry stores them.
enum RegistryValueType : uint32_t {
    kRegNone = 0,
    kRegSz = 1,
    kRegExpandSz = 2,
    kRegBinary = 3,
    kRegDword = 4,
    kRegMultiSz = 7,
};

enum class RegistryStatus {
    kOk,
    kMissing,   // no key or no value (or any other failure to read)
    kMoreData,  // the value is longer than the buffer the reader offered
};

struct RegistryValue {
    uint32_t type = kRegNone;
    std::vector<uint8_t> data;
};

// One registry hive as the configuration sees it. The DLL binds it to HKEY_CURRENT_USER in the
// 64-bit view (registry_win.h); tests use an in-memory hive.
class RegistryHive {
  public:
    virtual ~RegistryHive() = default;
    // Reads a value of at most `maxBytes` bytes; a longer one gives kMoreData and no data.
    virtual RegistryStatus Query(const std::u16string& subkey, const std::u16string& name,
                                 size_t maxBytes, RegistryValue& out) = 0;
    // Each write opens the key, creating it when missing; false when that fails.
    virtual bool SetDword(const std::u16string& subkey, const std::u16string& name,
                          uint32_t value) = 0;
    virtual bool SetString(const std::u16string& subkey, const std::u16string& name,
                           const std::u16string& value) = 0;
    // The 8-bit text the plug-in keeps folders in (the ANSI code page on Windows).
    virtual std::string Narrow(const std::u16string& wide) = 0;
    virtual std::u16string Widen(const std::string& narrow) = 0;
};

// The read buffer for string values, in wide characters (terminator included); a longer value
// counts as absent.
inline constexpr size_t kRegistryStringChars = 512;

// The value rules every reader shares: a DWORD must be of type REG_DWORD and four bytes long; a
// string must be REG_SZ and fit the buffer with its terminator, and ends at its first NUL (or at
// the data's end);
// a multi-string must be REG_MULTI_SZ and fit `maxChars`. Anything else counts as absent.
bool ReadRegistryDword(RegistryHive& hive, const std::u16string& subkey, const std::u16string& name,
                       uint32_t* value);
bool ReadRegistryString(RegistryHive& hive, const std::u16string& subkey,
                        const std::u16string& name, std::u16string* value,
                        size_t maxChars = kRegistryStringChars);
bool ReadRegistryMultiString(RegistryHive& hive, const std::u16string& subkey,
                             const std::u16string& name, std::vector<std::u16string>* values,
                             size_t maxChars = 4 * kRegistryStringChars);

// Splits the bytes of a wide string value into its text (up to the first NUL).
std::u16string WideTextFromBytes(const std::vector<uint8_t>& data);

inline constexpr const char* kDefaultLogFolder = "%ALLUSERSPROFILE%\\ORVANE\\KIV\\Logs";
inline constexpr const char* kDefaultPrnFolder = "%ALLUSERSPROFILE%\\ORVANE\\KIV";
inline constexpr uint32_t kMaxLogVerbosity = 7;
inline constexpr const char16_t* kConfigRootKey = u"Software\\Orvane\\Kiv";

// The configuration record of one printer. Folders are kept unexpanded, as stored.
struct Configuration {
    std::string logFolder = kDefaultLogFolder;
    uint32_t logVerbosity = 0;
    std::string prnFolder = kDefaultPrnFolder;
    uint32_t settingsUi = 0;  // bit 0: hexadecimal dumps of the settings record
};

// "Software\Orvane\Kiv\<printer name>".
std::u16string ConfigurationKey(const std::u16string& printerName);

// Fills every value from the printer's key, each falling back to its own default.
void ReadConfiguration(RegistryHive& hive, const std::u16string& printerName,
                       Configuration& config);
// Writes the record back, "LogVerbosity_LM" (with the plug-in's verbosity) only when
// `alsoLanguageMonitor` is non-zero. A value whose key can be neither opened nor created is
// skipped.
void WriteConfiguration(RegistryHive& hive, const std::u16string& printerName,
                        const Configuration& config, int alsoLanguageMonitor);
