// The Print page's rules: quality, density and the conversion of the page image to black and white.
#include "pages/print_rules.h"

#include "infra/text_format.h"
#include "settings/ui_device_common.h"

PrintPageView MakePrintPageView(UiDeviceCommon& device) {
    const bool none = device.GetConvMode() == kDitherNone;
    if (none) {
        device.SetConvFilterDown(kFilterMin);
        device.SetConvFilterUp(kFilterMax);
    }
    const auto& qualities = device.GetQualityList();
    const auto& densities = device.GetDensityList();
    return PrintPageView{
        ComboView{CapabilityLabels(Capability::Quality, qualities),
                  ValueToIndex(qualities, device.GetQuality())},
        ComboView{CapabilityLabels(Capability::Density, densities),
                  ValueToIndex(densities, device.GetDensity())},
        ComboView{DitheringLabels(), device.GetConvMode()},
        MakeTrackbar(kThresholdMin, kThresholdMax, device.GetConvThreshold()),
        MakeTrackbar(kFilterMin, kFilterMax, device.GetConvFilterDown()),
        MakeTrackbar(kFilterMin, kFilterMax, device.GetConvFilterUp()),
        !none,
    };
}

int DitherModeFromSelection(int selection) {
    return selection >= 0 && selection < 3 ? selection : kDitherAuto;
}

DitherTypeChange OnDitherTypeChanged(int selection) {
    const bool none = DitherModeFromSelection(selection) == kDitherNone;
    return DitherTypeChange{!none, none};
}

std::optional<ValidationFailure> ValidatePrintControls(const PrintControls& controls) {
    const int threshold = controls.threshold;
    const int low = controls.lowFilter;
    const int high = controls.highFilter;
    if (low < 0 || low > threshold) {
        return ValidationFailure{
            "The LOW Filter must be a value between 0 and the Threshold", PageId::kPrint,
            Format("Dithering Filter DOWN : value out of range (%d  %d)", low, threshold)};
    }
    if (high < threshold || high > 255) {
        return ValidationFailure{
            "The HIGH Filter must be a value between the Threshold and 255", PageId::kPrint,
            Format("Dithering Filter UP : value out of range (%d  %d)", high, threshold)};
    }
    if (high <= low) {
        return ValidationFailure{
            "The HIGH Filter must be a value > of the LOW Filter", PageId::kPrint,
            "Dithering Filters are wrong : UP filter must be > of DOWN Filter"};
    }
    return std::nullopt;
}

void StorePrintControls(UiDeviceCommon& device, const PrintControls& controls) {
    device.SetQuality(SelectedValue(device.GetQualityList(), controls.qualitySelection));
    device.SetDensity(SelectedValue(device.GetDensityList(), controls.densitySelection));
    device.SetConvMode(static_cast<uint8_t>(DitherModeFromSelection(controls.typeSelection)));
    device.SetConvThreshold(TrackbarByte(controls.threshold));
    device.SetConvFilterDown(TrackbarByte(controls.lowFilter));
    device.SetConvFilterUp(TrackbarByte(controls.highFilter));
}
