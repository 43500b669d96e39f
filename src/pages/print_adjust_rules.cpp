// The Print adjust page's rules: print offset, white cropping and skipping, rotation, reduction.
#include "pages/print_adjust_rules.h"

#include <cstdlib>

#include "infra/text_format.h"
#include "settings/ui_device_common.h"

namespace {

std::optional<ValidationFailure> CheckOffset(std::string_view rawText, char axis) {
    std::string text(LimitText(rawText, kOffsetTextLimit));
    long value = 0;
    if (!ParseIntegerText(text, &value)) {
        return ValidationFailure{
            "The Offset value is not a integer", PageId::kPrintAdjust,
            Format("Offset %c: the number isn't a integer <%s>", axis, text.c_str())};
    }
    // One unsigned comparison covers both ends of the range.
    if (static_cast<uint32_t>(static_cast<int32_t>(value) + 1000) > 2000u) {
        return ValidationFailure{"The Offset must be a value between -1000 and 1000",
                                 PageId::kPrintAdjust,
                                 Format("Offset %c : value out of range (%d  %d/%d)", axis,
                                        static_cast<int>(value), kOffsetMin, kOffsetMax)};
    }
    return std::nullopt;
}

int16_t OffsetFromText(std::string_view text) {
    std::string terminated(LimitText(text, kOffsetTextLimit));
    return static_cast<int16_t>(std::strtol(terminated.c_str(), nullptr, 10));
}

}  // namespace

PrintAdjustView MakePrintAdjustView(const UiDeviceCommon& device) {
    return PrintAdjustView{
        PrintAdjustControls{
            Format("%d", device.GetOffsetX()),
            Format("%d", device.GetOffsetY()),
            device.GetWhiteTopCrop() != 0,
            device.GetWhiteBottomCrop() != 0,
            device.GetSkipWhitePages() != 0,
            device.GetRotate180() != 0,
            device.GetReductionEnable() != 0,
            UiDeviceCommon::PositionFromPercent(device.GetReductionValue()),
        },
        ScaleLabels(),
    };
}

std::optional<ValidationFailure> ValidatePrintAdjustControls(const PrintAdjustControls& controls) {
    if (auto failure = CheckOffset(controls.offsetXText, 'X')) {
        return failure;
    }
    return CheckOffset(controls.offsetYText, 'Y');
}

void StorePrintAdjustControls(UiDeviceCommon& device, const PrintAdjustControls& controls) {
    device.SetOffsetX(OffsetFromText(controls.offsetXText));
    device.SetOffsetY(OffsetFromText(controls.offsetYText));
    device.SetWhiteTopCrop(controls.whiteTopCrop ? 1 : 0);
    device.SetWhiteBottomCrop(controls.whiteBottomCrop ? 1 : 0);
    device.SetSkipWhitePages(controls.skipWhitePages ? 1 : 0);
    device.SetRotate180(controls.rotate180 ? 1 : 0);
    device.SetReductionEnable(controls.reductionChecked ? 1 : 0);
    if (controls.reductionChecked) {
        device.SetReductionValue(
            static_cast<uint16_t>(UiDeviceCommon::PercentFromPosition(controls.scaleSelection)));
    }
}
