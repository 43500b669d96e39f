// The Print page: quality, density and the conversion of the page image to black and white.
#include "../../resources/resource.h"
#include "pages/page_framework_win.h"
#include "pages/print_rules.h"
#include "settings/ui_device_common.h"

namespace {

// kept-behaviour: Texts kept as written ("diethering", "convertion").
constexpr wchar_t kThresholdHelp[] =
    L"THRESHOLD\n\nSets the behavior of the diethering algorithm.\n\nDithering: the algorithm of "
    L"the BW convertion:\n- Auto: the driver selects the best for the document to print.\n- "
    L"None: threshold convertion.\n- Error Diffusion: dithering convertion.\n\nThreshold: value "
    L"for the convertion from grey to BW.\n\nError diffusion low filter (Black): value for the "
    L"black saturation.\n\nError diffusion high filter (White): value for the white "
    L"saturation.\n";

constexpr PictureRow kPictures[] = {{IDC_PRINT_HEADER, IDB_PNG_PRINT_HEADER}};
constexpr HelpRow kHelps[] = {{IDC_PRINT_HELP, kThresholdHelp}};
constexpr TrackbarRow kTrackbars[] = {
    {IDC_PRINT_THRESHOLD, IDC_PRINT_THRESHOLD_VALUE},
    {IDC_PRINT_LOW_FILTER, IDC_PRINT_LOW_FILTER_VALUE},
    {IDC_PRINT_HIGH_FILTER, IDC_PRINT_HIGH_FILTER_VALUE},
};

// The controls that only mean something while error diffusion can run.
constexpr int kFilterControls[] = {
    IDC_PRINT_LOW_FILTER,        IDC_PRINT_HIGH_FILTER,        IDC_PRINT_LOW_FILTER_VALUE,
    IDC_PRINT_HIGH_FILTER_VALUE, IDC_PRINT_LOW_FILTER_CAPTION, IDC_PRINT_HIGH_FILTER_CAPTION,
};

void EnableFilterControls(HWND hDlg, bool enabled) {
    for (int id : kFilterControls) {
        SetControlState(hDlg, id, enabled ? kControlEnable : kControlDisable);
    }
}

void Fill(HWND hDlg, UiDeviceCommon& device) {
    const PrintPageView view = MakePrintPageView(device);
    FillComboFromLabels(hDlg, IDC_PRINT_DENSITY, view.density.labels, view.density.selection);
    FillComboFromLabels(hDlg, IDC_PRINT_QUALITY, view.quality.labels, view.quality.selection);
    FillComboFromLabels(hDlg, IDC_PRINT_DITHERING_TYPE, view.dithering.labels,
                        view.dithering.selection);
    SetUpTrackbar(hDlg, IDC_PRINT_THRESHOLD, IDC_PRINT_THRESHOLD_VALUE, view.threshold);
    SetUpTrackbar(hDlg, IDC_PRINT_LOW_FILTER, IDC_PRINT_LOW_FILTER_VALUE, view.lowFilter);
    SetUpTrackbar(hDlg, IDC_PRINT_HIGH_FILTER, IDC_PRINT_HIGH_FILTER_VALUE, view.highFilter);
    EnableFilterControls(hDlg, view.filtersEnabled);
}

bool OnCommand(HWND hDlg, int id, int code) {
    if (id == IDC_PRINT_DITHERING_TYPE && code == CBN_SELCHANGE) {
        const DitherTypeChange change =
            OnDitherTypeChanged(ComboSelection(hDlg, IDC_PRINT_DITHERING_TYPE));
        EnableFilterControls(hDlg, change.filtersEnabled);
        if (change.resetFilters) {
            SetTrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER, IDC_PRINT_LOW_FILTER_VALUE, kFilterMin);
            SetTrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER, IDC_PRINT_HIGH_FILTER_VALUE,
                                kFilterMax);
        }
    } else if (id == IDC_PRINT_DEFAULT && code == BN_CLICKED) {
        SendDlgItemMessageW(hDlg, IDC_PRINT_DITHERING_TYPE, CB_SETCURSEL,
                            static_cast<WPARAM>(kDitherDefaults.typeSelection), 0);
        SetTrackbarPosition(hDlg, IDC_PRINT_THRESHOLD, IDC_PRINT_THRESHOLD_VALUE,
                            kDitherDefaults.threshold);
        SetTrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER, IDC_PRINT_LOW_FILTER_VALUE,
                            kDitherDefaults.lowFilter);
        SetTrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER, IDC_PRINT_HIGH_FILTER_VALUE,
                            kDitherDefaults.highFilter);
    }
    return true;
}

PrintControls ReadControls(HWND hDlg) {
    return PrintControls{
        ComboSelection(hDlg, IDC_PRINT_QUALITY),
        ComboSelection(hDlg, IDC_PRINT_DENSITY),
        ComboSelection(hDlg, IDC_PRINT_DITHERING_TYPE),
        TrackbarPosition(hDlg, IDC_PRINT_THRESHOLD),
        TrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER),
        TrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER),
    };
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kPrint>() {
    static const PageDefinition definition{
        kPictures,
        kHelps,
        kTrackbars,
        Fill,
        OnCommand,
        [](HWND hDlg) { return Findings(ValidatePrintControls(ReadControls(hDlg))); },
        [](HWND hDlg, UiDeviceCommon& device) { StorePrintControls(device, ReadControls(hDlg)); },
    };
    return definition;
}
