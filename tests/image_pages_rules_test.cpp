// Tests of the Watermark, Coupon and Logos pages' rules: what the pages show, what they keep,
// the logo slots' checks and what a print preview asks the rendering module for.
#include <gtest/gtest.h>

#include "pages/coupon_rules.h"
#include "pages/logos_rules.h"
#include "pages/watermark_rules.h"
#include "settings/setting_enums.h"
#include "settings/ui_device_common.h"

namespace {

const FileExists kOnlyLogoExists = [](const std::string& path) { return path == "C:\\logo.bmp"; };

TEST(ImagePagesRules, WatermarkShowsKeepsAndAsksForWhatTheRecordHolds) {
    UiDeviceCommon device("TEST", "", "", "");
    device.SetWatermarkDrawPosition(7);  // no layer: "Over"
    device.SetWatermarkDrawType(2);
    device.SetWatermarkVHPosition(0x42);
    device.SetWatermarkBrightness(250);
    WatermarkPageView view = MakeWatermarkPageView(device);
    EXPECT_EQ(view.layer.selection, 0);
    EXPECT_EQ(view.fit.labels[static_cast<size_t>(view.fit.selection)], "Tile");
    EXPECT_EQ(view.position.labels[static_cast<size_t>(view.position.selection)], "Center-Right");
    EXPECT_EQ(view.brightness.position, kBrightnessMax);
    EXPECT_EQ(view.brightness.label, "200%");

    // Every place index stores the code that shows it again; past the list is top left.
    for (int index = 0; index < 9; ++index) {
        StoreWatermarkControls(device, {true, "C:\\logo.bmp", 1, 5, index, false, 40});
        EXPECT_EQ(MakeWatermarkPageView(device).position.selection, index);
    }
    EXPECT_EQ(PositionIndexToCode(9), 0x11);
    EXPECT_EQ(device.GetWatermarkDrawType(), 0);  // fit 5 is no fit
    EXPECT_EQ(device.GetWatermarkBrightness(), 40);

    const WatermarkControls shown{true, "C:\\logo.bmp", 1, 3, 4, false, 40};
    const UniWatermarkRequest request = WatermarkPreviewRequest(shown, {576, 1200, 7});
    EXPECT_EQ(request.place, 0x22);
    EXPECT_EQ(request.brightness, 100u);  // the box unchecked: the image as it is
    EXPECT_EQ(request.paperLengthDots, 1200u);
    WatermarkControls bright = shown;
    bright.brightnessEnabled = true;
    EXPECT_EQ(WatermarkPreviewRequest(bright, {}).brightness, 40u);
}

TEST(ImagePagesRules, CouponCutsFollowTheCutterAndCopiesCountFromOne) {
    struct Case {
        std::vector<uint8_t> cutter;
        std::vector<uint8_t> coupon;
    };
    const Case cases[] = {
        {{}, {PRN_COP_CUTTER_NONE, PRN_COP_CUTTER_TEAROFF}},
        {{PRN_PROP_CUTTER_TEAROFF_END_PAGE}, {PRN_COP_CUTTER_NONE, PRN_COP_CUTTER_TEAROFF}},
        {{PRN_PROP_CUTTER_PC_END_JOB, PRN_PROP_CUTTER_TC_END_DOC},
         {PRN_COP_CUTTER_NONE, PRN_COP_CUTTER_TC, PRN_COP_CUTTER_PC}},
    };
    UiDeviceCommon device("TEST", "", "", "");
    for (const Case& c : cases) {
        device.SetCutModeList(c.cutter);
        EXPECT_EQ(CouponCutValues(device), c.coupon);
    }
    // A stored cut the model cannot make shows "No Cut"; the copies list starts at "1".
    device.SetCouponCutInter(PRN_COP_CUTTER_TEAROFF);
    device.SetCouponCutFinal(PRN_COP_CUTTER_PC);
    device.SetCouponCopies(0);
    CouponPageView view = MakeCouponPageView(device);
    EXPECT_EQ(view.cutBetween.selection, 0);
    EXPECT_EQ(view.cutLast.labels[static_cast<size_t>(view.cutLast.selection)], "Partial Cut");
    EXPECT_EQ(view.copies.selection, 0);

    StoreCouponControls(device, {true, "C:\\c.png", 2, 1, 14, 1, 9});
    EXPECT_EQ(device.GetCouponCopies(), 15);
    EXPECT_EQ(device.GetCouponCutInter(), PRN_COP_CUTTER_TC);
    EXPECT_EQ(device.GetCouponCutFinal(), PRN_COP_CUTTER_NONE);  // no such item
    EXPECT_EQ(device.GetCouponDrawPosition(), 2);
    view = MakeCouponPageView(device);
    EXPECT_EQ(view.copies.selection, 14);
    EXPECT_EQ(view.path, "C:\\c.png");
}

TEST(ImagePagesRules, LogoSlotsReadBackTheirSourceAndAreCheckedInSlotOrder) {
    // A printer-memory logo keeps its number as text; a file logo its path.
    const LogoSettings memory = ReadLogoSlot({true, 0, 4, "C:\\typed.bmp", 1, 2});
    EXPECT_EQ(memory.path, "5");
    const LogoSlotView shown = MakeLogoSlotView(memory);
    EXPECT_EQ(shown.number.selection, 4);
    EXPECT_EQ(shown.path, "");
    EXPECT_EQ(shown.align.selection, 2);
    EXPECT_EQ(MakeLogoSlotView(ReadLogoSlot({true, 1, 4, "C:\\logo.bmp", 0, 0})).path,
              "C:\\logo.bmp");
    EXPECT_EQ(MakeLogoSlotView({1, 0, 0, 0, "99"}).number.selection, 0);
    const LogoSlotStates states = LogoControlStates(true, kLogoFromFile);
    EXPECT_TRUE(states.file && !states.number);

    const LogoPreview nvram = LogoPreviewRequest({true, 0, 2, "", 0, 1}, {576, 0, 3});
    EXPECT_TRUE(nvram.fromMemory);
    EXPECT_EQ(nvram.number, 3u);
    EXPECT_EQ(nvram.file.position, 1);

    UiDeviceCommon device("TEST", "", "", "");
    device.SetLogo(kLogoBeginDoc, {1, kLogoFromFile, 0, 0, "C:\\gone.bmp"});
    device.SetLogo(kLogoBeginPage, {1, kLogoFromMemory, 0, 0, ""});
    device.SetLogo(kLogoEndPage, {1, kLogoFromFile, 0, 0, ""});
    device.SetLogo(kLogoEndDoc, {1, kLogoFromFile, 0, 0, "C:\\gone.bmp"});
    const ValidationFindings found = ValidateLogoSlots(device, kOnlyLogoExists);
    ASSERT_EQ(found.size(), 2u);  // the failure ends the check before the last slot
    EXPECT_TRUE(found[0].question);
    EXPECT_EQ(found[0].logLine, "Begin Doc Logo : path doesn't exists <C:\\gone.bmp>");
    EXPECT_FALSE(found[1].question);
    EXPECT_EQ(found[1].logLine, "End Page Logo : text empty");
    EXPECT_EQ(found[1].message, "The path of the logo image file is wrong or empty");
}

}  // namespace
