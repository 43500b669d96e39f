// Tests of UiDeviceCommon's own rules: percentage steps, the generic device, logos.
#include <gtest/gtest.h>

#include <vector>

#include "settings/ui_device_common.h"

namespace {

TEST(UiDeviceTest, PercentStepsAreInverseOnTheEightSteps) {
    const int percents[] = {12, 25, 37, 50, 62, 75, 87, 100};
    for (int position = 0; position < 8; ++position) {
        SCOPED_TRACE(position);
        EXPECT_EQ(UiDeviceCommon::PercentFromPosition(position), percents[position]);
        EXPECT_EQ(UiDeviceCommon::PositionFromPercent(percents[position]), position);
    }
    for (int outside : {8, -1, 13, 0, 101}) {
        SCOPED_TRACE(outside);
        EXPECT_EQ(UiDeviceCommon::PercentFromPosition(outside), 12);
        EXPECT_EQ(UiDeviceCommon::PositionFromPercent(outside), 0);
    }
}

TEST(UiDeviceTest, GenericDeviceStartsAsAClearedRecordWouldLoad) {
    UiDeviceCommon device("Anything", "second", "third", "fourth");
    EXPECT_EQ(device.GetModelNumber(), 0);
    EXPECT_EQ(device.GetCapabilityFlag(kCapabilityFlagCount), 0);
    EXPECT_EQ(device.GetContinuousMode(), 1);
    EXPECT_EQ(device.GetPresentationTimeout(), 1);
    EXPECT_EQ(device.GetWatermarkBrightness(), 100);

    // Loading the record the generic device saves with reset leaves it as it started.
    UiDeviceCommon loaded("Anything", "second", "third", "fourth");
    loaded.SetDensity(0x30);
    loaded.SetContinuousMode(0x20);
    loaded.SetWatermarkBrightness(7);
    OemDevPayload payload{};
    loaded.FillOEMDEVWithDeviceValues(payload, 1);
    EXPECT_EQ(loaded.GetDensity(), device.GetDensity());
    EXPECT_EQ(loaded.GetContinuousMode(), device.GetContinuousMode());
    // The watermark is disabled in a cleared record, so its fields are not taken.
    EXPECT_EQ(loaded.GetWatermarkBrightness(), 7);
}

TEST(UiDeviceTest, LogoSlotsOutsideTheFourAreIgnored) {
    UiDeviceCommon device("", "", "", "");
    device.SetLogo(kLogoEndDoc, LogoSettings{1, 1, 1, 2, "C:\\logo.png"});
    device.SetLogo(kLogoCount, LogoSettings{1, 1, 1, 1, "never"});
    EXPECT_EQ(device.GetLogo(kLogoEndDoc).path, "C:\\logo.png");
    EXPECT_EQ(device.GetLogo(kLogoBeginDoc).enable, 0);
    EXPECT_EQ(device.GetLogo(kLogoCount).path, "");
}

}  // namespace
