// Tests of the Print adjust page's rules: its view and the read-back.
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

}  // namespace
