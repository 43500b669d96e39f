// What every page's rules share: combo and trackbar views, the validation failure, text helpers.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

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

// The page a failed check names, the text the user reads and the line the log keeps.
struct ValidationFailure {
    std::string message;
    PageId page;
    std::string logLine;
};
// The message-box title for a page: its name in double quotes, then " Panel ".
std::string PanelTitle(PageId page);

// The text an edit of `limit` characters (plus terminator) hands back.
std::string_view LimitText(std::string_view text, size_t limit);
// Non-empty, starting with a digit or a sign, and wholly consumed by a base-10 conversion.
bool ParseIntegerText(std::string_view text, long* value);
