// The Print page's rules: quality, density and the conversion of the page image to black and white.
#pragma once

#include <cstdint>
#include <optional>

#include "pages/page_view.h"

class UiDeviceCommon;

inline constexpr int kDitherAuto = 0;
inline constexpr int kDitherNone = 1;
inline constexpr int kDitherErrorDiffusion = 2;

inline constexpr int kThresholdMin = 1;
inline constexpr int kThresholdMax = 254;
inline constexpr int kFilterMin = 0;
inline constexpr int kFilterMax = 255;
inline constexpr int kDefaultThreshold = 128;

struct PrintPageView {
    ComboView quality;
    ComboView density;
    ComboView dithering;
    TrackbarView threshold;
    TrackbarView lowFilter;   // error diffusion low filter (black), "filter down"
    TrackbarView highFilter;  // error diffusion high filter (white), "filter up"
    bool filtersEnabled;
};
// What the page shows at its first fill. A stored mode None opens with the filters at 0 and
// 255 whatever was stored, and the device takes those values as well.
PrintPageView MakePrintPageView(UiDeviceCommon& device);

// A Type selection as a dithering mode: anything but 0, 1 and 2 counts as Auto.
int DitherModeFromSelection(int selection);

// The reaction to a new Type selection.
struct DitherTypeChange {
    bool filtersEnabled;
    bool resetFilters;  // None: both filter trackbars jump to their ends at once
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

// The Print controls as Apply reads them.
struct PrintControls {
    int qualitySelection;
    int densitySelection;
    int typeSelection;
    int threshold;
    int lowFilter;
    int highFilter;
};
// The filters against the threshold, in the order the user is told about them.
std::optional<ValidationFailure> ValidatePrintControls(const PrintControls& controls);
// The values the controls stand for, into the device: selections through the model's lists,
// trackbar positions as bytes.
void StorePrintControls(UiDeviceCommon& device, const PrintControls& controls);
