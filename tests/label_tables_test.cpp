// Tests of the label tables: capability labels, value-to-index and position codes.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pages/label_tables.h"

namespace {

// Values between the listed ones have no text.
TEST(LabelTables, CapabilityValuesMapToTheirOwnTexts) {
    const char* const kNoLabel = "(no label)";
    struct Case {
        Capability capability;
        uint16_t value;
        const char* label;
    };
    const Case cases[] = {
        {Capability::ContinuousMode, 1, "Not set by Driver"},
        {Capability::Cutter, 17, "Tear Off end Job"},
        {Capability::Cutter, 144, kNoLabel},
        {Capability::Density, 144, "+50%"},
        {Capability::Density, 81, kNoLabel},
        {Capability::PageToPageAction, 0, kNoLabel},
        {Capability::PageToPageAction, 48, "Hold"},
        {Capability::Feeder, 1003, "Feeder 3"},
        {Capability::Feeder, 1004, kNoLabel},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(c.capability) << "/" << c.value);
        const char* label = CapabilityLabel(c.capability, c.value);
        EXPECT_STREQ(label != nullptr ? label : kNoLabel, c.label);
    }
}

TEST(LabelTables, CapabilityListsGiveOneLabelPerKnownValueInListOrder) {
    const std::vector<uint8_t> density{80, 16, 144};
    EXPECT_EQ(CapabilityLabels(Capability::Density, density), (LabelList{"0%", "-50%", "+50%"}));

    // An unknown value is skipped, so the combo is one item shorter than the list.
    const std::vector<uint8_t> withUnknown{0, 16, 99, 32};
    LabelList quality = CapabilityLabels(Capability::Quality, withUnknown);
    EXPECT_EQ(quality, (LabelList{"Not set by Driver", "High Quality", "Normal"}));
    EXPECT_EQ(quality.size() + 1, withUnknown.size());

    // The two hold modes stay two items with the same text.
    const std::vector<uint8_t> presenter{16, 32};
    EXPECT_EQ(CapabilityLabels(Capability::Presenter, presenter), (LabelList{"Hold", "Hold"}));

    const std::vector<uint16_t> feeder{1001, 1000, 7};
    EXPECT_EQ(CapabilityLabels(Capability::Feeder, feeder),
              (LabelList{"Feeder 1", "Autoselected feeder"}));

    EXPECT_TRUE(CapabilityLabels(Capability::Cutter, std::vector<uint8_t>{}).empty());
}

TEST(LabelTables, ValueToIndexTakesTheFirstMatchAndFallsBack) {
    const std::vector<uint8_t> list{0, 48, 32, 48};
    struct Case {
        uint8_t value;
        int index, presenterIndex;
    };
    const Case cases[] = {
        {0, 0, 0},
        {48, 1, 1},  // the first of two equal entries
        {32, 2, 2},
        {16, 0, -1},  // missing
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.value));
        EXPECT_EQ(ValueToIndex(list, c.value), c.index);
        EXPECT_EQ(PresenterValueToIndex(list, c.value), c.presenterIndex);
    }
    EXPECT_EQ(ValueToIndex(std::vector<uint8_t>{}, 0), 0);
    EXPECT_EQ(PresenterValueToIndex(std::vector<uint8_t>{}, 0), -1);

    const std::vector<uint16_t> feeder{0, 1000, 1002};
    EXPECT_EQ(ValueToIndex(feeder, uint16_t{1002}), 2);
    EXPECT_EQ(ValueToIndex(feeder, uint16_t{1003}), 0);
}

TEST(LabelTables, PositionCodesIndexTheNinePlaces) {
    struct Case {
        int code, index;
    };
    const Case cases[] = {
        {0x11, 0}, {0x21, 1}, {0x41, 2}, {0x12, 3}, {0x22, 4}, {0x42, 5},  {0x14, 6}, {0x24, 7},
        {0x44, 8}, {0x00, 0}, {0x31, 0}, {0x13, 0}, {0x88, 0}, {0x144, 0}, {-1, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.code);
        EXPECT_EQ(PositionCodeToIndex(c.code), c.index);
    }
    EXPECT_EQ(WatermarkPositionLabels()[PositionCodeToIndex(0x24)], "Bottom-Center");
}

TEST(LabelTables, ClampToFourKeepsOnlyTheFourEntries) {
    const int values[] = {-1, 0, 1, 2, 3, 4, 255};
    const int expected[] = {0, 0, 1, 2, 3, 0, 0};
    for (size_t i = 0; i < std::size(values); ++i) {
        SCOPED_TRACE(values[i]);
        EXPECT_EQ(ClampToFour(values[i]), expected[i]);
    }
}

}  // namespace
