// The Peripherals page's rules: the cash drawer's pulse and when it opens, and the buzzer.
//
// The phase label lists carry no values; they are matched to the phase values by meaning:
//   CashDrawerPhaseLabels  "Begin Document" = PRN_PROP_CDPHASE_START_DOC (16),
//                          "End Document"   = PRN_PROP_CDPHASE_END_DOC (32),
//                          "End Page"       = PRN_PROP_CDPHASE_END_PAGE (48);
//   BuzzerPhaseLabels      "Begin Document" = PRN_PROP_BUZZER_START_DOC (16),
//                          "End Document"   = PRN_PROP_BUZZER_END_DOC (32);
//   CashDrawerPinLabels    "Cash Drawer 1" = PIN1 (1), "Cash Drawer 2" = PIN2 (2),
//                          "Cash Drawer 1 and 2" = PIN1AND2 (3).
// "No phase" (0) has no label: a drawer or buzzer that never fires is the Enable box unchecked.
// The drawer phase combo lists the model's offered phases that have a label, in the model's
// order; the buzzer has no enable byte of its own, so its Enable box is "buzzer value not 0".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "pages/page_view.h"
#include "settings/setting_ranges.h"

class UiDeviceCommon;

inline constexpr size_t kPulseTextLimit = 8;

// The model's drawer phases that the page can name, in the model's order.
std::vector<uint8_t> DrawerPhaseChoices(const UiDeviceCommon& device);
// The label of a drawer or buzzer phase value; null for "no phase" and unknown values.
const char* DrawerPhaseLabel(uint8_t phase);
const char* BuzzerPhaseLabel(uint8_t phase);
uint8_t BuzzerPhaseAt(int selection);

struct PeripheralsControls {
    bool drawerChecked;
    std::string pulseOnText;
    std::string pulseOffText;
    int phaseSelection;
    int pinsSelection;
    bool buzzerChecked;
    int buzzerPhaseSelection;
};

struct PeripheralsView {
    PeripheralsControls controls;
    bool drawerShown;  // a group the model lacks is hidden
    bool buzzerShown;
    LabelList phaseLabels;
    LabelList pinLabels;
    LabelList buzzerPhaseLabels;
};
PeripheralsView MakePeripheralsView(const UiDeviceCommon& device);

// The pulse times, ON first, only for a drawer the model has and the user enabled.
std::optional<ValidationFailure> ValidatePeripheralsControls(const UiDeviceCommon& device,
                                                             const PeripheralsControls& controls);
void StorePeripheralsControls(UiDeviceCommon& device, const PeripheralsControls& controls);
