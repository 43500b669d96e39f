// Tests of the common UI entry's value rules: paper dots and model text pieces.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "entry/common_ui.h"

namespace {

TEST(CommonUiValues, PaperDots) {
    // Tenths of a millimetre, dots per inch, dots.
    const int32_t cases[][3] = {
        {800, 203, 639},          // 639.37
        {580, 203, 463},          // 463.54: truncated, not rounded
        {800, 0, 0},              // no resolution in the devmode
        {-800, 203, -639},        // truncation toward zero
        {32767, 32767, 4227072},  // widest 16-bit inputs, no overflow
    };
    for (const auto& [tenths, dpi, dots] : cases) {
        SCOPED_TRACE(std::to_string(tenths) + " at " + std::to_string(dpi));
        EXPECT_EQ(dots, PaperDots(tenths, dpi));
    }
}

TEST(CommonUiValues, SplitModelText) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"TRX418A", {"TRX418A"}},
        {"", {""}},
        {"TRX418A|SEC|THIRD|FOURTH", {"TRX418A", "SEC", "THIRD", "FOURTH"}},
        {"|B||D|", {"", "B", "", "D", ""}},
    };
    for (const auto& [text, pieces] : cases) {
        EXPECT_EQ(pieces, SplitModelText(text)) << text;
    }
    const std::vector<std::string> two = SplitModelText("A|B");
    EXPECT_EQ("B", ModelTextPiece(two, 1));
    EXPECT_EQ("", ModelTextPiece(two, 2));
}

}  // namespace
