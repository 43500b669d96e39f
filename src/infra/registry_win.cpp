// RegistryWin: the registry helper bound to one hive, in the 64-bit view.
#include "infra/registry_win.h"

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
