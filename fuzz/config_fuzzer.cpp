// Fuzzes the configuration reader with registry values of any type and size.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <utility>

#include "infra/config.h"

namespace {

class FuzzHive : public RegistryHive {
  public:
    std::map<std::u16string, RegistryValue> values;  // by value name; one printer key

    RegistryStatus Query(const std::u16string&, const std::u16string& name, size_t maxBytes,
                         RegistryValue& out) override {
        auto it = values.find(name);
        if (it == values.end())
            return RegistryStatus::kMissing;
        if (it->second.data.size() > maxBytes)
            return RegistryStatus::kMoreData;
        out = it->second;
        return RegistryStatus::kOk;
    }
    bool SetDword(const std::u16string&, const std::u16string& name, uint32_t value) override {
        RegistryValue v{kRegDword, std::vector<uint8_t>(4)};
        std::memcpy(v.data.data(), &value, 4);
        values[name] = v;
        return true;
    }
    bool SetString(const std::u16string&, const std::u16string& name,
                   const std::u16string& value) override {
        RegistryValue v{kRegSz, {}};
        for (char16_t c : value) {
            v.data.push_back(static_cast<uint8_t>(c));
            v.data.push_back(static_cast<uint8_t>(c >> 8));
        }
        v.data.push_back(0);
        v.data.push_back(0);
        values[name] = v;
        return true;
    }
    std::string Narrow(const std::u16string& wide) override {
        std::string out;
        for (char16_t c : wide)
            out += c != 0 && c < 0x100 ? static_cast<char>(c) : '?';
        return out;
    }
    std::u16string Widen(const std::string& narrow) override {
        std::u16string out;
        for (char c : narrow)
            out += static_cast<char16_t>(static_cast<unsigned char>(c));
        return out;
    }
};

const char16_t* const kNames[] = {u"LogFolder", u"LogVerbosity_UiUni", u"Settings_Ui", u"PrnFolder",
                                  u"LogVerbosity_LM"};

bool Same(const Configuration& a, const Configuration& b) {
    return a.logFolder == b.logFolder && a.logVerbosity == b.logVerbosity &&
           a.prnFolder == b.prnFolder && a.settingsUi == b.settingsUi;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // Per value: one byte of type (or "absent"), two bytes of length, then the bytes.
    FuzzHive hive;
    for (const char16_t* name : kNames) {
        if (size < 3)
            break;
        const uint8_t type = data[0];
        size_t length = static_cast<size_t>(data[1] | (data[2] << 8));
        data += 3;
        size -= 3;
        if (length > size)
            length = size;
        if (type != 0xFF) {
            hive.values[name] = RegistryValue{static_cast<uint32_t>(type & 0x0F),
                                              std::vector<uint8_t>(data, data + length)};
        }
        data += length;
        size -= length;
    }

    Configuration config;
    ReadConfiguration(hive, u"Printer", config);
    if (config.logVerbosity > kMaxLogVerbosity || config.logFolder.empty() ||
        config.prnFolder.empty()) {
        std::abort();
    }
    // What was read, written back and read again, is what was read.
    WriteConfiguration(hive, u"Printer", config, 1);
    Configuration again;
    ReadConfiguration(hive, u"Printer", again);
    if (!Same(config, again))
        std::abort();
    return 0;
}
