// The Watermark page: an image printed over or under every page, and its print preview.
#include "../../resources/resource.h"
#include "pages/page_framework_win.h"
#include "pages/watermark_rules.h"
#include "settings/ui_device_common.h"

namespace {

constexpr PictureRow kPictures[] = {{IDC_WATERMARK_HEADER, IDB_PNG_WATERMARK}};
constexpr TrackbarRow kTrackbars[] = {
    {IDC_WATERMARK_BRIGHTNESS, IDC_WATERMARK_BRIGHTNESS_VALUE, BrightnessLabel}};
constexpr PreviewRow kPreviews[] = {
    {IDC_WATERMARK_PATH, IDC_WATERMARK_BROWSE, IDC_WATERMARK_PREVIEW}};

constexpr int kImageControls[] = {
    IDC_WATERMARK_PATH_CAPTION,
    IDC_WATERMARK_PATH,
    IDC_WATERMARK_BROWSE,
    IDC_WATERMARK_LAYER_CAPTION,
    IDC_WATERMARK_LAYER,
    IDC_WATERMARK_FIT_CAPTION,
    IDC_WATERMARK_FIT,
    IDC_WATERMARK_POSITION_CAPTION,
    IDC_WATERMARK_POSITION,
    IDC_WATERMARK_PRINT_PREVIEW,
    IDC_WATERMARK_BRIGHTNESS_ENABLE,
};
constexpr int kBrightnessControls[] = {IDC_WATERMARK_BRIGHTNESS, IDC_WATERMARK_BRIGHTNESS_VALUE};

void FollowEnableBoxes(HWND hDlg) {
    const WatermarkStates states = WatermarkControlStates(
        IsChecked(hDlg, IDC_WATERMARK_ENABLE), IsChecked(hDlg, IDC_WATERMARK_BRIGHTNESS_ENABLE));
    SetControlsState(hDlg, kImageControls, EnableMode(states.image));
    SetControlsState(hDlg, kBrightnessControls, EnableMode(states.brightness));
}

void Fill(HWND hDlg, UiDeviceCommon& device) {
    const WatermarkPageView view = MakeWatermarkPageView(device);
    SetChecked(hDlg, IDC_WATERMARK_ENABLE, view.enabled);
    WriteControlText(hDlg, IDC_WATERMARK_PATH, view.path);
    FillComboFromLabels(hDlg, IDC_WATERMARK_LAYER, view.layer.labels, view.layer.selection);
    FillComboFromLabels(hDlg, IDC_WATERMARK_FIT, view.fit.labels, view.fit.selection);
    FillComboFromLabels(hDlg, IDC_WATERMARK_POSITION, view.position.labels,
                        view.position.selection);
    SetChecked(hDlg, IDC_WATERMARK_BRIGHTNESS_ENABLE, view.brightnessEnabled);
    SetUpTrackbar(hDlg, IDC_WATERMARK_BRIGHTNESS, IDC_WATERMARK_BRIGHTNESS_VALUE, view.brightness);
    FollowEnableBoxes(hDlg);
}

WatermarkControls ReadControls(HWND hDlg) {
    return WatermarkControls{
        IsChecked(hDlg, IDC_WATERMARK_ENABLE),
        ReadControlText(hDlg, IDC_WATERMARK_PATH, kImagePathChars),
        ComboSelection(hDlg, IDC_WATERMARK_LAYER),
        ComboSelection(hDlg, IDC_WATERMARK_FIT),
        ComboSelection(hDlg, IDC_WATERMARK_POSITION),
        IsChecked(hDlg, IDC_WATERMARK_BRIGHTNESS_ENABLE),
        TrackbarPosition(hDlg, IDC_WATERMARK_BRIGHTNESS),
    };
}

std::vector<uint8_t> Render(HWND hDlg, UniExportedFunctions& bridge, const PreviewPaper& paper) {
    return bridge.GetBuffer_PrintWatermarkFILE(WatermarkPreviewRequest(ReadControls(hDlg), paper));
}

bool OnCommand(HWND hDlg, int id, int code) {
    if (id == IDC_WATERMARK_PRINT_PREVIEW) {
        if (code == BN_CLICKED) {
            PrintPreview(hDlg, PageId::kWatermark, Render,
                         "Impossible to print the preview of the watermark");
        }
        return false;
    }
    FollowEnableBoxes(hDlg);
    return true;
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kWatermark>() {
    static const PageDefinition definition{
        .pictures = kPictures,
        .helps = {},
        .trackbars = kTrackbars,
        .fill = Fill,
        .onCommand = OnCommand,
        .validate =
            [](HWND hDlg) {
                return Findings(ValidateWatermarkControls(ReadControls(hDlg), PathExists));
            },
        .store = [](HWND hDlg,
                    UiDeviceCommon& device) { StoreWatermarkControls(device, ReadControls(hDlg)); },
        .previews = kPreviews,
    };
    return definition;
}
