// Tests of the real spooler, module loader, version and local-machine registry ports under Wine.
#include <gtest/gtest.h>

#include <string>

#include "actions/raw_output_win.h"
#include "host_run_win.h"
#include "infra/config.h"
#include "ports/platform_win.h"
#include "win/text_win.h"

namespace {

class PortsWin : public HostTestBase {
  protected:
    PortsWin() : HostTestBase(L"PortsWin") {}
};

TEST_F(PortsWin, DriverQuestionsThroughTheSpooler) {
    const std::wstring printer = NewPrinter(L"J7");
    WinePrinterSetup setup{printer, L"J7", ModuleFolder(), ModuleFolder() + L"\\driver",
                           dir_ + L"\\" + SafeFileName(printer) + L".prn"};
    WinePrinterInfo info;
    std::wstring error;
    ASSERT_TRUE(InstallWinePrinter(setup, info, error)) << Narrow(error);

    Spooler& spooler = *WinPlatform().spooler;
    PrinterHandle h = kNoPrinterHandle;
    EXPECT_FALSE(spooler.OpenPrinterByName(u"KIV no such printer", &h));
    ASSERT_TRUE(spooler.OpenPrinterByName(U16FromWide(printer), &h));
    PrinterDriverInfo driver;
    ASSERT_TRUE(spooler.DriverInfo(h, &driver));
    EXPECT_NE(driver.dataFile.find("KIV_J7.GPD"), std::string::npos) << driver.dataFile;
    std::string plugin;
    for (const std::string& file : driver.dependentFiles)
        plugin = file.find("KivUI.dll") != std::string::npos ? file : plugin;
    EXPECT_TRUE(spooler.ClosePrinter(h));

    // The installed plug-in module: loaded by path, an export found, freed again.
    ASSERT_FALSE(plugin.empty());
    ModuleLoader& modules = *WinPlatform().modules;
    const ModuleHandle module = modules.Load(plugin);
    ASSERT_NE(0u, module);
    EXPECT_NE(nullptr, modules.Find(module, "DllGetClassObject"));
    EXPECT_EQ(nullptr, modules.Find(module, "GetBufferPrintLogoNVRAM"));
    modules.Free(module);
    EXPECT_EQ(0u, modules.Load(plugin + ".missing"));
}

TEST(PortsWinPrivilege, KnownPrivilegeOnOwnTokenUnknownNameRefused) {
    HANDLE token = nullptr;
    ASSERT_TRUE(OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, &token));
    EXPECT_TRUE(SetPrivilege(token, SE_CHANGE_NOTIFY_NAME, true));
    EXPECT_FALSE(SetPrivilege(token, L"SeNoSuchPrivilege", true));
    CloseHandle(token);
}

TEST(PortsWinVersion, FixedVersionAndStringValues) {
    VersionQuery& versions = *WinPlatform().versions;
    FileVersion version;
    std::string company;
    // The plug-in carries its own version block.
    ASSERT_TRUE(versions.FixedVersion("KivUI.dll", &version));
    EXPECT_NE("0.0.0.0", FileVersionText(version));
    EXPECT_TRUE(versions.StringValue("KivUI.dll", "ProductName", &company));
    EXPECT_FALSE(company.empty());
    EXPECT_FALSE(versions.StringValue("KivUI.dll", "NoSuchValue", &company));
    EXPECT_FALSE(versions.FixedVersion("C:\\no\\such.dll", &version));

    // The local machine names each port monitor's module, as the monitor lookup reads it.
    RegistryHive& machine = *WinPlatform().localMachine;
    const std::u16string key = u"SYSTEM\\CurrentControlSet\\Control\\Print\\Monitors\\Local Port";
    ASSERT_TRUE(machine.KeyExists(key));
    std::u16string driver;
    EXPECT_TRUE(ReadRegistryString(machine, key, u"Driver", &driver));
    EXPECT_FALSE(machine.KeyExists(key + u" missing"));
}

}  // namespace
