// Tests of the common UI entry's value rules: paper dots, model text pieces, language-monitor
// table.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "entry/common_ui.h"

namespace {

TEST(CommonUiValues, PaperDots) {
    struct Case {
        int32_t tenths, dpi, expected;
    };
    const Case cases[] = {
        {800, 203, 639},          // 639.37
        {580, 203, 463},          // 463.54: truncated, not rounded
        {2540, 203, 2030},        // exact in double precision
        {800, 0, 0},              // no resolution in the devmode
        {-800, 203, -639},        // truncation toward zero
        {32767, 32767, 4227072},  // widest 16-bit inputs, no overflow
        {1, 127, 0},              // 0.5
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.tenths) + " at " + std::to_string(c.dpi));
        EXPECT_EQ(c.expected, PaperDots(c.tenths, c.dpi));
    }
}

TEST(CommonUiValues, SplitModelText) {
    struct Case {
        std::string text;
        std::vector<std::string> pieces;
    };
    const Case cases[] = {
        {"TRX418A", {"TRX418A"}},
        {"", {""}},
        {"TRX418A|SEC|THIRD|FOURTH", {"TRX418A", "SEC", "THIRD", "FOURTH"}},
        {"A||C", {"A", "", "C"}},
        {"A|", {"A", ""}},
        {"|B", {"", "B"}},
        {"A|B|C|D|E", {"A", "B", "C", "D", "E"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(c.pieces, SplitModelText(c.text));
    }
    const std::vector<std::string> two = SplitModelText("A|B");
    EXPECT_EQ("B", ModelTextPiece(two, 1));
    EXPECT_EQ("", ModelTextPiece(two, 2));
}

TEST(CommonUiValues, LanguageMonitorTable) {
    struct Case {
        uint8_t status;
        const char* name;
        uint32_t available, bidi, enable;
    };
    const Case cases[] = {
        {0, "LM_NOT_AVAILABLE", 0, 0, 0},
        {1, "LM_DISABLED", 1, 1, 0},
        {2, "LM_SETT_NOT_AVAILABLE", 0, 0, 0},
        {3, "LM_BIDI_NOT_ENABLE", 1, 0, 0},
        {10, "LM_ENABLED", 1, 1, 1},
        {4, "NOID", 0, 0, 0},
        {9, "NOID", 0, 0, 0},
        {255, "NOID", 0, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.status));
        EXPECT_STREQ(c.name, LmStatusName(c.status));
        const LmFlags f = LmFlagsFromStatus(c.status);
        EXPECT_EQ(c.available, f.available);
        EXPECT_EQ(c.bidi, f.bidi);
        EXPECT_EQ(c.enable, f.enable);
    }
}

}  // namespace
