// The Print page: quality, density and the conversion of the page image to black and white.
#include <iterator>
#include <vector>

#include "../../resources/resource.h"
#include "infra/log.h"
#include "pages/page_framework_win.h"
#include "pages/save_settings_win.h"
#include "settings/ui_device_common.h"

namespace {

constexpr const wchar_t kThresholdHelp[] =
    L"THRESHOLD\n\nSets the behavior of the diethering algorithm.\n\nDithering: the algorithm of "
    L"the BW convertion:\n- Auto: the driver selects the best for the document to print.\n- "
    L"None: threshold convertion.\n- Error Diffusion: dithering convertion.\n\nThreshold: value "
    L"for the convertion from grey to BW.\n\nError diffusion low filter (Black): value for the "
    L"black saturation.\n\nError diffusion high filter (White): value for the white "
    L"saturation.\n";

// The controls that only mean something while error diffusion can run.
constexpr int kFilterControls[] = {
    IDC_PRINT_LOW_FILTER,        IDC_PRINT_HIGH_FILTER,        IDC_PRINT_LOW_FILTER_VALUE,
    IDC_PRINT_HIGH_FILTER_VALUE, IDC_PRINT_LOW_FILTER_CAPTION, IDC_PRINT_HIGH_FILTER_CAPTION,
};
constexpr int kPictures[] = {IDC_PRINT_HEADER, IDC_PRINT_HELP};

void EnableFilterControls(HWND hDlg, bool enabled) {
    for (int id : kFilterControls) {
        SetControlState(hDlg, id, enabled ? kControlEnable : kControlDisable);
    }
}

int LabelOfTrackbar(int trackbarId) {
    switch (trackbarId) {
        case IDC_PRINT_THRESHOLD:
            return IDC_PRINT_THRESHOLD_VALUE;
        case IDC_PRINT_LOW_FILTER:
            return IDC_PRINT_LOW_FILTER_VALUE;
        case IDC_PRINT_HIGH_FILTER:
            return IDC_PRINT_HIGH_FILTER_VALUE;
        default:
            return 0;
    }
}

// The stored values come from the capability object; without one, from the working record.
PrintSettings StoredPrintSettings(const OemUiState& state) {
    PrintSettings settings;
    if (const UiDeviceCommon* device = state.device.get()) {
        settings.quality = device->GetQuality();
        settings.density = device->GetDensity();
        settings.ditherMode = device->GetConvMode();
        settings.threshold = device->GetConvThreshold();
        settings.lowFilter = device->GetConvFilterDown();
        settings.highFilter = device->GetConvFilterUp();
        return settings;
    }
    const OemDevPayload& payload = state.workOEMDev.payload;
    settings.quality = payload.quality;
    settings.density = payload.density;
    settings.ditherMode = payload.convMode;
    settings.threshold = payload.convThreshold;
    settings.lowFilter = payload.convFilterDown;
    settings.highFilter = payload.convFilterUp;
    return settings;
}

void FillPage(HWND hDlg, PageContext& context) {
    OemUiState* state = context.pOemUiState;
    if (state == nullptr) {
        return;
    }
    UiDeviceCommon* device = state->device.get();
    static const std::vector<uint8_t> kNone;
    const std::vector<uint8_t>& qualityList = device ? device->GetQualityList() : kNone;
    const std::vector<uint8_t>& densityList = device ? device->GetDensityList() : kNone;

    PrintSettings settings = StoredPrintSettings(*state);
    PrintPageView view = MakePrintPageView(settings, qualityList, densityList);
    if (settings.ditherMode == kDitherNone && device != nullptr) {
        device->SetConvFilterDown(static_cast<uint8_t>(view.lowFilter.position));
        device->SetConvFilterUp(static_cast<uint8_t>(view.highFilter.position));
    }

    FillComboFromLabels(hDlg, IDC_PRINT_DENSITY, view.density.labels, view.density.selection);
    FillComboFromLabels(hDlg, IDC_PRINT_QUALITY, view.quality.labels, view.quality.selection);
    FillComboFromLabels(hDlg, IDC_PRINT_DITHERING_TYPE, view.dithering.labels,
                        view.dithering.selection);
    SetUpTrackbar(hDlg, IDC_PRINT_THRESHOLD, IDC_PRINT_THRESHOLD_VALUE, view.threshold);
    SetUpTrackbar(hDlg, IDC_PRINT_LOW_FILTER, IDC_PRINT_LOW_FILTER_VALUE, view.lowFilter);
    SetUpTrackbar(hDlg, IDC_PRINT_HIGH_FILTER, IDC_PRINT_HIGH_FILTER_VALUE, view.highFilter);
    EnableFilterControls(hDlg, view.filtersEnabled);

    SetPicture(hDlg, IDC_PRINT_HEADER, IDB_PNG_PRINT_HEADER);
    SetPicture(hDlg, IDC_PRINT_HELP, IDB_PNG_HELP);
    CreateHelpTooltip(IDC_PRINT_HELP, hDlg, kThresholdHelp);
}

INT_PTR OnInitDialog(HWND hDlg, LPARAM lParam) {
    PageContext* context = AttachPageContext(hDlg, lParam);
    if (TakeFirstFill(context, PageId::kPrint)) {
        FillPage(hDlg, *context);
    }
    return 1;
}

void ApplyDitherTypeChange(HWND hDlg) {
    DitherTypeChange change = OnDitherTypeChanged(ComboSelection(hDlg, IDC_PRINT_DITHERING_TYPE));
    EnableFilterControls(hDlg, change.filtersEnabled);
    if (change.resetFilters) {
        SetTrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER, IDC_PRINT_LOW_FILTER_VALUE,
                            change.lowFilter);
        SetTrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER, IDC_PRINT_HIGH_FILTER_VALUE,
                            change.highFilter);
    }
}

void OnDefault(HWND hDlg) {
    SendDlgItemMessageW(hDlg, IDC_PRINT_DITHERING_TYPE, CB_SETCURSEL,
                        static_cast<WPARAM>(kDitherDefaults.typeSelection), 0);
    SetTrackbarPosition(hDlg, IDC_PRINT_THRESHOLD, IDC_PRINT_THRESHOLD_VALUE,
                        kDitherDefaults.threshold);
    SetTrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER, IDC_PRINT_LOW_FILTER_VALUE,
                        kDitherDefaults.lowFilter);
    SetTrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER, IDC_PRINT_HIGH_FILTER_VALUE,
                        kDitherDefaults.highFilter);
}

INT_PTR OnCommand(HWND hDlg, WPARAM wParam) {
    const int id = LOWORD(wParam);
    const int code = HIWORD(wParam);
    switch (id) {
        case IDC_PRINT_QUALITY:
        case IDC_PRINT_DENSITY:
            if (code == CBN_SELCHANGE) {
                NotifyPageChanged(hDlg);
            }
            break;
        case IDC_PRINT_DITHERING_TYPE:
            if (code == CBN_SELCHANGE) {
                ApplyDitherTypeChange(hDlg);
                NotifyPageChanged(hDlg);
            }
            break;
        case IDC_PRINT_DEFAULT:
            if (code == BN_CLICKED) {
                OnDefault(hDlg);
                NotifyPageChanged(hDlg);
            }
            break;
        case IDC_PRINT_HELP:
            if (code == STN_CLICKED) {
                PopUpHelp(IDC_PRINT_HELP, hDlg, kThresholdHelp);
            }
            break;
        default:
            break;
    }
    return 1;
}

INT_PTR OnHScroll(HWND hDlg, LPARAM lParam) {
    HWND trackbar = reinterpret_cast<HWND>(lParam);
    const int id = trackbar != nullptr ? GetDlgCtrlID(trackbar) : 0;
    if (int labelId = LabelOfTrackbar(id)) {
        WriteControlText(hDlg, labelId, TrackbarLabel(TrackbarPosition(hDlg, id)));
        NotifyPageChanged(hDlg);
    }
    return 1;
}

}  // namespace

INT_PTR CALLBACK DevicePropPageDocPrint(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam) {
    PageContext* context = nullptr;
    if (!LookUpPageContext(hDlg, PageId::kPrint, &context)) {
        return 0;
    }
    switch (uMsg) {
        case WM_INITDIALOG:
            return OnInitDialog(hDlg, lParam);
        case WM_COMMAND:
            return OnCommand(hDlg, wParam);
        case WM_HSCROLL:
            return OnHScroll(hDlg, lParam);
        case WM_DESTROY:
            ReleasePictures(hDlg, kPictures, std::size(kPictures));
            return 0;
        default:
            return 0;
    }
}

bool ValidatePrintPage(HWND hDlg, PageContext&, OemUiState&) {
    auto failure = ValidatePrintValues(TrackbarPosition(hDlg, IDC_PRINT_THRESHOLD),
                                       TrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER),
                                       TrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER));
    if (failure) {
        ReportValidationFailure(hDlg, *failure);
        return false;
    }
    return true;
}

void UpdatePrintPage(HWND hDlg, PageContext&, UiDeviceCommon& device) {
    PrintControls controls{
        ComboSelection(hDlg, IDC_PRINT_QUALITY),
        ComboSelection(hDlg, IDC_PRINT_DENSITY),
        ComboSelection(hDlg, IDC_PRINT_DITHERING_TYPE),
        TrackbarPosition(hDlg, IDC_PRINT_THRESHOLD),
        TrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER),
        TrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER),
    };
    PrintSettings settings =
        ReadPrintControls(controls, device.GetQualityList(), device.GetDensityList());
    device.SetDensity(settings.density);
    device.SetQuality(settings.quality);
    device.SetConvMode(settings.ditherMode);
    device.SetConvThreshold(settings.threshold);
    device.SetConvFilterDown(settings.lowFilter);
    device.SetConvFilterUp(settings.highFilter);
}
