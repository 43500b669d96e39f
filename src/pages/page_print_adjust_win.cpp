// The Print adjust page: print offset, white cropping and skipping, rotation, paper reduction.
#include "../../resources/resource.h"
#include "pages/page_framework_win.h"
#include "pages/print_adjust_rules.h"
#include "settings/ui_device_common.h"

namespace {

// The second paragraph names the top option while describing the bottom one; the help text is
// kept word for word (kept-behaviour: Texts kept as written).
constexpr wchar_t kCropRotationHelp[] =
    L"CROP / ROTATION\n\nWhite cropping top of the page: sets the crop option to remove unwanted "
    L"white portions\non the top of the document from the printout.\n\nWhite cropping top of the "
    L"page: sets the crop option to remove unwanted white portions\non the bottom of the "
    L"document from the printout.\n\nSkip White Pages: skips all the totally white pages of the "
    L"document from the printout.\n\n180\u00B0 Page Rotation: Rotates of 180\u00B0 all the pages "
    L"of the document from the printout.\n";
constexpr wchar_t kPaperReductionHelp[] =
    L"PAPER REDUCTION\n\nWhen enabled it reduces the white spaces between lines by\nthe set "
    L"percentage to use less paper.\n";

constexpr PictureRow kPictures[] = {
    {IDC_ADJUST_OFFSET_PICTURE, IDB_PNG_ADJUST_OFFSET},
    {IDC_ADJUST_REDUCTION_PICTURE, IDB_PNG_ADJUST_REDUCTION},
    {IDC_ADJUST_CROP_BOTTOM_PICTURE, IDB_PNG_ADJUST_CROP_BOTTOM},
    {IDC_ADJUST_CROP_TOP_PICTURE, IDB_PNG_ADJUST_CROP_TOP},
    {IDC_ADJUST_ROTATION_PICTURE, IDB_PNG_ADJUST_ROTATION},
    {IDC_ADJUST_SKIP_WHITE_PICTURE, IDB_PNG_ADJUST_SKIP_WHITE},
};
constexpr HelpRow kHelps[] = {
    {IDC_ADJUST_OPTIONS_HELP, kCropRotationHelp},
    {IDC_ADJUST_REDUCTION_HELP, kPaperReductionHelp},
};

// An offset edit read the way the check reads it: 8 characters and the terminator.
constexpr int kOffsetBufferChars = static_cast<int>(kOffsetTextLimit) + 1;

void EnableReductionValue(HWND hDlg, bool enabled) {
    SetControlState(hDlg, IDC_ADJUST_REDUCTION_VALUE, enabled ? kControlEnable : kControlDisable);
}

void Fill(HWND hDlg, UiDeviceCommon& device) {
    const PrintAdjustView view = MakePrintAdjustView(device);
    const PrintAdjustControls& shown = view.controls;
    WriteControlText(hDlg, IDC_ADJUST_X_OFFSET, shown.offsetXText);
    WriteControlText(hDlg, IDC_ADJUST_Y_OFFSET, shown.offsetYText);
    SetChecked(hDlg, IDC_ADJUST_CROP_TOP, shown.whiteTopCrop);
    SetChecked(hDlg, IDC_ADJUST_CROP_BOTTOM, shown.whiteBottomCrop);
    SetChecked(hDlg, IDC_ADJUST_SKIP_WHITE, shown.skipWhitePages);
    SetChecked(hDlg, IDC_ADJUST_ROTATION, shown.rotate180);
    SetChecked(hDlg, IDC_ADJUST_REDUCTION_ENABLE, shown.reductionChecked);
    EnableReductionValue(hDlg, shown.reductionChecked);
    FillComboFromLabels(hDlg, IDC_ADJUST_REDUCTION_VALUE, view.scaleLabels, shown.scaleSelection);
}

bool OnCommand(HWND hDlg, int id, int code) {
    if (id == IDC_ADJUST_REDUCTION_ENABLE && code == BN_CLICKED) {
        EnableReductionValue(hDlg, IsChecked(hDlg, IDC_ADJUST_REDUCTION_ENABLE));
    }
    return true;
}

PrintAdjustControls ReadControls(HWND hDlg) {
    return PrintAdjustControls{
        ReadControlText(hDlg, IDC_ADJUST_X_OFFSET, kOffsetBufferChars),
        ReadControlText(hDlg, IDC_ADJUST_Y_OFFSET, kOffsetBufferChars),
        IsChecked(hDlg, IDC_ADJUST_CROP_TOP),
        IsChecked(hDlg, IDC_ADJUST_CROP_BOTTOM),
        IsChecked(hDlg, IDC_ADJUST_SKIP_WHITE),
        IsChecked(hDlg, IDC_ADJUST_ROTATION),
        IsChecked(hDlg, IDC_ADJUST_REDUCTION_ENABLE),
        ComboSelection(hDlg, IDC_ADJUST_REDUCTION_VALUE),
    };
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kPrintAdjust>() {
    static const PageDefinition definition{
        kPictures,
        kHelps,
        {},
        Fill,
        OnCommand,
        [](HWND hDlg) { return Findings(ValidatePrintAdjustControls(ReadControls(hDlg))); },
        [](HWND hDlg, UiDeviceCommon& device) {
            StorePrintAdjustControls(device, ReadControls(hDlg));
        },
    };
    return definition;
}
