// Page rules of the Print and Print adjust pages: what they show, how they react, what they accept.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pages/label_tables.h"

// 0 at or below low, 100 at or above high, else the truncated share of the range.
int PercentOfRange(int value, int low, int high);
// The text beside a 0..255 trackbar: "50% (128/255)".
std::string TrackbarLabel(int position);

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

// The page a failed check names, the text the user reads and the line the log keeps.
struct ValidationFailure {
    std::string message;
    std::string pageName;
    std::string logLine;
};
// The message-box title for a page: the name in double quotes, then " Panel ".
std::string PanelTitle(std::string_view pageName);

inline constexpr const char* kPrintPageName = "Print";
inline constexpr const char* kPrintAdjustPageName = "Print adjust";
inline constexpr const char* kConsolePageName = "Console";

// ---- Print page ----

inline constexpr int kDitherAuto = 0;
inline constexpr int kDitherNone = 1;
inline constexpr int kDitherErrorDiffusion = 2;

inline constexpr int kThresholdMin = 1;
inline constexpr int kThresholdMax = 254;
inline constexpr int kFilterMin = 0;
inline constexpr int kFilterMax = 255;
inline constexpr int kDefaultThreshold = 128;

struct PrintSettings {
    uint8_t quality = 0;
    uint8_t density = 0;
    uint8_t ditherMode = 0;
    uint8_t threshold = 128;
    uint8_t lowFilter = 0;     // error diffusion low filter (black), "filter down"
    uint8_t highFilter = 255;  // error diffusion high filter (white), "filter up"
};

struct TrackbarView {
    int min;
    int max;
    int position;
    std::string label;
};

struct ComboView {
    LabelList labels;
    int selection;
};

struct PrintPageView {
    ComboView quality;
    ComboView density;
    ComboView dithering;
    TrackbarView threshold;
    TrackbarView lowFilter;
    TrackbarView highFilter;
    bool filtersEnabled;
};

// What the page shows at its first fill. A stored mode None opens with the filters at 0 and
// 255 whatever was stored; the caller writes those back into the settings as well.
PrintPageView MakePrintPageView(const PrintSettings& settings, std::span<const uint8_t> qualityList,
                                std::span<const uint8_t> densityList);

// A Type selection as a dithering mode: anything but 0, 1 and 2 counts as Auto.
int DitherModeFromSelection(int selection);

// The reaction to a new Type selection.
struct DitherTypeChange {
    bool filtersEnabled;
    bool resetFilters;  // None: both filter trackbars jump to their ends at once
    int lowFilter;
    int highFilter;
};
DitherTypeChange OnDitherTypeChanged(int selection);

// What "Default" puts into the dithering controls; the filters' enable state stays as it was.
struct DitherDefaults {
    int typeSelection = kDitherAuto;
    int threshold = kDefaultThreshold;
    int lowFilter = kFilterMin;
    int highFilter = kFilterMax;
};
inline constexpr DitherDefaults kDitherDefaults{};

// The Print controls as read on Apply.
struct PrintControls {
    int qualitySelection;
    int densitySelection;
    int typeSelection;
    int threshold;
    int lowFilter;
    int highFilter;
};
// The settings the controls stand for; a selection outside the list gives the list's rule
// (value 0), a trackbar position is kept to one byte.
PrintSettings ReadPrintControls(const PrintControls& controls, std::span<const uint8_t> qualityList,
                                std::span<const uint8_t> densityList);

// The filters against the threshold, in the order the user is told about them.
std::optional<ValidationFailure> ValidatePrintValues(int threshold, int lowFilter, int highFilter);

// ---- Print adjust page ----

inline constexpr int kOffsetMin = -1000;
inline constexpr int kOffsetMax = 1000;
// An offset edit is read with room for 8 characters and the terminator.
inline constexpr size_t kOffsetTextLimit = 8;

struct PrintAdjustSettings {
    int16_t offsetX = 0;
    int16_t offsetY = 0;
    uint8_t whiteTopCrop = 0;
    uint8_t whiteBottomCrop = 0;
    uint8_t skipWhitePages = 0;
    uint8_t rotate180 = 0;
    uint8_t reductionEnable = 0;
    uint16_t reductionValue = 0;  // percent, one of the ScaleLabels steps
};

struct PrintAdjustView {
    std::string offsetXText;
    std::string offsetYText;
    bool whiteTopCrop;
    bool whiteBottomCrop;
    bool skipWhitePages;
    bool rotate180;
    bool reductionChecked;
    bool reductionValueEnabled;
    ComboView scale;
};
PrintAdjustView MakePrintAdjustView(const PrintAdjustSettings& settings);

struct PrintAdjustControls {
    std::string offsetXText;
    std::string offsetYText;
    bool whiteTopCrop;
    bool whiteBottomCrop;
    bool skipWhitePages;
    bool rotate180;
    bool reductionChecked;
    int scaleSelection;
};
// The settings the controls stand for. The reduction value is taken only when reduction is
// checked; otherwise the stored one stays.
PrintAdjustSettings ReadPrintAdjustControls(const PrintAdjustControls& controls,
                                            const PrintAdjustSettings& stored);

// The text an edit of `limit` characters (plus terminator) hands back.
std::string_view LimitText(std::string_view text, size_t limit);
// Non-empty, starting with a digit or a sign, and wholly consumed by a base-10 conversion.
bool ParseIntegerText(std::string_view text, long* value);
// The offset a validated text stands for (base 10, as 16 bits).
int16_t OffsetFromText(std::string_view text);

// X completely (integer, then range) before Y; texts are cut to what the edit hands back.
std::optional<ValidationFailure> ValidatePrintAdjustOffsets(std::string_view xText,
                                                            std::string_view yText);

// ---- Console free-buffer text ----

inline constexpr size_t kFreeBufferTextLimit = 1535;
enum class FreeBufferSide { kStart, kEnd };
// The check of a text-source free buffer: parsable, not empty, at most 512 bytes.
std::optional<ValidationFailure> ValidateFreeBufferText(std::string_view text, FreeBufferSide side);
