// Wine's own print dialog as the application (kivprintdlg.exe): its Properties button reaches the
// plug-in's pages through the spooler, and its OK hands back a devmode whose record holds the
// user's change.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "host_run_win.h"
#include "settings/oemdev.h"

namespace {

// The plug-in's record inside a devmode file's private part, found by its header.
bool RecordIn(const std::string& devmode, OEMDEV& record) {
    DEVMODEW dm;
    if (devmode.size() < sizeof dm)
        return false;
    std::memcpy(&dm, devmode.data(), sizeof dm);
    const size_t end = std::min(devmode.size(), size_t{dm.dmSize} + dm.dmDriverExtra);
    for (size_t at = dm.dmSize; at + sizeof record <= end; ++at) {
        OemDmExtraHeader head;
        std::memcpy(&head, devmode.data() + at, sizeof head);
        if (head.dwSize == OEMDEV_SIZE && head.dwSignature == KIVITEM_SIGNATURE) {
            std::memcpy(&record, devmode.data() + at, sizeof record);
            return true;
        }
    }
    return false;
}

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
    OEMDEV record;
    ASSERT_TRUE(RecordIn(ReadFileText(devmode), record));
    EXPECT_EQ(37, record.payload.offsetY);
    EXPECT_STREQ("ZLD90VII", record.payload.modelName);

    // The next Properties, on the devmode the dialog handed back, shows the change.
    const HostRun look =
        RunProgram(L"kivprintdlg.exe", base + L"--set 1068=5 --devmode-in \"" + devmode + L"\"");
    ASSERT_EQ(0u, look.exitCode) << look.output;
    EXPECT_TRUE(Contains(look.output, "shown: 37")) << look.output;
}

}  // namespace
