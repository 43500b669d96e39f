// Tests of the real spooler, module loader, version and local-machine registry ports under Wine,
// and of the rendering bridge over them with the installed stand-in module.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "actions/raw_output.h"
#include "actions/raw_output_win.h"
#include "actions/uni_bridge.h"
#include "fake_log_ports.h"
#include "host_run_win.h"
#include "standin_stream_win.h"
#include "infra/config.h"
#include "pages/coupon_rules.h"
#include "ports/log_ports_win.h"
#include "ports/platform_win.h"
#include "session/session_printer.h"
#include "win/text_win.h"

namespace {

class PortsWin : public HostTestBase {
  protected:
    PortsWin() : HostTestBase(L"PortsWin") {}
};

// The driver's files lead the bridge to the installed stand-in, whose stream shows the arguments;
// after a failed send the framework's handle is left alone.
TEST_F(PortsWin, TheBridgeAndTheSendsOverTheRealPorts) {
    const std::wstring printer = NewPrinter(L"J7");
    InstallPrinter(printer, L"J7");
    const std::wstring portFile = dir_ + L"\\" + SafeFileName(printer) + L".prn";
    const Platform& platform = WinPlatform();
    PrinterHandle h = kNoPrinterHandle;
    EXPECT_FALSE(platform.spooler->OpenPrinterByName(u"KIV no such printer", &h));
    ASSERT_TRUE(platform.spooler->OpenPrinterByName(U16FromWide(printer), &h));
    PrinterDriverInfo driver;
    ASSERT_TRUE(platform.spooler->DriverInfo(h, &driver));
    EXPECT_NE(driver.dataFile.find("KIV_J7.GPD"), std::string::npos) << driver.dataFile;
    const std::string module = GetUniDriverPath(*platform.spooler, *platform.versions, h);
    EXPECT_TRUE(module.ends_with("\\3\\KivUniStandIn.dll")) << module;

    const std::string image = NarrowAnsi(dir_) + "\\pattern.bmp";
    const std::string bits = WritePatternBmp(image);

    ScopedTestLog log;
    UniExportedFunctions bridge({*platform.spooler, *platform.modules, *platform.versions}, h,
                                "KIV P");
    const auto Text = [](const std::vector<uint8_t>& bytes) {
        return std::string(bytes.begin(), bytes.end());
    };
    EXPECT_EQ(StandInHead(1, "KIV P") + Le32(3) + '\x02',
              Text(bridge.GetBuffer_PrintLogoNVRAM(3, 2)));
    // The Coupon page's Position choice arrives before its Scale choice.
    const CouponControls coupon{.enabled = true,
                                .path = image,
                                .align = 2,
                                .size = 1,
                                .copies = 0,
                                .cutBetween = 0,
                                .cutLast = 0};
    EXPECT_EQ(StandInHead(3, "KIV P") + StandInText(image) + Le32(576) + Le32(418) +
                  char(coupon.align) + char(coupon.size) + bits,
              Text(bridge.GetBuffer_PrintCouponFILE(CouponPreviewRequest(coupon, {576, 0, 418}))));
    // A file the module cannot decode is its failure, not an empty stream.
    EXPECT_TRUE(bridge.GetBuffer_PrintLogoFILE({image + ".missing", 576, 418, 0, 0}).empty());
    EXPECT_EQ("UNI file path: " + module, log.Messages().front());
    EXPECT_EQ("Error. Buffer of the function is 0", log.Messages().back());

    // A send that fails inside the spooler once the job has started (a folder stands where the
    // port writes its file) closes the framework's handle, here h; the online test, Send file and
    // the driver question after it work on printers opened by name, and the good file arrives.
    const std::vector<uint8_t> bad = {0x1B, '@'}, good = {'r', 'e', 'c', 'e', 'i', 'p', 't'};
    OemUiState state;
    state.printerNameWide = U16FromWide(printer);
    state.hPrinter = reinterpret_cast<void*>(h);
    SessionSpooler spooler(*platform.spooler, state);
    ASSERT_TRUE(CreateDirectoryW(portFile.c_str(), nullptr));
    EXPECT_EQ(0, SendFileToPrinter(spooler, bad, true, h, state.printerNameWide));
    EXPECT_EQ(kNoPrinterHandle, LiveFrameworkPrinter(state));
    ASSERT_TRUE(RemoveDirectoryW(portFile.c_str()));
    EXPECT_EQ(1, IsPrinterOnline(spooler, RequestPrinter(spooler, state).Handle()));
    EXPECT_EQ(1, SendFileToPrinter(spooler, good, true, kNoPrinterHandle, state.printerNameWide));
    EXPECT_EQ("receipt", ReadFileText(portFile));
    EXPECT_TRUE(spooler.DriverInfo(RequestPrinter(spooler, state).Handle(), &driver));
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
    // The log head's module version, read without the version library, agrees with it.
    ModuleIdentityWin kernel(GetModuleHandleW(L"kernel32.dll"));
    ASSERT_TRUE(versions.FixedVersion(kernel.Path(), &version));
    EXPECT_EQ(kernel.Version(), FileVersionText(version));
    EXPECT_EQ(ModuleIdentityWin(nullptr).Version(), "");  // the test program has no resource

    // The local machine names each port monitor's module, as the monitor lookup reads it.
    RegistryHive& machine = *WinPlatform().localMachine;
    const std::u16string key = u"SYSTEM\\CurrentControlSet\\Control\\Print\\Monitors\\Local Port";
    ASSERT_TRUE(machine.KeyExists(key));
    std::u16string driver;
    EXPECT_TRUE(ReadRegistryString(machine, key, u"Driver", &driver));
    EXPECT_FALSE(machine.KeyExists(key + u" missing"));
}

}  // namespace
