// What every page's rules share: combo and trackbar views, the validation failure, text helpers.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pages/label_tables.h"
#include "pages/page_catalog.h"

struct ComboView {
    LabelList labels;
    int selection;
};

struct TrackbarView {
    int min;
    int max;
    int position;
    std::string label;
};
TrackbarView MakeTrackbar(int min, int max, int position);

// 0 at or below low, 100 at or above high, else the truncated share of the range.
int PercentOfRange(int value, int low, int high);
// The text beside a 0..255 trackbar: "50% (128/255)".
std::string TrackbarLabel(int position);
// A trackbar position kept to one byte.
uint8_t TrackbarByte(int position);

// The value a combo selection stands for: the list's entry at that index, 0 when there is
// none (no selection, or a list shorter than the combo).
uint8_t SelectedValue(std::span<const uint8_t> values, int selection);
uint16_t SelectedValue(std::span<const uint16_t> values, int selection);

// The page a failed check names, the text the user reads and the line the log keeps. A
// question is asked with Yes and No: Yes lets the check go on, any other answer fails it.
struct ValidationFailure {
    std::string message;
    PageId page;
    std::string logLine;
    bool question = false;
};
// What a page's check found, in the order the user hears it: questions, then at most one
// failure, which ends the check.
using ValidationFindings = std::vector<ValidationFailure>;
ValidationFindings Findings(std::optional<ValidationFailure> failure);

using FileExists = std::function<bool(const std::string& path)>;

// An enabled image's path: empty is a failure, a file that does not exist a question.
struct ImagePathCheck {
    const char* emptyMessage;
    std::string emptyLog;
    const char* missingQuestion;
    std::string missingLog;
};
std::optional<ValidationFailure> CheckImagePath(const std::string& path, const FileExists& exists,
                                                PageId page, const ImagePathCheck& check);
// The message-box title for a page: its name in double quotes, then " Panel ".
std::string PanelTitle(PageId page);

// The text an edit of `limit` characters (plus terminator) hands back.
std::string_view LimitText(std::string_view text, size_t limit);
// Non-empty, starting with a digit or a sign, and wholly consumed by a base-10 conversion.
bool ParseIntegerText(std::string_view text, long* value);

// The paper and the model a print preview is rendered for.
struct PreviewPaper {
    uint32_t widthDots;
    uint32_t lengthDots;
    uint32_t modelNumber;
};

// Where a scaled image lands inside a preview box.
struct PreviewPlacement {
    int width;
    int height;
    int x;
    int y;
    bool operator==(const PreviewPlacement&) const = default;
};
// Fits the image into the box keeping its aspect ratio (small images grow), centred. No
// placement for an image without width or height.
std::optional<PreviewPlacement> FitPreview(int boxWidth, int boxHeight, uint32_t imageWidth,
                                           uint32_t imageHeight);
