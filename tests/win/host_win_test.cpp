// Runs kivhost.exe (the driver stand-in) against the plug-in and checks what it reports, and
// checks the Wine printer installer that the host and these tests share.
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

struct Expect {
    const char* field;
    const char* value;
};

struct ModelCase {
    const wchar_t* model;
    std::vector<Expect> defaults;
};

const std::vector<ModelCase>& ModelCases() {
    static const std::vector<ModelCase> cases = {
        {L"TRX418A CUT",
         {{"modelName", "\"TRX418A CUT\""},
          {"cutMode", "PRN_PROP_NO_CUT (0x80)"},
          {"recovery", "PRN_PROP_RECOVERY_TOTAL_AT_CUT (0x30)"},
          {"density", "PRN_PROP_DENS_NORMAL (0x50)"},
          {"supPresentation", "0"},
          {"couponCutInter", "PRN_COP_CUTTER_TC (0x10)"}}},
        {L"ZLD90VII",
         {{"modelName", "\"ZLD90VII\""},
          {"cutMode", "PRN_PROP_CUTTER_TC_END_PAGE (0x20)"},
          {"supPresentation", "1"},
          {"presentationMode", "PRN_PROP_PRESENT_HOLD_VALUE (0x20)"},
          {"headLed", "PRN_HLED_BLINK (0x10)"},
          {"supContinuousMode", "1"},
          {"continuousMode", "PRN_PROP_CONTINUOUSMODE_AUTO (0x00)"},
          {"page2PageAction", "PRN_PROP_PAGE2PAGE_EJECT (0x10)"}}},
    };
    return cases;
}

const char kModelReset[] = "Model is different, reset STRUCT";

TEST_F(HostWin, FirstOpeningLoadsModelDefaultsAndTheSecondKeepsTheSavedRecord) {
    for (const ModelCase& c : ModelCases()) {
        SCOPED_TRACE(Narrow(c.model));
        const std::wstring printer = NewPrinter(c.model);

        const HostRun first = Run(printer, c.model);
        ASSERT_EQ(0u, first.exitCode) << first.output;
        for (const Expect& e : c.defaults)
            EXPECT_EQ(e.value, Field(first.output, e.field)) << e.field;
        const std::string log1 = ReadFileText(LogPath(printer));
        EXPECT_TRUE(Contains(log1, kModelReset)) << log1.substr(0, 2000);
        EXPECT_TRUE(Contains(first.output, kModelReset)) << "the host shows the log's start";

        const HostRun second = Run(printer, c.model);
        ASSERT_EQ(0u, second.exitCode) << second.output;
        for (const Expect& e : c.defaults)
            EXPECT_EQ(e.value, Field(second.output, e.field)) << e.field;
        const std::string log2 = ReadFileText(LogPath(printer));
        ASSERT_GT(log2.size(), log1.size());
        const std::string added = log2.substr(log1.size());
        // The second opening did log (so the absence below means something) and kept the record.
        EXPECT_TRUE(Contains(added, "OEMCustomData <" + Narrow(c.model) + "|")) << added;
        EXPECT_FALSE(Contains(added, kModelReset)) << added.substr(0, 2000);
        EXPECT_FALSE(Contains(second.output, kModelReset));
    }
}

TEST_F(HostWin, DamagedDevmodeFileFallsBackToTheModelDefaults) {
    const std::wstring printer = NewPrinter(L"TRX418A NOCUT");
    ASSERT_EQ(0u, Run(printer, L"TRX418A NOCUT").exitCode);
    // Cut the stored devmode in the middle of the private record.
    std::string bytes = ReadFileText(DevmodePath(printer));
    ASSERT_GT(bytes.size(), 1000u);
    {
        std::ofstream out(DevmodePath(printer).c_str(), std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), 1000);
    }
    const size_t logBefore = ReadFileText(LogPath(printer)).size();

    const HostRun run = Run(printer, L"TRX418A NOCUT");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    EXPECT_TRUE(Contains(run.output, "damaged")) << run.output;
    EXPECT_EQ("PRN_PROP_CUTTER_TEAROFF_END_PAGE (0x10)", Field(run.output, "cutMode"));
    EXPECT_EQ("PRN_COP_CUTTER_NONE (0x00)", Field(run.output, "couponCutFinal"));
    EXPECT_TRUE(Contains(ReadFileText(LogPath(printer)).substr(logBefore), kModelReset));
    // The host wrote a whole devmode again.
    EXPECT_EQ(bytes.size(), ReadFileText(DevmodePath(printer)).size());
}

TEST_F(HostWin, FailedStepsEndWithAMessageAndANonZeroCode) {
    const HostRun unknown = RunHost(
        L"--headless --model \"NO SUCH MODEL\" --printer \"KIV HostWin "
        L"none\" --devmode \"" +
        dir_ + L"\\none.devmode\"");
    EXPECT_NE(0u, unknown.exitCode);
    EXPECT_TRUE(Contains(unknown.output, "install printer")) << unknown.output;
    EXPECT_TRUE(Contains(unknown.output, "KIV_NO_SUCH_MODEL.GPD")) << unknown.output;

    // Options that need the sheet, or a page, are refused before anything is installed.
    const HostRun headlessPress = RunHost(L"--headless --press ok");
    EXPECT_EQ(1u, headlessPress.exitCode);
    EXPECT_TRUE(Contains(headlessPress.output, "--headless opens no sheet"))
        << headlessPress.output;
    const HostRun noPage = RunHost(L"--set 1067=5 --press ok");
    EXPECT_EQ(1u, noPage.exitCode);
    EXPECT_TRUE(Contains(noPage.output, "--set needs a --page")) << noPage.output;
    const HostRun badStep = RunHost(L"--page 2 --trackbar 1027=high");
    EXPECT_EQ(1u, badStep.exitCode);
    EXPECT_TRUE(Contains(badStep.output, "ID=NUMBER")) << badStep.output;
    const HostRun badPress = RunHost(L"--press later");
    EXPECT_EQ(1u, badPress.exitCode);
    EXPECT_TRUE(Contains(badPress.output, "ok, apply or cancel")) << badPress.output;

    const HostRun badLevel = RunHost(L"--headless --verbosity 8");
    EXPECT_EQ(1u, badLevel.exitCode);
    EXPECT_TRUE(Contains(badLevel.output, "0 to 7")) << badLevel.output;
}

TEST_F(HostWin, PrinterInstallIsIdempotentAndRawJobsLandInTheMappedFile) {
    const std::wstring printer = NewPrinter(L"J7");
    WinePrinterSetup setup;
    setup.printerName = printer;
    setup.model = L"J7";
    setup.binaryDir = ModuleFolder();
    setup.packageDir = ModuleFolder() + L"\\driver";
    setup.outputFile = dir_ + L"\\" + SafeFileName(printer) + L".prn";
    WinePrinterInfo info;
    std::wstring error;
    ASSERT_TRUE(InstallWinePrinter(setup, info, error)) << Narrow(error);
    WinePrinterInfo again;
    ASSERT_TRUE(InstallWinePrinter(setup, again, error)) << Narrow(error);
    EXPECT_TRUE(again.driverReused);
    EXPECT_TRUE(again.printerReused);
    EXPECT_EQ(info.portName, again.portName);

    HANDLE h = nullptr;
    ASSERT_TRUE(OpenPrinterW(const_cast<LPWSTR>(printer.c_str()), &h, nullptr));
    DWORD needed = 0;
    GetPrinterDriverW(h, nullptr, 3, nullptr, 0, &needed);
    std::vector<BYTE> buf(needed ? needed : 1);
    ASSERT_TRUE(GetPrinterDriverW(h, nullptr, 3, buf.data(), needed, &needed));
    const auto* di = reinterpret_cast<const DRIVER_INFO_3W*>(buf.data());
    EXPECT_TRUE(Contains(Narrow(di->pConfigFile), "KivDrvCfg.dll")) << Narrow(di->pConfigFile);
    EXPECT_TRUE(Contains(Narrow(di->pDataFile), "KIV_J7.GPD")) << Narrow(di->pDataFile);
    std::string dependent;
    for (const wchar_t* p = di->pDependentFiles; p && *p; p += wcslen(p) + 1)
        dependent += Narrow(p) + ";";
    EXPECT_TRUE(Contains(dependent, "KivUI.dll")) << dependent;
    EXPECT_TRUE(Contains(dependent, "KivUI.ini")) << dependent;
    EXPECT_TRUE(Contains(dependent, "KIV_COMMON.GPD")) << dependent;

    // A raw job goes through Wine's spooler into the port's Unix file, byte for byte.
    DeleteFileW(setup.outputFile.c_str());
    wchar_t docName[] = L"HostWin raw job";
    wchar_t datatype[] = L"RAW";
    DOC_INFO_1W doc = {docName, nullptr, datatype};
    ASSERT_NE(0u, StartDocPrinterW(h, 1, reinterpret_cast<LPBYTE>(&doc)));
    const char job[] = "\x1B@KIV raw\n\x1DV\x00";
    DWORD written = 0;
    EXPECT_TRUE(WritePrinter(h, const_cast<char*>(job), sizeof job - 1, &written));
    EXPECT_EQ(sizeof job - 1, written);
    EXPECT_TRUE(EndDocPrinter(h));
    ClosePrinter(h);
    EXPECT_EQ(std::string(job, sizeof job - 1), ReadFileText(setup.outputFile));
}

}  // namespace
