// The Accessories page: where a multi-feeder takes its paper, what a selector does with a ticket.
#include "../../resources/resource.h"
#include "pages/accessories_rules.h"
#include "pages/page_framework_win.h"
#include "settings/ui_device_common.h"

namespace {

// kept-behaviour: Texts kept as written ("Multi Feede").
constexpr wchar_t kSelectorHelp[] =
    L"SELECTOR\n\nSets the behavior of the Selector module:\n\n- Ticket Out: release the printed "
    L"ticket to the customer.\n- Ticket Store: store the printed ticket within the teller "
    L"machine.\n\nMake sure your printer is equipped with the Selector option to benefit from "
    L"this setting.\n";
constexpr wchar_t kFeederHelp[] =
    L"FEEDER\n\nDefines how to manage the paper feeding when the Multi Feeder module is "
    L"installed\non the printer:\n\n- Not Set by Driver: the printer relies on its firmware "
    L"settings.\n- Autoselected feeder: let the driver load the paper from the first feeder "
    L"channel\nwith paper available.\n- Feeder 1: force paper loading from feeder channel 1.\n- "
    L"Feeder 2: force paper loading from feeder channel 2.\n- Feeder 3: force paper loading from "
    L"feeder channel 3.\n\nMake sure your printer is equipped with the Multi Feede option to "
    L"benefit from this setting.\n\nMake sure your printer is equipped with a Triple Feeder "
    L"module to benefit from \"Feeder 3\" option.\n";

constexpr PictureRow kPictures[] = {
    {IDC_ACCESSORIES_FEEDER_PICTURE, IDB_PNG_FEEDER},
    {IDC_ACCESSORIES_SELECTOR_PICTURE, IDB_PNG_SELECTOR},
};
constexpr HelpRow kHelps[] = {
    {IDC_ACCESSORIES_SELECTOR_HELP, kSelectorHelp},
    {IDC_ACCESSORIES_FEEDER_HELP, kFeederHelp},
};

constexpr int kFeederGroup[] = {IDC_ACCESSORIES_FEEDER_GROUP, IDC_ACCESSORIES_FEEDER_CAPTION,
                                IDC_ACCESSORIES_FEEDER, IDC_ACCESSORIES_FEEDER_PICTURE,
                                IDC_ACCESSORIES_FEEDER_HELP};
constexpr int kSelectorGroup[] = {IDC_ACCESSORIES_SELECTOR_GROUP, IDC_ACCESSORIES_SELECTOR_CAPTION,
                                  IDC_ACCESSORIES_SELECTOR, IDC_ACCESSORIES_SELECTOR_PICTURE,
                                  IDC_ACCESSORIES_SELECTOR_HELP};

void Fill(HWND hDlg, UiDeviceCommon& device) {
    const AccessoriesView view = MakeAccessoriesView(device);
    if (!view.feederShown) {
        SetControlsState(hDlg, kFeederGroup, kControlHide);
    }
    if (!view.selectorShown) {
        SetControlsState(hDlg, kSelectorGroup, kControlHide);
    }
    if (view.feederShown) {
        FillComboFromLabels(hDlg, IDC_ACCESSORIES_FEEDER, view.feeder.labels,
                            view.feeder.selection);
    }
    if (view.selectorShown) {
        FillComboFromLabels(hDlg, IDC_ACCESSORIES_SELECTOR, view.selector.labels,
                            view.selector.selection);
    }
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kAccessories>() {
    static const PageDefinition definition{
        kPictures,
        kHelps,
        {},
        Fill,
        nullptr,
        nullptr,
        [](HWND hDlg, UiDeviceCommon& device) {
            StoreAccessoriesControls(device, AccessoriesControls{
                                                 ComboSelection(hDlg, IDC_ACCESSORIES_FEEDER),
                                                 ComboSelection(hDlg, IDC_ACCESSORIES_SELECTOR),
                                             });
        },
    };
    return definition;
}
