// Tests of the Print and Print adjust page rules: views, reactions, reading back and validation.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pages/page_rules.h"

namespace {

TEST(PageRules, PercentOfRangeTruncatesAndSaturates) {
    struct Case {
        int value, low, high, percent;
    };
    const Case cases[] = {
        {0, 0, 255, 0},     {1, 0, 255, 0},     {128, 0, 255, 50}, {254, 0, 255, 99},
        {255, 0, 255, 100}, {300, 0, 255, 100}, {-5, 0, 255, 0},   {15, 10, 20, 50},
        {10, 10, 10, 0},    {11, 10, 10, 100},  {2, 1, 4, 33},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.value << " in " << c.low << ".." << c.high);
        EXPECT_EQ(PercentOfRange(c.value, c.low, c.high), c.percent);
    }
}

TEST(PageRules, TrackbarLabelShowsPercentAndPosition) {
    struct Case {
        int position;
        const char* label;
    };
    const Case cases[] = {
        {0, "0% (0/255)"},      {1, "0% (1/255)"},       {128, "50% (128/255)"},
        {254, "99% (254/255)"}, {255, "100% (255/255)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.position);
        EXPECT_EQ(TrackbarLabel(c.position), c.label);
    }
}

TEST(PageRules, PreviewFitsKeepingAspectAndCentres) {
    struct Case {
        int boxW, boxH;
        uint32_t imageW, imageH;
        PreviewPlacement placement;
    };
    const Case cases[] = {
        {200, 200, 100, 50, {200, 100, 0, 50}},  // wide image grows to the box width
        {200, 200, 50, 100, {100, 200, 50, 0}},  // tall image grows to the box height
        {200, 100, 400, 200, {200, 100, 0, 0}},  // equal ratios
        {100, 100, 300, 100, {100, 33, 0, 33}},  // truncated size, halved offset
        {101, 50, 10, 10, {50, 50, 25, 0}},      // odd remainder: shift drops the half
        {10, 10, 1000, 1, {10, 0, 0, 5}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.imageW << "x" << c.imageH << " in " << c.boxW << "x" << c.boxH);
        auto placement = FitPreview(c.boxW, c.boxH, c.imageW, c.imageH);
        ASSERT_TRUE(placement.has_value());
        EXPECT_EQ(*placement, c.placement);
    }
    EXPECT_FALSE(FitPreview(200, 200, 0, 10).has_value());
    EXPECT_FALSE(FitPreview(200, 200, 10, 0).has_value());
}

TEST(PageRules, PanelTitleQuotesThePageName) {
    EXPECT_EQ(PanelTitle("Print"), "\"Print\" Panel ");
    EXPECT_EQ(PanelTitle("Print adjust"), "\"Print adjust\" Panel ");
}

TEST(PageRules, PrintViewFollowsTheDitheringMode) {
    const std::vector<uint8_t> quality{32, 16, 48};
    const std::vector<uint8_t> density{80, 64, 99, 96};
    struct Case {
        const char* name;
        PrintSettings settings;
        int qualitySel, densitySel, low, high;
        bool filtersEnabled;
    };
    const Case cases[] = {
        // The selection is the list position even past an unlabelled value.
        {"auto", {16, 96, 0, 100, 40, 200}, 1, 3, 40, 200, true},
        {"error diffusion", {48, 64, 2, 128, 10, 250}, 2, 1, 10, 250, true},
        {"none forces the filters", {32, 80, 1, 128, 40, 200}, 0, 0, 0, 255, false},
        {"values missing from the lists", {64, 16, 0, 128, 0, 255}, 0, 0, 0, 255, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        PrintPageView view = MakePrintPageView(c.settings, quality, density);
        EXPECT_EQ(view.quality.labels, (LabelList{"Normal", "High Quality", "High Speed"}));
        EXPECT_EQ(view.quality.selection, c.qualitySel);
        // 99 has no label, so the combo is shorter than the list.
        EXPECT_EQ(view.density.labels, (LabelList{"0%", "-12%", "+12%"}));
        EXPECT_EQ(view.density.selection, c.densitySel);
        EXPECT_EQ(view.dithering.labels, DitheringLabels());
        EXPECT_EQ(view.dithering.selection, c.settings.ditherMode);
        EXPECT_EQ(view.threshold.min, 1);
        EXPECT_EQ(view.threshold.max, 254);
        EXPECT_EQ(view.threshold.position, c.settings.threshold);
        EXPECT_EQ(view.threshold.label, TrackbarLabel(c.settings.threshold));
        for (const TrackbarView* filter : {&view.lowFilter, &view.highFilter}) {
            EXPECT_EQ(filter->min, 0);
            EXPECT_EQ(filter->max, 255);
        }
        EXPECT_EQ(view.lowFilter.position, c.low);
        EXPECT_EQ(view.lowFilter.label, TrackbarLabel(c.low));
        EXPECT_EQ(view.highFilter.position, c.high);
        EXPECT_EQ(view.highFilter.label, TrackbarLabel(c.high));
        EXPECT_EQ(view.filtersEnabled, c.filtersEnabled);
    }
}

TEST(PageRules, DitherTypeChangeResetsFiltersOnlyForNone) {
    struct Case {
        int selection;
        bool enabled;
        bool reset;
    };
    const Case cases[] = {
        {0, true, false},  {1, false, true},
        {2, true, false},  {3, true, false},  // out of range counts as Auto
        {-1, true, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.selection);
        DitherTypeChange change = OnDitherTypeChanged(c.selection);
        EXPECT_EQ(change.filtersEnabled, c.enabled);
        EXPECT_EQ(change.resetFilters, c.reset);
        if (c.reset) {
            EXPECT_EQ(change.lowFilter, 0);
            EXPECT_EQ(change.highFilter, 255);
        }
    }
    EXPECT_EQ(kDitherDefaults.typeSelection, 0);
    EXPECT_EQ(kDitherDefaults.threshold, 128);
    EXPECT_EQ(kDitherDefaults.lowFilter, 0);
    EXPECT_EQ(kDitherDefaults.highFilter, 255);
}

TEST(PageRules, PrintControlsReadBackThroughTheLists) {
    const std::vector<uint8_t> quality{32, 16};
    const std::vector<uint8_t> density{80, 96, 112};
    struct Case {
        const char* name;
        PrintControls controls;
        PrintSettings expected;
    };
    const Case cases[] = {
        {"plain", {1, 2, 2, 100, 20, 220}, {16, 112, 2, 100, 20, 220}},
        {"type past the list is Auto", {0, 0, 3, 128, 0, 255}, {32, 80, 0, 128, 0, 255}},
        {"no selection reads 0", {-1, 5, 1, 1, 0, 255}, {0, 0, 1, 1, 0, 255}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        PrintSettings got = ReadPrintControls(c.controls, quality, density);
        EXPECT_EQ(got.quality, c.expected.quality);
        EXPECT_EQ(got.density, c.expected.density);
        EXPECT_EQ(got.ditherMode, c.expected.ditherMode);
        EXPECT_EQ(got.threshold, c.expected.threshold);
        EXPECT_EQ(got.lowFilter, c.expected.lowFilter);
        EXPECT_EQ(got.highFilter, c.expected.highFilter);
    }
}

TEST(PageRules, PrintValidationChecksFiltersInOrder) {
    struct Case {
        int threshold, low, high;
        const char* message;  // null: passes
        const char* logLine;
    };
    const Case cases[] = {
        {128, 128, 129, nullptr, nullptr},
        {128, 0, 255, nullptr, nullptr},
        {128, 128, 128, "The HIGH Filter must be a value > of the LOW Filter",
         "Dithering Filters are wrong : UP filter must be > of DOWN Filter"},
        {128, 129, 200, "The LOW Filter must be a value between 0 and the Threshold",
         "Dithering Filter DOWN : value out of range (129  128)"},
        {128, -1, 200, "The LOW Filter must be a value between 0 and the Threshold",
         "Dithering Filter DOWN : value out of range (-1  128)"},
        {128, 10, 127, "The HIGH Filter must be a value between the Threshold and 255",
         "Dithering Filter UP : value out of range (127  128)"},
        {128, 10, 256, "The HIGH Filter must be a value between the Threshold and 255",
         "Dithering Filter UP : value out of range (256  128)"},
        // Both filters wrong: the low filter is reported first.
        {128, 200, 100, "The LOW Filter must be a value between 0 and the Threshold",
         "Dithering Filter DOWN : value out of range (200  128)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.threshold << "/" << c.low << "/" << c.high);
        auto failure = ValidatePrintValues(c.threshold, c.low, c.high);
        if (c.message == nullptr) {
            EXPECT_FALSE(failure.has_value());
            continue;
        }
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(failure->message, c.message);
        EXPECT_EQ(failure->pageName, "Print");
        EXPECT_EQ(failure->logLine, c.logLine);
    }
}

TEST(PageRules, PrintAdjustViewShowsOffsetsChecksAndScale) {
    PrintAdjustSettings settings;
    settings.offsetX = -250;
    settings.offsetY = 1000;
    settings.whiteTopCrop = 1;
    settings.rotate180 = 7;
    settings.reductionEnable = 1;
    settings.reductionValue = 62;
    PrintAdjustView view = MakePrintAdjustView(settings);
    EXPECT_EQ(view.offsetXText, "-250");
    EXPECT_EQ(view.offsetYText, "1000");
    EXPECT_TRUE(view.whiteTopCrop);
    EXPECT_FALSE(view.whiteBottomCrop);
    EXPECT_FALSE(view.skipWhitePages);
    EXPECT_TRUE(view.rotate180);
    EXPECT_TRUE(view.reductionChecked);
    EXPECT_TRUE(view.reductionValueEnabled);
    EXPECT_EQ(view.scale.labels, ScaleLabels());
    EXPECT_EQ(view.scale.selection, 4);

    settings.reductionEnable = 0;
    settings.reductionValue = 13;  // not a step: the first entry
    view = MakePrintAdjustView(settings);
    EXPECT_FALSE(view.reductionChecked);
    EXPECT_FALSE(view.reductionValueEnabled);
    EXPECT_EQ(view.scale.selection, 0);
}

TEST(PageRules, PrintAdjustControlsReadBack) {
    PrintAdjustSettings stored;
    stored.reductionValue = 75;
    PrintAdjustControls controls{"-1000", "+35", true, false, true, false, true, 7};
    PrintAdjustSettings got = ReadPrintAdjustControls(controls, stored);
    EXPECT_EQ(got.offsetX, -1000);
    EXPECT_EQ(got.offsetY, 35);
    EXPECT_EQ(got.whiteTopCrop, 1);
    EXPECT_EQ(got.whiteBottomCrop, 0);
    EXPECT_EQ(got.skipWhitePages, 1);
    EXPECT_EQ(got.rotate180, 0);
    EXPECT_EQ(got.reductionEnable, 1);
    EXPECT_EQ(got.reductionValue, 100);

    // Unchecked reduction keeps the stored step.
    controls.reductionChecked = false;
    controls.scaleSelection = 0;
    got = ReadPrintAdjustControls(controls, stored);
    EXPECT_EQ(got.reductionEnable, 0);
    EXPECT_EQ(got.reductionValue, 75);
}

TEST(PageRules, IntegerTestNeedsTheWholeText) {
    struct Case {
        const char* text;
        bool ok;
        long value;
    };
    const Case cases[] = {
        {"0", true, 0},    {"-1000", true, -1000}, {"+7", true, 7},   {"007", true, 7},
        {"", false, 0},    {"12a", false, 0},      {"--5", false, 0}, {"-", false, 0},
        {"+", false, 0},   {" 5", false, 0},       {"5 ", false, 0},  {"0x10", false, 0},
        {"1.5", false, 0}, {"+-3", false, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        long value = -99;
        EXPECT_EQ(ParseIntegerText(c.text, &value), c.ok);
        if (c.ok) {
            EXPECT_EQ(value, c.value);
        }
    }
    long value = 0;
    EXPECT_FALSE(ParseIntegerText(std::string("12\0", 3), &value));
}

TEST(PageRules, OffsetValidationChecksXBeforeY) {
    struct Case {
        const char* x;
        const char* y;
        const char* message;  // null: passes
        const char* logLine;
    };
    const char* kRange = "The Offset must be a value between -1000 and 1000";
    const char* kInteger = "The Offset value is not a integer";
    const Case cases[] = {
        {"-1000", "1000", nullptr, nullptr},
        {"0", "+999", nullptr, nullptr},
        {"1001", "0", kRange, "Offset X : value out of range (1001  -1000/1000)"},
        {"-1001", "0", kRange, "Offset X : value out of range (-1001  -1000/1000)"},
        {"0", "1001", kRange, "Offset Y : value out of range (1001  -1000/1000)"},
        {"12a", "0", kInteger, "Offset X: the number isn't a integer <12a>"},
        {"--5", "0", kInteger, "Offset X: the number isn't a integer <--5>"},
        {"", "0", kInteger, "Offset X: the number isn't a integer <>"},
        {"0", "", kInteger, "Offset Y: the number isn't a integer <>"},
        // X fails its range before Y's text is looked at.
        {"5000", "abc", kRange, "Offset X : value out of range (5000  -1000/1000)"},
        // The edit hands back 8 characters: "123456789" is read as "12345678".
        {"123456789", "0", kRange, "Offset X : value out of range (12345678  -1000/1000)"},
        {"00000000100", "0", nullptr, nullptr},
        {"-99999999", "0", kRange, "Offset X : value out of range (-9999999  -1000/1000)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "X=" << c.x << " Y=" << c.y);
        auto failure = ValidatePrintAdjustOffsets(c.x, c.y);
        if (c.message == nullptr) {
            EXPECT_FALSE(failure.has_value());
            continue;
        }
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(failure->message, c.message);
        EXPECT_EQ(failure->pageName, "Print adjust");
        EXPECT_EQ(failure->logLine, c.logLine);
    }
}

TEST(PageRules, FreeBufferTextIsCheckedForFormatEmptinessAndSize) {
    const std::string bytes512(512, 'A');
    const std::string bytes513(513, 'A');
    // 128 escapes of one byte each plus 384 plain characters: 512 bytes from 896 characters.
    std::string escapes512;
    for (int i = 0; i < 128; ++i) {
        escapes512 += "\\x41";
    }
    escapes512 += std::string(384, 'B');
    struct Case {
        const char* name;
        std::string text;
        FreeBufferSide side;
        const char* message;  // null: passes
        std::string logLine;
    };
    const char* kFormat = "The ASCII format of a free buffer file is wrong or empty";
    const Case cases[] = {
        {"512 bytes", bytes512, FreeBufferSide::kStart, nullptr, ""},
        {"escapes to 512", escapes512, FreeBufferSide::kEnd, nullptr, ""},
        {"513 bytes", bytes513, FreeBufferSide::kStart,
         "The free buffer size is over the max (512)",
         "Free Buffers Start : Buffer size error (513 512)"},
        {"513 at the end", escapes512 + "C", FreeBufferSide::kEnd,
         "The free buffer size is over the max (512)",
         "Free Buffers End : Buffer size error (513 512)"},
        {"bad escape start", "\\xZZ", FreeBufferSide::kStart, kFormat,
         "Free Buffers Start : Buffer Empty"},
        {"bad escape end", "A\\xZZ", FreeBufferSide::kEnd, kFormat,
         "Free Buffers End : Buffer empty"},
        {"empty start", "", FreeBufferSide::kStart, kFormat,
         "Free Buffers Start : Buffer convertion error <>"},
        {"empty end", "", FreeBufferSide::kEnd, kFormat,
         "Free Buffers End : Buffer convertion error <>"},
        // The edit hands back 1535 characters, so a longer text is cut before parsing.
        {"cut to the edit", std::string(1600, 'x'), FreeBufferSide::kStart,
         "The free buffer size is over the max (512)",
         "Free Buffers Start : Buffer size error (1535 512)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        auto failure = ValidateFreeBufferText(c.text, c.side);
        if (c.message == nullptr) {
            EXPECT_FALSE(failure.has_value());
            continue;
        }
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(failure->message, c.message);
        EXPECT_EQ(failure->pageName, "Console");
        EXPECT_EQ(failure->logLine, c.logLine);
    }
}

}  // namespace
