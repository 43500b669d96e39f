// The Coupon page: an image printed after the document, its copies and cuts, its print preview.
#include "../../resources/resource.h"
#include "pages/coupon_rules.h"
#include "pages/page_framework_win.h"
#include "settings/ui_device_common.h"

namespace {

constexpr wchar_t kCouponHelp[] =
    L"COUPON\n\nPrints an image after the document, for example a voucher or a loyalty\n"
    L"coupon.\n\nImage file: the picture to print (BMP, PNG, JPG, GIF or TIFF).\n\nSize: Keep "
    L"prints the image at its own size, Zoom fits it to the paper width.\n\nAlign: where an "
    L"image narrower than the paper stands.\n\nCopies: how many coupons follow the document; "
    L"the cuts say how the copies\nare separated and how the last one ends.\n";

constexpr PictureRow kPictures[] = {{IDC_COUPON_HEADER, IDB_PNG_COUPON}};
constexpr HelpRow kHelps[] = {{IDC_COUPON_HELP, kCouponHelp}};
constexpr PreviewRow kPreviews[] = {{IDC_COUPON_PATH, IDC_COUPON_BROWSE, IDC_COUPON_PREVIEW}};

constexpr int kCouponControls[] = {
    IDC_COUPON_PATH_CAPTION,
    IDC_COUPON_PATH,
    IDC_COUPON_BROWSE,
    IDC_COUPON_SIZE_CAPTION,
    IDC_COUPON_SIZE,
    IDC_COUPON_ALIGN_CAPTION,
    IDC_COUPON_ALIGN,
    IDC_COUPON_PRINT_PREVIEW,
    IDC_COUPON_COPIES_CAPTION,
    IDC_COUPON_COPIES,
    IDC_COUPON_CUT_BETWEEN_CAPTION,
    IDC_COUPON_CUT_BETWEEN,
    IDC_COUPON_CUT_LAST_CAPTION,
    IDC_COUPON_CUT_LAST,
};

void FollowEnableBox(HWND hDlg) {
    SetControlsState(hDlg, kCouponControls, EnableMode(IsChecked(hDlg, IDC_COUPON_ENABLE)));
}

void Fill(HWND hDlg, UiDeviceCommon& device) {
    const CouponPageView view = MakeCouponPageView(device);
    SetChecked(hDlg, IDC_COUPON_ENABLE, view.enabled);
    WriteControlText(hDlg, IDC_COUPON_PATH, view.path);
    FillComboFromLabels(hDlg, IDC_COUPON_ALIGN, view.align.labels, view.align.selection);
    FillComboFromLabels(hDlg, IDC_COUPON_SIZE, view.size.labels, view.size.selection);
    FillComboFromLabels(hDlg, IDC_COUPON_COPIES, view.copies.labels, view.copies.selection);
    FillComboFromLabels(hDlg, IDC_COUPON_CUT_BETWEEN, view.cutBetween.labels,
                        view.cutBetween.selection);
    FillComboFromLabels(hDlg, IDC_COUPON_CUT_LAST, view.cutLast.labels, view.cutLast.selection);
    FollowEnableBox(hDlg);
}

CouponControls ReadControls(HWND hDlg) {
    return CouponControls{
        IsChecked(hDlg, IDC_COUPON_ENABLE),
        ReadControlText(hDlg, IDC_COUPON_PATH, kImagePathChars),
        ComboSelection(hDlg, IDC_COUPON_ALIGN),
        ComboSelection(hDlg, IDC_COUPON_SIZE),
        ComboSelection(hDlg, IDC_COUPON_COPIES),
        ComboSelection(hDlg, IDC_COUPON_CUT_BETWEEN),
        ComboSelection(hDlg, IDC_COUPON_CUT_LAST),
    };
}

std::vector<uint8_t> Render(HWND hDlg, UniExportedFunctions& bridge, const PreviewPaper& paper) {
    return bridge.GetBuffer_PrintCouponFILE(CouponPreviewRequest(ReadControls(hDlg), paper));
}

bool OnCommand(HWND hDlg, int id, int code) {
    if (id == IDC_COUPON_PRINT_PREVIEW) {
        if (code == BN_CLICKED) {
            PrintPreview(hDlg, PageId::kCoupon, Render,
                         "Impossible to print the preview of the coupon");
        }
        return false;
    }
    FollowEnableBox(hDlg);
    return true;
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kCoupon>() {
    static const PageDefinition definition{
        .pictures = kPictures,
        .helps = kHelps,
        .trackbars = {},
        .fill = Fill,
        .onCommand = OnCommand,
        .validate =
            [](HWND hDlg) {
                return Findings(ValidateCouponControls(ReadControls(hDlg), PathExists));
            },
        .store = [](HWND hDlg,
                    UiDeviceCommon& device) { StoreCouponControls(device, ReadControls(hDlg)); },
        .previews = kPreviews,
    };
    return definition;
}
