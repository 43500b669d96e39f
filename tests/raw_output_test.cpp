// Tests of raw jobs: call sequences, clean-up on each failure, document names, online rules.
#include "actions/raw_output.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/fake_spooler.h"
#include "support/fake_text_codec.h"

namespace {

using Calls = std::vector<std::string>;

std::vector<uint8_t> Bytes(const std::string& text) {
    return std::vector<uint8_t>(text.begin(), text.end());
}

class RawOutput : public testing::Test {
  protected:
    void SetUp() override {
        dir_ = std::filesystem::temp_directory_path() /
               (std::string("kiv_raw_") +
                testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override {
        std::filesystem::remove_all(dir_);
        std::filesystem::remove(lastDocument_);
    }
    std::string File(const std::string& name, const std::string& contents) {
        return Write((dir_ / name).string(), contents);
    }
    static std::string Write(const std::string& path, const std::string& contents) {
        std::ofstream(path, std::ios::binary) << contents;
        return path;
    }
    std::string lastDocument_ = "/nonexistent";
    std::filesystem::path dir_;
    FakeSpooler spooler_;
};

TEST_F(RawOutput, EachFailingStepUndoesWhatCameBeforeAndClosesTheCallersHandle) {
    const Calls job = {"StartDocument data RAW", "StartPage", "Write 3", "EndPage", "EndDocument"};
    struct Case {
        const char* failing;
        Calls calls;
    };
    const Case cases[] = {
        {"StartDocument", {"StartDocument data RAW", "ClosePrinter 7"}},
        {"StartPage", {"StartDocument data RAW", "StartPage", "EndDocument", "ClosePrinter 7"}},
        {"Write",
         {"StartDocument data RAW", "StartPage", "Write 3", "EndPage", "EndDocument",
          "ClosePrinter 7"}},
        {"EndPage",
         {"StartDocument data RAW", "StartPage", "Write 3", "EndPage", "EndDocument",
          "ClosePrinter 7"}},
        {"EndDocument",
         {"StartDocument data RAW", "StartPage", "Write 3", "EndPage", "EndDocument",
          "ClosePrinter 7"}},
        {"", job},  // success leaves the handle to the caller
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.failing);
        FakeSpooler spooler;
        spooler.failing = {c.failing};
        EXPECT_EQ(*c.failing == '\0' ? 1 : 0, SendRawBuffer(spooler, Bytes("abc"), 7, 0));
        EXPECT_EQ(c.calls, spooler.calls);
    }

    // A short write with an otherwise clean job fails without closing; nothing at all for an
    // empty buffer.
    spooler_.shortWriteBy = 1;
    EXPECT_EQ(0, SendRawBuffer(spooler_, Bytes("abc"), 7, 0));
    EXPECT_EQ(job, spooler_.calls);
    FakeSpooler idle;
    EXPECT_EQ(0, SendRawBuffer(idle, {}, 7, 1));
    EXPECT_TRUE(idle.calls.empty());
}

TEST_F(RawOutput, FilesAreSentWholeAndNamedByTheirExtension) {
    struct Case {
        const char* name;
        const char* doc;
    };
    const Case cases[] = {{"job.prn", "prn"},   {"JOB.PRN", "prn"},       {"job.Prn", "prn"},
                          {"job.prn1", "data"}, {"fw.bin", "data"},       {"fw.upg", "data"},
                          {"noext", "data"},    {"dir.prn/noext", "data"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::filesystem::create_directories(dir_ / "dir.prn");
        FakeSpooler spooler;
        EXPECT_EQ(1, SendFileToPrinter(spooler, File(c.name, "\x1B@A"), 7, u"P"));
        EXPECT_EQ((Calls{std::string("StartDocument ") + c.doc + " RAW", "StartPage", "Write 3",
                         "EndPage", "EndDocument"}),
                  spooler.calls);
        EXPECT_EQ("\x1B@A", spooler.output);
    }
    EXPECT_TRUE(IsPrinterDataFile("C:\\a.b\\x.prn"));
    EXPECT_FALSE(IsPrinterDataFile("C:\\a.prn\\x"));
}

TEST_F(RawOutput, OpeningByNameClosesAfterwardsAndTwiceAfterAFailure) {
    const std::string path = File("a.bin", "xy");
    const std::string opened = "ClosePrinter " + std::to_string(FakeSpooler::kOpenedHandle);
    EXPECT_EQ(1, SendFileToPrinter(spooler_, path, kNoPrinterHandle, u"KIV P"));
    EXPECT_EQ((Calls{"OpenPrinterByName KIV P", "StartDocument data RAW", "StartPage", "Write 2",
                     "EndPage", "EndDocument", opened}),
              spooler_.calls);

    FakeSpooler failing;
    failing.failing = {"StartDocument"};
    EXPECT_EQ(0, SendFileToPrinter(failing, path, kNoPrinterHandle, u"KIV P"));
    EXPECT_EQ((Calls{"OpenPrinterByName KIV P", "StartDocument data RAW", opened, opened}),
              failing.calls);

    // A printer that does not open, a missing or an empty file: 0, no job.
    FakeSpooler closed;
    closed.failing = {"OpenPrinterByName"};
    EXPECT_EQ(0, SendFileToPrinter(closed, path, kNoPrinterHandle, u"KIV P"));
    EXPECT_EQ(Calls{"OpenPrinterByName KIV P"}, closed.calls);
    FakeSpooler idle;
    EXPECT_EQ(0, SendFileToPrinter(idle, File("empty.prn", ""), kNoPrinterHandle, u"P"));
    EXPECT_EQ(0, SendFileToPrinter(idle, (dir_ / "missing.prn").string(), 7, u"P"));
    EXPECT_TRUE(idle.calls.empty());
}

TEST_F(RawOutput, LastDocumentIsReprintedAsPrinterData) {
    FakeTextCodec text;
    const std::string folder = dir_.string();
    EXPECT_EQ(folder + "\\lastKIV P_UiUni.prn", LastDocumentPath(folder, "KIV P"));
    // The Windows separator is an ordinary character here: the file sits beside the folder.
    lastDocument_ = Write(LastDocumentPath(folder, "KIV P"), "receipt");
    const std::string opened = "ClosePrinter " + std::to_string(FakeSpooler::kOpenedHandle);
    const Calls job = {"StartDocument prn RAW", "StartPage", "Write 7", "EndPage", "EndDocument"};

    EXPECT_EQ(1, PrintLastDocument(spooler_, text, u"KIV P", folder, 7));
    EXPECT_EQ(job, spooler_.calls);
    EXPECT_EQ("receipt", spooler_.output);

    // Opened here: closed once after a job that ended, short or not; the failing step's close
    // is the only one.
    FakeSpooler shortWrite;
    shortWrite.shortWriteBy = 2;
    EXPECT_EQ(0, PrintLastDocument(shortWrite, text, u"KIV P", folder, kNoPrinterHandle));
    Calls expected = {"OpenPrinterByName KIV P"};
    expected.insert(expected.end(), job.begin(), job.end());
    expected.push_back(opened);
    EXPECT_EQ(expected, shortWrite.calls);
    FakeSpooler failing;
    failing.failing = {"StartPage"};
    EXPECT_EQ(0, PrintLastDocument(failing, text, u"KIV P", folder, kNoPrinterHandle));
    EXPECT_EQ((Calls{"OpenPrinterByName KIV P", "StartDocument prn RAW", "StartPage", "EndDocument",
                     opened}),
              failing.calls);

    FakeSpooler idle;
    EXPECT_EQ(0, PrintLastDocument(idle, text, u"Other", folder, kNoPrinterHandle));
    EXPECT_TRUE(idle.calls.empty());
}

TEST_F(RawOutput, OnlineUnlessOfflineOrWorkingOffline) {
    struct Case {
        uint32_t status, attributes;
        const char* failing;
        int online;
    };
    const Case cases[] = {
        {0, 0, "", 1},
        {0x1 /* paused */, 0, "", 1},
        {kPrinterStatusOffline, 0, "", 0},
        {0, kPrinterAttributeWorkOffline, "", 0},
        {0, kPrinterAttributeEnableBidi, "", 1},
        {0, 0, "PrinterStatus", 0},
        {0, 0, "PrinterAttributes", 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.status << " " << c.attributes << " " << c.failing);
        FakeSpooler spooler;
        spooler.status = c.status;
        spooler.attributes = c.attributes;
        spooler.failing = {c.failing};
        EXPECT_EQ(c.online, IsPrinterOnline(spooler, 7));
    }
}

}  // namespace
