// The Watermark page's rules: an image printed over or under every page.
#include "pages/watermark_rules.h"

#include <algorithm>
#include <iterator>

#include "infra/text_format.h"
#include "pages/label_tables.h"
#include "settings/ui_device_common.h"

namespace {

constexpr uint8_t kPlaceCodes[] = {0x11, 0x21, 0x41, 0x12, 0x22, 0x42, 0x14, 0x24, 0x44};

}  // namespace

std::string BrightnessLabel(int position) {
    return Format("%d%%", position);
}

uint8_t PositionIndexToCode(int index) {
    return index >= 0 && index < static_cast<int>(std::size(kPlaceCodes)) ? kPlaceCodes[index]
                                                                          : kPlaceCodes[0];
}

WatermarkPageView MakeWatermarkPageView(const UiDeviceCommon& device) {
    const int brightness = std::clamp(device.GetWatermarkBrightness(), 0, kBrightnessMax);
    return WatermarkPageView{
        device.GetWatermarkEnable() != 0,
        device.GetWatermarkPath(),
        {WatermarkLayerLabels(), device.GetWatermarkDrawPosition() == 1 ? 1 : 0},
        {WatermarkFitLabels(), ClampToFour(device.GetWatermarkDrawType())},
        {WatermarkPositionLabels(), PositionCodeToIndex(device.GetWatermarkVHPosition())},
        device.GetWatermarkBrightnessEnable() != 0,
        {0, kBrightnessMax, brightness, BrightnessLabel(brightness)},
    };
}

WatermarkStates WatermarkControlStates(bool enabled, bool brightnessEnabled) {
    return WatermarkStates{enabled, enabled && brightnessEnabled};
}

std::optional<ValidationFailure> ValidateWatermarkControls(const WatermarkControls& controls,
                                                           const FileExists& exists) {
    if (!controls.enabled) {
        return std::nullopt;
    }
    return CheckImagePath(
        controls.path, exists, PageId::kWatermark,
        {"The path of the watermark image file is empty", "Watermark : text empty",
         "The path of the watermark image file is wrong or the file doesn't exist. Do you want "
         "to continue to save this value?",
         Format("Watermark path doesn't exists <%s>", controls.path.c_str())});
}

void StoreWatermarkControls(UiDeviceCommon& device, const WatermarkControls& controls) {
    device.SetWatermarkEnable(controls.enabled ? 1 : 0);
    device.SetWatermarkDrawPosition(static_cast<uint8_t>(ClampToFour(controls.layer)));
    device.SetWatermarkDrawType(static_cast<uint8_t>(ClampToFour(controls.fit)));
    device.SetWatermarkVHPosition(PositionIndexToCode(controls.position));
    device.SetWatermarkPath(controls.path);
    device.SetWatermarkBrightnessEnable(controls.brightnessEnabled ? 1 : 0);
    device.SetWatermarkBrightness(std::clamp(controls.brightness, 0, kBrightnessMax));
}

UniWatermarkRequest WatermarkPreviewRequest(const WatermarkControls& controls,
                                            const PreviewPaper& paper) {
    UniWatermarkRequest request;
    request.path = controls.path;
    request.paperWidthDots = paper.widthDots;
    request.paperLengthDots = paper.lengthDots;
    request.modelNumber = paper.modelNumber;
    request.layer = static_cast<uint8_t>(ClampToFour(controls.layer));
    request.fit = static_cast<uint8_t>(ClampToFour(controls.fit));
    request.place = PositionIndexToCode(controls.position);
    request.brightness =
        controls.brightnessEnabled
            ? static_cast<uint32_t>(std::clamp(controls.brightness, 0, kBrightnessMax))
            : 100;
    return request;
}
