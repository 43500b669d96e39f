// Tests of the settings transfers: enforcement, round trips, bounds and the section log.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "fake_log_ports.h"
#include "settings/device_factory.h"
#include "settings/setting_enums.h"
#include "settings/ui_device_common.h"

namespace {

const char* const kAllModels[] = {
    "J7",      "TRX415A", "TRX418A CUT",    "TRX418A NOCUT", "TRX430ATF",      "TRX430A",
    "VORTA5X", "N5",      "HB5820A-EJ",     "HB5820A",       "HB5840A",        "WR35VII",
    "WR55VII", "ZLD40",   "ZLD40PRESENTER", "ZLD90VII",      "generic printer"};

std::unique_ptr<UiDeviceCommon> Build(const std::string& name) {
    return CreateUiDevice(name, "SECOND", "", "");
}

bool Contains(const std::vector<std::string>& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

std::string Bytes(const void* data, size_t size) {
    return std::string(static_cast<const char*>(data), size);
}

// The record a fresh object of the model loads from, with its defaults.
OemDevPayload DefaultRecord(const std::string& model) {
    OemDevPayload p{};
    Build(model)->FillOEMDEVWithDeviceValues(p, 1);
    return p;
}

std::vector<std::string> Load(UiDeviceCommon& d, const OemDevPayload& p) {
    ScopedTestLog log(kLogDetail);
    std::string printer = "Printer";
    d.FillUIDeviceValuesWithOEMDEV(printer, p);
    EXPECT_EQ(printer, "");
    return log.Messages();
}

// Every printer-specific setting set to a value that some model offers.
void SetEverySupportableValue(UiDeviceCommon& d) {
    d.SetCashDrawerEnable(1);
    d.SetCashDrawerPins(PRN_PROP_CDPINS_PIN2);
    d.SetCashDrawerTimeOn(100);
    d.SetCashDrawerTimeOff(200);
    d.SetCashDrawerPhase(PRN_PROP_CDPHASE_END_PAGE);
    d.SetBuzzer(PRN_PROP_BUZZER_END_DOC);
    d.SetDensity(PRN_PROP_DENS_P12);
    d.SetQuality(PRN_PROP_QUAL_HSPEED);
    d.SetCutMode(PRN_PROP_CUTTER_TC_END_DOC);
    d.SetRecovery(PRN_PROP_RECOVERY_NO);
    d.SetContinuousMode(PRN_PROP_CONTINUOUSMODE_ON_FEEDWAY);
    d.SetFeeder(PRN_PROP_FEEDER_2);
    d.SetSelector(PRN_PROP_SELECTOR_TSTORE);
    d.SetPresentationMode(PRN_PROP_PRESENT_EJECT);
    d.SetPresentationValue(55);
    d.SetPresentationTimeout(66);
    d.SetHeadLed(PRN_HLED_BLINK_FAST);
    d.SetBlackMark(PRN_PROP_BMARK_EPAGE);
    d.SetPage2PageEnable(1);
    d.SetPage2PageAction(PRN_PROP_PAGE2PAGE_HOLD);
    d.SetPage2PageTimeout(600);
    d.SetPage2PageExtra(PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_QUEUE);
}

// Sets something non-default in every section, within what the record can hold.
void SetBusyDocument(UiDeviceCommon& d) {
    SetEverySupportableValue(d);
    d.SetLfBeforeCut(7);
    d.SetWatermarkEnable(1);
    d.SetWatermarkDrawPosition(WK_OVER);
    d.SetWatermarkDrawType(WK_TILE);
    d.SetWatermarkVHPosition(WK_CENTERCENTER);
    d.SetWatermarkPath("C:\\images\\mark.png");
    d.SetWatermarkBrightnessEnable(1);
    d.SetWatermarkBrightness(150);
    d.SetCouponEnable(1);
    d.SetCouponCopies(3);
    d.SetCouponDrawType(IM_DZOOM);
    d.SetCouponDrawPosition(IM_DALIGN_RIGHT);
    d.SetCouponCutInter(PRN_COP_CUTTER_PC);
    d.SetCouponCutFinal(PRN_COP_CUTTER_TEAROFF);
    d.SetCouponPath("C:\\images\\coupon.bmp");
    d.SetLogo(kLogoBeginDoc,
              LogoSettings{1, LOGO_TYPE_PRINTFROMFLASH, IM_DKEEP, IM_DALIGN_CENTER, "5"});
    d.SetLogo(kLogoEndDoc, LogoSettings{1, LOGO_TYPE_PRINTFROMFILE, IM_DZOOM, IM_DALIGN_LEFT,
                                        "C:\\images\\thanks.png"});
    d.SetOffsetX(-12);
    d.SetOffsetY(34);
    d.SetReductionEnable(1);
    d.SetReductionMode(REDW_PERCENT);
    d.SetReductionMinValue(10);
    d.SetReductionValue(75);
    d.SetConvMode(CMODE_ERRDIFF_FLOYD_STEINBERG);
    d.SetConvThreshold(100);
    d.SetConvFilterUp(200);
    d.SetConvFilterDown(20);
    const std::string file = "C:\\cmd\\start.prn";
    d.SetStartJobBufferMode(FREE_CMD_MODE_FILENAME);
    d.SetStartJobBuffer(std::vector<uint8_t>(file.begin(), file.end()));
    d.SetEndJobBufferMode(FREE_CMD_MODE_ASCII);
    d.SetEndJobBuffer({0x1B, '@', 'A', 'B', 'C', '%', 0x0A});
    d.SetSkipWhitePages(1);
    d.SetWhiteBottomCrop(1);
}

// Compares lines with a checked-in file. Set KIV_WRITE_EXPECTED_LOGS=1 to rewrite the files
// after a deliberate change.
void CompareWithGoldenFile(const std::string& fileName, const std::vector<std::string>& actual) {
    const std::string path = std::string(KIV_TEST_DATA_DIR) + "/" + fileName;
    if (std::getenv("KIV_WRITE_EXPECTED_LOGS") != nullptr) {
        std::ofstream out(path, std::ios::binary);
        for (const std::string& line : actual) {
            out << line << '\n';
        }
    }
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in.good()) << path;
    std::vector<std::string> expected;
    for (std::string line; std::getline(in, line);) {
        expected.push_back(line);
    }
    for (size_t i = 0; i < std::max(actual.size(), expected.size()); ++i) {
        SCOPED_TRACE(fileName + " line " + std::to_string(i + 1));
        ASSERT_LT(i, actual.size());
        ASSERT_LT(i, expected.size());
        EXPECT_EQ(actual[i], expected[i]);
    }
}

// The log of a save of the object `setUp` prepares, and of loading that record back.
std::vector<std::string> SaveAndLoadLog(const std::string& model, void (*setUp)(UiDeviceCommon&),
                                        OemDevPayload& saved) {
    ScopedTestLog log(kLogDump, 1);
    std::unique_ptr<UiDeviceCommon> d = Build(model);
    setUp(*d);
    d->FillOEMDEVWithDeviceValues(saved, 0);
    std::string printer = "Printer";
    Build(model)->FillUIDeviceValuesWithOEMDEV(printer, saved);
    return log.Bodies();
}

// Per model: what a busy document saves (the forced lines show what it does not support) and
// what loading makes of it (values it does not offer are mapped). After one load and save a
// record travels unchanged, and the model's own defaults load without any mapping.
TEST(TransferTest, EveryModelSavesAndLoadsAsItsGoldenLogSays) {
    std::vector<std::string> all;
    for (const char* name : kAllModels) {
        SCOPED_TRACE(name);
        OemDevPayload saved{};
        all.push_back(std::string("== ") + name);
        for (const std::string& line : SaveAndLoadLog(name, SetBusyDocument, saved)) {
            all.push_back(line);
        }
        std::unique_ptr<UiDeviceCommon> d = Build(name);
        Load(*d, saved);
        OemDevPayload once{}, twice{};
        d->FillOEMDEVWithDeviceValues(once, 0);
        Load(*d, once);
        d->FillOEMDEVWithDeviceValues(twice, 0);
        EXPECT_EQ(Bytes(&once, sizeof once), Bytes(&twice, sizeof twice));
        for (const std::string& line : Load(*Build(name), DefaultRecord(name))) {
            EXPECT_EQ(line.find("not offered"), std::string::npos) << line;
        }
    }
    CompareWithGoldenFile("transfer_models.log", all);
}

TEST(TransferTest, LogsOfASaveAndALoadStayAsTheyWere) {
    OemDevPayload saved{};
    CompareWithGoldenFile("transfer_zld90vii.log",
                          SaveAndLoadLog(
                              "ZLD90VII",
                              [](UiDeviceCommon& d) {
                                  SetBusyDocument(d);
                                  d.SetLfBeforeCut(16);
                                  d.SetPresentationMode(PRN_PROP_PRESENT_HOLD_MAX);
                              },
                              saved));
    CompareWithGoldenFile("transfer_trx430a.log", SaveAndLoadLog(
                                                      "TRX430A",
                                                      [](UiDeviceCommon& d) {
                                                          d.SetDensity(PRN_PROP_DENS_M25);
                                                          d.SetCutMode(PRN_PROP_NO_CUT);
                                                          d.SetLfBeforeCut(3);
                                                          d.SetFeeder(PRN_PROP_FEEDER_1);
                                                      },
                                                      saved));
}

// A damaged body behind an intact header: what the model does not offer loads as its starting
// value, with one line; the not-set value passes even where the list lacks it.
TEST(TransferTest, LoadingMapsWhatTheModelDoesNotOffer) {
    struct Case {
        const char* what;
        const char* model;
        void (*damage)(OemDevPayload&);
        int (*value)(const UiDeviceCommon&);
        int expected;
        const char* line;  // null: no mapping
    };
    const Case cases[] = {
        {"cut mode 0xFF on a cutter model", "TRX418A CUT",
         [](OemDevPayload& p) { p.cutMode = 0xFF; },
         [](const UiDeviceCommon& d) { return int{d.GetCutMode()}; }, PRN_PROP_NO_CUT,
         " Value <NOID> not offered, forced to <PRN_PROP_NO_CUT>"},
        {"a quality of the enumeration the model lacks", "ZLD40",
         [](OemDevPayload& p) { p.quality = PRN_PROP_QUAL_HSPEED; },
         [](const UiDeviceCommon& d) { return int{d.GetQuality()}; }, PRN_PROP_QUAL_NORMAL,
         " Value <PRN_PROP_QUAL_HSPEED> not offered, forced to <PRN_PROP_QUAL_NORMAL>"},
        {"feeder", "TRX430ATF", [](OemDevPayload& p) { p.feeder = 999; },
         [](const UiDeviceCommon& d) { return int{d.GetFeeder()}; }, PRN_PROP_FEEDER_AUTO,
         " Value <NOID> not offered, forced to <PRN_PROP_FEEDER_AUTO>"},
        {"page-to-page action", "ZLD90VII",
         [](OemDevPayload& p) {
             p.page2PageEnable = 1;
             p.page2PageAction = 0x40;
         },
         [](const UiDeviceCommon& d) { return int{d.GetPage2PageAction()}; },
         PRN_PROP_PAGE2PAGE_EJECT,
         " Page2Page After TO <NOID> not offered, forced to <PRN_PROP_PAGE2PAGE_EJECT>"},
        {"filters that contradict the threshold", "J7",
         [](OemDevPayload& p) {
             p.convThreshold = 100;
             p.convFilterUp = 90;
             p.convFilterDown = 20;
         },
         [](const UiDeviceCommon& d) {
             return d.GetConvThreshold() * 65536 + d.GetConvFilterUp() * 256 +
                    d.GetConvFilterDown();
         },
         128 * 65536 + 255 * 256,
         " Threshold/Filter UP/Filter DOWN <100/90/20> not offered, forced to <128/255/0>"},
        {"a threshold off the trackbar", "J7", [](OemDevPayload& p) { p.convThreshold = 255; },
         [](const UiDeviceCommon& d) { return int{d.GetConvThreshold()}; }, 128,
         " Threshold/Filter UP/Filter DOWN <255/255/0> not offered, forced to <128/255/0>"},
        {"conversion mode", "J7", [](OemDevPayload& p) { p.convMode = 7; },
         [](const UiDeviceCommon& d) { return int{d.GetConvMode()}; }, CMODE_AUTO,
         " Mode <NOID> not offered, forced to <CMODE_AUTO>"},
        {"an offset past the Print adjust range", "J7",
         [](OemDevPayload& p) {
             p.offsetX = -1001;
             p.offsetY = 1000;
         },
         [](const UiDeviceCommon& d) { return d.GetOffsetX() * 10000 + d.GetOffsetY(); }, 1000,
         " Offset <X:-1001 Y:1000> not offered, forced to <X:0 Y:1000>"},
        {"not set, absent from the list", "VORTA5X",
         [](OemDevPayload& p) { p.blackMark = PRN_PROP_BMARK_NOTSETBYDRIVER; },
         [](const UiDeviceCommon& d) { return int{d.GetBlackMark()}; }, 0, nullptr},
        {"filters at the ends of the threshold", "J7",
         [](OemDevPayload& p) {
             p.convThreshold = 1;
             p.convFilterUp = 1;
             p.convFilterDown = 0;
         },
         [](const UiDeviceCommon& d) { return int{d.GetConvFilterUp()}; }, 1, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        OemDevPayload p = DefaultRecord(c.model);
        c.damage(p);
        std::unique_ptr<UiDeviceCommon> d = Build(c.model);
        const std::vector<std::string> lines = Load(*d, p);
        EXPECT_EQ(c.value(*d), c.expected);
        const auto mapped = std::count_if(lines.begin(), lines.end(), [](const std::string& l) {
            return l.find("not offered") != std::string::npos;
        });
        EXPECT_EQ(mapped, c.line != nullptr ? 1 : 0);
        if (c.line != nullptr) {
            EXPECT_TRUE(Contains(lines, c.line));
        }
    }
}

TEST(TransferTest, LfBeforeCutIsBelowSixteenInTheRecord) {
    ScopedTestLog log(kLogDetail);
    const int32_t forced[] = {16, 255, 300};
    for (int32_t page : {0, 15, 16, 255, 300, 256}) {
        SCOPED_TRACE(page);
        log.Platform().file.clear();
        std::unique_ptr<UiDeviceCommon> d = Build("TRX430A");
        d->SetLfBeforeCut(page);
        OemDevPayload p{};
        d->FillOEMDEVWithDeviceValues(p, 0);
        const bool isForced =
            std::find(std::begin(forced), std::end(forced), page) != std::end(forced);
        EXPECT_EQ(p.lfBeforeCut, isForced ? 0 : page % 256);
        EXPECT_EQ(Contains(log.Messages(), " forced to 0 because the value " +
                                               std::to_string(page) + " is over 16"),
                  isForced);
    }
    // Loading a record that holds 16 or more forces the object as well.
    OemDevPayload p = DefaultRecord("TRX430A");
    p.lfBeforeCut = 200;
    std::unique_ptr<UiDeviceCommon> d = Build("TRX430A");
    EXPECT_TRUE(Contains(Load(*d, p), " forced to 0 because the value 200 is over 16"));
    EXPECT_EQ(d->GetLfBeforeCut(), 0);
}

TEST(TransferTest, BrightnessIsMirroredAroundTwoHundred) {
    const std::pair<int32_t, uint8_t> cases[] = {{100, 100}, {0, 200},   {150, 50},
                                                 {200, 0},   {201, 255}, {-55, 255}};
    for (const auto& [page, stored] : cases) {
        SCOPED_TRACE(page);
        UiDeviceCommon d("", "", "", "");
        d.SetWatermarkEnable(1);
        d.SetWatermarkBrightness(page);
        OemDevPayload p{};
        d.FillOEMDEVWithDeviceValues(p, 0);
        EXPECT_EQ(p.watermarkBrightness, stored);
        UiDeviceCommon back("", "", "", "");
        Load(back, p);
        EXPECT_EQ(back.GetWatermarkBrightness(), 200 - stored);
    }
    // A disabled watermark keeps the record's default brightness.
    UiDeviceCommon off("", "", "", "");
    off.SetWatermarkBrightness(0);
    OemDevPayload p{};
    off.FillOEMDEVWithDeviceValues(p, 0);
    EXPECT_EQ(p.watermarkBrightness, 100);
}

TEST(TransferTest, CouponScaleIsSixteenOnlyWhenTheCouponIsEnabled) {
    for (uint8_t enable : {0, 1}) {
        std::unique_ptr<UiDeviceCommon> d = Build("J7");
        d->SetCouponEnable(enable);
        d->SetCouponCopies(4);
        OemDevPayload p{};
        d->FillOEMDEVWithDeviceValues(p, 0);
        EXPECT_EQ(p.couponScale, enable != 0 ? 16 : 0);
        EXPECT_EQ(p.couponCopies, enable != 0 ? 4 : 0);
        EXPECT_EQ(p.couponCutInter, PRN_COP_CUTTER_TC);  // the export's, even while off
    }
}

TEST(TransferTest, PresentationTimeoutLoadsAsOneWithoutAPresenter) {
    for (const char* name : {"J7", "generic printer"}) {
        SCOPED_TRACE(name);
        OemDevPayload p = DefaultRecord(name);
        p.presentationMode = PRN_PROP_PRESENT_EJECT;
        p.presentationValue = 30;
        p.presentationTimeout = 20;
        std::unique_ptr<UiDeviceCommon> d = Build(name);
        Load(*d, p);
        EXPECT_EQ(d->GetPresentationMode(), 0);
        EXPECT_EQ(d->GetPresentationValue(), 0);
        EXPECT_EQ(d->GetPresentationTimeout(), 1);
    }
}

TEST(TransferTest, FreeBufferLinesDependOnModeAndContent) {
    struct Case {
        uint8_t mode;
        std::string bytes;
        std::vector<std::string> present;
        std::vector<std::string> absent;
    } cases[] = {
        {FREE_CMD_MODE_FILENAME, "", {}, {" Mode Filename", " Mode Buffer"}},
        {FREE_CMD_MODE_NONE, "AB", {" Mode FREE_CMD_MODE_NONE So do nothing"}, {" Mode Buffer"}},
        {FREE_CMD_MODE_FILENAME,
         "C:\\start.prn",
         {" Mode Filename", " File Path <C:\\start.prn>"},
         {" Mode Buffer"}},
        {FREE_CMD_MODE_SPACE, "AB%", {" Mode Buffer", " Buffer size 3 Bytes"}, {" Mode Filename"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(int(c.mode));
        SCOPED_TRACE(c.bytes);
        ScopedTestLog log(kLogDump, 1);
        UiDeviceCommon d("", "", "", "");
        d.SetStartJobBufferMode(c.mode);
        d.SetStartJobBuffer(std::vector<uint8_t>(c.bytes.begin(), c.bytes.end()));
        OemDevPayload p{};
        d.FillOEMDEVWithDeviceValues(p, 0);
        EXPECT_EQ(int{p.startJobBufferLength}, c.bytes.size());
        const std::vector<std::string> messages = log.Messages();
        for (const std::string& line : c.present) {
            EXPECT_TRUE(Contains(messages, line)) << line;
        }
        for (const std::string& line : c.absent) {
            EXPECT_FALSE(Contains(messages, line)) << line;
        }
        // The dump comes only with a raw buffer, right after its size line.
        auto size = std::find(messages.begin(), messages.end(), " Buffer size 3 Bytes");
        EXPECT_EQ(size != messages.end() && size + 1 != messages.end() && size[1] == "Buffer:",
                  Contains(messages, "Buffer:"));
    }
}

TEST(TransferTest, FreeBuffersAndTextsNeverPassTheirFields) {
    UiDeviceCommon d("", std::string(600, 's'), "", "");
    std::vector<uint8_t> big(700);
    for (size_t i = 0; i < big.size(); ++i) {
        big[i] = static_cast<uint8_t>(i * 7);
    }
    d.SetStartJobBufferMode(FREE_CMD_MODE_ASCII);
    d.SetStartJobBuffer(big);
    d.SetEndJobBufferMode(FREE_CMD_MODE_ASCII);
    d.SetEndJobBuffer(std::vector<uint8_t>(512, 0x41));
    const std::string longPath(300, 'p'), exact(256, 'e');
    d.SetWatermarkEnable(1);
    d.SetWatermarkPath(longPath);
    d.SetCouponEnable(1);
    d.SetCouponPath(exact);
    d.SetLogo(kLogoEndPage, LogoSettings{1, 1, 0, 0, "short"});
    OemDevPayload p{};
    std::memset(&p, 0xEE, sizeof(p));
    d.FillOEMDEVWithDeviceValues(p, 0);
    EXPECT_EQ(int{p.startJobBufferLength}, 512);
    EXPECT_EQ(Bytes(p.startJobBuffer, 512), Bytes(big.data(), 512));
    EXPECT_EQ(int{p.endJobBufferLength}, 512);
    EXPECT_EQ(int{p.offsetX}, 0);  // the field after the end buffer
    EXPECT_EQ(Bytes(p.secondaryName, 512), std::string(512, 's'));
    EXPECT_EQ(p.supCashDrawer, 0);  // the byte after the secondary name
    EXPECT_EQ(Bytes(p.watermarkPath, 256), longPath.substr(0, 256));
    EXPECT_EQ(p.reserved942, 0);
    EXPECT_EQ(Bytes(p.couponPath, 256), exact);  // fills the field: no terminator
    EXPECT_EQ(Bytes(p.logos[kLogoEndPage].path, 256), "short" + std::string(251, '\0'));

    // A length claiming more than the field, or a text without terminator, is read up to the
    // field only.
    p.startJobBufferLength = 0xFFFF;
    p.endJobBufferLength = 513;
    UiDeviceCommon back("", "", "", "");
    Load(back, p);
    EXPECT_EQ(back.GetStartJobBuffer().size(), 512u);
    EXPECT_EQ(back.GetEndJobBuffer(), std::vector<uint8_t>(512, 0x41));
    EXPECT_EQ(back.GetWatermarkPath(), longPath.substr(0, 256));
    EXPECT_EQ(back.GetCouponPath(), exact);
    EXPECT_EQ(back.GetLogo(kLogoEndPage).path, "short");
}

TEST(TransferTest, ResetWritesDefaultsPlusExportAndLoadsThem) {
    ScopedTestLog log(kLogDetail);
    std::unique_ptr<UiDeviceCommon> d = Build("ZLD90VII");
    SetBusyDocument(*d);
    OemDevPayload p{};
    std::memset(&p, 0x5A, sizeof(p));
    d->FillOEMDEVWithDeviceValues(p, 1);

    OemDevPayload expected{};
    d->ExportCapabilities(expected);
    std::memcpy(expected.modelName, "ZLD90VII", 8);
    std::memcpy(expected.secondaryName, "SECOND", 6);
    expected.cashDrawerTimeOn = 256;
    expected.cashDrawerTimeOff = 256;
    expected.watermarkDrawPosition = 1;
    expected.watermarkDrawType = 1;
    expected.watermarkVHPosition = 0x11;
    expected.reserved943 = 100;
    expected.watermarkBrightness = 100;
    expected.convThreshold = 128;
    expected.convFilterUp = 255;
    EXPECT_EQ(Bytes(&p, sizeof(p)), Bytes(&expected, sizeof(expected)));

    // The object now shows the model's defaults; nothing of the save was logged.
    EXPECT_EQ(d->GetHeadLed(), PRN_HLED_BLINK);
    EXPECT_EQ(d->GetContinuousMode(), PRN_PROP_CONTINUOUSMODE_AUTO);
    EXPECT_EQ(d->GetPage2PageEnable(), 0);
    EXPECT_EQ(d->GetWatermarkEnable(), 0);
    EXPECT_TRUE(d->GetStartJobBuffer().empty());
    EXPECT_FALSE(Contains(log.Messages(), "Saving UI Settings for UNI:"));
    EXPECT_TRUE(Contains(log.Messages(), "UI Settings From OEMDEV:"));
}

TEST(TransferTest, CashDrawerValuesTravelOnlyWhenEnabled) {
    std::unique_ptr<UiDeviceCommon> d = Build("J7");
    d->SetCashDrawerPins(PRN_PROP_CDPINS_PIN1AND2);
    d->SetCashDrawerTimeOn(40);
    d->SetCashDrawerPhase(PRN_PROP_CDPHASE_END_DOC);
    OemDevPayload p{};
    d->FillOEMDEVWithDeviceValues(p, 0);
    EXPECT_EQ(p.cashDrawerPins, 0);
    EXPECT_EQ(int{p.cashDrawerTimeOn}, 256);
    EXPECT_EQ(p.cashDrawerPhase, 0);

    // Loading a disabled drawer leaves the object's other drawer values as they were.
    p.cashDrawerPins = PRN_PROP_CDPINS_PIN1;
    Load(*d, p);
    EXPECT_EQ(d->GetCashDrawerPins(), PRN_PROP_CDPINS_PIN1AND2);
    EXPECT_EQ(d->GetCashDrawerTimeOn(), 40);
}

TEST(TransferTest, NothingIsFormattedBelowTheDetailLevel) {
    ScopedTestLog log(kLogInfo, 1);
    std::unique_ptr<UiDeviceCommon> d = Build("ZLD90VII");
    SetBusyDocument(*d);
    OemDevPayload p{};
    d->FillOEMDEVWithDeviceValues(p, 0);
    p.cutMode = 0xFF;
    std::string printer;
    d->FillUIDeviceValuesWithOEMDEV(printer, p);
    EXPECT_EQ(log.Text(), "");
}

}  // namespace
