// Tests of the settings transfers: enforcement, round trips, bounds and the section log.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "fake_log_ports.h"
#include "golden_file.h"
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

std::string Bytes(const OemDevPayload& p) {
    return Bytes(&p, sizeof p);
}

// The record a fresh object of the model loads from, with its defaults.
OemDevPayload DefaultRecord(const std::string& model) {
    OemDevPayload p{};
    Build(model)->FillOEMDEVWithDeviceValues(p, 1);
    return p;
}

OemDevPayload Save(UiDeviceCommon& d) {
    OemDevPayload p{};
    d.FillOEMDEVWithDeviceValues(p, 0);
    return p;
}

std::vector<std::string> Load(UiDeviceCommon& d, const OemDevPayload& p) {
    ScopedTestLog log(kLogDetail);
    std::string printer = "Printer";
    d.FillUIDeviceValuesWithOEMDEV(printer, p);
    EXPECT_EQ(printer, "");
    return log.Messages();
}

// The lines of a load that say a stored value was not offered and what it became.
std::vector<std::string> Mapped(UiDeviceCommon& d, const OemDevPayload& p) {
    std::vector<std::string> lines = Load(d, p);
    std::erase_if(lines, [](const std::string& l) { return l.find("not offered") == l.npos; });
    return lines;
}

// Something non-default in every section: for each printer-specific setting a value that some
// model offers, and within what the record can hold.
void SetBusyDocument(UiDeviceCommon& d) {
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

// The log of a save of the object `setUp` prepares, and of loading that record back.
std::string SaveAndLoadLog(const std::string& model, void (*setUp)(UiDeviceCommon&)) {
    ScopedTestLog log(kLogDump, 1);
    std::unique_ptr<UiDeviceCommon> d = Build(model);
    setUp(*d);
    std::string printer = "Printer";
    Build(model)->FillUIDeviceValuesWithOEMDEV(printer, Save(*d));
    std::string text;
    for (const std::string& line : log.Bodies()) {
        text += line + '\n';
    }
    return text;
}

// Per model: what a busy document saves (the forced lines show what it does not support) and
// what loading makes of it (values it does not offer are mapped). The model's own defaults load
// without any mapping.
TEST(TransferTest, EveryModelSavesAndLoadsAsItsGoldenLogSays) {
    std::string all;
    for (const char* name : kAllModels) {
        SCOPED_TRACE(name);
        all += std::string("== ") + name + '\n' + SaveAndLoadLog(name, SetBusyDocument);
        EXPECT_TRUE(Mapped(*Build(name), DefaultRecord(name)).empty());
        // A reset writes the model's record whatever the object or the buffer held.
        std::unique_ptr<UiDeviceCommon> busy = Build(name);
        SetBusyDocument(*busy);
        OemDevPayload reset;
        std::memset(&reset, 0x5A, sizeof reset);
        busy->FillOEMDEVWithDeviceValues(reset, 1);
        EXPECT_EQ(Bytes(reset), Bytes(DefaultRecord(name)));
    }
    ExpectGoldenFile("transfer_models.log", all);
}

// A damaged body behind an intact header: what the model does not offer loads as its starting
// value, with one line (none below the detail level), and what is then saved loads without any;
// what it offers (the not-set value even where the list lacks it, the ends of a range) loads as
// stored. Random bodies through the pages' checks are the transfer fuzzer's.
TEST(TransferTest, LoadingMapsWhatTheModelDoesNotOffer) {
    struct Case {
        const char* what;
        const char* model;
        void (*damage)(OemDevPayload&);
        const char* line;  // null: offered
    };
    const Case cases[] = {
        {"cut mode 0xFF on a cutter model", "TRX418A CUT",
         [](OemDevPayload& p) { p.cutMode = 0xFF; },
         " Value <NOID> not offered, forced to <PRN_PROP_NO_CUT>"},
        {"page-to-page action", "ZLD90VII",
         [](OemDevPayload& p) {
             p.page2PageEnable = 1;
             p.page2PageAction = 0x40;
         },
         " Page2Page After TO <NOID> not offered, forced to <PRN_PROP_PAGE2PAGE_EJECT>"},
        {"filters that contradict the threshold", "J7",
         [](OemDevPayload& p) {
             p.convThreshold = 100;
             p.convFilterUp = 90;
             p.convFilterDown = 20;
         },
         " Threshold/Filter UP/Filter DOWN <100/90/20> not offered, forced to <128/255/0>"},
        {"not set, absent from the list", "VORTA5X",
         [](OemDevPayload& p) { p.blackMark = PRN_PROP_BMARK_NOTSETBYDRIVER; }, nullptr},
        {"a pulse past the Peripherals range", "J7",
         [](OemDevPayload& p) {
             p.cashDrawerEnable = 1;
             p.cashDrawerTimeOff = 513;
         },
         " Time OFF Value <513> not offered, forced to <256>"},
        {"no duration where the presenter mode uses one", "ZLD90VII",
         [](OemDevPayload& p) {
             p.presentationMode = PRN_PROP_PRESENT_PEJECT_TO;
             p.presentationTimeout = 0;
         },
         " TO Value <0> not offered, forced to <1>"},
        {"a path with a control byte", "J7",
         [](OemDevPayload& p) {
             p.couponEnable = 1;
             p.couponCopies = 15;
             std::memcpy(p.couponPath, "C:\\a\tb", 7);
         },
         " Path <C:\\a\\x09b> not offered, forced to <>"},
        {"a watermark place off the grid", "J7",
         [](OemDevPayload& p) {
             p.watermarkEnable = 1;
             p.watermarkVHPosition = 0x33;
         },
         " VH Position <NOID> not offered, forced to <WK_TOPLEFT>"},
        {"an offset past its range", "J7",
         [](OemDevPayload& p) {
             p.offsetX = -1001;
             p.offsetY = 5;
         },
         " Offset <X:-1001 Y:5> not offered, forced to <X:0 Y:5>"},
        {"values at the ends of their ranges", "J7",
         [](OemDevPayload& p) {
             p.offsetX = -1000;
             p.offsetY = 1000;
             p.convThreshold = 1;
             p.convFilterUp = 1;
             p.convFilterDown = 0;
             p.cashDrawerEnable = 1;
             p.cashDrawerTimeOn = 2;
             p.cashDrawerTimeOff = 512;
         },
         nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        OemDevPayload p = DefaultRecord(c.model);
        c.damage(p);
        {  // below the detail level a load writes nothing
            ScopedTestLog quiet(kLogInfo, 1);
            std::string printer;
            Build(c.model)->FillUIDeviceValuesWithOEMDEV(printer, p);
            EXPECT_EQ(quiet.Text(), "");
        }
        std::unique_ptr<UiDeviceCommon> d = Build(c.model);
        EXPECT_EQ(Mapped(*d, p), c.line != nullptr ? std::vector<std::string>{c.line}
                                                   : std::vector<std::string>{});
        EXPECT_TRUE(Mapped(*Build(c.model), Save(*d)).empty());
    }
}

// The record holds LF before cut in one byte, below 16: the page's value is cut to its byte, and
// a byte of 16 or more is saved, and loaded, as 0 with a line that names the uncut value.
TEST(TransferTest, LfBeforeCutIsBelowSixteenInTheRecord) {
    ScopedTestLog log(kLogDetail);
    for (int32_t page : {16, 256, 300}) {
        SCOPED_TRACE(page);
        log.Platform().file.clear();
        std::unique_ptr<UiDeviceCommon> d = Build("TRX430A");
        d->SetLfBeforeCut(page);
        EXPECT_EQ(Save(*d).lfBeforeCut, 0);
        EXPECT_EQ(Contains(log.Messages(), " forced to 0 because the value " +
                                               std::to_string(page) + " is over 16"),
                  page != 256);
    }
    OemDevPayload p = DefaultRecord("TRX430A");
    p.lfBeforeCut = 200;
    std::unique_ptr<UiDeviceCommon> d = Build("TRX430A");
    EXPECT_TRUE(Contains(Load(*d, p), " forced to 0 because the value 200 is over 16"));
    EXPECT_EQ(d->GetLfBeforeCut(), 0);
}

TEST(TransferTest, BrightnessIsMirroredAroundTwoHundred) {
    // A stored byte past 200 is no brightness the page offers: it loads as 100.
    const std::pair<int32_t, uint8_t> cases[] = {{0, 200}, {150, 50}, {201, 255}, {-55, 255}};
    for (const auto& [page, stored] : cases) {
        SCOPED_TRACE(page);
        UiDeviceCommon d("", "", "", "");
        d.SetWatermarkEnable(1);
        d.SetWatermarkBrightness(page);
        const OemDevPayload p = Save(d);
        EXPECT_EQ(p.watermarkBrightness, stored);
        UiDeviceCommon back("", "", "", "");
        Load(back, p);
        EXPECT_EQ(back.GetWatermarkBrightness(), stored <= 200 ? 200 - stored : 100);
    }
}

// A disabled drawer, watermark or coupon saves the record's defaults whatever the object holds;
// loading a disabled drawer leaves the object's other drawer values as they were.
TEST(TransferTest, DisabledOrAbsentFeaturesSaveAndLoadTheirDefaults) {
    std::unique_ptr<UiDeviceCommon> d = Build("J7");
    d->SetCashDrawerPins(PRN_PROP_CDPINS_PIN1AND2);
    d->SetCashDrawerTimeOn(40);
    d->SetCashDrawerPhase(PRN_PROP_CDPHASE_END_DOC);
    d->SetWatermarkBrightness(0);
    d->SetCouponCopies(4);
    d->SetCouponCutInter(PRN_COP_CUTTER_PC);
    OemDevPayload p = Save(*d);
    EXPECT_EQ(Bytes(p), Bytes(Save(*Build("J7"))));
    EXPECT_EQ(p.couponCutInter, PRN_COP_CUTTER_TC);  // the export's, even while off
    p.cashDrawerPins = PRN_PROP_CDPINS_PIN1;
    Load(*d, p);
    EXPECT_EQ(d->GetCashDrawerPins(), PRN_PROP_CDPINS_PIN1AND2);
    EXPECT_EQ(d->GetCashDrawerTimeOn(), 40);
    // Without a presenter the presentation loads as none, and its timeout as one.
    p.presentationMode = PRN_PROP_PRESENT_EJECT;
    p.presentationValue = 30;
    p.presentationTimeout = 20;
    Load(*d, p);
    EXPECT_EQ(d->GetPresentationMode(), 0);
    EXPECT_EQ(d->GetPresentationValue(), 0);
    EXPECT_EQ(d->GetPresentationTimeout(), 1);
}

// An empty file name logs no mode; any mode but none and file name is a raw buffer (the order of
// its lines and its dump are in the golden logs).
TEST(TransferTest, FreeBufferLinesDependOnModeAndContent) {
    for (const std::string bytes : {"", "AB%"}) {
        SCOPED_TRACE(bytes);
        ScopedTestLog log(kLogDump, 1);
        UiDeviceCommon d("", "", "", "");
        d.SetStartJobBufferMode(bytes.empty() ? FREE_CMD_MODE_FILENAME : FREE_CMD_MODE_SPACE);
        d.SetStartJobBuffer(std::vector<uint8_t>(bytes.begin(), bytes.end()));
        EXPECT_EQ(int{Save(d).startJobBufferLength}, bytes.size());
        const std::vector<std::string> m = log.Messages();
        EXPECT_FALSE(Contains(m, " Mode Filename"));
        EXPECT_EQ(Contains(m, " Buffer size 3 Bytes") && Contains(m, " Mode Buffer"),
                  !bytes.empty());
    }
}

TEST(TransferTest, FreeBuffersAndTextsNeverPassTheirFields) {
    UiDeviceCommon d("", std::string(600, 's'), "", "");
    std::vector<uint8_t> big(700);
    std::iota(big.begin(), big.end(), uint8_t{3});
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

    // A text without terminator is read up to the field only; a length claiming more than the
    // field loads as no command.
    p.endJobBufferLength = 513;
    UiDeviceCommon back("", "", "", "");
    Load(back, p);
    EXPECT_EQ(back.GetStartJobBuffer().size(), 512u);
    EXPECT_TRUE(back.GetEndJobBuffer().empty());
    EXPECT_EQ(back.GetWatermarkPath(), longPath.substr(0, 256));
    EXPECT_EQ(back.GetCouponPath(), exact);
}

}  // namespace
