// The per-printer configuration: its record and the value rules of registry reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ports/registry_hive.h"
#include "ports/text_codec.h"

// The read buffer for string values, in wide characters (terminator included); a longer value
// counts as absent.
inline constexpr size_t kRegistryStringChars = 512;

// The value rules every reader shares: a DWORD must be of type REG_DWORD and four bytes long; a
// string must be REG_SZ and fit the buffer with its terminator, and ends at its first NUL (or at
// the data's end). Anything else counts as absent.
bool ReadRegistryDword(RegistryHive& hive, const std::u16string& subkey, const std::u16string& name,
                       uint32_t* value);
bool ReadRegistryString(RegistryHive& hive, const std::u16string& subkey,
                        const std::u16string& name, std::u16string* value,
                        size_t maxChars = kRegistryStringChars);

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

// Fills every value from the printer's key, each falling back to its own default. Folders are
// kept as 8-bit text, converted with `text`.
void ReadConfiguration(RegistryHive& hive, TextCodec& text, const std::u16string& printerName,
                       Configuration& config);
// Writes the record back, "LogVerbosity_LM" (with the plug-in's verbosity) only when
// `alsoLanguageMonitor` is non-zero. A value whose key can be neither opened nor created is
// skipped.
void WriteConfiguration(RegistryHive& hive, TextCodec& text, const std::u16string& printerName,
                        const Configuration& config, int alsoLanguageMonitor);
