// Tests of the Print adjust page's rules: its view and the read-back.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "pages/print_adjust_rules.h"
#include "settings/ui_device_common.h"

namespace {

// What the view shows of a loaded record is the transfer fuzzer's check: it stores the view
// back and requires the same record. A byte other than 0 or 1 never survives loading, so the
// fuzzer cannot show this one.
TEST(PrintAdjustRules, ViewShowsAnyNonZeroByteAsChecked) {
    UiDeviceCommon device("TEST", "", "", "");
    device.SetRotate180(7);
    EXPECT_TRUE(MakePrintAdjustView(device).controls.rotate180);
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
