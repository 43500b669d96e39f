// Tests of what every page's rules share: trackbar labels, selections, the preview's fit (the
// panel titles are in page_checks.txt, one with each refusal).
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pages/page_view.h"

namespace {

TEST(PageView, TrackbarLabelShowsTruncatedPercentAndPosition) {
    const std::pair<int, const char*> labels[] = {
        {0, "0% (0/255)"},      {1, "0% (1/255)"},       {128, "50% (128/255)"},
        {254, "99% (254/255)"}, {255, "100% (255/255)"},
    };
    for (const auto& [position, label] : labels)
        EXPECT_EQ(TrackbarLabel(position), label);
    // Saturates outside the range and survives an empty one.
    EXPECT_EQ(PercentOfRange(-5, 0, 255), 0);
    EXPECT_EQ(PercentOfRange(300, 0, 255), 100);
    EXPECT_EQ(PercentOfRange(11, 10, 10), 100);
    EXPECT_EQ(PercentOfRange(2, 1, 4), 33);
}

TEST(PageView, SelectionsAndPositionsBecomeBytes) {
    const std::vector<uint8_t> list{32, 16};
    EXPECT_EQ(SelectedValue(list, 1), 16);
    EXPECT_EQ(SelectedValue(list, 2), 0);   // combo longer than the list
    EXPECT_EQ(SelectedValue(list, -1), 0);  // no selection
    EXPECT_EQ(TrackbarByte(-3), 0);
    EXPECT_EQ(TrackbarByte(300), 255);
}

TEST(PageView, PreviewFitsKeepingAspectAndCentres) {
    // A wide image grows to the box width; truncated size and halved offset; an odd remainder.
    EXPECT_EQ(FitPreview(200, 200, 100, 50), (PreviewPlacement{200, 100, 0, 50}));
    EXPECT_EQ(FitPreview(100, 100, 300, 100), (PreviewPlacement{100, 33, 0, 33}));
    EXPECT_EQ(FitPreview(101, 50, 10, 10), (PreviewPlacement{50, 50, 25, 0}));
    EXPECT_FALSE(FitPreview(200, 200, 0, 10).has_value());
}

}  // namespace
