// The Peripherals page's rules: the cash drawer's pulse and when it opens, and the buzzer.
#include "pages/peripherals_rules.h"

#include <algorithm>
#include <cstdlib>

#include "infra/text_format.h"
#include "settings/setting_enums.h"
#include "settings/ui_device_common.h"

namespace {

constexpr uint8_t kDrawerPhases[] = {PRN_PROP_CDPHASE_START_DOC, PRN_PROP_CDPHASE_END_DOC,
                                     PRN_PROP_CDPHASE_END_PAGE};
constexpr uint8_t kBuzzerPhases[] = {PRN_PROP_BUZZER_START_DOC, PRN_PROP_BUZZER_END_DOC};
constexpr uint8_t kPins[] = {PRN_PROP_CDPINS_PIN1, PRN_PROP_CDPINS_PIN2, PRN_PROP_CDPINS_PIN1AND2};

// The label at the position of `value` in `values`; `values` and `labels` run in step.
const char* LabelOf(std::span<const uint8_t> values, const LabelList& labels, uint8_t value) {
    const auto found = std::find(values.begin(), values.end(), value);
    return found == values.end() ? nullptr
                                 : labels[static_cast<size_t>(found - values.begin())].c_str();
}

long PulseFromText(std::string_view text) {
    std::string terminated(LimitText(text, kPulseTextLimit));
    return std::strtol(terminated.c_str(), nullptr, 10);
}

// A loaded record carries pulse times only for an enabled drawer.
int PulseShown(uint16_t stored) {
    return stored != 0 ? stored : kDefaultPulse;
}

uint16_t PulseToStore(std::string_view text) {
    return static_cast<uint16_t>(std::clamp(PulseFromText(text), 0L, 0xFFFFL));
}

}  // namespace

const char* DrawerPhaseLabel(uint8_t phase) {
    return LabelOf(kDrawerPhases, CashDrawerPhaseLabels(), phase);
}

const char* BuzzerPhaseLabel(uint8_t phase) {
    return LabelOf(kBuzzerPhases, BuzzerPhaseLabels(), phase);
}

uint8_t BuzzerPhaseAt(int selection) {
    return SelectedValue(kBuzzerPhases, selection);
}

std::vector<uint8_t> DrawerPhaseChoices(const UiDeviceCommon& device) {
    std::vector<uint8_t> choices;
    for (uint8_t phase : device.GetCashDrawerPhaseList()) {
        if (DrawerPhaseLabel(phase) != nullptr) {
            choices.push_back(phase);
        }
    }
    return choices;
}

PeripheralsView MakePeripheralsView(const UiDeviceCommon& device) {
    const std::vector<uint8_t> phases = DrawerPhaseChoices(device);
    LabelList phaseLabels;
    for (uint8_t phase : phases) {
        phaseLabels.push_back(DrawerPhaseLabel(phase));
    }
    const uint8_t buzzer = device.GetBuzzer();
    const int buzzerIndex = ValueToIndex(kBuzzerPhases, buzzer);
    return PeripheralsView{
        PeripheralsControls{
            device.GetCashDrawerEnable() != 0,
            Format("%d", PulseShown(device.GetCashDrawerTimeOn())),
            Format("%d", PulseShown(device.GetCashDrawerTimeOff())),
            ValueToIndex(phases, device.GetCashDrawerPhase()),
            ValueToIndex(kPins, device.GetCashDrawerPins()),
            BuzzerPhaseLabel(buzzer) != nullptr,
            buzzerIndex,
        },
        device.GetCapabilityFlag(kCapCashDrawer) != 0,
        device.GetCapabilityFlag(kCapBuzzer) != 0,
        std::move(phaseLabels),
        CashDrawerPinLabels(),
        BuzzerPhaseLabels(),
    };
}

std::optional<ValidationFailure> ValidatePeripheralsControls(const UiDeviceCommon& device,
                                                             const PeripheralsControls& controls) {
    if (device.GetCapabilityFlag(kCapCashDrawer) == 0 || !controls.drawerChecked) {
        return std::nullopt;
    }
    // kept-behaviour: Cash-drawer bounds in the log
    const auto outside = [](std::string_view text) {
        const long pulse = PulseFromText(text);
        return pulse < kPulseMin || pulse > kPulseMax;
    };
    if (outside(controls.pulseOnText)) {
        return ValidationFailure{"The Time On must be a value between 2 and 512",
                                 PageId::kPeripherals,
                                 Format("Cash Drawer TIMER ON : value out of range (%d %d)",
                                        static_cast<int>(kPulseMin), static_cast<int>(kPulseMax))};
    }
    if (outside(controls.pulseOffText)) {
        return ValidationFailure{"The Time Off must be a value between 2 and 512",
                                 PageId::kPeripherals,
                                 Format("Cash Drawer TIMER OFF : value out of range (%d %d)",
                                        static_cast<int>(kPulseMin), static_cast<int>(kPulseMax))};
    }
    return std::nullopt;
}

void StorePeripheralsControls(UiDeviceCommon& device, const PeripheralsControls& controls) {
    device.SetCashDrawerEnable(controls.drawerChecked ? 1 : 0);
    device.SetCashDrawerTimeOn(PulseToStore(controls.pulseOnText));
    device.SetCashDrawerTimeOff(PulseToStore(controls.pulseOffText));
    device.SetCashDrawerPhase(SelectedValue(DrawerPhaseChoices(device), controls.phaseSelection));
    const uint8_t pins = SelectedValue(kPins, controls.pinsSelection);
    device.SetCashDrawerPins(pins != 0 ? pins : PRN_PROP_CDPINS_PIN1);
    device.SetBuzzer(controls.buzzerChecked ? BuzzerPhaseAt(controls.buzzerPhaseSelection)
                                            : PRN_PROP_BUZZER_NO);
}
