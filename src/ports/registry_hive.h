// RegistryHive: one registry hive (current user or local machine) in the 64-bit view.
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

// Keys are opened per request and closed again, never held between requests.
class RegistryHive {
  public:
    virtual ~RegistryHive() = default;
    virtual bool KeyExists(const std::u16string& subkey) = 0;
    // Reads a value of at most `maxBytes` bytes; a longer one gives kMoreData and no data.
    virtual RegistryStatus Query(const std::u16string& subkey, const std::u16string& name,
                                 size_t maxBytes, RegistryValue& out) = 0;
    // Each write opens the key, creating it when missing; false when that fails.
    virtual bool SetDword(const std::u16string& subkey, const std::u16string& name,
                          uint32_t value) = 0;
    virtual bool SetString(const std::u16string& subkey, const std::u16string& name,
                           const std::u16string& value) = 0;
};
