// Tests of the Print and Print adjust page rules: views, reactions, reading back and validation.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "pages/page_rules.h"

namespace {

TEST(PageRules, TrackbarLabelShowsPercentAndPosition) {
    const std::pair<int, const char*> labels[] = {
        {0, "0% (0/255)"},      {1, "0% (1/255)"},       {128, "50% (128/255)"},
        {254, "99% (254/255)"}, {255, "100% (255/255)"},
    };
    for (const auto& [position, label] : labels) {
        EXPECT_EQ(TrackbarLabel(position), label);
    }
    // The percent truncates, saturates outside the range and survives an empty range.
    struct Case {
        int value, low, high, percent;
    };
    const Case cases[] = {
        {-5, 0, 255, 0}, {300, 0, 255, 100}, {15, 10, 20, 50},
        {10, 10, 10, 0}, {11, 10, 10, 100},  {2, 1, 4, 33},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.value << " in " << c.low << ".." << c.high);
        EXPECT_EQ(PercentOfRange(c.value, c.low, c.high), c.percent);
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
        {100, 100, 300, 100, {100, 33, 0, 33}},  // truncated size, halved offset
        {101, 50, 10, 10, {50, 50, 25, 0}},      // odd remainder: shift drops the half
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.imageW << "x" << c.imageH << " in " << c.boxW << "x" << c.boxH);
        EXPECT_EQ(FitPreview(c.boxW, c.boxH, c.imageW, c.imageH), c.placement);
    }
    EXPECT_FALSE(FitPreview(200, 200, 0, 10).has_value());
    EXPECT_FALSE(FitPreview(200, 200, 10, 0).has_value());
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
        {"none forces the filters", {32, 80, 1, 128, 40, 200}, 0, 0, 0, 255, false},
        {"values missing from the lists", {64, 16, 0, 128, 0, 255}, 0, 0, 0, 255, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        PrintPageView view = MakePrintPageView(c.settings, quality, density);
        // 99 has no label, so the combo is shorter than the list.
        EXPECT_EQ(view.density.labels, (LabelList{"0%", "-12%", "+12%"}));
        EXPECT_EQ(view.quality.selection, c.qualitySel);
        EXPECT_EQ(view.density.selection, c.densitySel);
        EXPECT_EQ(view.dithering.selection, c.settings.ditherMode);
        EXPECT_EQ(std::pair(view.threshold.min, view.threshold.max), std::pair(1, 254));
        EXPECT_EQ(view.lowFilter.position, c.low);
        EXPECT_EQ(view.highFilter.position, c.high);
        EXPECT_EQ(view.filtersEnabled, c.filtersEnabled);
    }
}

TEST(PageRules, DitherTypeChangeResetsFiltersOnlyForNone) {
    // Out of range counts as Auto.
    for (int selection : {-1, 0, 1, 2, 3}) {
        SCOPED_TRACE(selection);
        const DitherTypeChange change = OnDitherTypeChanged(selection);
        EXPECT_EQ(change.filtersEnabled, selection != 1);
        EXPECT_EQ(change.resetFilters, selection == 1);
        if (change.resetFilters) {
            EXPECT_EQ(change.lowFilter, 0);
            EXPECT_EQ(change.highFilter, 255);
        }
    }
}

std::string Show(const PrintSettings& s) {
    return testing::PrintToString(std::vector<int>{s.quality, s.density, s.ditherMode, s.threshold,
                                                   s.lowFilter, s.highFilter});
}

TEST(PageRules, PrintControlsReadBackThroughTheLists) {
    const std::vector<uint8_t> quality{32, 16};
    const std::vector<uint8_t> density{80, 96, 112};
    const std::tuple<const char*, PrintControls, PrintSettings> cases[] = {
        {"plain", {1, 2, 2, 100, 20, 220}, {16, 112, 2, 100, 20, 220}},
        {"type past the list is Auto", {0, 0, 3, 128, 0, 255}, {32, 80, 0, 128, 0, 255}},
        {"no selection reads 0", {-1, 5, 1, 1, 0, 255}, {0, 0, 1, 1, 0, 255}},
    };
    for (const auto& [name, controls, expected] : cases) {
        EXPECT_EQ(Show(ReadPrintControls(controls, quality, density)), Show(expected)) << name;
    }
}

TEST(PageRules, PrintAdjustViewShowsOffsetsChecksAndScale) {
    PrintAdjustSettings settings{-250, 1000, 1, 0, 0, 7, 1, 62};
    PrintAdjustView view = MakePrintAdjustView(settings);
    EXPECT_EQ(view.offsetXText + " " + view.offsetYText, "-250 1000");
    EXPECT_EQ(
        std::vector<bool>({view.whiteTopCrop, view.whiteBottomCrop, view.skipWhitePages,
                           view.rotate180, view.reductionChecked, view.reductionValueEnabled}),
        std::vector<bool>({true, false, false, true, true, true}));
    EXPECT_EQ(view.scale.selection, 4);

    settings.reductionEnable = 0;
    settings.reductionValue = 13;  // not a step: the first entry
    view = MakePrintAdjustView(settings);
    EXPECT_FALSE(view.reductionValueEnabled);
    EXPECT_EQ(view.scale.selection, 0);
}

std::string Show(const PrintAdjustSettings& s) {
    return testing::PrintToString(std::vector<int>{s.offsetX, s.offsetY, s.whiteTopCrop,
                                                   s.whiteBottomCrop, s.skipWhitePages, s.rotate180,
                                                   s.reductionEnable, s.reductionValue});
}

TEST(PageRules, PrintAdjustControlsReadBack) {
    PrintAdjustSettings stored;
    stored.reductionValue = 75;
    PrintAdjustControls controls{"-1000", "+35", true, false, true, false, true, 7};
    EXPECT_EQ(Show(ReadPrintAdjustControls(controls, stored)),
              Show(PrintAdjustSettings{-1000, 35, 1, 0, 1, 0, 1, 100}));
    // Unchecked reduction keeps the stored step.
    controls.reductionChecked = false;
    controls.scaleSelection = 0;
    EXPECT_EQ(Show(ReadPrintAdjustControls(controls, stored)),
              Show(PrintAdjustSettings{-1000, 35, 1, 0, 1, 0, 0, 75}));
}

// Each check gives the text the user reads and the line the log keeps, or nothing when it passes.
TEST(PageRules, ValidationMessagesAndLogLines) {
    const auto Print = ValidatePrintValues;  // threshold, low filter, high filter
    const auto Adjust = ValidatePrintAdjustOffsets;
    const auto Buffer = ValidateFreeBufferText;
    const FreeBufferSide kStart = FreeBufferSide::kStart, kEnd = FreeBufferSide::kEnd;
    EXPECT_EQ(Print(128, 128, 128)->pageName, "Print");
    EXPECT_EQ(Adjust("", "")->pageName, "Print adjust");
    EXPECT_EQ(Buffer("", kStart)->pageName, "Console");

    const char* kOrder = "The HIGH Filter must be a value > of the LOW Filter";
    const char* kLow = "The LOW Filter must be a value between 0 and the Threshold";
    const char* kHigh = "The HIGH Filter must be a value between the Threshold and 255";
    const char* kRange = "The Offset must be a value between -1000 and 1000";
    const char* kInteger = "The Offset value is not a integer";
    const char* kFormat = "The ASCII format of a free buffer file is wrong or empty";
    const char* kSize = "The free buffer size is over the max (512)";
    // 128 escapes of one byte each plus 384 plain characters: 512 bytes from 896 characters.
    std::string escapes512(384, 'B');
    for (int i = 0; i < 128; ++i)
        escapes512.insert(0, "\\x41");
    struct Case {
        std::optional<ValidationFailure> got;
        const char* message;  // null: passes
        std::string logLine;
    };
    const Case cases[] = {
        {Print(128, 128, 129), nullptr, ""},
        {Print(128, 0, 255), nullptr, ""},
        {Print(128, 128, 128), kOrder,
         "Dithering Filters are wrong : UP filter must be > of DOWN Filter"},
        {Print(128, 129, 200), kLow, "Dithering Filter DOWN : value out of range (129  128)"},
        {Print(128, -1, 200), kLow, "Dithering Filter DOWN : value out of range (-1  128)"},
        {Print(128, 10, 127), kHigh, "Dithering Filter UP : value out of range (127  128)"},
        {Print(128, 10, 256), kHigh, "Dithering Filter UP : value out of range (256  128)"},
        // Both filters wrong: the low filter is reported first.
        {Print(128, 200, 100), kLow, "Dithering Filter DOWN : value out of range (200  128)"},

        {Adjust("-1000", "1000"), nullptr, ""},
        {Adjust("+7", "007"), nullptr, ""},
        {Adjust("1001", "0"), kRange, "Offset X : value out of range (1001  -1000/1000)"},
        {Adjust("-1001", "0"), kRange, "Offset X : value out of range (-1001  -1000/1000)"},
        {Adjust("0", "1001"), kRange, "Offset Y : value out of range (1001  -1000/1000)"},
        {Adjust("12a", "0"), kInteger, "Offset X: the number isn't a integer <12a>"},
        {Adjust("--5", "0"), kInteger, "Offset X: the number isn't a integer <--5>"},
        {Adjust("", "0"), kInteger, "Offset X: the number isn't a integer <>"},
        {Adjust("0", ""), kInteger, "Offset Y: the number isn't a integer <>"},
        {Adjust("-", "0"), kInteger, "Offset X: the number isn't a integer <->"},
        {Adjust(" 5", "0"), kInteger, "Offset X: the number isn't a integer < 5>"},
        {Adjust("0x10", "0"), kInteger, "Offset X: the number isn't a integer <0x10>"},
        {Adjust("1.5", "0"), kInteger, "Offset X: the number isn't a integer <1.5>"},
        {Adjust("+-3", "0"), kInteger, "Offset X: the number isn't a integer <+-3>"},
        {Adjust(std::string("12\0", 3), "0"), kInteger,
         "Offset X: the number isn't a integer <12>"},
        // X fails its range before Y's text is looked at.
        {Adjust("5000", "abc"), kRange, "Offset X : value out of range (5000  -1000/1000)"},
        // The edit hands back 8 characters: "123456789" is read as "12345678".
        {Adjust("123456789", "0"), kRange, "Offset X : value out of range (12345678  -1000/1000)"},
        {Adjust("00000000100", "0"), nullptr, ""},
        {Adjust("-99999999", "0"), kRange, "Offset X : value out of range (-9999999  -1000/1000)"},

        {Buffer(std::string(512, 'A'), kStart), nullptr, ""},
        {Buffer(escapes512, kEnd), nullptr, ""},
        {Buffer(std::string(513, 'A'), kStart), kSize,
         "Free Buffers Start : Buffer size error (513 512)"},
        {Buffer(escapes512 + "C", kEnd), kSize, "Free Buffers End : Buffer size error (513 512)"},
        {Buffer("\\xZZ", kStart), kFormat, "Free Buffers Start : Buffer Empty"},
        {Buffer("A\\xZZ", kEnd), kFormat, "Free Buffers End : Buffer empty"},
        {Buffer("", kStart), kFormat, "Free Buffers Start : Buffer convertion error <>"},
        {Buffer("", kEnd), kFormat, "Free Buffers End : Buffer convertion error <>"},
        // The edit hands back 1535 characters, so a longer text is cut before parsing.
        {Buffer(std::string(1600, 'x'), kStart), kSize,
         "Free Buffers Start : Buffer size error (1535 512)"},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(testing::Message() << "case " << i);
        const Case& c = cases[i];
        EXPECT_EQ(c.got ? c.got->message + " | " + c.got->logLine : "",
                  c.message ? c.message + (" | " + c.logLine) : "");
    }
}

}  // namespace
