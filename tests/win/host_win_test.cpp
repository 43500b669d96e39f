// Runs kivhost.exe (an application on a KIV printer) against the plug-in and checks what it
// reports.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "host_run_win.h"
#include "settings/oemdev.h"

namespace {

class HostWin : public HostTestBase {
  protected:
    HostWin() : HostTestBase(L"HostWin") {}
    HostRun Run(const std::wstring& printer, const std::wstring& model) {
        return RunHost(L"--press ok --verbose " + PrinterArgs(printer, model));
    }
};

TEST_F(HostWin, DamagedDevmodeFileFallsBackToTheModelDefaults) {
    const std::wstring printer = NewPrinter(L"TRX418A NOCUT");
    ASSERT_EQ(0u, Run(printer, L"TRX418A NOCUT").exitCode);
    // A devmode file cut in the middle of the private record is given to start from.
    std::string bytes = StoredDevmode(printer);
    ASSERT_GT(bytes.size(), 1000u);
    std::ofstream(DevmodePath(printer).c_str(), std::ios::binary).write(bytes.data(), 1000);

    const HostRun run = RunHost(L"--press ok --verbose --devmode \"" + DevmodePath(printer) +
                                L"\" " + PrinterArgs(printer, L"TRX418A NOCUT"));
    ASSERT_EQ(0u, run.exitCode) << run.output;
    EXPECT_TRUE(Contains(run.output, "settings    : " + NarrowAnsi(DevmodePath(printer)) +
                                         " is damaged (dmSize 220 + dmDriverExtra 3329 does "
                                         "not match the file's 1000 bytes)"))
        << run.output;
    EXPECT_EQ("PRN_PROP_CUTTER_TEAROFF_END_PAGE (0x10)", Field(run.output, "cutMode"));
    // The spooler keeps a whole devmode again.
    EXPECT_EQ(bytes.size(), StoredDevmode(printer).size());

    // A whole devmode whose record names another model: the plug-in resets it, and says why.
    bytes.replace(sizeof(DEVMODEW) + OEMDEV_HEADER_SIZE, 3, std::string("J7\0", 3));
    std::ofstream(DevmodePath(printer).c_str(), std::ios::binary).write(bytes.data(), bytes.size());
    const HostRun other = RunHost(L"--press ok --devmode \"" + DevmodePath(printer) + L"\" " +
                                  PrinterArgs(printer, L"TRX418A NOCUT"));
    EXPECT_TRUE(Contains(other.output, "settings    : the plug-in reset the kept settings ("))
        << other.output;
    EXPECT_TRUE(Contains(other.output, "the record names another model, or none")) << other.output;
}

TEST_F(HostWin, FailedStepsEndWithAMessageAndANonZeroCode) {
    const std::wstring where = L"--printer \"KIV HostWin none\"";
    // An unknown model is named with the package's models, before anything is installed.
    const HostRun unknown = RunHost(L"--headless --model \"NO SUCH MODEL\" " + where);
    EXPECT_EQ(1u, unknown.exitCode);
    EXPECT_TRUE(Contains(unknown.output, "has no model \"NO SUCH MODEL\"")) << unknown.output;
    EXPECT_TRUE(Contains(unknown.output, "\nTRX418A CUT\n")) << unknown.output;
    EXPECT_EQ(17u, Lines(RunHost(L"--list-models").output).size());
    // Without --verbose a run is its summary, in lines that end without a carriage return.
    const HostRun quiet = RunHost(L"--press ok --model j7 " + where);
    EXPECT_EQ(0u, quiet.exitCode) << quiet.output;
    EXPECT_TRUE(Contains(quiet.output, "capabilities: cash drawer, density, quality, cutter"));
    EXPECT_FALSE(Contains(quiet.output, "DevMode") || Contains(quiet.output, "\r")) << quiet.output;

    // Bad options and paths are refused before anything is installed, each in one line.
    struct Case {
        const wchar_t* args;
        const char* message;
    };
    for (const Case& c :
         {Case{L"--headless --press ok", "--headless opens no sheet"},
          Case{L"--set 1067=5 --press ok", "--set needs a --page"},
          Case{L"--page 2 --trackbar 1027=high", "ID=NUMBER"},
          Case{L"--devmode C:\\no\\such\\x.dm", "--devmode \"C:\\no\\such\\x.dm\": its folder"}}) {
        SCOPED_TRACE(NarrowAnsi(c.args));
        const HostRun run = RunHost(c.args);
        EXPECT_EQ(1u, run.exitCode);
        EXPECT_EQ(1u, Lines(run.output).size()) << run.output;
        EXPECT_TRUE(Contains(run.output, c.message)) << run.output;
    }
}

}  // namespace
