// The Presentation page: how the presenter hands out the ticket, and page to page.
#include "../../resources/resource.h"
#include "pages/page_framework_win.h"
#include "pages/presentation_rules.h"
#include "settings/ui_device_common.h"

namespace {

// kept-behaviour: Texts kept as written ("ouf").
constexpr wchar_t kPresenterHelp[] =
    L"PRESENTER\n\nSets the behavior of the presenter module after cut:\n\nMode: sets the "
    L"presented ticket management after cut and after presentation timeout.\n\nLength: sets the "
    L"amount of paper that should stick ouf of the printer's bezel during\nthe ticket "
    L"presentation phase.\n\nDuration: sets a ticket presentation duration. At the timeout, the "
    L"ticket will be held,\nretracted or ejected according to the \"Mode\" option "
    L"selected.\n\nLED: sets the behavior of the illuminated bezel during the ticket "
    L"presentation.\n";
constexpr wchar_t kPageToPageHelp[] =
    L"PAGE TO PAGE\n\nPage to page option allows to discard the document or the print queue if "
    L"the presented\npage has not been taken within a specific amount of time.\n\nTimeout "
    L"Mode:\n- Unlimited: when a page is presented, it will prevent following pages / documents "
    L"to be printed\nuntil taken from the user\n- Presentation timeout: the printed page will be "
    L"discarded after a given timeout (Timeout value).\nIf taken by the user, the following page "
    L"or document in queue will be printed.\n\nTimeout Value: maximum presentation time for the "
    L"user to take the ticket before being\nautomatically discarded.\n\nTicket: determines "
    L"discard mode of the presented ticket if not taken within the\nTimeout Value.\n\nPrint "
    L"Queue:\n- Keep printing: no document is deleted\n- Clean current document: only the "
    L"current document is deleted\n- Clean entire queue: the current document and all the "
    L"following documents into the print\nqueue are deleted\n";

constexpr PictureRow kPictures[] = {
    {IDC_PRESENT_PRESENTER_PICTURE, IDB_PNG_PRESENTER},
    {IDC_PRESENT_P2P_PICTURE, IDB_PNG_PAGE_TO_PAGE},
};
constexpr HelpRow kHelps[] = {
    {IDC_PRESENT_PRESENTER_HELP, kPresenterHelp},
    {IDC_PRESENT_P2P_HELP, kPageToPageHelp},
};

constexpr int kPresenterControls[] = {
    IDC_PRESENT_PRESENTER_GROUP,  IDC_PRESENT_MODE_CAPTION, IDC_PRESENT_MODE,
    IDC_PRESENT_LENGTH_CAPTION,   IDC_PRESENT_LENGTH,       IDC_PRESENT_LENGTH_UNIT,
    IDC_PRESENT_DURATION_CAPTION, IDC_PRESENT_DURATION,     IDC_PRESENT_DURATION_UNIT,
    IDC_PRESENT_LED_CAPTION,      IDC_PRESENT_LED,
};
constexpr int kLengthControls[] = {IDC_PRESENT_LENGTH_CAPTION, IDC_PRESENT_LENGTH,
                                   IDC_PRESENT_LENGTH_UNIT};
constexpr int kDurationControls[] = {IDC_PRESENT_DURATION_CAPTION, IDC_PRESENT_DURATION,
                                     IDC_PRESENT_DURATION_UNIT};
constexpr int kLedControls[] = {IDC_PRESENT_LED_CAPTION, IDC_PRESENT_LED};
// The ten controls that the Enable box switches together.
constexpr int kPageToPageControls[] = {
    IDC_PRESENT_TIMEOUT_MODE,
    IDC_PRESENT_TIMEOUT_VALUE,
    IDC_PRESENT_TICKET,
    IDC_PRESENT_PRINT_QUEUE,
    IDC_PRESENT_TIMEOUT_VALUE_UNIT,
    IDC_PRESENT_TIMEOUT_MODE_CAPTION,
    IDC_PRESENT_TIMEOUT_VALUE_CAPTION,
    IDC_PRESENT_TICKET_CAPTION,
    IDC_PRESENT_PRINT_QUEUE_CAPTION,
    IDC_PRESENT_AFTER_TIMEOUT_GROUP,
};
// Of those, what "Unlimited" leaves without meaning.
constexpr int kTimeoutDetails[] = {
    IDC_PRESENT_TIMEOUT_VALUE,         IDC_PRESENT_TIMEOUT_VALUE_UNIT,
    IDC_PRESENT_TIMEOUT_VALUE_CAPTION, IDC_PRESENT_TICKET,
    IDC_PRESENT_TICKET_CAPTION,        IDC_PRESENT_PRINT_QUEUE,
    IDC_PRESENT_PRINT_QUEUE_CAPTION,   IDC_PRESENT_AFTER_TIMEOUT_GROUP,
};

constexpr int kNumberBufferChars = static_cast<int>(kNumberTextLimit) + 1;

PortFlags PortFlagsOf(HWND hDlg) {
    const PageContext* context = PageContextOf(hDlg);
    if (context == nullptr) {
        return PortFlags{false, false, false};
    }
    return PortFlags{context->lmAvailable != 0, context->lmBidi != 0, context->lmEnable != 0};
}

void ShowPageToPageState(HWND hDlg, const PageToPageState& state) {
    SetControlState(hDlg, IDC_PRESENT_P2P_ENABLE, EnableMode(state.boxEnabled));
    SetChecked(hDlg, IDC_PRESENT_P2P_ENABLE, state.boxChecked);
    SetControlsState(hDlg, kPageToPageControls, EnableMode(state.controlsEnabled));
    if (state.controlsEnabled) {
        SetControlsState(hDlg, kTimeoutDetails, EnableMode(state.detailsEnabled));
    }
}

void ShowModeClasses(HWND hDlg, uint8_t mode) {
    SetControlsState(hDlg, kLengthControls, EnableMode(LengthApplies(mode)));
    SetControlsState(hDlg, kDurationControls, EnableMode(DurationApplies(mode)));
}

// The notice sits below the group in the template; it is raised by half the group's height so
// that it stands in the middle of the otherwise empty group.
void ShowNotice(HWND hDlg, const char* text) {
    HWND notice = GetDlgItem(hDlg, IDC_PRESENT_NOTICE);
    HWND group = GetDlgItem(hDlg, IDC_PRESENT_P2P_GROUP);
    if (notice == nullptr || group == nullptr) {
        return;
    }
    WriteControlText(hDlg, IDC_PRESENT_NOTICE, text);
    RECT groupClient{};
    GetClientRect(group, &groupClient);
    RECT place{};
    GetWindowRect(notice, &place);
    MapWindowPoints(nullptr, hDlg, reinterpret_cast<POINT*>(&place), 2);
    SetWindowPos(notice, nullptr, place.left, place.top - groupClient.bottom / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetControlState(hDlg, IDC_PRESENT_NOTICE, kControlShow);
}

void Fill(HWND hDlg, UiDeviceCommon& device) {
    const PresentationView view = MakePresentationView(device, PortFlagsOf(hDlg));
    const PresentationControls& shown = view.controls;
    SetControlsState(hDlg, kPageToPageControls, kControlHide);
    SetControlState(hDlg, IDC_PRESENT_P2P_ENABLE, kControlHide);
    SetControlState(hDlg, IDC_PRESENT_P2P_HELP, kControlHide);
    SetControlState(hDlg, IDC_PRESENT_NOTICE, kControlHide);
    if (!view.pageToPageShown) {
        SetControlState(hDlg, IDC_PRESENT_P2P_GROUP, kControlHide);
        SetControlState(hDlg, IDC_PRESENT_P2P_PICTURE, kControlHide);
    } else if (view.notice != nullptr) {
        ShowNotice(hDlg, view.notice);
    } else {
        SetControlsState(hDlg, kPageToPageControls, kControlShow);
        SetControlState(hDlg, IDC_PRESENT_P2P_ENABLE, kControlShow);
        SetControlState(hDlg, IDC_PRESENT_P2P_HELP, kControlShow);
    }
    FillComboFromLabels(hDlg, IDC_PRESENT_MODE, view.modeLabels, shown.modeSelection);
    FillComboFromLabels(hDlg, IDC_PRESENT_LED, view.ledLabels, shown.ledSelection);
    WriteControlText(hDlg, IDC_PRESENT_LENGTH, shown.lengthText);
    WriteControlText(hDlg, IDC_PRESENT_DURATION, shown.durationText);
    FillComboFromLabels(hDlg, IDC_PRESENT_TIMEOUT_MODE, view.timeoutModeLabels,
                        shown.timeoutModeSelection);
    WriteControlText(hDlg, IDC_PRESENT_TIMEOUT_VALUE, shown.timeoutText);
    FillComboFromLabels(hDlg, IDC_PRESENT_TICKET, view.ticketLabels, shown.ticketSelection);
    FillComboFromLabels(hDlg, IDC_PRESENT_PRINT_QUEUE, view.printQueueLabels,
                        shown.printQueueSelection);
    if (!view.presenterEnabled) {
        SetControlsState(hDlg, kPresenterControls, kControlDisable);
    } else {
        SetControlsState(hDlg, kLengthControls, EnableMode(view.lengthEnabled));
        SetControlsState(hDlg, kDurationControls, EnableMode(view.durationEnabled));
        SetControlsState(hDlg, kLedControls, EnableMode(view.ledEnabled));
    }
    ShowPageToPageState(hDlg, view.pageToPage);
}

bool OnCommand(HWND hDlg, int id, int code) {
    const bool modeChanged = id == IDC_PRESENT_MODE && code == CBN_SELCHANGE;
    const bool pageToPageChanged = (id == IDC_PRESENT_P2P_ENABLE && code == BN_CLICKED) ||
                                   (id == IDC_PRESENT_TIMEOUT_MODE && code == CBN_SELCHANGE);
    const UiDeviceCommon* device = PageDevice(hDlg);
    if (device == nullptr || (!modeChanged && !pageToPageChanged)) {
        return true;
    }
    const uint8_t mode = PresenterModeAt(*device, ComboSelection(hDlg, IDC_PRESENT_MODE));
    if (modeChanged) {
        ShowModeClasses(hDlg, mode);
    }
    // The mode rule holds for the hidden controls too: what Apply reads must match the mode.
    ShowPageToPageState(hDlg, PageToPageStateFor(mode, IsChecked(hDlg, IDC_PRESENT_P2P_ENABLE),
                                                 ComboSelection(hDlg, IDC_PRESENT_TIMEOUT_MODE)));
    return true;
}

PresentationControls ReadControls(HWND hDlg) {
    return PresentationControls{
        ComboSelection(hDlg, IDC_PRESENT_MODE),
        ReadControlText(hDlg, IDC_PRESENT_LENGTH, kNumberBufferChars),
        ReadControlText(hDlg, IDC_PRESENT_DURATION, kNumberBufferChars),
        ComboSelection(hDlg, IDC_PRESENT_LED),
        IsChecked(hDlg, IDC_PRESENT_P2P_ENABLE),
        ComboSelection(hDlg, IDC_PRESENT_TIMEOUT_MODE),
        ReadControlText(hDlg, IDC_PRESENT_TIMEOUT_VALUE, kNumberBufferChars),
        ComboSelection(hDlg, IDC_PRESENT_TICKET),
        ComboSelection(hDlg, IDC_PRESENT_PRINT_QUEUE),
    };
}

ValidationFindings Validate(HWND hDlg) {
    const UiDeviceCommon* device = PageDevice(hDlg);
    if (device == nullptr) {
        return {};
    }
    return Findings(ValidatePresentationControls(*device, PortFlagsOf(hDlg), ReadControls(hDlg)));
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kPresentation>() {
    static const PageDefinition definition{
        kPictures,
        kHelps,
        {},
        Fill,
        OnCommand,
        Validate,
        [](HWND hDlg, UiDeviceCommon& device) {
            StorePresentationControls(device, ReadControls(hDlg));
        },
    };
    return definition;
}
