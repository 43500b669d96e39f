// MemoryHive: a registry hive in memory, with the buffer-size rule of the real query.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ports/registry_hive.h"

// UTF-16LE bytes of `text`, as the registry stores string values (add the terminator to `text`).
inline std::vector<uint8_t> Utf16Bytes(const std::u16string& text) {
    std::vector<uint8_t> data;
    for (char16_t c : text)
        data.insert(data.end(), {static_cast<uint8_t>(c), static_cast<uint8_t>(c >> 8)});
    return data;
}

class MemoryHive : public RegistryHive {
  public:
    std::map<std::pair<std::u16string, std::u16string>, RegistryValue> values;
    std::vector<std::u16string> writes;  // the names written, in order
    bool writesFail = false;

    void Put(const std::u16string& key, const std::u16string& name, uint32_t type,
             std::vector<uint8_t> data) {
        values[{key, name}] = RegistryValue{type, std::move(data)};
    }
    bool KeyExists(const std::u16string& subkey) override {
        for (const auto& entry : values)
            if (entry.first.first == subkey)
                return true;
        return false;
    }
    RegistryStatus Query(const std::u16string& subkey, const std::u16string& name, size_t maxBytes,
                         RegistryValue& out) override {
        auto it = values.find({subkey, name});
        if (it == values.end())
            return RegistryStatus::kMissing;
        if (it->second.data.size() > maxBytes)
            return RegistryStatus::kMoreData;
        out = it->second;
        return RegistryStatus::kOk;
    }
    bool SetDword(const std::u16string& subkey, const std::u16string& name,
                  uint32_t value) override {
        return Set(subkey, name, kRegDword,
                   {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8),
                    static_cast<uint8_t>(value >> 16), static_cast<uint8_t>(value >> 24)});
    }
    bool SetString(const std::u16string& subkey, const std::u16string& name,
                   const std::u16string& value) override {
        return Set(subkey, name, kRegSz, Utf16Bytes(value + u'\0'));
    }

  private:
    bool Set(const std::u16string& subkey, const std::u16string& name, uint32_t type,
             std::vector<uint8_t> data) {
        if (writesFail)
            return false;
        writes.push_back(name);
        Put(subkey, name, type, std::move(data));
        return true;
    }
};
