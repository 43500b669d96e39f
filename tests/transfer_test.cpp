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

TEST(TransferTest, UnsupportedSettingsAreForcedAndSupportedOnesCarried) {
    for (const char* name : kAllModels) {
        SCOPED_TRACE(name);
        std::unique_ptr<UiDeviceCommon> d = Build(name);
        SetEverySupportableValue(*d);
        OemDevPayload p{};
        d->FillOEMDEVWithDeviceValues(p, 0);
        auto expect = [](uint8_t sup, int stored, int wanted, int forced, const char* what) {
            EXPECT_EQ(stored, sup != 0 ? wanted : forced) << what;
        };
        expect(p.supBuzzer, p.buzzer, PRN_PROP_BUZZER_END_DOC, 0, "buzzer");
        expect(p.supDensity, p.density, PRN_PROP_DENS_P12, 0, "density");
        expect(p.supQuality, p.quality, PRN_PROP_QUAL_HSPEED, 0, "quality");
        expect(p.supCutter, p.cutMode, PRN_PROP_CUTTER_TC_END_DOC, 0, "cut");
        expect(p.supRecovery, p.recovery, PRN_PROP_RECOVERY_NO, 0, "recovery");
        expect(p.supContinuousMode, p.continuousMode, PRN_PROP_CONTINUOUSMODE_ON_FEEDWAY, 1,
               "continuous");
        expect(p.supFeeder, p.feeder, PRN_PROP_FEEDER_2, 0, "feeder");
        expect(p.supSelector, p.selector, PRN_PROP_SELECTOR_TSTORE, 0, "selector");
        expect(p.supPresentation, p.presentationMode, PRN_PROP_PRESENT_EJECT, 0, "presentation");
        expect(p.supHeadLed, p.headLed, PRN_HLED_BLINK_FAST, 0, "head LED");
        expect(p.supBlackMark, p.blackMark, PRN_PROP_BMARK_EPAGE, 0, "black mark");
        expect(p.supPage2Page, p.page2PageEnable, 1, 0, "page to page");
        expect(p.supCashDrawer, p.cashDrawerPhase, PRN_PROP_CDPHASE_END_PAGE, 0, "phase");
        expect(p.supCashDrawer, p.cashDrawerEnable, 1, 0, "drawer");
        expect(p.supCashDrawer, p.cashDrawerPins, PRN_PROP_CDPINS_PIN2, 0, "pins");
        expect(p.supCashDrawer, p.cashDrawerTimeOn, 100, 256, "time on");
        if (p.supPresentation != 0) {
            EXPECT_EQ(p.presentationValue, 55);
            EXPECT_EQ(p.presentationTimeout, 66);
        }
        if (p.supPage2Page != 0) {
            EXPECT_EQ(p.page2PageAction, PRN_PROP_PAGE2PAGE_HOLD);
            EXPECT_EQ(int{p.page2PageTimeout}, 600);
            EXPECT_EQ(int{p.page2PageExtra}, PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_QUEUE);
            EXPECT_EQ(p.page2PageCheckPoint, PRN_PROP_PAGE2PAGE_CHECKTO_BEGINPAGE);
        } else {
            EXPECT_EQ(p.page2PageAction, 0);
            EXPECT_EQ(p.page2PageCheckPoint, 0);
        }

        // Loading the same values back forces on the object side.
        std::unique_ptr<UiDeviceCommon> back = Build(name);
        SetEverySupportableValue(*back);
        OemDevPayload all = p;
        all.cashDrawerEnable = 1;
        std::string printer = "Printer";
        back->FillUIDeviceValuesWithOEMDEV(printer, all);
        EXPECT_EQ(printer, "");
        EXPECT_EQ(back->GetBuzzer(), 0);
        EXPECT_EQ(back->GetSelector(), 0);
        EXPECT_EQ(back->GetContinuousMode(), p.supContinuousMode != 0
                                                 ? PRN_PROP_CONTINUOUSMODE_ON_FEEDWAY
                                                 : PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER);
        EXPECT_EQ(back->GetFeeder(), p.supFeeder != 0 ? PRN_PROP_FEEDER_2 : 0);
        EXPECT_EQ(back->GetHeadLed(), p.supHeadLed != 0 ? PRN_HLED_BLINK_FAST : 0);
        EXPECT_EQ(back->GetPage2PageEnable(), p.supPage2Page != 0 ? 1 : 0);
        if (p.supCashDrawer == 0) {
            EXPECT_EQ(back->GetCashDrawerEnable(), 0);
            EXPECT_EQ(back->GetCashDrawerPins(), 0);
            EXPECT_EQ(back->GetCashDrawerTimeOn(), 0);
            EXPECT_EQ(back->GetCashDrawerTimeOff(), 0);
            EXPECT_EQ(back->GetCashDrawerPhase(), 0);
        }
        if (p.supPresentation == 0) {
            EXPECT_EQ(back->GetPresentationMode(), 0);
            EXPECT_EQ(back->GetPresentationValue(), 0);
            EXPECT_EQ(back->GetPresentationTimeout(), 1);
        }
    }
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

TEST(TransferTest, RecordObjectRecordRoundTripsForEveryModel) {
    for (const char* name : kAllModels) {
        SCOPED_TRACE(name);
        std::unique_ptr<UiDeviceCommon> first = Build(name);
        SetBusyDocument(*first);
        OemDevPayload saved{};
        first->FillOEMDEVWithDeviceValues(saved, 0);

        std::unique_ptr<UiDeviceCommon> second = Build(name);
        std::string printer = "P";
        second->FillUIDeviceValuesWithOEMDEV(printer, saved);
        OemDevPayload again{};
        second->FillOEMDEVWithDeviceValues(again, 0);
        EXPECT_EQ(Bytes(&again, sizeof(again)), Bytes(&saved, sizeof(saved)));

        // Sections that every model carries.
        EXPECT_EQ(second->GetWatermarkPath(), "C:\\images\\mark.png");
        EXPECT_EQ(second->GetWatermarkBrightness(), 150);
        EXPECT_EQ(second->GetCouponPath(), "C:\\images\\coupon.bmp");
        EXPECT_EQ(second->GetCouponCutFinal(), PRN_COP_CUTTER_TEAROFF);
        EXPECT_EQ(second->GetLogo(kLogoEndDoc).path, "C:\\images\\thanks.png");
        EXPECT_EQ(second->GetLogo(kLogoBeginDoc).path, "5");
        EXPECT_EQ(second->GetOffsetX(), -12);
        EXPECT_EQ(second->GetReductionValue(), 75);
        EXPECT_EQ(second->GetConvFilterDown(), 20);
        EXPECT_EQ(second->GetEndJobBuffer(),
                  (std::vector<uint8_t>{0x1B, '@', 'A', 'B', 'C', '%', 0x0A}));
        EXPECT_EQ(second->GetLfBeforeCut(), 7);
        EXPECT_EQ(second->GetSkipWhitePages(), 1);
        EXPECT_EQ(second->GetWhiteTopCrop(), 0);
        EXPECT_EQ(std::string(saved.secondaryName), "SECOND");
    }
}

TEST(TransferTest, LfBeforeCutIsBelowSixteenInTheRecord) {
    ScopedTestLog log(kLogDetail);
    struct Case {
        int32_t page;
        uint8_t stored;
        bool forced;
    } cases[] = {{0, 0, false},  {15, 15, false}, {16, 0, true},
                 {255, 0, true}, {300, 0, true},  {256, 0, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.page);
        log.Platform().file.clear();
        std::unique_ptr<UiDeviceCommon> d = Build("TRX430A");
        d->SetLfBeforeCut(c.page);
        OemDevPayload p{};
        d->FillOEMDEVWithDeviceValues(p, 0);
        EXPECT_EQ(p.lfBeforeCut, c.stored);
        const std::string line =
            " forced to 0 because the value " + std::to_string(c.page) + " is over 16";
        EXPECT_EQ(Contains(log.Messages(), line), c.forced);
    }
    // Loading a record that holds 16 or more forces the object as well.
    log.Platform().file.clear();
    std::unique_ptr<UiDeviceCommon> d = Build("TRX430A");
    OemDevPayload p{};
    d->FillOEMDEVWithDeviceValues(p, 1);
    p.lfBeforeCut = 200;
    std::string printer;
    d->FillUIDeviceValuesWithOEMDEV(printer, p);
    EXPECT_EQ(d->GetLfBeforeCut(), 0);
    EXPECT_TRUE(Contains(log.Messages(), " forced to 0 because the value 200 is over 16"));
}

TEST(TransferTest, BrightnessIsMirroredAroundTwoHundred) {
    struct Case {
        int32_t page;
        uint8_t stored;
    } cases[] = {{100, 100}, {0, 200}, {150, 50}, {200, 0}, {201, 255}, {-55, 255}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.page);
        UiDeviceCommon d("", "", "", "");
        d.SetWatermarkEnable(1);
        d.SetWatermarkBrightness(c.page);
        OemDevPayload p{};
        d.FillOEMDEVWithDeviceValues(p, 0);
        EXPECT_EQ(p.watermarkBrightness, c.stored);
        UiDeviceCommon back("", "", "", "");
        std::string printer;
        back.FillUIDeviceValuesWithOEMDEV(printer, p);
        EXPECT_EQ(back.GetWatermarkBrightness(), 200 - c.stored);
    }
    // A disabled watermark keeps the record's default brightness.
    UiDeviceCommon off("", "", "", "");
    off.SetWatermarkBrightness(0);
    OemDevPayload p{};
    off.FillOEMDEVWithDeviceValues(p, 0);
    EXPECT_EQ(p.watermarkBrightness, 100);
    EXPECT_EQ(p.reserved942, 0);
    EXPECT_EQ(p.reserved943, 100);
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
        // The export's cut modes stay in place while the coupon is off.
        EXPECT_EQ(p.couponCutInter, PRN_COP_CUTTER_TC);
    }
}

TEST(TransferTest, PresentationTimeoutLoadsAsOneWithoutAPresenter) {
    for (const char* name : {"J7", "TRX430A", "generic printer"}) {
        SCOPED_TRACE(name);
        std::unique_ptr<UiDeviceCommon> d = Build(name);
        OemDevPayload p{};
        d->FillOEMDEVWithDeviceValues(p, 1);
        p.presentationMode = PRN_PROP_PRESENT_EJECT;
        p.presentationValue = 30;
        p.presentationTimeout = 20;
        std::string printer;
        d->FillUIDeviceValuesWithOEMDEV(printer, p);
        EXPECT_EQ(d->GetPresentationMode(), 0);
        EXPECT_EQ(d->GetPresentationValue(), 0);
        EXPECT_EQ(d->GetPresentationTimeout(), 1);
    }
    std::unique_ptr<UiDeviceCommon> zld = Build("ZLD90VII");
    OemDevPayload p{};
    zld->FillOEMDEVWithDeviceValues(p, 1);
    EXPECT_EQ(zld->GetPresentationMode(), PRN_PROP_PRESENT_HOLD_VALUE);
    EXPECT_EQ(zld->GetPresentationValue(), 40);
    EXPECT_EQ(zld->GetPresentationTimeout(), 10);
}

TEST(TransferTest, FreeBufferLinesDependOnModeAndContent) {
    struct Case {
        uint8_t mode;
        std::string bytes;
        std::vector<std::string> present;
        std::vector<std::string> absent;
    } cases[] = {
        {FREE_CMD_MODE_FILENAME, "", {}, {" Mode Filename", " Mode Buffer"}},
        {FREE_CMD_MODE_ZAP, "", {}, {" Mode Filename", " Mode Buffer"}},
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
        EXPECT_EQ(p.startJobBufferMode, c.mode);
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
        if (size != messages.end()) {
            ASSERT_NE(size + 1, messages.end());
            EXPECT_EQ(size[1], "Buffer:");
        } else {
            EXPECT_FALSE(Contains(messages, "Buffer:"));
        }
    }
}

TEST(TransferTest, FreeBuffersNeverPassTheirField) {
    // Saving more than the field holds stores the first 512 bytes and says so in the length.
    UiDeviceCommon d("", "", "", "");
    std::vector<uint8_t> big(700);
    for (size_t i = 0; i < big.size(); ++i) {
        big[i] = static_cast<uint8_t>(i * 7);
    }
    d.SetStartJobBufferMode(FREE_CMD_MODE_ASCII);
    d.SetStartJobBuffer(big);
    d.SetEndJobBufferMode(FREE_CMD_MODE_ASCII);
    d.SetEndJobBuffer(std::vector<uint8_t>(512, 0x41));
    OemDevPayload p{};
    std::memset(&p, 0xEE, sizeof(p));
    d.FillOEMDEVWithDeviceValues(p, 0);
    EXPECT_EQ(int{p.startJobBufferLength}, 512);
    EXPECT_EQ(Bytes(p.startJobBuffer, 512), Bytes(big.data(), 512));
    EXPECT_EQ(int{p.endJobBufferLength}, 512);
    EXPECT_EQ(int{p.offsetX}, 0);  // the field after the end buffer is untouched by it

    // A record whose length claims more than the field is read up to the field only.
    p.startJobBufferLength = 0xFFFF;
    p.endJobBufferLength = 513;
    UiDeviceCommon back("", "", "", "");
    std::string printer;
    back.FillUIDeviceValuesWithOEMDEV(printer, p);
    EXPECT_EQ(back.GetStartJobBuffer().size(), 512u);
    EXPECT_EQ(back.GetEndJobBuffer(), std::vector<uint8_t>(512, 0x41));
}

TEST(TransferTest, TextsAreBoundedByTheirFieldsBothWays) {
    const std::string longPath(300, 'p');
    const std::string exact(256, 'e');
    UiDeviceCommon d("", std::string(600, 's'), "", "");
    d.SetWatermarkEnable(1);
    d.SetWatermarkPath(longPath);
    d.SetCouponEnable(1);
    d.SetCouponPath(exact);
    d.SetLogo(kLogoBeginPage, LogoSettings{1, 1, 0, 0, longPath});
    d.SetLogo(kLogoEndPage, LogoSettings{1, 1, 0, 0, "short"});
    OemDevPayload p{};
    std::memset(&p, 0xEE, sizeof(p));
    d.FillOEMDEVWithDeviceValues(p, 0);
    EXPECT_EQ(Bytes(p.secondaryName, 512), std::string(512, 's'));
    EXPECT_EQ(p.supCashDrawer, 0);  // the byte after the secondary name
    EXPECT_EQ(Bytes(p.watermarkPath, 256), longPath.substr(0, 256));
    EXPECT_EQ(p.reserved942, 0);
    EXPECT_EQ(Bytes(p.couponPath, 256), exact);  // fills the field: no terminator
    EXPECT_EQ(Bytes(p.logos[kLogoBeginPage].path, 256), longPath.substr(0, 256));
    EXPECT_EQ(p.logos[kLogoEndPage].enable, 1);
    EXPECT_EQ(Bytes(p.logos[kLogoEndPage].path, 6), std::string("short\0", 6));
    // The rest of a shorter text's field is zero-filled.
    EXPECT_EQ(Bytes(p.logos[kLogoEndPage].path + 5, 251), std::string(251, '\0'));

    UiDeviceCommon back("", "", "", "");
    std::string printer;
    back.FillUIDeviceValuesWithOEMDEV(printer, p);
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
    EXPECT_EQ(d->GetDensity(), PRN_PROP_DENS_NORMAL);
    EXPECT_EQ(d->GetCutMode(), PRN_PROP_CUTTER_TC_END_PAGE);
    EXPECT_EQ(d->GetHeadLed(), PRN_HLED_BLINK);
    EXPECT_EQ(d->GetContinuousMode(), PRN_PROP_CONTINUOUSMODE_AUTO);
    EXPECT_EQ(d->GetPage2PageEnable(), 0);
    EXPECT_EQ(d->GetLfBeforeCut(), 0);
    EXPECT_EQ(d->GetWatermarkEnable(), 0);
    EXPECT_EQ(d->GetOffsetX(), 0);
    EXPECT_EQ(d->GetStartJobBufferMode(), FREE_CMD_MODE_NONE);
    EXPECT_TRUE(d->GetStartJobBuffer().empty());
    const std::vector<std::string> messages = log.Messages();
    EXPECT_FALSE(Contains(messages, "Saving UI Settings for UNI:"));
    EXPECT_TRUE(Contains(messages, "UI Settings From OEMDEV:"));
}

TEST(TransferTest, CashDrawerValuesTravelOnlyWhenEnabled) {
    std::unique_ptr<UiDeviceCommon> d = Build("J7");
    d->SetCashDrawerEnable(0);
    d->SetCashDrawerPins(PRN_PROP_CDPINS_PIN1AND2);
    d->SetCashDrawerTimeOn(40);
    d->SetCashDrawerPhase(PRN_PROP_CDPHASE_END_DOC);
    OemDevPayload p{};
    d->FillOEMDEVWithDeviceValues(p, 0);
    EXPECT_EQ(p.cashDrawerEnable, 0);
    EXPECT_EQ(p.cashDrawerPins, 0);
    EXPECT_EQ(int{p.cashDrawerTimeOn}, 256);
    EXPECT_EQ(p.cashDrawerPhase, 0);

    // Loading a disabled drawer leaves the object's other drawer values as they were.
    p.cashDrawerPins = PRN_PROP_CDPINS_PIN1;
    std::string printer;
    d->FillUIDeviceValuesWithOEMDEV(printer, p);
    EXPECT_EQ(d->GetCashDrawerPins(), PRN_PROP_CDPINS_PIN1AND2);
    EXPECT_EQ(d->GetCashDrawerTimeOn(), 40);

    ScopedTestLog log(kLogDetail);
    d->SetCashDrawerEnable(1);
    d->SetCashDrawerTimeOff(512);
    d->FillOEMDEVWithDeviceValues(p, 0);
    EXPECT_EQ(p.cashDrawerPins, PRN_PROP_CDPINS_PIN1AND2);
    EXPECT_EQ(int{p.cashDrawerTimeOff}, 512);
    const std::vector<std::string> messages = log.Messages();
    auto head = std::find(messages.begin(), messages.end(), "++++++ Cash Drawer ++++++");
    ASSERT_LT(head + 5, messages.end());
    EXPECT_EQ(std::vector<std::string>(head + 1, head + 6),
              (std::vector<std::string>{" Cash Drawer Enable <1>",
                                        " Pins Value <PRN_PROP_CDPINS_PIN1AND2>",
                                        " Time ON Value 40ms", " Time OFF Value 512ms",
                                        " Phase Value <PRN_PROP_CDPHASE_END_DOC>"}));
}

// The whole log of a save and a load compared with a checked-in file. Set
// KIV_WRITE_EXPECTED_LOGS=1 to rewrite the files after a deliberate change.
void CompareWithExpectedLog(const std::string& model, const std::string& fileName,
                            void (*setUp)(UiDeviceCommon&)) {
    ScopedTestLog log(kLogDump, 1);
    std::unique_ptr<UiDeviceCommon> d = Build(model);
    setUp(*d);
    OemDevPayload p{};
    d->FillOEMDEVWithDeviceValues(p, 0);
    std::unique_ptr<UiDeviceCommon> back = Build(model);
    std::string printer = "Printer";
    back->FillUIDeviceValuesWithOEMDEV(printer, p);
    const std::vector<std::string> actual = log.Bodies();

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
        SCOPED_TRACE("line " + std::to_string(i + 1));
        ASSERT_LT(i, actual.size());
        ASSERT_LT(i, expected.size());
        EXPECT_EQ(actual[i], expected[i]);
    }
}

TEST(TransferTest, LogOfASaveAndALoadOnAModelWithManyFeatures) {
    CompareWithExpectedLog("ZLD90VII", "transfer_zld90vii.log", [](UiDeviceCommon& d) {
        SetBusyDocument(d);
        d.SetLfBeforeCut(16);
        d.SetPresentationMode(PRN_PROP_PRESENT_HOLD_MAX);
    });
}

TEST(TransferTest, LogOfASaveAndALoadOnAModelWithFewFeatures) {
    CompareWithExpectedLog("TRX430A", "transfer_trx430a.log", [](UiDeviceCommon& d) {
        d.SetDensity(PRN_PROP_DENS_M25);
        d.SetCutMode(PRN_PROP_NO_CUT);
        d.SetLfBeforeCut(3);
        d.SetFeeder(PRN_PROP_FEEDER_1);
    });
}

TEST(TransferTest, NothingIsFormattedBelowTheDetailLevel) {
    ScopedTestLog log(kLogInfo, 1);
    std::unique_ptr<UiDeviceCommon> d = Build("ZLD90VII");
    SetBusyDocument(*d);
    OemDevPayload p{};
    d->FillOEMDEVWithDeviceValues(p, 0);
    std::string printer;
    d->FillUIDeviceValuesWithOEMDEV(printer, p);
    EXPECT_EQ(log.Text(), "");
}

}  // namespace
