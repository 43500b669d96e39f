// The Peripherals page: the cash drawer's pulse and when it opens, and the buzzer.
#include "../../resources/resource.h"
#include "pages/page_framework_win.h"
#include "pages/peripherals_rules.h"
#include "settings/ui_device_common.h"

namespace {

constexpr wchar_t kDrawerHelp[] =
    L"CASH DRAWER\n\nOpens the cash drawer connected to the printer while printing.\n\nEnable: "
    L"the drawer is opened by the print job.\n\nPulse ON / Pulse OFF: how long, in "
    L"milliseconds, the opening pulse lasts and the pause\nafter it (2 to 512). Check the "
    L"drawer's manual for its values.\n\nPhase: when the drawer opens: at the beginning of the "
    L"document, at its end,\nor at the end of every page.\n\nPins: which of the two drawer "
    L"connections receives the pulse.\n";
constexpr wchar_t kBuzzerHelp[] =
    L"BUZZER\n\nSounds the printer's buzzer to call attention to a printed "
    L"ticket.\n\nEnable: the buzzer sounds once per document.\n\nPhase: at the beginning or at "
    L"the end of the document.\n";

constexpr PictureRow kPictures[] = {
    {IDC_PERIPH_DRAWER_PICTURE, IDB_PNG_CASH_DRAWER},
    {IDC_PERIPH_BUZZER_PICTURE, IDB_PNG_BUZZER},
};
constexpr HelpRow kHelps[] = {
    {IDC_PERIPH_DRAWER_HELP, kDrawerHelp},
    {IDC_PERIPH_BUZZER_HELP, kBuzzerHelp},
};

constexpr int kDrawerGroup[] = {IDC_PERIPH_DRAWER_GROUP, IDC_PERIPH_DRAWER_HELP,
                                IDC_PERIPH_DRAWER_PICTURE, IDC_PERIPH_DRAWER_ENABLE};
// What means nothing while the drawer's Enable box is unchecked.
constexpr int kDrawerSettings[] = {
    IDC_PERIPH_PULSE_ON_CAPTION,     IDC_PERIPH_PULSE_ON,     IDC_PERIPH_PULSE_ON_UNIT,
    IDC_PERIPH_PULSE_OFF_CAPTION,    IDC_PERIPH_PULSE_OFF,    IDC_PERIPH_PULSE_OFF_UNIT,
    IDC_PERIPH_DRAWER_PHASE_CAPTION, IDC_PERIPH_DRAWER_PHASE, IDC_PERIPH_DRAWER_PINS_CAPTION,
    IDC_PERIPH_DRAWER_PINS,
};
constexpr int kBuzzerGroup[] = {IDC_PERIPH_BUZZER_GROUP, IDC_PERIPH_BUZZER_HELP,
                                IDC_PERIPH_BUZZER_PICTURE, IDC_PERIPH_BUZZER_ENABLE};
constexpr int kBuzzerSettings[] = {IDC_PERIPH_BUZZER_PHASE_CAPTION, IDC_PERIPH_BUZZER_PHASE};

constexpr int kPulseBufferChars = static_cast<int>(kPulseTextLimit) + 1;

void FollowEnableBoxes(HWND hDlg) {
    SetControlsState(hDlg, kDrawerSettings, EnableMode(IsChecked(hDlg, IDC_PERIPH_DRAWER_ENABLE)));
    SetControlsState(hDlg, kBuzzerSettings, EnableMode(IsChecked(hDlg, IDC_PERIPH_BUZZER_ENABLE)));
}

void Fill(HWND hDlg, UiDeviceCommon& device) {
    const PeripheralsView view = MakePeripheralsView(device);
    const PeripheralsControls& shown = view.controls;
    if (!view.drawerShown) {
        SetControlsState(hDlg, kDrawerGroup, kControlHide);
        SetControlsState(hDlg, kDrawerSettings, kControlHide);
    }
    if (!view.buzzerShown) {
        SetControlsState(hDlg, kBuzzerGroup, kControlHide);
        SetControlsState(hDlg, kBuzzerSettings, kControlHide);
    }
    SetChecked(hDlg, IDC_PERIPH_DRAWER_ENABLE, shown.drawerChecked);
    WriteControlText(hDlg, IDC_PERIPH_PULSE_ON, shown.pulseOnText);
    WriteControlText(hDlg, IDC_PERIPH_PULSE_OFF, shown.pulseOffText);
    FillComboFromLabels(hDlg, IDC_PERIPH_DRAWER_PHASE, view.phaseLabels, shown.phaseSelection);
    FillComboFromLabels(hDlg, IDC_PERIPH_DRAWER_PINS, view.pinLabels, shown.pinsSelection);
    SetChecked(hDlg, IDC_PERIPH_BUZZER_ENABLE, shown.buzzerChecked);
    FillComboFromLabels(hDlg, IDC_PERIPH_BUZZER_PHASE, view.buzzerPhaseLabels,
                        shown.buzzerPhaseSelection);
    FollowEnableBoxes(hDlg);
}

bool OnCommand(HWND hDlg, int id, int code) {
    if ((id == IDC_PERIPH_DRAWER_ENABLE || id == IDC_PERIPH_BUZZER_ENABLE) && code == BN_CLICKED) {
        FollowEnableBoxes(hDlg);
    }
    return true;
}

PeripheralsControls ReadControls(HWND hDlg) {
    return PeripheralsControls{
        IsChecked(hDlg, IDC_PERIPH_DRAWER_ENABLE),
        ReadControlText(hDlg, IDC_PERIPH_PULSE_ON, kPulseBufferChars),
        ReadControlText(hDlg, IDC_PERIPH_PULSE_OFF, kPulseBufferChars),
        ComboSelection(hDlg, IDC_PERIPH_DRAWER_PHASE),
        ComboSelection(hDlg, IDC_PERIPH_DRAWER_PINS),
        IsChecked(hDlg, IDC_PERIPH_BUZZER_ENABLE),
        ComboSelection(hDlg, IDC_PERIPH_BUZZER_PHASE),
    };
}

ValidationFindings Validate(HWND hDlg) {
    const UiDeviceCommon* device = PageDevice(hDlg);
    if (device == nullptr) {
        return {};
    }
    return Findings(ValidatePeripheralsControls(*device, ReadControls(hDlg)));
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kPeripherals>() {
    static const PageDefinition definition{
        kPictures,
        kHelps,
        {},
        Fill,
        OnCommand,
        Validate,
        [](HWND hDlg, UiDeviceCommon& device) {
            StorePeripheralsControls(device, ReadControls(hDlg));
        },
    };
    return definition;
}
