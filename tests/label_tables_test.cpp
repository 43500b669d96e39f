// Tests of the label tables: fixed lists, capability labels, value-to-index and position codes.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pages/label_tables.h"

namespace {

TEST(LabelTables, FixedListsHoldTheirTextsInOrder) {
    struct Case {
        const char* name;
        const LabelList& labels;
        LabelList expected;
    };
    const Case cases[] = {
        {"BuzzerPhase", BuzzerPhaseLabels(), {"Begin Document", "End Document"}},
        {"CashDrawerPhase",
         CashDrawerPhaseLabels(),
         {"Begin Document", "End Document", "End Page"}},
        {"CashDrawerPin",
         CashDrawerPinLabels(),
         {"Cash Drawer 1", "Cash Drawer 2", "Cash Drawer 1 and 2"}},
        {"ConsoleSource",
         ConsoleCommandSourceLabels(),
         {"None", "File", "Text(ABC) or Hex(\\x0A)"}},
        {"DocumentEnd", DocumentEndLabels(), {"End Page", "End Document"}},
        {"CouponAlign", CouponAlignLabels(), {"Left", "Center", "Right"}},
        {"CouponSize", CouponSizeLabels(), {"Keep", "Zoom"}},
        {"Dithering", DitheringLabels(), {"Auto", "None", "Error Diffusion"}},
        {"LogoPhase",
         LogoPhaseLabels(),
         {"Begin Document", "Begin Page", "End Page", "End Document"}},
        {"LogoAlign", LogoAlignLabels(), {"Left", "Center", "Right"}},
        {"LogoSize", LogoSizeLabels(), {"Keep", "Zoom"}},
        {"LogoSource", LogoSourceLabels(), {"Internal NVRAM", "File"}},
        {"AfterTimeout",
         AfterTimeoutLabels(),
         {"Keep Printing", "Clean current document", "Clean entire queue"}},
        {"PageToPageMode", PageToPageTimeoutModeLabels(), {"Presentation timeout", "Unlimited"}},
        {"Scale", ScaleLabels(), {"12%", "25%", "37%", "50%", "62%", "75%", "87%", "100%"}},
        {"WatermarkLayer", WatermarkLayerLabels(), {"Over", "Under"}},
        {"WatermarkFit", WatermarkFitLabels(), {"Keep", "Strech", "Tile", "Tile Column"}},
        {"WatermarkPosition",
         WatermarkPositionLabels(),
         {"Top-Left", "Top-Center", "Top-Right", "Center-Left", "Center-Center", "Center-Right",
          "Bottom-Left", "Bottom-Center", "Bottom-Right"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.labels, c.expected);
    }
}

TEST(LabelTables, NumberedListsCountFromTheirFirstNumber) {
    for (const LabelList* list : {&CouponCopiesLabels(), &LogoNumberLabels()}) {
        ASSERT_EQ(list->size(), 15u);
        EXPECT_EQ(list->front(), "1");
        EXPECT_EQ(list->back(), "15");
    }
    ASSERT_EQ(CutMoveCountLabels().size(), 16u);
    EXPECT_EQ(CutMoveCountLabels().front(), "0");
    EXPECT_EQ(CutMoveCountLabels()[10], "10");
    EXPECT_EQ(CutMoveCountLabels().back(), "15");
}

TEST(LabelTables, CapabilityValuesMapToTheirOwnTexts) {
    struct Case {
        Capability capability;
        uint16_t value;
        const char* label;  // null: no label
    };
    const Case cases[] = {
        {Capability::BlackMark, 0, "Not set by Driver"},
        {Capability::BlackMark, 64, "Begin Page and End Page"},
        {Capability::ContinuousMode, 0, "Automatic"},
        {Capability::ContinuousMode, 1, "Not set by Driver"},
        {Capability::ContinuousMode, 32, "Feedaway"},
        {Capability::Cutter, 16, "Tear Off end Page"},
        {Capability::Cutter, 17, "Tear Off end Job"},
        {Capability::Cutter, 80, "Partial Cut end Document"},
        {Capability::Cutter, 128, "No Cut"},
        {Capability::Cutter, 144, nullptr},
        {Capability::Recovery, 64, "Recovery start page"},
        {Capability::Density, 16, "-50%"},
        {Capability::Density, 80, "0%"},
        {Capability::Density, 144, "+50%"},
        {Capability::Density, 81, nullptr},
        {Capability::Quality, 64, "Very High Speed"},
        {Capability::Presenter, 16, "Hold"},
        {Capability::Presenter, 32, "Hold"},
        {Capability::Presenter, 48, "Hold (max length)"},
        {Capability::Presenter, 112, "Retract with Timeout"},
        {Capability::PageToPageAction, 0, nullptr},
        {Capability::PageToPageAction, 48, "Hold"},
        {Capability::PresenterLed, 0, "Off"},
        {Capability::PresenterLed, 32, "Slow Blink"},
        {Capability::CouponCut, 0, "No Cut"},
        {Capability::CouponCut, 48, "Tear off"},
        {Capability::Feeder, 1000, "Autoselected feeder"},
        {Capability::Feeder, 1003, "Feeder 3"},
        {Capability::Feeder, 1004, nullptr},
        {Capability::Selector, 32, "Ticket Stored"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(c.capability) << "/" << c.value);
        const char* label = CapabilityLabel(c.capability, c.value);
        if (c.label == nullptr) {
            EXPECT_EQ(label, nullptr);
        } else {
            ASSERT_NE(label, nullptr);
            EXPECT_STREQ(label, c.label);
        }
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
        int index;
        int presenterIndex;
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
        int code;
        int index;
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
