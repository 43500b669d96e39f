// RegistryWin: the registry helper bound to one hive (current user or local machine), in the
// 64-bit view.
#pragma once

#include <string>

#include "infra/config.h"
#include "ports/registry_hive.h"
#include "win/text_win.h"
#include "win/windows_headers_win.h"

// Every operation opens its key, does its work and closes the key again: keys are never held
// between requests. Reads open with KEY_READ, writes with KEY_WRITE, both in the 64-bit view.
class RegistryWin : public RegistryHive {
  public:
    explicit RegistryWin(HKEY hive = HKEY_CURRENT_USER) : hive_(hive) {}

    bool KeyExists(const std::wstring& subkey) const;
    // REG_DWORD only; any other type counts as absent.
    bool ReadDword(const std::wstring& subkey, const std::wstring& name, DWORD* value);
    // REG_SZ only; a value longer than `maxChars` (ERROR_MORE_DATA) counts as absent.
    bool ReadString(const std::wstring& subkey, const std::wstring& name, std::wstring* value,
                    size_t maxChars = kRegistryStringChars);
    // Both create the key when it cannot be opened.
    bool WriteDword(const std::wstring& subkey, const std::wstring& name, DWORD value);
    bool WriteString(const std::wstring& subkey, const std::wstring& name,
                     const std::wstring& value);

    // RegistryHive.
    bool KeyExists(const std::u16string& subkey) override { return KeyExists(WideFromU16(subkey)); }
    RegistryStatus Query(const std::u16string& subkey, const std::u16string& name, size_t maxBytes,
                         RegistryValue& out) override;
    bool SetDword(const std::u16string& subkey, const std::u16string& name,
                  uint32_t value) override;
    bool SetString(const std::u16string& subkey, const std::u16string& name,
                   const std::u16string& value) override;

  private:
    HKEY OpenForWrite(const std::wstring& subkey);

    HKEY hive_;
};
