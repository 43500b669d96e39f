// Tests of the Print page's rules: its view, the Type reactions and the read-back.
// page_checks).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "pages/print_rules.h"
#include "settings/ui_device_common.h"

namespace {

UiDeviceCommon Device(int mode, int threshold, int low, int high) {
    UiDeviceCommon device("TEST", "", "", "");
    device.SetQualityList({32, 16, 48});
    device.SetDensityList({80, 64, 99, 96});  // 99 has no label
    device.SetQuality(16);
    device.SetDensity(96);
    device.SetConvMode(static_cast<uint8_t>(mode));
    device.SetConvThreshold(static_cast<uint8_t>(threshold));
    device.SetConvFilterDown(static_cast<uint8_t>(low));
    device.SetConvFilterUp(static_cast<uint8_t>(high));
    return device;
}

TEST(PrintRules, ViewFollowsTheModelAndTheDitheringMode) {
    UiDeviceCommon device = Device(kDitherErrorDiffusion, 100, 40, 200);
    PrintPageView view = MakePrintPageView(device);
    // The combo is shorter than the list, and the selection is still the list position.
    EXPECT_EQ(view.density.labels, (LabelList{"0%", "-12%", "+12%"}));
    EXPECT_EQ(view.density.selection, 3);
    EXPECT_EQ(view.quality.selection, 1);
    EXPECT_EQ(view.dithering.selection, kDitherErrorDiffusion);
    EXPECT_EQ(std::pair(view.threshold.min, view.threshold.max), std::pair(1, 254));
    EXPECT_EQ(view.lowFilter.label, "15% (40/255)");
    EXPECT_TRUE(view.filtersEnabled);

    // A stored None opens with the filters at their ends, in the settings as well.
    device = Device(kDitherNone, 128, 40, 200);
    view = MakePrintPageView(device);
    EXPECT_EQ(std::pair(view.lowFilter.position, view.highFilter.position), std::pair(0, 255));
    EXPECT_EQ(device.GetConvFilterDown(), 0);
    EXPECT_EQ(device.GetConvFilterUp(), 255);
    EXPECT_FALSE(view.filtersEnabled);
}

TEST(PrintRules, OnlyTypeNoneDisablesAndResetsTheFilters) {
    for (int selection : {-1, 0, 1, 2, 3}) {  // out of range counts as Auto
        SCOPED_TRACE(selection);
        const DitherTypeChange change = OnDitherTypeChanged(selection);
        EXPECT_EQ(change.filtersEnabled, selection != kDitherNone);
        EXPECT_EQ(change.resetFilters, selection == kDitherNone);
    }
}

TEST(PrintRules, ControlsAreStoredThroughTheModelsLists) {
    UiDeviceCommon device = Device(0, 128, 0, 255);
    StorePrintControls(device, PrintControls{2, 0, 3, 100, 20, 300});
    EXPECT_EQ(device.GetQuality(), 48);
    EXPECT_EQ(device.GetDensity(), 80);
    EXPECT_EQ(device.GetConvMode(), kDitherAuto);  // a Type past the list is Auto
    EXPECT_EQ(device.GetConvThreshold(), 100);
    EXPECT_EQ(device.GetConvFilterDown(), 20);
    EXPECT_EQ(device.GetConvFilterUp(), 255);
    StorePrintControls(device, PrintControls{-1, 9, 1, 128, 0, 255});
    EXPECT_EQ(device.GetQuality() + device.GetDensity(), 0);
}

}  // namespace
