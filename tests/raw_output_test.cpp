// Tests of raw jobs: call sequences, clean-up on each failure, document names, online rules.
#include "actions/raw_output.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/fake_spooler.h"
#include "support/fake_text_codec.h"

namespace {

using Calls = std::vector<std::string>;
const std::string kOpenedClose = "ClosePrinter " + std::to_string(FakeSpooler::kOpenedHandle);

std::string Write(const std::string& path, const std::string& contents) {
    std::ofstream(path, std::ios::binary) << contents;
    return path;
}

TEST(RawOutput, EachFailingStepUndoesWhatCameBeforeAndClosesTheCallersHandle) {
    const Calls job = {"StartDocument data RAW", "StartPage", "Write 3", "EndPage", "EndDocument"};
    const Calls full = {job[0], job[1], job[2], job[3], job[4], "ClosePrinter 7"};
    struct Case {
        const char* failing;
        Calls calls;
    };
    const Case cases[] = {
        {"StartDocument", {job[0], "ClosePrinter 7"}},
        {"StartPage", {job[0], job[1], "EndDocument", "ClosePrinter 7"}},
        {"EndDocument", full},
        {"", job},  // success leaves the handle to the caller
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.failing);
        FakeSpooler spooler;
        spooler.failing = {c.failing};
        EXPECT_EQ(*c.failing == '\0' ? 1 : 0, SendRawBuffer(spooler, {'a', 'b', 'c'}, 7, 0));
        EXPECT_EQ(c.calls, spooler.calls);
    }
    // A short write with an otherwise clean job fails without closing; an empty buffer makes
    // no call at all.
    FakeSpooler spooler;
    spooler.shortWriteBy = 1;
    EXPECT_EQ(0, SendRawBuffer(spooler, {'a', 'b', 'c'}, 7, 0));
    EXPECT_EQ(job, spooler.calls);
    FakeSpooler idle;
    EXPECT_EQ(0, SendRawBuffer(idle, {}, 7, 1));
    EXPECT_TRUE(idle.calls.empty());
}

TEST(RawOutput, FilesGoWholeNamedByTheirExtensionAndAPrinterOpenedHereIsClosedHere) {
    for (const char* name : {"a.prn", "B.PRN", "C:\\d.x\\c.Prn"})
        EXPECT_TRUE(IsPrinterDataFile(name)) << name;
    for (const char* name : {"a.prn1", "fw.bin", "fw.upg", "noext", "d.prn/noext", "d.prn\\x"})
        EXPECT_FALSE(IsPrinterDataFile(name)) << name;
    const std::vector<uint8_t> file = {0x1B, '@', 'A'};

    FakeSpooler spooler;
    EXPECT_EQ(1, SendFileToPrinter(spooler, file, true, kNoPrinterHandle, u"KIV P"));
    EXPECT_EQ((Calls{"OpenPrinterByName KIV P", "StartDocument prn RAW", "StartPage", "Write 3",
                     "EndPage", "EndDocument", kOpenedClose}),
              spooler.calls);
    EXPECT_EQ("\x1B@A", spooler.output);
    // After a failure the handle opened here is closed twice.
    FakeSpooler failing;
    failing.failing = {"StartDocument"};
    EXPECT_EQ(0, SendFileToPrinter(failing, file, false, kNoPrinterHandle, u"KIV P"));
    EXPECT_EQ(
        (Calls{"OpenPrinterByName KIV P", "StartDocument data RAW", kOpenedClose, kOpenedClose}),
        failing.calls);
    // A printer that does not open or an empty file: 0, no job.
    FakeSpooler closed;
    closed.failing = {"OpenPrinterByName"};
    EXPECT_EQ(0, SendFileToPrinter(closed, file, true, kNoPrinterHandle, u"KIV P"));
    EXPECT_EQ(Calls{"OpenPrinterByName KIV P"}, closed.calls);
    FakeSpooler idle;
    EXPECT_EQ(0, SendFileToPrinter(idle, {}, true, 7, u"P"));
    EXPECT_TRUE(idle.calls.empty());
}

TEST(RawOutput, LastDocumentIsReprintedAsPrinterData) {
    FakeTextCodec text;
    const std::string folder = (std::filesystem::temp_directory_path() / "kiv").string();
    // The Windows separator is an ordinary character here: the file sits beside the folder.
    const std::string last = Write(LastDocumentPath(folder, u"KIV P", text), "receipt");
    EXPECT_EQ(folder + "\\lastKIV P_UiUni.prn", last);
    EXPECT_EQ(folder + "\\last__srv_q_UiUni.prn", LastDocumentPath(folder, u"\\\\srv\\q", text));
    const Calls job = {"StartDocument prn RAW", "StartPage", "Write 7", "EndPage", "EndDocument"};

    FakeSpooler spooler;
    EXPECT_EQ(1, PrintLastDocument(spooler, text, u"KIV P", folder, 7));
    EXPECT_EQ(job, spooler.calls);
    EXPECT_EQ("receipt", spooler.output);
    // Opened here: closed once after a job that ended, short or not; a failing step's close is
    // the only one.
    FakeSpooler shortWrite;
    shortWrite.shortWriteBy = 2;
    EXPECT_EQ(0, PrintLastDocument(shortWrite, text, u"KIV P", folder, kNoPrinterHandle));
    EXPECT_EQ(kOpenedClose, shortWrite.calls.back());
    FakeSpooler failing;
    failing.failing = {"StartPage"};
    EXPECT_EQ(0, PrintLastDocument(failing, text, u"KIV P", folder, kNoPrinterHandle));
    EXPECT_EQ((Calls{"OpenPrinterByName KIV P", "StartDocument prn RAW", "StartPage", "EndDocument",
                     kOpenedClose}),
              failing.calls);
    FakeSpooler idle;
    EXPECT_EQ(0, PrintLastDocument(idle, text, u"Other", folder, kNoPrinterHandle));
    EXPECT_TRUE(idle.calls.empty());
    std::filesystem::remove(last);
}

TEST(RawOutput, PreviewAsksOnlineThenSendsOnAHandleOfItsOwn) {
    const Calls sent = {"OpenPrinterByName KIV P",
                        "StartDocument data RAW",
                        "StartPage",
                        "Write 2",
                        "EndPage",
                        "EndDocument",
                        kOpenedClose};
    struct Case {
        uint32_t status;
        std::string data;
        const char* failing;
        PreviewSend result;
        bool rendered;
        Calls calls;
    };
    const Case cases[] = {
        {0, "\x1B@", "", PreviewSend::kSent, true, sent},
        {kPrinterStatusOffline, "\x1B@", "", PreviewSend::kOffline, false, {}},
        {0, "", "", PreviewSend::kNoData, true, {}},
        {0, "\x1B@", "OpenPrinterByName", PreviewSend::kNotSent, true, {sent[0]}},
        {0, "\x1B@", "Write", PreviewSend::kNotSent, true, sent},  // the same calls, failed
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.data + c.failing);
        FakeSpooler spooler;
        spooler.status = c.status;
        spooler.failing = {c.failing};
        bool rendered = false;
        EXPECT_EQ(c.result, SendPreviewData(spooler, 7, u"KIV P", [&] {
                      rendered = true;
                      return std::vector<uint8_t>(c.data.begin(), c.data.end());
                  }));
        EXPECT_EQ(c.rendered, rendered);
        std::erase_if(spooler.calls,
                      [](const std::string& call) { return call.starts_with("Printer"); });
        EXPECT_EQ(c.calls, spooler.calls);  // the framework's handle 7 is never closed
    }
}

TEST(RawOutput, OnlineUnlessOfflineOrWorkingOffline) {
    struct Case {
        uint32_t status, attributes;
        const char* failing;
        int online;
    };
    const Case cases[] = {
        {0x1 /* paused */, kPrinterAttributeEnableBidi, "", 1},
        {kPrinterStatusOffline, 0, "", 0},
        {0, kPrinterAttributeWorkOffline, "", 0},
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
