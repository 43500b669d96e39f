// The Watermark page's rules: an image printed over or under every page.
#pragma once

#include <optional>
#include <string>

#include "actions/uni_bridge.h"
#include "pages/page_view.h"
#include "settings/setting_ranges.h"

class UiDeviceCommon;

// The brightness trackbar's companion text: "100%".
std::string BrightnessLabel(int position);
// The place code of a WatermarkPositionLabels index (row by row, left to right); 0x11 (top
// left) for anything else.
uint8_t PositionIndexToCode(int index);

struct WatermarkPageView {
    bool enabled;
    std::string path;
    ComboView layer;
    ComboView fit;
    ComboView position;
    bool brightnessEnabled;
    TrackbarView brightness;
};
WatermarkPageView MakeWatermarkPageView(const UiDeviceCommon& device);

// What the user can reach: the image settings follow Enable, the trackbar also Brightness.
struct WatermarkStates {
    bool image;
    bool brightness;
};
WatermarkStates WatermarkControlStates(bool enabled, bool brightnessEnabled);

// The Watermark controls as Apply and the print preview read them.
struct WatermarkControls {
    bool enabled;
    std::string path;
    int layer;
    int fit;
    int position;
    bool brightnessEnabled;
    int brightness;
};
std::optional<ValidationFailure> ValidateWatermarkControls(const WatermarkControls& controls,
                                                           const FileExists& exists);
void StoreWatermarkControls(UiDeviceCommon& device, const WatermarkControls& controls);

// The brightness goes to the rendering module only when its box is checked.
UniWatermarkRequest WatermarkPreviewRequest(const WatermarkControls& controls,
                                            const PreviewPaper& paper);
