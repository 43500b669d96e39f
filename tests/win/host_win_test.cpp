// Runs kivhost.exe (the driver stand-in) against the plug-in and checks what it reports.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "host_run_win.h"

namespace {

class HostWin : public HostTestBase {
  protected:
    HostWin() : HostTestBase(L"HostWin") {}
    HostRun Run(const std::wstring& printer, const std::wstring& model) {
        return RunHost(L"--headless " + PrinterArgs(printer, model));
    }
};

const char kModelReset[] = "Model is different, reset STRUCT";

TEST_F(HostWin, FirstOpeningLoadsModelDefaultsAndTheSecondKeepsTheSavedRecord) {
    struct Case {
        const wchar_t* model;
        const char* cutMode;  // differs between the two models
    };
    for (const Case& c : {Case{L"TRX418A CUT", "PRN_PROP_NO_CUT (0x80)"},
                          Case{L"ZLD90VII", "PRN_PROP_CUTTER_TC_END_PAGE (0x20)"}}) {
        SCOPED_TRACE(Narrow(c.model));
        const std::wstring printer = NewPrinter(c.model);
        const std::string name = '"' + Narrow(c.model) + '"';
        size_t logBefore = 0;
        for (int opening = 1; opening <= 2; ++opening) {
            SCOPED_TRACE("opening " + std::to_string(opening));
            const HostRun run = Run(printer, c.model);
            ASSERT_EQ(0u, run.exitCode) << run.output;
            EXPECT_EQ(name, Field(run.output, "modelName"));
            EXPECT_EQ(c.cutMode, Field(run.output, "cutMode"));
            const std::string log = ReadFileText(LogPath(printer));
            ASSERT_GT(log.size(), logBefore);
            const std::string added = log.substr(logBefore);
            logBefore = log.size();
            // Each opening logs, so the absence of a reset means something; the host shows the
            // log's start.
            EXPECT_TRUE(Contains(added, "OEMCustomData <" + Narrow(c.model) + "|")) << added;
            EXPECT_EQ(opening == 1, Contains(added, kModelReset)) << added.substr(0, 2000);
            EXPECT_EQ(opening == 1, Contains(run.output, kModelReset));
        }
    }
}

TEST_F(HostWin, DamagedDevmodeFileFallsBackToTheModelDefaults) {
    const std::wstring printer = NewPrinter(L"TRX418A NOCUT");
    ASSERT_EQ(0u, Run(printer, L"TRX418A NOCUT").exitCode);
    // Cut the stored devmode in the middle of the private record.
    std::string bytes = ReadFileText(DevmodePath(printer));
    ASSERT_GT(bytes.size(), 1000u);
    std::ofstream(DevmodePath(printer).c_str(), std::ios::binary | std::ios::trunc)
        .write(bytes.data(), 1000);
    const size_t logBefore = ReadFileText(LogPath(printer)).size();

    const HostRun run = Run(printer, L"TRX418A NOCUT");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    EXPECT_TRUE(Contains(run.output, "damaged")) << run.output;
    EXPECT_EQ("PRN_PROP_CUTTER_TEAROFF_END_PAGE (0x10)", Field(run.output, "cutMode"));
    EXPECT_TRUE(Contains(ReadFileText(LogPath(printer)).substr(logBefore), kModelReset));
    // The host wrote a whole devmode again.
    EXPECT_EQ(bytes.size(), ReadFileText(DevmodePath(printer)).size());
}

TEST_F(HostWin, FailedStepsEndWithAMessageAndANonZeroCode) {
    const HostRun unknown = RunHost(
        L"--headless --model \"NO SUCH MODEL\" --printer \"KIV "
        L"HostWin none\" --devmode \"" +
        dir_ + L"\\none.devmode\"");
    EXPECT_EQ(2u, unknown.exitCode);
    EXPECT_TRUE(Contains(unknown.output, "install printer")) << unknown.output;
    EXPECT_TRUE(Contains(unknown.output, "KIV_NO_SUCH_MODEL.GPD")) << unknown.output;

    // Bad options are refused before anything is installed.
    struct Case {
        const wchar_t* args;
        const char* message;
    };
    for (const Case& c : {Case{L"--headless --press ok", "--headless opens no sheet"},
                          Case{L"--set 1067=5 --press ok", "--set needs a --page"},
                          Case{L"--page 2 --trackbar 1027=high", "ID=NUMBER"}}) {
        SCOPED_TRACE(Narrow(c.args));
        const HostRun run = RunHost(c.args);
        EXPECT_EQ(1u, run.exitCode);
        EXPECT_TRUE(Contains(run.output, c.message)) << run.output;
    }
}

}  // namespace
