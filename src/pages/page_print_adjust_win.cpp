// The Print adjust page: print offset, white cropping and skipping, rotation, paper reduction.
#include <iterator>

#include "../../resources/resource.h"
#include "infra/log.h"
#include "pages/page_framework_win.h"
#include "pages/save_settings_win.h"
#include "settings/ui_device_common.h"

namespace {

// The second paragraph names the top option while describing the bottom one; users have
// always read it so.
constexpr const wchar_t kCropRotationHelp[] =
    L"CROP / ROTATION\n\nWhite cropping top of the page: sets the crop option to remove unwanted "
    L"white portions\non the top of the document from the printout.\n\nWhite cropping top of the "
    L"page: sets the crop option to remove unwanted white portions\non the bottom of the "
    L"document from the printout.\n\nSkip White Pages: skips all the totally white pages of the "
    L"document from the printout.\n\n180\u00B0 Page Rotation: Rotates of 180\u00B0 all the pages "
    L"of the document from the printout.\n";
constexpr const wchar_t kPaperReductionHelp[] =
    L"PAPER REDUCTION\n\nWhen enabled it reduces the white spaces between lines by\nthe set "
    L"percentage to use less paper.\n";

constexpr int kPictures[] = {
    IDC_ADJUST_OFFSET_PICTURE,   IDC_ADJUST_REDUCTION_PICTURE, IDC_ADJUST_CROP_BOTTOM_PICTURE,
    IDC_ADJUST_CROP_TOP_PICTURE, IDC_ADJUST_ROTATION_PICTURE,  IDC_ADJUST_SKIP_WHITE_PICTURE,
    IDC_ADJUST_OPTIONS_HELP,     IDC_ADJUST_REDUCTION_HELP,
};

// An offset edit read the way the check reads it: 8 characters and the terminator.
constexpr int kOffsetBufferChars = static_cast<int>(kOffsetTextLimit) + 1;

PrintAdjustSettings StoredPrintAdjustSettings(const OemUiState& state) {
    PrintAdjustSettings settings;
    if (const UiDeviceCommon* device = state.device.get()) {
        settings.offsetX = device->GetOffsetX();
        settings.offsetY = device->GetOffsetY();
        settings.whiteTopCrop = device->GetWhiteTopCrop();
        settings.whiteBottomCrop = device->GetWhiteBottomCrop();
        settings.skipWhitePages = device->GetSkipWhitePages();
        settings.rotate180 = device->GetRotate180();
        settings.reductionEnable = device->GetReductionEnable();
        settings.reductionValue = device->GetReductionValue();
        return settings;
    }
    const OemDevPayload& payload = state.workOEMDev.payload;
    settings.offsetX = payload.offsetX;
    settings.offsetY = payload.offsetY;
    settings.whiteTopCrop = payload.whiteTopCrop;
    settings.whiteBottomCrop = payload.whiteBottomCrop;
    settings.skipWhitePages = payload.skipWhitePages;
    settings.rotate180 = payload.rotate180;
    settings.reductionEnable = payload.reductionEnable;
    settings.reductionValue = payload.reductionValue;
    return settings;
}

void FillPage(HWND hDlg, PageContext& context) {
    if (context.pOemUiState == nullptr) {
        return;
    }
    PrintAdjustView view = MakePrintAdjustView(StoredPrintAdjustSettings(*context.pOemUiState));
    WriteControlText(hDlg, IDC_ADJUST_X_OFFSET, view.offsetXText);
    WriteControlText(hDlg, IDC_ADJUST_Y_OFFSET, view.offsetYText);
    SetChecked(hDlg, IDC_ADJUST_CROP_TOP, view.whiteTopCrop);
    SetChecked(hDlg, IDC_ADJUST_CROP_BOTTOM, view.whiteBottomCrop);
    SetChecked(hDlg, IDC_ADJUST_SKIP_WHITE, view.skipWhitePages);
    SetChecked(hDlg, IDC_ADJUST_ROTATION, view.rotate180);
    SetChecked(hDlg, IDC_ADJUST_REDUCTION_ENABLE, view.reductionChecked);
    if (!view.reductionValueEnabled) {
        SetControlState(hDlg, IDC_ADJUST_REDUCTION_VALUE, kControlDisable);
    }
    FillComboFromLabels(hDlg, IDC_ADJUST_REDUCTION_VALUE, view.scale.labels, view.scale.selection);

    SetPicture(hDlg, IDC_ADJUST_OFFSET_PICTURE, IDB_PNG_ADJUST_OFFSET);
    SetPicture(hDlg, IDC_ADJUST_REDUCTION_PICTURE, IDB_PNG_ADJUST_REDUCTION);
    SetPicture(hDlg, IDC_ADJUST_CROP_BOTTOM_PICTURE, IDB_PNG_ADJUST_CROP_BOTTOM);
    SetPicture(hDlg, IDC_ADJUST_CROP_TOP_PICTURE, IDB_PNG_ADJUST_CROP_TOP);
    SetPicture(hDlg, IDC_ADJUST_ROTATION_PICTURE, IDB_PNG_ADJUST_ROTATION);
    SetPicture(hDlg, IDC_ADJUST_SKIP_WHITE_PICTURE, IDB_PNG_ADJUST_SKIP_WHITE);
    SetPicture(hDlg, IDC_ADJUST_OPTIONS_HELP, IDB_PNG_HELP);
    SetPicture(hDlg, IDC_ADJUST_REDUCTION_HELP, IDB_PNG_HELP);
    CreateHelpTooltip(IDC_ADJUST_OPTIONS_HELP, hDlg, kCropRotationHelp);
    CreateHelpTooltip(IDC_ADJUST_REDUCTION_HELP, hDlg, kPaperReductionHelp);
}

INT_PTR OnInitDialog(HWND hDlg, LPARAM lParam) {
    PageContext* context = AttachPageContext(hDlg, lParam);
    if (TakeFirstFill(context, PageId::kPrintAdjust)) {
        FillPage(hDlg, *context);
    }
    return 1;
}

INT_PTR OnCommand(HWND hDlg, WPARAM wParam) {
    const int id = LOWORD(wParam);
    const int code = HIWORD(wParam);
    switch (id) {
        case IDC_ADJUST_CROP_BOTTOM:
        case IDC_ADJUST_SKIP_WHITE:
        case IDC_ADJUST_CROP_TOP:
        case IDC_ADJUST_ROTATION:
            if (code == BN_CLICKED) {
                NotifyPageChanged(hDlg);
            }
            break;
        case IDC_ADJUST_REDUCTION_ENABLE:
            if (code == BN_CLICKED) {
                SetControlState(hDlg, IDC_ADJUST_REDUCTION_VALUE,
                                IsChecked(hDlg, IDC_ADJUST_REDUCTION_ENABLE) ? kControlEnable
                                                                             : kControlDisable);
                NotifyPageChanged(hDlg);
            }
            break;
        case IDC_ADJUST_REDUCTION_VALUE:
            if (code == CBN_SELCHANGE) {
                NotifyPageChanged(hDlg);
            }
            break;
        case IDC_ADJUST_X_OFFSET:
        case IDC_ADJUST_Y_OFFSET:
            if (code == EN_CHANGE) {
                NotifyPageChanged(hDlg);
            }
            break;
        case IDC_ADJUST_OPTIONS_HELP:
            if (code == STN_CLICKED) {
                PopUpHelp(IDC_ADJUST_OPTIONS_HELP, hDlg, kCropRotationHelp);
            }
            break;
        case IDC_ADJUST_REDUCTION_HELP:
            if (code == STN_CLICKED) {
                PopUpHelp(IDC_ADJUST_REDUCTION_HELP, hDlg, kPaperReductionHelp);
            }
            break;
        default:
            break;
    }
    return 1;
}

}  // namespace

INT_PTR CALLBACK DevicePropPageDocPrintAdjust(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam) {
    PageContext* context = nullptr;
    if (!LookUpPageContext(hDlg, PageId::kPrintAdjust, &context)) {
        return 0;
    }
    switch (uMsg) {
        case WM_INITDIALOG:
            return OnInitDialog(hDlg, lParam);
        case WM_COMMAND:
            return OnCommand(hDlg, wParam);
        case WM_DESTROY:
            ReleasePictures(hDlg, kPictures, std::size(kPictures));
            return 0;
        default:
            return 0;
    }
}

bool ValidatePrintAdjustPage(HWND hDlg, PageContext&, OemUiState&) {
    auto failure =
        ValidatePrintAdjustOffsets(ReadControlText(hDlg, IDC_ADJUST_X_OFFSET, kOffsetBufferChars),
                                   ReadControlText(hDlg, IDC_ADJUST_Y_OFFSET, kOffsetBufferChars));
    if (failure) {
        ReportValidationFailure(hDlg, *failure);
        return false;
    }
    return true;
}

void UpdatePrintAdjustPage(HWND hDlg, PageContext&, UiDeviceCommon& device) {
    PrintAdjustSettings stored;
    stored.reductionValue = device.GetReductionValue();
    PrintAdjustControls controls{
        ReadControlText(hDlg, IDC_ADJUST_X_OFFSET, kOffsetBufferChars),
        ReadControlText(hDlg, IDC_ADJUST_Y_OFFSET, kOffsetBufferChars),
        IsChecked(hDlg, IDC_ADJUST_CROP_TOP),
        IsChecked(hDlg, IDC_ADJUST_CROP_BOTTOM),
        IsChecked(hDlg, IDC_ADJUST_SKIP_WHITE),
        IsChecked(hDlg, IDC_ADJUST_ROTATION),
        IsChecked(hDlg, IDC_ADJUST_REDUCTION_ENABLE),
        ComboSelection(hDlg, IDC_ADJUST_REDUCTION_VALUE),
    };
    PrintAdjustSettings settings = ReadPrintAdjustControls(controls, stored);
    device.SetOffsetX(settings.offsetX);
    device.SetOffsetY(settings.offsetY);
    device.SetSkipWhitePages(settings.skipWhitePages);
    device.SetWhiteTopCrop(settings.whiteTopCrop);
    device.SetWhiteBottomCrop(settings.whiteBottomCrop);
    device.SetRotate180(settings.rotate180);
    device.SetReductionEnable(settings.reductionEnable);
    device.SetReductionValue(settings.reductionValue);
}
