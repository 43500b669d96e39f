// Tests of the label tables: every text against tests/data, value-to-index and position codes.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "golden_file.h"
#include "pages/label_tables.h"

namespace {

// Every fixed list and every value that has a capability label. The texts are what users see
// and some keep their old spelling ("Strech", "Tear off" next to "Tear Off end Page", two
// "Hold"), so a changed, missing or extra text shows as a changed line.
TEST(LabelTables, EveryTextMatchesTheExpectedFile) {
    const std::pair<const char*, const LabelList& (*)()> lists[] = {
        {"BuzzerPhase", BuzzerPhaseLabels},
        {"CashDrawerPhase", CashDrawerPhaseLabels},
        {"CashDrawerPin", CashDrawerPinLabels},
        {"ConsoleCommandSource", ConsoleCommandSourceLabels},
        {"DocumentEnd", DocumentEndLabels},
        {"CouponAlign", CouponAlignLabels},
        {"CouponSize", CouponSizeLabels},
        {"CouponCopies", CouponCopiesLabels},
        {"Dithering", DitheringLabels},
        {"CutMoveCount", CutMoveCountLabels},
        {"LogoPhase", LogoPhaseLabels},
        {"LogoAlign", LogoAlignLabels},
        {"LogoSize", LogoSizeLabels},
        {"LogoNumber", LogoNumberLabels},
        {"LogoSource", LogoSourceLabels},
        {"AfterTimeout", AfterTimeoutLabels},
        {"PageToPageTimeoutMode", PageToPageTimeoutModeLabels},
        {"Scale", ScaleLabels},
        {"WatermarkLayer", WatermarkLayerLabels},
        {"WatermarkFit", WatermarkFitLabels},
        {"WatermarkPosition", WatermarkPositionLabels},
    };
    std::string text;
    for (const auto& [name, labels] : lists) {
        text += name;
        for (const std::string& label : labels()) {
            text += " | " + label;
        }
        text += "\n";
    }
    for (int capability = 0; capability <= static_cast<int>(Capability::Selector); ++capability) {
        for (int value = 0; value < 0x10000; ++value) {
            const char* label =
                CapabilityLabel(static_cast<Capability>(capability), static_cast<uint16_t>(value));
            if (label != nullptr) {
                text += "capability " + std::to_string(capability) + " value " +
                        std::to_string(value) + " | " + label + "\n";
            }
        }
    }
    ExpectGoldenFile("labels.txt", text);
}

// 1002 and 234 share their low byte; a narrowed comparison would find it.
TEST(LabelTables, ValueToIndexComparesTheWholeValue) {
    const std::vector<uint16_t> feeder{0, 1000, 1002};
    EXPECT_EQ(ValueToIndex(feeder, uint16_t{1002}), 2);
    EXPECT_EQ(ValueToIndex(feeder, uint16_t{234}), 0);
}

TEST(LabelTables, PositionCodesAndTheClampToFour) {
    // The grid's ends and centre, then codes off the grid.
    const int codes[][2] = {{0x11, 0}, {0x41, 2}, {0x22, 4}, {0x14, 6},  {0x44, 8},
                            {0x00, 0}, {0x31, 0}, {0x88, 0}, {0x144, 0}, {-1, 0}};
    for (const auto& [code, index] : codes) {
        SCOPED_TRACE(code);
        EXPECT_EQ(PositionCodeToIndex(code), index);
    }
    const int clamps[][2] = {{-1, 0}, {0, 0}, {3, 3}, {4, 0}, {255, 0}};
    for (const auto& [value, clamped] : clamps) {
        EXPECT_EQ(ClampToFour(value), clamped) << value;
    }
}

}  // namespace
