// The per-printer configuration: the table of values, their defaults and clamps, read and written.
#include "infra/config.h"

#include <algorithm>
#include <cstring>

namespace {

enum class ValueKind { kText, kNumber };

// One configuration value. The table's order is the write order; `readHere` is false for the
// language monitor's value, which this plug-in only ever writes.
struct ConfigValueRule {
    const char16_t* name;
    ValueKind kind;
    std::string Configuration::*text;
    uint32_t Configuration::*number;
    const char* defaultText;
    uint32_t defaultNumber;
    uint32_t clamp;
    bool readHere;
    bool writeOnRequestOnly;
};

constexpr uint32_t kNoClamp = UINT32_MAX;

const ConfigValueRule kConfigTable[] = {
    {u"LogFolder", ValueKind::kText, &Configuration::logFolder, nullptr, kDefaultLogFolder, 0,
     kNoClamp, true, false},
    {u"LogVerbosity_UiUni", ValueKind::kNumber, nullptr, &Configuration::logVerbosity, nullptr, 0,
     kMaxLogVerbosity, true, false},
    {u"LogVerbosity_LM", ValueKind::kNumber, nullptr, &Configuration::logVerbosity, nullptr, 0,
     kMaxLogVerbosity, false, true},
    {u"Settings_Ui", ValueKind::kNumber, nullptr, &Configuration::settingsUi, nullptr, 0, kNoClamp,
     true, false},
    {u"PrnFolder", ValueKind::kText, &Configuration::prnFolder, nullptr, kDefaultPrnFolder, 0,
     kNoClamp, true, false},
};

}  // namespace

std::u16string WideTextFromBytes(const std::vector<uint8_t>& data) {
    std::u16string text;
    const size_t count = data.size() / 2;  // an odd trailing byte is not a character
    text.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        const char16_t c = static_cast<char16_t>(data[2 * i] | (data[2 * i + 1] << 8));
        if (c == 0)
            break;
        text.push_back(c);
    }
    return text;
}

bool ReadRegistryDword(RegistryHive& hive, const std::u16string& subkey, const std::u16string& name,
                       uint32_t* value) {
    RegistryValue raw;
    if (value == nullptr ||
        hive.Query(subkey, name, sizeof(uint32_t), raw) != RegistryStatus::kOk ||
        raw.type != kRegDword || raw.data.size() != sizeof(uint32_t)) {
        return false;
    }
    std::memcpy(value, raw.data.data(), sizeof(uint32_t));
    return true;
}

bool ReadRegistryString(RegistryHive& hive, const std::u16string& subkey,
                        const std::u16string& name, std::u16string* value, size_t maxChars) {
    RegistryValue raw;
    if (value == nullptr ||
        hive.Query(subkey, name, maxChars * sizeof(char16_t), raw) != RegistryStatus::kOk ||
        raw.type != kRegSz) {
        return false;
    }
    std::u16string text = WideTextFromBytes(raw.data);
    // The text must fit the buffer together with its terminator, as it does when written back.
    if (text.size() >= maxChars)
        return false;
    *value = std::move(text);
    return true;
}

std::u16string ConfigurationKey(const std::u16string& printerName) {
    return std::u16string(kConfigRootKey) + u"\\" + printerName;
}

void ReadConfiguration(RegistryHive& hive, TextCodec& text, const std::u16string& printerName,
                       Configuration& config) {
    const std::u16string key = ConfigurationKey(printerName);
    for (const ConfigValueRule& rule : kConfigTable) {
        if (!rule.readHere)
            continue;
        if (rule.kind == ValueKind::kText) {
            std::u16string wide;
            if (ReadRegistryString(hive, key, rule.name, &wide) && !wide.empty()) {
                config.*rule.text = text.Narrow(wide);
            } else {
                config.*rule.text = rule.defaultText;
            }
        } else {
            uint32_t number = 0;
            if (ReadRegistryDword(hive, key, rule.name, &number)) {
                config.*rule.number = std::min(number, rule.clamp);
            } else {
                config.*rule.number = rule.defaultNumber;
            }
        }
    }
}

void WriteConfiguration(RegistryHive& hive, TextCodec& text, const std::u16string& printerName,
                        const Configuration& config, int alsoLanguageMonitor) {
    const std::u16string key = ConfigurationKey(printerName);
    for (const ConfigValueRule& rule : kConfigTable) {
        if (rule.writeOnRequestOnly && alsoLanguageMonitor == 0)
            continue;
        // A failed write is skipped: the next opening reads the default again.
        if (rule.kind == ValueKind::kText) {
            hive.SetString(key, rule.name, text.Widen(config.*rule.text));
        } else {
            hive.SetDword(key, rule.name, config.*rule.number);
        }
    }
}
