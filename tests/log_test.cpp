// Tests of CLog on the fake ports: layout, filter, dumps, head, size limit and the folder rule.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "fake_log_ports.h"
#include "golden_file.h"
#include "infra/log.h"
#include "infra/windows_path.h"

namespace {

using Lines = std::vector<std::string>;

const std::string kHead = "[P0A1C/T0B20][2026/03/05 14:07:09:042]";
const Lines kFileHead = {
    kHead + "[LogFileInfo] LogFileInfo(..): Dll File Path: C:\\Drivers\\x64\\3\\KivUI.dll",
    kHead + "[LogFileInfo] LogFileInfo(..): Dll File Version: 1.2.3.4"};

// A fresh CLog on its own fake, opened to a file in C:\L.
struct LocalLog {
    FakeLogPorts fake;
    CLog log;
    explicit LocalLog(uint8_t verbosity = 6, bool fileExists = true, uint32_t dumpFlags = 0) {
        fake.fileExists = fileExists;
        log.SetPorts(&fake.ports);
        log.Open(u"P", "C:\\L", kLogToFile, verbosity, dumpFlags);
    }
    Lines FileLines() const { return SplitLines(fake.file); }
};

TEST(LogLayout, LineBytesPaddingAndFunctionNameCut) {
    ScopedTestLog scoped(kLogDetail, 0, u"TRX Printer");
    TheLog().Write(kLogInfo, "IOemUI::CommonUIProp", "OEMCustomData <%s>", "TRX418A");
    scoped.Platform().now = LocalTime{987, 1, 2, 3, 4, 5, 6};
    const std::string big(20000, 'q');  // no length limit
    TheLog().Write(kLogError, "A::B", "%d%s", 7, big.c_str());
    EXPECT_EQ(scoped.Text(),
              "[P0A1C/T0B20][2026/03/05 14:07:09:042][CommonUIProp] OEMCustomData <TRX418A>\n"
              "[P0A1C/T0B20][0987/01/02 03:04:05:006][B] 7" +
                  big + "\n");

    // kept-behaviour: Log function cut.
    const char* const cases[][2] = {
        {"ConvertOEMDevmode", "onvertOEMDevmode"}, {"A::B::C", "B::C"}, {"Trail::", ""}, {"x", ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c[0]);
        EXPECT_EQ(CutFunctionName(c[0]), c[1]);
    }
    EXPECT_EQ(CutFunctionName(nullptr), "");
}

TEST(LogFilter, LevelModeAndVerbosity) {
    struct Case {
        uint8_t mode, verbosity;
        int level;
        bool written;
    };
    // The level against the verbosity is pinned by the transfer goldens, which log at the
    // detail level with dumps flagged; here the switches that turn every level off.
    const Case cases[] = {
        {kLogToFile, 0, kLogError, false},
        {kLogOff, 6, kLogError, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << int(c.mode) << "/" << int(c.verbosity) << "/" << c.level);
        LocalLog local;
        local.log.Open(u"P", "C:\\L", c.mode, c.verbosity, 0);
        local.log.Write(c.level, "C::F", "line");
        EXPECT_EQ(!local.fake.file.empty() || !local.fake.debugOutput.empty(), c.written);
    }
    // Every interface method traces; level 5 is never written, not even at verbosity 255.
    ScopedTestLog scoped(255, 1);
    TraceScope("IOemUI::GetInfo").Return(5);
    TheLog().Disable();
    TheLog().Write(kLogError, "C::F", "after");
    EXPECT_EQ(scoped.Text(), "");
}

TEST(LogEmit, EachLineHoldsThePrintersMutexAndDebuggerModeWritesNoFile) {
    // A connection's name holds backslashes, which an object name cannot.
    ScopedTestLog scoped(kLogDetail, 0, u"\\\\srv\\Kiosk 1");
    scoped.Platform().calls.clear();
    TheLog().Write(kLogError, "C::F", "one");
    TheLog().Write(kLogError, "C::F", "two");
    EXPECT_EQ(scoped.Platform().calls, (Lines{"Lock Global\\M_LOG___srv_Kiosk 1", "Open", "Unlock",
                                              "Lock Global\\M_LOG___srv_Kiosk 1", "Unlock"}));
    EXPECT_EQ(scoped.Platform().openedPath, "C:\\Logs\\__srv_Kiosk 1_UI.log");

    LocalLog local;
    local.fake.folderRequests.clear();
    local.log.Open(u"P", "%TEMP%\\never", kLogToDebugger, 6, 1);
    local.log.Write(kLogWarning, "IOemUI::DevMode", "Mode <%d>", 3);
    EXPECT_EQ(local.fake.debugOutput, (Lines{kHead + "[DevMode] Mode <3>", "\n"}));
    EXPECT_TRUE(local.fake.folderRequests.empty());
    EXPECT_EQ(local.fake.openedPath, "");
}

TEST(LogNames, PrinterNameLosesOnlyWhatFileAndObjectNamesCannotHold) {
    const std::u16string kept = u" a.,;=+[]{}'!$%~\u00e9\u4e2d";
    EXPECT_EQ(PrinterNameForFiles(u"\\/:*?\"<>|\x01\x1f" + kept), std::u16string(11, u'_') + kept);
}

// Each "Log folder: <folder>|<%TEMP%>|<usable>" case of log_folders.txt and the log file it
// gives, or "off". A character the 8-bit text cannot hold is no file name character either.
TEST(LogFolder, ExpandedFolderMustBeAbsoluteAndUsable) {
    ExpectGoldenCases("log_folders.txt", [](const std::string& line) -> std::optional<std::string> {
        if (!line.starts_with("Log folder: "))
            return std::nullopt;
        const std::vector<std::string> c = CaseFields(line);
        LocalLog local;
        local.fake.environment = {{"TEMP", c.at(1)}};
        local.fake.folderUsable = c.at(2) == "usable";
        local.log.Open(u"P\u00e9\u03a9", c.at(0), kLogToFile, 6, 1);
        local.log.Write(kLogError, "C::F", "x");
        EXPECT_EQ(local.log.OutputMode() == kLogOff, local.fake.openedPath.empty());
        std::string path = local.fake.openedPath.empty() ? "off" : "";
        for (unsigned char byte : local.fake.openedPath)  // "\xHH" above ASCII
            path += byte < 0x80 ? std::string(1, static_cast<char>(byte))
                                : "\\x" + std::string(1, "0123456789ABCDEF"[byte >> 4]) +
                                      "0123456789ABCDEF"[byte & 15];
        return path;
    });
}

TEST(LogOpen, ReopeningClosesFirstAndAnUnopenableOrDeletedFileIsRetried) {
    LocalLog local;
    local.fake.calls.clear();
    local.log.Open(u"Second", "D:\\L", kLogToFile, 6, 0);
    EXPECT_EQ(local.fake.calls, (Lines{"CloseMutex"}));
    local.fake.openFails = true;
    local.log.Write(kLogError, "C::F", "dropped");
    local.fake.openFails = false;
    local.log.Write(kLogError, "C::F", "kept");
    EXPECT_EQ(local.FileLines(), Lines{kHead + "[F] kept"});
    EXPECT_EQ(local.fake.openedPath, "D:\\L\\Second_UI.log");
    EXPECT_EQ(local.fake.lockDepth, 0);
    // Deleted by another writer: reopened by name, as a new file with its head.
    local.fake.deletedUnderneath = true;
    local.log.Write(kLogError, "C::F", "after");
    EXPECT_EQ(local.FileLines(), (Lines{kFileHead[0], kFileHead[1], kHead + "[F] after"}));

    CLog portless;
    portless.Open(u"P", "C:\\L", kLogToFile, 6, 1);
    portless.Write(kLogError, "C::F", "x");
    EXPECT_FALSE(portless.Enabled(kLogError));
}

TEST(LogHead, NewFileGetsModuleLinesThenExtensionUnderTheFilter) {
    for (const uint8_t verbosity : {6, 3}) {
        SCOPED_TRACE(int(verbosity));
        LocalLog local(verbosity, false);
        int extensionCalls = 0;
        local.log.SetHeadExtension([&extensionCalls](CLog& log) {
            ++extensionCalls;
            log.Write(kLogInfo, "Os::Report", "os line");
        });
        local.log.Write(kLogError, "C::F", "first");
        local.log.Write(kLogError, "C::F", "second");
        Lines expected = verbosity == 6 ? kFileHead : Lines{};
        if (verbosity == 6)
            expected.push_back(kHead + "[Report] os line");
        expected.insert(expected.end(), {kHead + "[F] first", kHead + "[F] second"});
        EXPECT_EQ(local.FileLines(), expected);
        EXPECT_EQ(extensionCalls, 1);
        EXPECT_EQ(local.fake.maxLockDepth, verbosity == 6 ? 2 : 1);
    }
}

TEST(LogSize, FilePastTheLimitIsBegunAnewAtTheTwentiethLineOnly) {
    struct Case {
        size_t startSize;
        bool truncateFails;
        int resetAt;  // 0: never within 40 lines
    };
    const size_t lineSize = kHead.size() + std::string("[F] line 10\n").size();
    const Case cases[] = {
        {kLogSizeLimit + 1, false, 20},
        // Exactly at the limit at line 20 (nine short lines, ten long): only over it counts.
        {kLogSizeLimit - 19 * lineSize + 9, false, 40},
        {kLogSizeLimit + 1, true, 20},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.startSize << " " << c.truncateFails);
        LocalLog local;
        local.fake.file.assign(c.startSize, 'x');
        local.fake.truncateFails = c.truncateFails;
        for (int i = 1; i < c.resetAt; ++i)
            local.log.Write(kLogError, "C::F", "line %d", i);
        EXPECT_EQ(std::count(local.fake.calls.begin(), local.fake.calls.end(), "Truncate"), 0);
        local.log.Write(kLogError, "C::F", "line %d", c.resetAt);
        if (c.truncateFails) {
            // The line is dropped and the file left closed; the next line opens it again.
            EXPECT_FALSE(local.fake.fileOpen);
            EXPECT_EQ(local.fake.file.size(), c.startSize + 19 * lineSize - 9);
            local.log.Write(kLogError, "C::F", "line 21");
            EXPECT_TRUE(local.fake.fileOpen);
            EXPECT_EQ(local.fake.file.substr(local.fake.file.size() - 12), "[F] line 21\n");
            continue;
        }
        Lines expected = kFileHead;
        expected.push_back(kHead + "[F] line " + std::to_string(c.resetAt));
        EXPECT_EQ(local.FileLines(), expected);
        EXPECT_EQ(local.log.LineCounter(), 2u);  // restarted, then counted the head
    }
}

TEST(LogDump, RowsOffsetsHexMaskedCharactersAndCut) {
    LocalLog local(7, true, 1);
    const std::string data =
        std::string("Hello, %d world!") + std::string("\0\x1F ~\x7F\x80\xFF%z", 9);
    local.log.Dump(kLogDump, "Transfer::FillOEMDEVWithDeviceValues", "OEMDEV out", data.data(),
                   data.size());
    EXPECT_EQ(local.fake.file,
              kHead + "[FillOEMDEVWithDeviceValues] OEMDEV out\n" +
                  "0000: 48 65 6C 6C 6F 2C 20 25 64 20 77 6F 72 6C 64 21 Hello, .d world!\n" +
                  "0010: 00 1F 20 7E 7F 80 FF 25 7A" + std::string(7 * 3, ' ') + " .. ~....z\n\n");

    const std::vector<uint8_t> big(CLog::kDumpCut + 1, 0xA5);
    local.fake.file.clear();
    local.log.Dump(kLogDump, "C::F", "T", big.data(), big.size());
    const Lines lines = local.FileLines();
    ASSERT_EQ(lines.size(), 1 + CLog::kDumpCut / 16 + 1);
    EXPECT_EQ(lines[lines.size() - 2].substr(0, 5), "0FF0:");
    EXPECT_EQ(lines.back(), " ...");

    // The dump needs flag bit 0 as well as the level.
    LocalLog unflagged(7, true, 2);
    unflagged.log.Dump(kLogDump, "C::F", "T", big.data(), 16);
    EXPECT_EQ(unflagged.fake.file, "");
}

}  // namespace
