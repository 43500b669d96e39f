// RegistryWin: the registry helper bound to one hive, in the 64-bit view.
#include "infra/registry_win.h"

#include <iterator>

namespace {

constexpr REGSAM kReadAccess = KEY_READ | KEY_WOW64_64KEY;
constexpr REGSAM kWriteAccess = KEY_WRITE | KEY_WOW64_64KEY;

// Closes the key it was given when it goes out of scope.
class KeyHandle {
  public:
    explicit KeyHandle(HKEY key = nullptr) : key_(key) {}
    ~KeyHandle() {
        if (key_ != nullptr)
            RegCloseKey(key_);
    }
    KeyHandle(const KeyHandle&) = delete;
    KeyHandle& operator=(const KeyHandle&) = delete;
    HKEY get() const { return key_; }
    HKEY* out() { return &key_; }

  private:
    HKEY key_;
};

}  // namespace

bool RegistryWin::KeyExists(const std::wstring& subkey) const {
    KeyHandle key;
    return RegOpenKeyExW(hive_, subkey.c_str(), 0, kReadAccess, key.out()) == ERROR_SUCCESS;
}

bool RegistryWin::ReadDword(const std::wstring& subkey, const std::wstring& name, DWORD* value) {
    uint32_t number = 0;
    if (value == nullptr ||
        !ReadRegistryDword(*this, U16FromWide(subkey), U16FromWide(name), &number))
        return false;
    *value = number;
    return true;
}

bool RegistryWin::ReadString(const std::wstring& subkey, const std::wstring& name,
                             std::wstring* value, size_t maxChars) {
    std::u16string text;
    if (value == nullptr ||
        !ReadRegistryString(*this, U16FromWide(subkey), U16FromWide(name), &text, maxChars))
        return false;
    *value = WideFromU16(text);
    return true;
}

bool RegistryWin::ReadMultiString(const std::wstring& subkey, const std::wstring& name,
                                  std::vector<std::wstring>* values, size_t maxChars) {
    std::vector<std::u16string> texts;
    if (values == nullptr ||
        !ReadRegistryMultiString(*this, U16FromWide(subkey), U16FromWide(name), &texts, maxChars))
        return false;
    values->clear();
    for (const std::u16string& text : texts)
        values->push_back(WideFromU16(text));
    return true;
}

HKEY RegistryWin::OpenForWrite(const std::wstring& subkey) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(hive_, subkey.c_str(), 0, kWriteAccess, &key) == ERROR_SUCCESS)
        return key;
    key = nullptr;
    if (RegCreateKeyExW(hive_, subkey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, kWriteAccess,
                        nullptr, &key, nullptr) == ERROR_SUCCESS) {
        return key;
    }
    return nullptr;
}

bool RegistryWin::WriteDword(const std::wstring& subkey, const std::wstring& name, DWORD value) {
    KeyHandle key(OpenForWrite(subkey));
    if (key.get() == nullptr)
        return false;
    return RegSetValueExW(key.get(), name.c_str(), 0, REG_DWORD,
                          reinterpret_cast<const BYTE*>(&value), sizeof value) == ERROR_SUCCESS;
}

bool RegistryWin::WriteString(const std::wstring& subkey, const std::wstring& name,
                              const std::wstring& value) {
    KeyHandle key(OpenForWrite(subkey));
    if (key.get() == nullptr)
        return false;
    const DWORD bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(key.get(), name.c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(value.c_str()), bytes) == ERROR_SUCCESS;
}

bool RegistryWin::DeleteValue(const std::wstring& subkey, const std::wstring& name) {
    KeyHandle key;
    if (RegOpenKeyExW(hive_, subkey.c_str(), 0, kWriteAccess, key.out()) != ERROR_SUCCESS)
        return false;
    return RegDeleteValueW(key.get(), name.c_str()) == ERROR_SUCCESS;
}

bool RegistryWin::EnumSubkeys(const std::wstring& subkey, std::vector<std::wstring>* names) const {
    KeyHandle key;
    if (names == nullptr ||
        RegOpenKeyExW(hive_, subkey.c_str(), 0, kReadAccess, key.out()) != ERROR_SUCCESS)
        return false;
    names->clear();
    for (DWORD index = 0;; ++index) {
        wchar_t name[256];  // key names are at most 255 characters
        DWORD length = static_cast<DWORD>(std::size(name));
        const LONG rc =
            RegEnumKeyExW(key.get(), index, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (rc == ERROR_NO_MORE_ITEMS)
            return true;
        if (rc != ERROR_SUCCESS)
            return false;
        names->emplace_back(name, length);
    }
}

bool RegistryWin::CountSubkeysAndValues(const std::wstring& subkey, DWORD* subkeys,
                                        DWORD* values) const {
    KeyHandle key;
    if (RegOpenKeyExW(hive_, subkey.c_str(), 0, kReadAccess, key.out()) != ERROR_SUCCESS)
        return false;
    DWORD keyCount = 0;
    DWORD valueCount = 0;
    if (RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &keyCount, nullptr, nullptr,
                         &valueCount, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        return false;
    if (subkeys != nullptr)
        *subkeys = keyCount;
    if (values != nullptr)
        *values = valueCount;
    return true;
}

RegistryStatus RegistryWin::Query(const std::u16string& subkey, const std::u16string& name,
                                  size_t maxBytes, RegistryValue& out) {
    KeyHandle key;
    const std::wstring wideKey = WideFromU16(subkey);
    if (RegOpenKeyExW(hive_, wideKey.c_str(), 0, kReadAccess, key.out()) != ERROR_SUCCESS)
        return RegistryStatus::kMissing;
    const std::wstring wideName = WideFromU16(name);
    std::vector<uint8_t> buffer(maxBytes == 0 ? 1 : maxBytes);
    DWORD type = REG_NONE;
    DWORD size = static_cast<DWORD>(maxBytes);
    const LONG rc =
        RegQueryValueExW(key.get(), wideName.c_str(), nullptr, &type, buffer.data(), &size);
    if (rc == ERROR_MORE_DATA)
        return RegistryStatus::kMoreData;
    if (rc != ERROR_SUCCESS || size > maxBytes)
        return RegistryStatus::kMissing;
    buffer.resize(size);
    out.type = type;
    out.data = std::move(buffer);
    return RegistryStatus::kOk;
}

bool RegistryWin::SetDword(const std::u16string& subkey, const std::u16string& name,
                           uint32_t value) {
    return WriteDword(WideFromU16(subkey), WideFromU16(name), value);
}

bool RegistryWin::SetString(const std::u16string& subkey, const std::u16string& name,
                            const std::u16string& value) {
    return WriteString(WideFromU16(subkey), WideFromU16(name), WideFromU16(value));
}
