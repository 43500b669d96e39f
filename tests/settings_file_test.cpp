// The settings file of kivsettings: text format round trip, every refusal, show and decode.
#include "settings/settings_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "golden_file.h"
#include "package_models.h"
#include "settings/setting_enums.h"

namespace {

OEMDEV Defaults(UiDeviceCommon& model) {
    OEMDEV rec{};
    rec.dmExtraHeader = {OEMDEV_SIZE, KIVITEM_SIGNATURE, KIVITEM_VERSION};
    rec.dwSignHead1 = rec.dwSignHead2 = KIVITEM_SIGN_H;
    rec.dwVerCurrent = KIVITEM_VERCURRENT;
    rec.dwSignTail1 = rec.dwSignTail2 = KIVITEM_SIGN_T;
    model.FillOEMDEVWithDeviceValues(rec.payload, 1);
    return rec;
}

std::vector<uint8_t> BytesOf(const OEMDEV& rec) {
    const auto* b = reinterpret_cast<const uint8_t*>(&rec);
    return {b, b + sizeof rec};
}

TEST(SettingsFileTest, EveryModelsDefaultsRoundTrip) {
    for (const char* name : kPackageModels) {
        SCOPED_TRACE(name);
        auto model = MakePackageModel(name);
        const OEMDEV rec = Defaults(*model);
        const std::string text = WriteSettingsFile(rec);
        const SettingsFileResult read = ReadSettingsFile(text, OEMDEV{}, *model);
        for (const auto& p : read.problems)
            ADD_FAILURE() << "line " << p.line << ": " << p.message;
        EXPECT_EQ(BytesOf(read.record), BytesOf(rec));
        EXPECT_EQ(WriteSettingsFile(read.record), text);
        EXPECT_TRUE(ChangedSettings(rec, read.record).empty());
    }
}

const char kHead[] = "format = 1\nmodel = \"J7\"\n";

std::vector<std::string> Problems(const std::string& text, const OEMDEV& current,
                                  const UiDeviceCommon& model) {
    std::vector<std::string> lines;
    for (const auto& p : ReadSettingsFile(text, current, model).problems)
        lines.push_back("line " + std::to_string(p.line) + ": " + p.message);
    return lines;
}

TEST(SettingsFileTest, EveryRefusalNamesItsLineAndWhatIsExpected) {
    auto model = MakePackageModel("J7");
    const OEMDEV current = Defaults(*model);
    const struct {
        std::string text;
        std::vector<std::string> problems;
    } cases[] = {
        {"# comments only\n", {"line 0: not a settings file: it has no \"format = 1\" line"}},
        {"\x7F"
         "ELF\x01\x02",
         {"line 1: not a settings file: it does not begin with \"format = 1\""}},
        {"format = 2\ncutMode = 7\n",
         {"line 1: format 2 is not one this version reads (format 1)"}},
        {"format = 1\nmodel = \"N5\"\n", {"line 2: the file is for model N5; this printer is J7"}},
        {"format = 1\nlfBeforeCut = 3\n",
         {"line 0: the file names no model (a line model = \"NAME\")"}},
        {std::string(kHead) + "cutmode = 7\nsupCutter = 1\ncutMode\n",
         {"line 3: unknown setting \"cutmode\"; did you mean \"cutMode\"?",
          "line 4: supCutter is kept by the driver, not set by a settings file",
          "line 5: no \"=\" in this line (a setting reads: setting = VALUE)"}},
        // A line that does not read well does not hide what the model refuses on another.
        {std::string(kHead) + "density = PRN_PROP_DENS_M50\n\ndensity = 16\nrecovery = 16\n",
         {"line 5: density is given twice (first on line 3)",
          "line 6: recovery: J7 does not support it (supRecovery = 0); it takes only "
          "PRN_PROP_RECOVERY_NOTSETBYDRIVER"}},
        {std::string(kHead) +
             "cutMode = CUT\noffsetX = ten\nlfBeforeCut = 300\nwatermarkPath = C:\n",
         {"line 3: cutMode: unknown value \"CUT\"; it takes PRN_PROP_CUTTER_NOTSETBYDRIVER, "
          "PRN_PROP_CUTTER_TEAROFF_END_PAGE, PRN_PROP_CUTTER_TEAROFF_END_JOB, "
          "PRN_PROP_CUTTER_TC_END_PAGE, PRN_PROP_CUTTER_PC_END_PAGE, PRN_PROP_CUTTER_TC_END_DOC, "
          "PRN_PROP_CUTTER_PC_END_DOC, PRN_PROP_CUTTER_TC_END_JOB, PRN_PROP_CUTTER_PC_END_JOB, "
          "PRN_PROP_NO_CUT",
          "line 4: offsetX: \"ten\" is not a number",
          "line 5: lfBeforeCut: 300 is out of range (0 to 15)",
          "line 6: watermarkPath takes a quoted text"}},
        {std::string(kHead) + "couponPath = \"" + std::string(257, 'a') +
             "\"\nlogos[0].path = \"\\q\"\nlogos[1].path = \"open\nlogos[2].path = \"a\" b\n",
         {"line 3: couponPath: the text has 257 bytes; the field holds 256",
          "line 4: logos[0].path: bad escape \"\\q\" (a text takes \\\", \\\\ and \\xNN)",
          "line 5: logos[1].path: the text has no closing quote",
          "line 6: logos[2].path: unexpected \"b\" after the closing quote"}},
        {std::string(kHead) + "cutMode = PRN_PROP_NO_CUT\nrecovery = PRN_PROP_RECOVERY_NO\n"
                              "offsetY = -2000\ncouponEnable = 2\n",
         {"line 3: cutMode: PRN_PROP_NO_CUT is not offered by J7; it offers "
          "PRN_PROP_CUTTER_TEAROFF_END_PAGE, PRN_PROP_CUTTER_TEAROFF_END_JOB, "
          "PRN_PROP_CUTTER_TC_END_PAGE, PRN_PROP_CUTTER_TC_END_DOC, PRN_PROP_CUTTER_TC_END_JOB, "
          "PRN_PROP_CUTTER_PC_END_PAGE, PRN_PROP_CUTTER_PC_END_DOC, PRN_PROP_CUTTER_PC_END_JOB",
          "line 4: recovery: J7 does not support it (supRecovery = 0); it takes only "
          "PRN_PROP_RECOVERY_NOTSETBYDRIVER",
          "line 5: offsetY: -2000 is out of range (-1000 to 1000)",
          "line 6: couponEnable takes 0 or 1"}},
        {std::string(kHead) + "watermarkEnable = 1\nwatermarkVHPosition = 19\nwatermarkPath = "
                              "\"a\\x09b\"\nreductionEnable = 1\nreductionValue = 30\n",
         {"line 4: watermarkVHPosition: 19 is no value of watermarkVHPosition; it takes "
          "WK_TOPLEFT, WK_CENTERLEFT, WK_BOTTOMLEFT, WK_TOPCENTER, WK_CENTERCENTER, "
          "WK_BOTTOMCENTER, WK_TOPRIGHT, WK_CENTERRIGHT, WK_BOTTOMRIGHT",
          "line 5: watermarkPath: a file name or path holds no control characters",
          "line 7: reductionValue: 30 is out of range (12, 25, 37, 50, 62, 75, 87 or 100)"}},
        // Settings that depend on each other: the pages reset a threshold above the white filter.
        {std::string(kHead) + "convFilterUp = 100\n",
         {"line 3: convFilterUp = 100 is not kept by the pages with the other settings; they "
          "load 255"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(Problems(c.text, current, *model), c.problems);
    }
}

TEST(SettingsFileTest, TakesWhatPeopleWriteAndKeepsWhatTheFileLeavesOut) {
    auto model = MakePackageModel("J7");
    OEMDEV current = Defaults(*model);
    current.payload.lfBeforeCut = 5;
    const std::string text =
        "\xEF\xBB\xBF# edited by hand\r\nformat = 1\r\n  model = \"J7\"  # the till's printer\r\n"
        "cutMode = 64\r\ncouponEnable = 1 # on\r\ncouponCopies = 0x3\r\n"
        "couponPath = \"C:\\\\coupons\\\\\\\"50%\\\" off\\xE9.bmp\"\r\n"
        "startJobBufferMode = FREE_CMD_MODE_ZAP\r\nstartJobBuffer = \"\\x1B@\\x00#\"";
    const SettingsFileResult read = ReadSettingsFile(text, current, *model);
    ASSERT_TRUE(read.problems.empty()) << read.problems[0].message;
    const OemDevPayload& p = read.record.payload;
    EXPECT_EQ(p.lfBeforeCut, 5);
    EXPECT_EQ(p.cutMode, PRN_PROP_CUTTER_TC_END_DOC);
    EXPECT_EQ(p.couponCopies, 3);
    EXPECT_EQ(p.couponScale, 16);
    EXPECT_STREQ(p.couponPath, "C:\\coupons\\\"50%\" off\xE9.bmp");
    EXPECT_EQ(int{p.startJobBufferLength}, 4);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(p.startJobBuffer), 5),
              std::string("\x1B@\0#\0", 5));
    const std::vector<std::string> changed = ChangedSettings(current, read.record);
    EXPECT_EQ(changed.size(), 6u);
    EXPECT_EQ(changed[0], "cutMode: PRN_PROP_CUTTER_PC_END_PAGE -> PRN_PROP_CUTTER_TC_END_DOC");
    // Written back, the texts are escaped the same way and read back to the same record.
    const std::string written = WriteSettingsFile(read.record);
    EXPECT_NE(written.find("couponPath = \"C:\\\\coupons\\\\\\\"50%\\\" off\\xE9.bmp\"\n"),
              std::string::npos);
    EXPECT_NE(written.find("startJobBuffer = \"\\x1B@\\x00#\"\n"), std::string::npos);
    const SettingsFileResult again = ReadSettingsFile(written, OEMDEV{}, *model);
    EXPECT_TRUE(again.problems.empty());
    EXPECT_EQ(BytesOf(again.record), BytesOf(read.record));
}
// A devmode as the spooler keeps one: 220 public bytes, then the driver's private part with the
// plug-in's block `at` bytes into it; a private part too short for the block cuts it.
std::vector<uint8_t> Devmode(const OEMDEV& rec, size_t at, size_t extra) {
    std::vector<uint8_t> bytes(220 + std::max<size_t>(extra, at + OEMDEV_SIZE), 0xEE);
    std::fill(bytes.begin(), bytes.begin() + 220, 0);
    bytes[68] = 220;
    bytes[70] = static_cast<uint8_t>(extra & 0xFF);
    bytes[71] = static_cast<uint8_t>(extra >> 8);
    const std::vector<uint8_t> record = BytesOf(rec);
    std::copy(record.begin(), record.end(), bytes.begin() + 220 + static_cast<long>(at));
    bytes.resize(220 + extra);
    return bytes;
}

TEST(SettingsFileTest, ShowAndDecodeSayWhatThePagesMakeOfEachValue) {
    auto model = MakePackageModel("ZLD90VII");
    OEMDEV rec = Defaults(*model);
    OemDevPayload& p = rec.payload;
    p.cutMode = PRN_PROP_NO_CUT;        // not offered
    p.recovery = PRN_PROP_RECOVERY_NO;  // not supported
    p.presentationMode = PRN_PROP_PRESENT_PEJECT_TO;
    p.presentationTimeout = 0;  // no duration for a mode with a time-out
    p.cashDrawerEnable = 1;
    p.cashDrawerPins = PRN_PROP_CDPINS_PIN2;
    p.watermarkEnable = 1;
    p.watermarkBrightness = 50;  // the page's 150
    std::string text = "== show\n" + ShowSettings(rec, *model);
    const DecodedSettings decoded = DecodeSettings(Devmode(rec, 40, 40 + OEMDEV_SIZE));
    EXPECT_TRUE(decoded.ok);
    EXPECT_EQ(decoded.text, ShowSettings(rec, *model));
    rec.dwVerCurrent = 1;
    text += "== decode, layout version 1\n" + DecodeSettings(BytesOf(rec)).text;
    for (const char* name : {"", "WR35VIIEJ"}) {
        std::strcpy(p.modelName, name);
        const std::string notes = DecodeSettings(BytesOf(rec)).text;
        text += notes.substr(0, notes.find("\nmodel \"") + 1);
    }
    ExpectGoldenFile("settings_show.txt", text);
}

TEST(SettingsFileTest, FindsTheRecordOrSaysWhatIsWrong) {
    auto model = MakePackageModel("J7");
    const OEMDEV rec = Defaults(*model);
    const std::vector<uint8_t> whole = Devmode(rec, 13, 13 + OEMDEV_SIZE + 7);
    std::vector<uint8_t> foreign = whole;
    foreign[220 + 13 + 4] = 'X';
    const std::vector<uint8_t> cut = Devmode(rec, 0, OEMDEV_SIZE - 100);
    const std::vector<uint8_t> alone = BytesOf(rec);
    const struct {
        std::vector<uint8_t> bytes;
        std::string problem;
    } cases[] = {
        {alone, ""},
        {whole, ""},
        {std::vector<uint8_t>(whole.begin(), whole.begin() + 1000),
         "the file holds 1000 bytes; a devmode with this record needs 3569 (dmSize 220 + "
         "dmDriverExtra 3349)"},
        {foreign,
         "the devmode (dmSize 220, dmDriverExtra 3349) holds no KivUI settings: no block of 3329 "
         "bytes signed 'KIVC' in its private part"},
        {cut,
         "the devmode's private part ends 3229 bytes into the settings record, which has 3329"},
        {std::vector<uint8_t>(alone.begin(), alone.begin() + 100),
         "the file holds 100 bytes; a settings record has 3329"},
        {std::vector<uint8_t>(10, 0),
         "the file holds 10 bytes: too short for a settings record "
         "(3329 bytes) or a devmode"},
        {std::vector<uint8_t>(100, 0xFF),
         "neither a settings record nor a devmode: its dmSize would be 65535"},
        {std::vector<uint8_t>(whole.begin(), whole.begin() + 230),
         "the file holds 230 bytes; the devmode needs 3569 (dmSize 220 + dmDriverExtra 3349)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.problem);
        const FoundRecord found = FindSettingsRecord(c.bytes);
        EXPECT_EQ(found.found, c.problem.empty());
        EXPECT_EQ(found.problem, c.problem);
        if (found.found) {
            EXPECT_EQ(BytesOf(found.record), alone);
        }
        const DecodedSettings decoded = DecodeSettings(c.bytes);
        EXPECT_EQ(decoded.ok, c.problem.empty());
        if (!decoded.ok) {
            EXPECT_EQ(decoded.text, c.problem + "\n");
        }
    }
}

}  // namespace
