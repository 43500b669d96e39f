// Wine's own print dialog as the application (kivprintdlg.exe): its Properties button reaches the
// plug-in's pages through the spooler, and its OK hands back a devmode whose record holds the
// user's change.
#include <gtest/gtest.h>

#include <string>

#include "host_run_win.h"

namespace {

class PrintDialogWin : public HostTestBase {
  protected:
    PrintDialogWin() : HostTestBase(L"PrintDialogWin") {}
};

TEST_F(PrintDialogWin, PropertiesOpensThePagesAndOkReturnsTheChangedRecord) {
    const std::wstring printer = NewPrinter(L"ZLD90VII");
    InstallPrinter(printer, L"ZLD90VII");

    // The vertical offset of the Print adjust page, typed by the user, then OK and OK.
    const std::wstring devmode = dir_ + L"\\dialog.devmode";
    const std::wstring base = L"--printer \"" + printer + L"\" --page \"Print adjust\" ";
    const HostRun change =
        RunProgram(L"kivprintdlg.exe", base + L"--set 1068=37 --devmode-out \"" + devmode + L"\"");
    ASSERT_EQ(0u, change.exitCode) << change.output;
    EXPECT_TRUE(Contains(change.output, "shown: 0")) << change.output;
    const OEMDEV record = RecordOf(ReadFileText(devmode));
    EXPECT_EQ(37, record.payload.offsetY);
    EXPECT_STREQ("ZLD90VII", record.payload.modelName);

    // The next Properties, on the devmode the dialog handed back, shows the change.
    const HostRun look =
        RunProgram(L"kivprintdlg.exe", base + L"--set 1068=5 --devmode-in \"" + devmode + L"\"");
    ASSERT_EQ(0u, look.exitCode) << look.output;
    EXPECT_TRUE(Contains(look.output, "shown: 37")) << look.output;
}

}  // namespace
