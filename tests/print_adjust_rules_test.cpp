// Tests of the Print adjust page's rules: its view, the offset check and the read-back.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "pages/print_adjust_rules.h"
#include "settings/ui_device_common.h"

namespace {

TEST(PrintAdjustRules, ViewShowsOffsetsChecksAndScale) {
    UiDeviceCommon device("TEST", "", "", "");
    device.SetOffsetX(-250);
    device.SetOffsetY(1000);
    device.SetWhiteTopCrop(1);
    device.SetRotate180(7);
    device.SetReductionEnable(1);
    device.SetReductionValue(62);
    const PrintAdjustControls shown = MakePrintAdjustView(device).controls;
    EXPECT_EQ(shown.offsetXText + " " + shown.offsetYText, "-250 1000");
    EXPECT_EQ(std::vector<bool>({shown.whiteTopCrop, shown.whiteBottomCrop, shown.skipWhitePages,
                                 shown.rotate180, shown.reductionChecked}),
              std::vector<bool>({true, false, false, true, true}));
    EXPECT_EQ(shown.scaleSelection, 4);
    device.SetReductionValue(13);  // not a step: the first entry
    EXPECT_EQ(MakePrintAdjustView(device).controls.scaleSelection, 0);
}

TEST(PrintAdjustRules, ControlsAreStoredAndAnUncheckedReductionKeepsItsStep) {
    UiDeviceCommon device("TEST", "", "", "");
    device.SetReductionValue(75);
    PrintAdjustControls controls{"-1000", "+35", true, false, true, false, false, 0};
    StorePrintAdjustControls(device, controls);
    EXPECT_EQ(device.GetOffsetX(), -1000);
    EXPECT_EQ(device.GetOffsetY(), 35);
    EXPECT_EQ(std::vector<int>({device.GetWhiteTopCrop(), device.GetWhiteBottomCrop(),
                                device.GetSkipWhitePages(), device.GetRotate180(),
                                device.GetReductionEnable(), device.GetReductionValue()}),
              std::vector<int>({1, 0, 1, 0, 0, 75}));
    controls.reductionChecked = true;
    controls.scaleSelection = 7;
    StorePrintAdjustControls(device, controls);
    EXPECT_EQ(device.GetReductionValue(), 100);
}

TEST(PrintAdjustRules, OffsetsMustBeIntegersWithinTheRange) {
    const char* kRange = "The Offset must be a value between -1000 and 1000";
    const char* kInteger = "The Offset value is not a integer";
    struct Case {
        std::string x, y;
        const char* message;  // null: passes
        std::string logLine;
    };
    const Case cases[] = {
        {"-1000", "1000", nullptr, ""},
        {"+7", "007", nullptr, ""},
        {"00000000100", "0", nullptr, ""},  // the edit hands back 8 characters: "00000000"
        {"1001", "0", kRange, "Offset X : value out of range (1001  -1000/1000)"},
        {"0", "-1001", kRange, "Offset Y : value out of range (-1001  -1000/1000)"},
        {"123456789", "0", kRange, "Offset X : value out of range (12345678  -1000/1000)"},
        {"12a", "0", kInteger, "Offset X: the number isn't a integer <12a>"},
        {"--5", "0", kInteger, "Offset X: the number isn't a integer <--5>"},
        {"0", "", kInteger, "Offset Y: the number isn't a integer <>"},
        {" 5", "0", kInteger, "Offset X: the number isn't a integer < 5>"},
        {std::string("12\0", 3), "0", kInteger, "Offset X: the number isn't a integer <12>"},
        // X fails its range before Y's text is looked at.
        {"5000", "abc", kRange, "Offset X : value out of range (5000  -1000/1000)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.x + " / " + c.y);
        auto failure = ValidatePrintAdjustControls(
            PrintAdjustControls{c.x, c.y, false, false, false, false, false, 0});
        ASSERT_EQ(failure.has_value(), c.message != nullptr);
        if (failure) {
            EXPECT_EQ(failure->message, c.message);
            EXPECT_EQ(failure->logLine, c.logLine);
            EXPECT_EQ(failure->page, PageId::kPrintAdjust);
        }
    }
}

}  // namespace
