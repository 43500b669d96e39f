// Tests of UiDeviceCommon's own rules: list lookups, percentage steps, range guard, logos, flags.
#include <gtest/gtest.h>

#include <vector>

#include "settings/ui_device_common.h"

namespace {

TEST(UiDeviceTest, ListLookupFindsTheFirstEqualEntryElseZero) {
    const std::vector<uint8_t> list = {0x80, 0x20, 0x40, 0x20, 0x11};
    struct Case {
        uint8_t value;
        size_t index;
    } cases[] = {{0x80, 0}, {0x20, 1}, {0x40, 2}, {0x11, 4}, {0x00, 0}, {0x30, 0}, {0xFF, 0}};
    for (const Case& c : cases) {
        SCOPED_TRACE(int(c.value));
        EXPECT_EQ(UiDeviceCommon::ListIndexOf(list, c.value), c.index);
    }
    EXPECT_EQ(UiDeviceCommon::ListIndexOf({}, 0x20), 0u);
    EXPECT_EQ(UiDeviceCommon::ListValueAt(list, 2), 0x40);
    EXPECT_EQ(UiDeviceCommon::ListValueAt(list, 4), 0x11);
    // Past the end (a combo box without selection) reads 0 rather than past the list.
    EXPECT_EQ(UiDeviceCommon::ListValueAt(list, 5), 0);
    EXPECT_EQ(UiDeviceCommon::ListValueAt(list, static_cast<size_t>(-1)), 0);
    EXPECT_EQ(UiDeviceCommon::ListValueAt({}, 0), 0);
}

TEST(UiDeviceTest, FeederLookupUsesSixteenBitValues) {
    const std::vector<uint16_t> feeders = {1000, 1001, 1002, 1003};
    EXPECT_EQ(UiDeviceCommon::FeederListIndexOf(feeders, 1002), 2u);
    EXPECT_EQ(UiDeviceCommon::FeederListIndexOf(feeders, 999), 0u);
    // 1002 and 234 share their low byte; a narrowed comparison would find it.
    EXPECT_EQ(UiDeviceCommon::FeederListIndexOf(feeders, 1002 - 768), 0u);
    EXPECT_EQ(UiDeviceCommon::FeederListIndexOf({}, 1000), 0u);
    EXPECT_EQ(UiDeviceCommon::FeederListValueAt(feeders, 3), 1003);
    EXPECT_EQ(UiDeviceCommon::FeederListValueAt(feeders, 4), 0);
}

TEST(UiDeviceTest, PercentStepsAreInverseOnTheEightSteps) {
    const int percents[] = {12, 25, 37, 50, 62, 75, 87, 100};
    for (int position = 0; position < 8; ++position) {
        SCOPED_TRACE(position);
        EXPECT_EQ(UiDeviceCommon::PercentFromPosition(position), percents[position]);
        EXPECT_EQ(UiDeviceCommon::PositionFromPercent(percents[position]), position);
    }
    for (int position : {8, 9, -1, 1000}) {
        EXPECT_EQ(UiDeviceCommon::PercentFromPosition(position), 12) << position;
    }
    for (int percent : {13, 0, 99, 101, -25, 24}) {
        EXPECT_EQ(UiDeviceCommon::PositionFromPercent(percent), 0) << percent;
    }
}

TEST(UiDeviceTest, RangeGuardKeepsValuesBelowThree) {
    EXPECT_EQ(UiDeviceCommon::BelowThreeOrZero(0), 0);
    EXPECT_EQ(UiDeviceCommon::BelowThreeOrZero(1), 1);
    EXPECT_EQ(UiDeviceCommon::BelowThreeOrZero(2), 2);
    EXPECT_EQ(UiDeviceCommon::BelowThreeOrZero(3), 0);
    EXPECT_EQ(UiDeviceCommon::BelowThreeOrZero(255), 0);
}

TEST(UiDeviceTest, GenericDeviceStartsAsAClearedRecordWouldLoad) {
    UiDeviceCommon device("Anything", "second", "third", "fourth");
    EXPECT_EQ(device.GetModelName(), "");
    EXPECT_EQ(device.GetBuiltModelName(), "Anything");
    EXPECT_EQ(device.GetModelNumber(), 0);
    for (size_t i = 0; i <= kCapabilityFlagCount; ++i) {
        EXPECT_EQ(device.GetCapabilityFlag(i), 0) << i;
    }
    EXPECT_EQ(device.GetContinuousMode(), 1);
    EXPECT_EQ(device.GetPresentationTimeout(), 1);
    EXPECT_EQ(device.GetWatermarkBrightness(), 100);
    EXPECT_EQ(device.GetWatermarkVHPosition(), 0x11);
    EXPECT_EQ(device.GetConvThreshold(), 128);
    EXPECT_EQ(device.GetConvFilterUp(), 255);
    EXPECT_TRUE(device.GetDensityList().empty());

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
    EXPECT_EQ(device.GetLogo(kLogoEndDoc).drawPosition, 2);
    EXPECT_EQ(device.GetLogo(kLogoBeginDoc).enable, 0);
    EXPECT_EQ(device.GetLogo(kLogoCount).enable, 0);
    EXPECT_EQ(device.GetLogo(kLogoCount).path, "");
}

}  // namespace
