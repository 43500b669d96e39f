// Tests of CLog against the in-memory platform: layout, filter, dumps, head and size limit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "fake_log_platform.h"
#include "infra/log.h"

namespace {

using Lines = std::vector<std::string>;

const char kHead[] = "[P0A1C/T0B20][2026/03/05 14:07:09:042]";

// A private log on its own fake, for tests that need a fresh CLog rather than TheLog().
struct LocalLog {
    FakeLogPlatform platform;
    CLog log;
    explicit LocalLog(bool fileExists = true) {
        platform.fileExists = fileExists;
        log.SetPlatform(&platform);
    }
};

Lines SplitLines(const std::string& text) {
    Lines lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            end = text.size();
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

TEST(LogLayout, LineIsHeadCutNameAndMessageEndedByLineFeed) {
    ScopedTestLog scoped(kLogDetail, 0, u"TRX Printer");
    TheLog().Write(kLogInfo, "IOemUI::CommonUIProp", "OEMCustomData <%s>", "TRX418A");

    EXPECT_EQ(scoped.Text(),
              "[P0A1C/T0B20][2026/03/05 14:07:09:042][CommonUIProp] OEMCustomData <TRX418A>\n");
    EXPECT_EQ(scoped.Platform().openedPath, "C:\\Logs\\TRX Printer_UI.log");
    EXPECT_EQ(scoped.Bodies(), Lines{"[CommonUIProp] OEMCustomData <TRX418A>"});
    EXPECT_EQ(scoped.Messages(), Lines{"OEMCustomData <TRX418A>"});
}

TEST(LogLayout, TimeFieldsArePaddedToTheirWidths) {
    ScopedTestLog scoped(kLogDetail);
    scoped.Platform().now = LocalTime{987, 1, 2, 3, 4, 5, 6};
    TheLog().Write(kLogError, "A::B", "x");
    scoped.Platform().now = LocalTime{2026, 12, 31, 23, 59, 59, 999};
    TheLog().Write(kLogError, "A::B", "y");

    EXPECT_EQ(scoped.Lines(), (Lines{"[P0A1C/T0B20][0987/01/02 03:04:05:006][B] x",
                                     "[P0A1C/T0B20][2026/12/31 23:59:59:999][B] y"}));
}

TEST(LogLayout, FunctionNameCut) {
    struct Case {
        const char* name;
        const char* cut;
    };
    const Case cases[] = {
        {"IOemUI::CommonUIProp", "CommonUIProp"},
        {"ConvertOEMDevmode", "onvertOEMDevmode"},
        {"hrOEMDevMode", "rOEMDevMode"},
        {"A::B::C", "B::C"},
        {"::Lead", "Lead"},
        {"Trail::", ""},
        {"", ""},
        {"x", ""},
        {"xy", "y"},
        {nullptr, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name != nullptr ? c.name : "(null)");
        EXPECT_EQ(CutFunctionName(c.name), c.cut);

        ScopedTestLog scoped(kLogDetail);
        TheLog().Write(kLogError, c.name, "m");
        EXPECT_EQ(scoped.Bodies(), Lines{std::string("[") + c.cut + "] m"});
    }
}

TEST(LogLayout, LongMessageIsFormattedWhole) {
    ScopedTestLog scoped(kLogDetail);
    const std::string big(20000, 'q');
    TheLog().Write(kLogDetail, "C::F", "<%s> %d <%s>", big.c_str(), 7, big.c_str());

    EXPECT_EQ(scoped.Messages(), Lines{"<" + big + "> 7 <" + big + ">"});
}

TEST(LogFilter, LevelModeAndVerbosity) {
    struct Case {
        uint8_t mode;
        uint8_t verbosity;
        int level;
        bool written;
    };
    const Case cases[] = {
        {kLogToFile, 6, kLogError, true},      {kLogToFile, 6, kLogWarning, true},
        {kLogToFile, 6, kLogInfo, true},       {kLogToFile, 6, kLogTrace, false},
        {kLogToFile, 6, kLogDetail, true},     {kLogToFile, 6, kLogDump, false},
        {kLogToFile, 7, kLogTrace, false},     {kLogToFile, 7, kLogDump, true},
        {kLogToFile, 255, kLogTrace, false},   {kLogToFile, 3, kLogInfo, false},
        {kLogToFile, 3, kLogWarning, true},    {kLogToFile, 3, kLogError, true},
        {kLogToFile, 0, kLogError, false},     {kLogOff, 6, kLogError, false},
        {kLogToDebugger, 2, kLogError, true},  {kLogToDebugger, 2, kLogWarning, false},
        {kLogToDebugger, 6, kLogTrace, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "mode " << int(c.mode) << " verbosity "
                                        << int(c.verbosity) << " level " << c.level);
        LocalLog local;
        local.log.Open(u"P", "C:\\Logs", c.mode, c.verbosity, 0);
        EXPECT_EQ(local.log.Enabled(c.level), c.written);
        local.log.Write(c.level, "C::F", "line");
        const bool anything = !local.platform.file.empty() || !local.platform.debugOutput.empty();
        EXPECT_EQ(anything, c.written);
        EXPECT_EQ(local.log.LineCounter(), c.written ? 1u : 0u);
    }
}

TEST(LogFilter, TraceScopeWritesNothingAtAnyVerbosity) {
    ScopedTestLog scoped(255, 1);
    {
        TraceScope trace("IOemUI::GetInfo");
        trace.Return(5);
    }
    EXPECT_EQ(scoped.Text(), "");
    EXPECT_EQ(TheLog().LineCounter(), 0u);
}

TEST(LogFilter, DisableStopsWritingAndResetsState) {
    ScopedTestLog scoped(kLogDetail);
    TheLog().Write(kLogError, "C::F", "before");
    TheLog().Disable();
    TheLog().Write(kLogError, "C::F", "after");

    EXPECT_EQ(scoped.Messages(), Lines{"before"});
    EXPECT_EQ(TheLog().OutputMode(), kLogOff);
    EXPECT_EQ(TheLog().Verbosity(), 0);
    EXPECT_EQ(TheLog().LineCounter(), 0u);
    EXPECT_FALSE(scoped.Platform().fileOpen);
}

TEST(LogEmit, EachLineTakesAndReleasesThePrintersMutex) {
    ScopedTestLog scoped(kLogDetail, 0, u"Kiosk 1");
    scoped.Platform().calls.clear();
    TheLog().Write(kLogError, "C::F", "one");
    TheLog().Write(kLogError, "C::F", "two");

    EXPECT_EQ(scoped.Platform().calls, (Lines{"Lock Global\\M_LOG_Kiosk 1", "Open", "Unlock",
                                              "Lock Global\\M_LOG_Kiosk 1", "Unlock"}));
    EXPECT_EQ(scoped.Platform().lockDepth, 0);
}

TEST(LogEmit, DebuggerModeSendsLineThenLineFeed) {
    LocalLog local;
    local.log.Open(u"P", "%TEMP%\\never", kLogToDebugger, 6, 1);
    local.log.Write(kLogWarning, "IOemUI::DevMode", "Mode <%d>", 3);
    local.log.Dump(kLogInfo, "C::F", "T", "ab", 2);

    const std::string line = std::string(kHead) + "[DevMode] Mode <3>";
    const std::string dump =
        std::string(kHead) + "[F] T\n0000: 61 62" + std::string(14 * 3, ' ') + " ab\n";
    EXPECT_EQ(local.platform.debugOutput, (Lines{line, "\n", dump, "\n"}));
    EXPECT_TRUE(local.platform.preparedFolders.empty());
    EXPECT_EQ(local.platform.file, "");
    EXPECT_EQ(local.platform.openedPath, "");
}

TEST(LogOpen, FolderThatCannotBeMadeTurnsLoggingOffSilently) {
    LocalLog local;
    local.platform.folderUsable = false;
    local.log.Open(u"P", "Z:\\nowhere", kLogToFile, 6, 1);

    EXPECT_EQ(local.platform.preparedFolders, Lines{"Z:\\nowhere"});
    EXPECT_EQ(local.log.OutputMode(), kLogOff);
    EXPECT_EQ(local.log.Verbosity(), 0);
    local.log.Write(kLogError, "C::F", "lost");
    local.log.Dump(kLogError, "C::F", "T", "x", 1);
    EXPECT_EQ(local.platform.file, "");
    EXPECT_EQ(local.platform.openedPath, "");
}

TEST(LogOpen, PathUsesTheExpandedFolderAndReopeningClosesFirst) {
    LocalLog local;
    local.platform.expandTo = "C:\\Users\\me\\AppData\\Local\\Temp";
    local.log.Open(u"First", "%TEMP%", kLogToFile, 6, 0);
    local.log.Write(kLogError, "C::F", "a");
    EXPECT_EQ(local.log.FilePath(), "C:\\Users\\me\\AppData\\Local\\Temp\\First_UI.log");
    EXPECT_EQ(local.platform.openedPath, local.log.FilePath());

    local.platform.calls.clear();
    local.platform.expandTo.clear();
    local.log.Open(u"Second\u00e9", "D:\\L", kLogToFile, 6, 0);
    EXPECT_EQ(local.platform.calls, (Lines{"CloseFile", "CloseMutex"}));
    EXPECT_EQ(local.log.LineCounter(), 0u);
    local.log.Write(kLogError, "C::F", "b");
    EXPECT_EQ(local.platform.openedPath, "D:\\L\\Second?_UI.log");
    EXPECT_EQ(local.platform.calls.at(2), "Lock Global\\M_LOG_Second?");
}

TEST(LogOpen, UnopenableFileDropsTheLineAndIsRetried) {
    LocalLog local;
    local.log.Open(u"P", "C:\\L", kLogToFile, 6, 0);
    local.platform.openFails = true;
    local.log.Write(kLogError, "C::F", "dropped");
    local.platform.openFails = false;
    local.log.Write(kLogError, "C::F", "kept");

    EXPECT_EQ(SplitLines(local.platform.file), Lines{std::string(kHead) + "[F] kept"});
    EXPECT_EQ(local.platform.lockDepth, 0);
}

TEST(LogOpen, NullPlatformWritesNothingAndDoesNotCrash) {
    CLog log;
    log.Open(u"P", "C:\\L", kLogToFile, 6, 1);
    EXPECT_FALSE(log.Enabled(kLogError));
    log.Write(kLogError, "C::F", "x");
    log.Dump(kLogError, "C::F", "T", "x", 1);
    log.LogFileInfo();
    log.Close();
    log.Disable();
    EXPECT_EQ(log.LineCounter(), 0u);
}

TEST(LogHead, NewFileGetsModuleLinesThenExtensionOnce) {
    struct Case {
        bool fileExists;
        uint8_t verbosity;
        Lines expected;
    };
    const std::string h = kHead;
    const Case cases[] = {
        {false,
         6,
         {h + "[LogFileInfo] LogFileInfo(..): Dll File Path: C:\\Drivers\\x64\\3\\KivUI.dll",
          h + "[LogFileInfo] LogFileInfo(..): Dll File Version: 1.2.3.4", h + "[Report] os line",
          h + "[F] first", h + "[F] second"}},
        {true, 6, {h + "[F] first", h + "[F] second"}},
        // The head goes through the level filter like any other line.
        {false, 3, {h + "[F] first", h + "[F] second"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << "exists " << c.fileExists << " verbosity " << int(c.verbosity));
        LocalLog local(c.fileExists);
        int extensionCalls = 0;
        local.log.SetHeadExtension([&extensionCalls](CLog& log) {
            ++extensionCalls;
            log.Write(kLogInfo, "Os::Report", "os line");
        });
        local.log.Open(u"P", "C:\\L", kLogToFile, c.verbosity, 0);
        local.log.Write(kLogError, "C::F", "first");
        local.log.Write(kLogError, "C::F", "second");

        EXPECT_EQ(SplitLines(local.platform.file), c.expected);
        EXPECT_EQ(extensionCalls, c.fileExists ? 0 : 1);
        EXPECT_EQ(local.platform.lockDepth, 0);
        EXPECT_LE(local.platform.maxLockDepth, 2);
    }
}

TEST(LogSize, OversizedFileIsResetOnlyAtTheTwentiethLine) {
    LocalLog local;
    local.platform.file.assign(kLogSizeLimit + 1, 'x');
    local.log.Open(u"P", "C:\\L", kLogToFile, 6, 0);
    for (int i = 1; i <= 19; ++i) {
        local.log.Write(kLogError, "C::F", "line %d", i);
    }
    EXPECT_GT(local.platform.file.size(), kLogSizeLimit + 19 * 40);
    EXPECT_EQ(local.platform.file.rfind("[F] line 19\n"), local.platform.file.size() - 12);

    local.log.Write(kLogError, "C::F", "line %d", 20);
    const std::string h = kHead;
    EXPECT_EQ(
        SplitLines(local.platform.file),
        (Lines{h + "[LogFileInfo] LogFileInfo(..): Dll File Path: C:\\Drivers\\x64\\3\\KivUI.dll",
               h + "[LogFileInfo] LogFileInfo(..): Dll File Version: 1.2.3.4", h + "[F] line 20"}));
    // The counter restarted at the reset and counted the two head lines.
    EXPECT_EQ(local.log.LineCounter(), 2u);
    EXPECT_EQ(local.platform.lockDepth, 0);
}

TEST(LogSize, FileMustExceedTheLimitToBeReset) {
    // Sized so that the check at line 20 finds exactly the limit, and the one at line 40 more.
    size_t written = 0;
    for (int i = 1; i <= 19; ++i) {
        written += std::string(kHead).size() + ("[F] line " + std::to_string(i)).size() + 1;
    }
    LocalLog local;
    local.platform.file.assign(kLogSizeLimit - written, 'x');
    local.log.Open(u"P", "C:\\L", kLogToFile, 6, 0);
    for (int i = 1; i <= 39; ++i) {
        local.log.Write(kLogError, "C::F", "line %d", i);
    }
    EXPECT_EQ(local.platform.file.substr(0, 5), "xxxxx");
    EXPECT_EQ(std::count(local.platform.calls.begin(), local.platform.calls.end(), "Delete"), 0);

    local.log.Write(kLogError, "C::F", "line %d", 40);
    EXPECT_EQ(std::count(local.platform.calls.begin(), local.platform.calls.end(), "Delete"), 1);
    EXPECT_EQ(SplitLines(local.platform.file).size(), 3u);
}

TEST(LogSize, FailedDeletionDropsTheLineAndLeavesTheFileClosed) {
    LocalLog local;
    local.platform.file.assign(kLogSizeLimit + 1, 'x');
    local.platform.deleteFails = true;
    local.log.Open(u"P", "C:\\L", kLogToFile, 6, 0);
    for (int i = 1; i <= 20; ++i) {
        local.log.Write(kLogError, "C::F", "line %d", i);
    }
    EXPECT_FALSE(local.platform.fileOpen);
    EXPECT_EQ(local.platform.file.find("line 20"), std::string::npos);

    local.log.Write(kLogError, "C::F", "line %d", 21);
    EXPECT_TRUE(local.platform.fileOpen);
    EXPECT_EQ(local.platform.file.substr(local.platform.file.size() - 12), "[F] line 21\n");
    EXPECT_EQ(local.platform.file.find("LogFileInfo"), std::string::npos);
}

TEST(LogSize, FileDeletedByAnotherWriterIsReopenedByName) {
    LocalLog local;
    local.log.Open(u"P", "C:\\L", kLogToFile, 6, 0);
    local.log.Write(kLogError, "C::F", "before");
    // Another process reset the log: this handle now points at a file without a name.
    local.platform.deletedUnderneath = true;
    local.log.Write(kLogError, "C::F", "after");

    const std::string h = kHead;
    EXPECT_EQ(
        SplitLines(local.platform.file),
        (Lines{h + "[LogFileInfo] LogFileInfo(..): Dll File Path: "
                   "C:\\Drivers\\x64\\3\\KivUI.dll",
               h + "[LogFileInfo] LogFileInfo(..): Dll File Version: 1.2.3.4", h + "[F] after"}));
    EXPECT_EQ(std::count(local.platform.calls.begin(), local.platform.calls.end(), "Open"), 2);
}

TEST(LogDump, RowsOffsetsHexAndMaskedCharacters) {
    ScopedTestLog scoped(kLogDump, 1);
    std::vector<uint8_t> data;
    const char text[] = "Hello, %d world!";  // 16 bytes: the '%' must not survive
    data.assign(text, text + 16);
    const uint8_t tail[] = {0x00, 0x1F, 0x20, 0x7E, 0x7F, 0x80, 0xFF, 0x25, 'z'};
    data.insert(data.end(), tail, tail + sizeof tail);
    TheLog().Dump(kLogDump, "Transfer::FillOEMDEVWithDeviceValues", "OEMDEV out", data.data(),
                  data.size());

    const std::string expected =
        std::string(kHead) + "[FillOEMDEVWithDeviceValues] OEMDEV out\n" +
        "0000: 48 65 6C 6C 6F 2C 20 25 64 20 77 6F 72 6C 64 21 Hello, .d world!\n" +
        "0010: 00 1F 20 7E 7F 80 FF 25 7A" + std::string(7 * 3, ' ') + " .. ~....z\n" + "\n";
    EXPECT_EQ(scoped.Text(), expected);
}

TEST(LogDump, GatesAndCut) {
    struct Case {
        uint32_t dumpFlags;
        uint8_t verbosity;
        size_t size;
        size_t rows;  // 0: nothing written
        bool cut;
    };
    const Case cases[] = {
        {1, 7, 16, 1, false},
        {1, 7, 17, 2, false},
        {0, 7, 16, 0, false},
        {2, 7, 16, 0, false},
        {1, 6, 16, 0, false},
        {3, 7, 3329, 209, false},
        {1, 7, CLog::kDumpCut, 256, false},
        {1, 7, CLog::kDumpCut + 1, 256, true},
        {1, 7, 0, 0, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "flags " << c.dumpFlags << " verbosity "
                                        << int(c.verbosity) << " size " << c.size);
        LocalLog local;
        local.log.Open(u"P", "C:\\L", kLogToFile, c.verbosity, c.dumpFlags);
        const std::vector<uint8_t> data(c.size, 0xA5);
        local.log.Dump(kLogDump, "C::F", "T", data.data(), data.size());
        const Lines lines = SplitLines(local.platform.file);
        if (c.rows == 0 && c.size != 0) {
            EXPECT_TRUE(lines.empty());
            continue;
        }
        if (c.size == 0) {
            EXPECT_EQ(local.platform.file, std::string(kHead) + "[F] T\n\n");
            continue;
        }
        ASSERT_EQ(lines.size(), 1 + c.rows + 1);
        EXPECT_EQ(lines[c.rows].substr(0, 5), ([&] {
                      char offset[8];
                      std::snprintf(offset, sizeof offset, "%04X:", unsigned((c.rows - 1) * 16));
                      return std::string(offset);
                  }()));
        EXPECT_EQ(lines.back(), c.cut ? " ..." : "");
        EXPECT_EQ(local.platform.maxLockDepth, 1);
        EXPECT_EQ(local.log.LineCounter(), 1u);
    }
}

TEST(LogDump, NullDataDumpsNothingButTheTitle) {
    LocalLog local;
    local.log.Open(u"P", "C:\\L", kLogToFile, 7, 1);
    local.log.Dump(kLogDump, "C::F", nullptr, nullptr, 64);
    EXPECT_EQ(local.platform.file, std::string(kHead) + "[F] \n\n");
}

}  // namespace
