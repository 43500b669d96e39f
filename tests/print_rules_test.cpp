// Tests of the Print page's rules: its view, the Type reactions, the check and the read-back.
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

TEST(PrintRules, FiltersAgainstTheThreshold) {
    const char* kOrder = "The HIGH Filter must be a value > of the LOW Filter";
    const char* kLow = "The LOW Filter must be a value between 0 and the Threshold";
    const char* kHigh = "The HIGH Filter must be a value between the Threshold and 255";
    struct Case {
        int threshold, low, high;
        const char* message;  // null: passes
        const char* logLine;
    };
    const Case cases[] = {
        {128, 128, 129, nullptr, ""},
        {128, 128, 128, kOrder, "Dithering Filters are wrong : UP filter must be > of DOWN Filter"},
        {128, 129, 200, kLow, "Dithering Filter DOWN : value out of range (129  128)"},
        {128, -1, 200, kLow, "Dithering Filter DOWN : value out of range (-1  128)"},
        {128, 10, 127, kHigh, "Dithering Filter UP : value out of range (127  128)"},
        {128, 10, 256, kHigh, "Dithering Filter UP : value out of range (256  128)"},
        // Both filters wrong: the low filter is reported first.
        {128, 200, 100, kLow, "Dithering Filter DOWN : value out of range (200  128)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.threshold << " " << c.low << " " << c.high);
        auto failure = ValidatePrintControls(PrintControls{0, 0, 0, c.threshold, c.low, c.high});
        ASSERT_EQ(failure.has_value(), c.message != nullptr);
        if (failure) {
            EXPECT_EQ(failure->message, c.message);
            EXPECT_EQ(failure->logLine, c.logLine);
            EXPECT_EQ(failure->page, PageId::kPrint);
        }
    }
}

}  // namespace
