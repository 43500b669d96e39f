// Tests of the registry helper and the configuration against the real (Wine) registry.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "infra/config.h"
#include "infra/registry_win.h"
#include "kivui_dll_win.h"

namespace {

class ConfigWin : public ::testing::Test {
  protected:
    ConfigWin() : printer_(ScratchPrinterName(L"registry")), key_(printer_) {}
    std::wstring Path() const { return key_.Path(); }
    void PutRaw(const wchar_t* name, DWORD type, const void* data, DWORD bytes) {
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS,
                  RegCreateKeyExW(HKEY_CURRENT_USER, Path().c_str(), 0, nullptr, 0,
                                  KEY_WRITE | KEY_WOW64_64KEY, nullptr, &key, nullptr));
        ASSERT_EQ(ERROR_SUCCESS,
                  RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), bytes));
        RegCloseKey(key);
    }

    std::wstring printer_;
    ScratchConfigKey key_;
    RegistryWin registry_;
};

TEST_F(ConfigWin, WritesCreateTheKeyAndReadBack) {
    EXPECT_FALSE(registry_.KeyExists(Path()));
    DWORD number = 0;
    std::wstring text;
    EXPECT_FALSE(registry_.ReadDword(Path(), L"Missing", &number));
    EXPECT_FALSE(registry_.ReadString(Path(), L"Missing", &text));

    EXPECT_TRUE(registry_.WriteDword(Path(), L"Number", 0xDEADBEEF));
    EXPECT_TRUE(registry_.KeyExists(Path()));
    EXPECT_TRUE(registry_.WriteString(Path(), L"Text", L"C:\\Folder \x00E9"));
    EXPECT_TRUE(registry_.ReadDword(Path(), L"Number", &number));
    EXPECT_EQ(0xDEADBEEFu, number);
    EXPECT_TRUE(registry_.ReadString(Path(), L"Text", &text));
    EXPECT_EQ(L"C:\\Folder \x00E9", text);

    EXPECT_TRUE(registry_.DeleteValue(Path(), L"Number"));
    EXPECT_FALSE(registry_.ReadDword(Path(), L"Number", &number));
    EXPECT_FALSE(registry_.DeleteValue(Path(), L"Number"));
}

TEST_F(ConfigWin, WrongTypesAndLongStringsCountAsAbsent) {
    const wchar_t sz[] = L"7";
    const DWORD seven = 7;
    PutRaw(L"DwordAsString", REG_SZ, sz, sizeof sz);
    PutRaw(L"StringAsDword", REG_DWORD, &seven, sizeof seven);
    PutRaw(L"Expand", REG_EXPAND_SZ, sz, sizeof sz);
    const std::wstring longText(kRegistryStringChars, L'x');  // with its terminator: one too many
    PutRaw(L"Long", REG_SZ, longText.c_str(),
           static_cast<DWORD>((longText.size() + 1) * sizeof(wchar_t)));
    const std::wstring fits(kRegistryStringChars - 1, L'y');
    PutRaw(L"Fits", REG_SZ, fits.c_str(), static_cast<DWORD>((fits.size() + 1) * sizeof(wchar_t)));

    DWORD number = 0;
    std::wstring text;
    EXPECT_FALSE(registry_.ReadDword(Path(), L"DwordAsString", &number));
    EXPECT_FALSE(registry_.ReadString(Path(), L"StringAsDword", &text));
    EXPECT_FALSE(registry_.ReadString(Path(), L"Expand", &text));
    EXPECT_FALSE(registry_.ReadString(Path(), L"Long", &text));
    ASSERT_TRUE(registry_.ReadString(Path(), L"Fits", &text));
    EXPECT_EQ(fits, text);

    RegistryValue raw;
    EXPECT_EQ(RegistryStatus::kMoreData,
              registry_.Query(U16FromWide(Path()), u"Long", kRegistryStringChars * 2, raw));
}

TEST_F(ConfigWin, MultiStringsSubkeysAndCounts) {
    const wchar_t list[] = L"one\0two\0";
    PutRaw(L"List", REG_MULTI_SZ, list, sizeof list);
    registry_.WriteDword(Path() + L"\\Child1", L"v", 1);
    registry_.WriteDword(Path() + L"\\Child2", L"v", 2);

    std::vector<std::wstring> values;
    ASSERT_TRUE(registry_.ReadMultiString(Path(), L"List", &values));
    EXPECT_EQ((std::vector<std::wstring>{L"one", L"two"}), values);

    std::vector<std::wstring> names;
    ASSERT_TRUE(registry_.EnumSubkeys(Path(), &names));
    std::sort(names.begin(), names.end());
    EXPECT_EQ((std::vector<std::wstring>{L"Child1", L"Child2"}), names);

    DWORD subkeys = 0, valueCount = 0;
    ASSERT_TRUE(registry_.CountSubkeysAndValues(Path(), &subkeys, &valueCount));
    EXPECT_EQ(2u, subkeys);
    EXPECT_EQ(1u, valueCount);
    EXPECT_FALSE(registry_.EnumSubkeys(Path() + L"\\Nowhere", &names));
}

TEST_F(ConfigWin, ConfigurationRoundTripInTheRealRegistry) {
    const std::u16string name = U16FromWide(printer_);
    Configuration config;
    ReadConfiguration(registry_, name, config);
    EXPECT_EQ(kDefaultLogFolder, config.logFolder);
    WriteConfiguration(registry_, name, config, 1);
    DWORD number = 99;
    ASSERT_TRUE(registry_.ReadDword(Path(), L"LogVerbosity_LM", &number));
    EXPECT_EQ(0u, number);

    config.logFolder = "D:\\Logs";
    config.logVerbosity = 5;
    config.settingsUi = 1;
    WriteConfiguration(registry_, name, config, 0);
    Configuration again;
    ReadConfiguration(registry_, name, again);
    EXPECT_EQ("D:\\Logs", again.logFolder);
    EXPECT_EQ(5u, again.logVerbosity);
    EXPECT_EQ(1u, again.settingsUi);
    EXPECT_TRUE(registry_.ReadDword(Path(), L"LogVerbosity_LM", &number));
    EXPECT_EQ(0u, number);  // not rewritten without the request
}

}  // namespace
