// Tests of the registry helper and the configuration against the real (Wine) registry.
#include <gtest/gtest.h>

#include <string>

#include "infra/config.h"
#include "infra/registry_win.h"
#include "kivui_dll_win.h"
#include "ports/platform_win.h"

namespace {

class ConfigWin : public ::testing::Test {
  protected:
    ConfigWin() : printer_(ScratchPrinterName(L"registry")), key_(printer_) {}
    std::wstring Path() const { return key_.Path(); }
    void PutRaw(const wchar_t* name, DWORD type, const std::wstring& text) {
        RegSetKeyValueW(HKEY_CURRENT_USER, Path().c_str(), name, type, text.c_str(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }

    std::wstring printer_;
    ScratchConfigKey key_;
    RegistryWin registry_;
};

TEST_F(ConfigWin, WritesCreateTheKeyAndOnlyTheRightTypesReadBack) {
    EXPECT_FALSE(registry_.KeyExists(Path()));
    EXPECT_TRUE(registry_.WriteDword(Path(), L"Number", 0xDEADBEEF));
    EXPECT_TRUE(registry_.WriteString(Path(), L"Text", L"C:\\Folder \x00E9"));
    EXPECT_TRUE(registry_.KeyExists(U16FromWide(Path())));
    PutRaw(L"Expand", REG_EXPAND_SZ, L"7");
    PutRaw(L"Long", REG_SZ, std::wstring(kRegistryStringChars, L'x'));  // one too many

    DWORD number = 0;
    std::wstring text;
    EXPECT_TRUE(registry_.ReadDword(Path(), L"Number", &number));
    EXPECT_EQ(0xDEADBEEFu, number);
    EXPECT_TRUE(registry_.ReadString(Path(), L"Text", &text));
    EXPECT_EQ(L"C:\\Folder \x00E9", text);
    EXPECT_FALSE(registry_.ReadDword(Path(), L"Text", &number));
    EXPECT_FALSE(registry_.ReadString(Path(), L"Number", &text));
    EXPECT_FALSE(registry_.ReadString(Path(), L"Expand", &text));
    EXPECT_FALSE(registry_.ReadString(Path(), L"Long", &text));
}

TEST_F(ConfigWin, ConfigurationRoundTripThroughThePlatformBundle) {
    const Platform& platform = WinPlatform();
    const std::u16string name = U16FromWide(printer_);
    Configuration config;
    config.logFolder = "D:\\Logs \xE9";
    config.logVerbosity = 5;
    WriteConfiguration(*platform.currentUser, *platform.log.text, name, config, 0);
    Configuration again;
    ReadConfiguration(*platform.currentUser, *platform.log.text, name, again);
    EXPECT_EQ(config.logFolder, again.logFolder);
    EXPECT_EQ(5u, again.logVerbosity);
    DWORD number = 0;
    EXPECT_FALSE(registry_.ReadDword(Path(), L"LogVerbosity_LM", &number));
}

}  // namespace
