// The Logos page: four logo slots edited one at a time, each from the printer's memory or from
// an image file, and the print preview of the shown slot.
#include "../../resources/resource.h"
#include "pages/logos_rules.h"
#include "pages/page_framework_win.h"
#include "settings/ui_device_common.h"

namespace {

constexpr wchar_t kLogosHelp[] =
    L"LOGOS\n\nPrints logos at the beginning and at the end of the document and of every\n"
    L"page.\n\nLogo: the slot to edit; each slot keeps its own settings.\n\nSource: Internal "
    L"NVRAM prints a logo stored in the printer's memory (by its\nnumber), File prints an image "
    L"file.\n\nSize: Keep prints the image at its own size, Zoom fits it to the paper "
    L"width.\n\nAlign: where the logo stands on the paper.\n";

constexpr PictureRow kPictures[] = {{IDC_LOGOS_SLOT_PICTURE, IDB_PNG_LOGO_TOP}};
constexpr HelpRow kHelps[] = {{IDC_LOGOS_HELP, kLogosHelp}};
constexpr PreviewRow kPreviews[] = {{IDC_LOGOS_PATH, IDC_LOGOS_BROWSE, IDC_LOGOS_PREVIEW}};

constexpr int kSourceControls[] = {
    IDC_LOGOS_SOURCE_CAPTION, IDC_LOGOS_SOURCE, IDC_LOGOS_SIZE_CAPTION, IDC_LOGOS_SIZE,
    IDC_LOGOS_ALIGN_CAPTION,  IDC_LOGOS_ALIGN,  IDC_LOGOS_PRINT_PREVIEW};
constexpr int kNumberControls[] = {IDC_LOGOS_NUMBER_CAPTION, IDC_LOGOS_NUMBER};
constexpr int kFileControls[] = {IDC_LOGOS_PATH_CAPTION, IDC_LOGOS_PATH, IDC_LOGOS_BROWSE};

void FollowChoices(HWND hDlg) {
    const LogoSlotStates states = LogoControlStates(IsChecked(hDlg, IDC_LOGOS_ENABLE),
                                                    ComboSelection(hDlg, IDC_LOGOS_SOURCE));
    SetControlsState(hDlg, kSourceControls, EnableMode(states.source));
    SetControlsState(hDlg, kNumberControls, EnableMode(states.number));
    SetControlsState(hDlg, kFileControls, EnableMode(states.file));
}

// The slot whose values the controls hold, kept in the page window's own user data.
size_t ShownSlot(HWND hDlg) {
    const LONG_PTR slot = GetWindowLongPtrW(hDlg, GWLP_USERDATA);
    return slot >= 0 && static_cast<size_t>(slot) < kLogoCount ? static_cast<size_t>(slot) : 0;
}

void ShowSlot(HWND hDlg, const UiDeviceCommon& device, size_t slot) {
    FillingScope filling(hDlg);
    const LogoSlotView view = MakeLogoSlotView(device.GetLogo(slot));
    SetChecked(hDlg, IDC_LOGOS_ENABLE, view.enabled);
    FillComboFromLabels(hDlg, IDC_LOGOS_SOURCE, view.source.labels, view.source.selection);
    FillComboFromLabels(hDlg, IDC_LOGOS_NUMBER, view.number.labels, view.number.selection);
    WriteControlText(hDlg, IDC_LOGOS_PATH, view.path);
    FillComboFromLabels(hDlg, IDC_LOGOS_SIZE, view.size.labels, view.size.selection);
    FillComboFromLabels(hDlg, IDC_LOGOS_ALIGN, view.align.labels, view.align.selection);
    SetWindowLongPtrW(hDlg, GWLP_USERDATA, static_cast<LONG_PTR>(slot));
    FollowChoices(hDlg);
}

LogoSlotControls ReadControls(HWND hDlg) {
    return LogoSlotControls{
        IsChecked(hDlg, IDC_LOGOS_ENABLE),
        ComboSelection(hDlg, IDC_LOGOS_SOURCE),
        ComboSelection(hDlg, IDC_LOGOS_NUMBER),
        ReadControlText(hDlg, IDC_LOGOS_PATH, kImagePathChars),
        ComboSelection(hDlg, IDC_LOGOS_SIZE),
        ComboSelection(hDlg, IDC_LOGOS_ALIGN),
    };
}

// The slot read: the shown slot's controls into the device.
void ReadShownSlot(HWND hDlg, UiDeviceCommon& device) {
    device.SetLogo(ShownSlot(hDlg), ReadLogoSlot(ReadControls(hDlg)));
}

void Fill(HWND hDlg, UiDeviceCommon& device) {
    FillComboFromLabels(hDlg, IDC_LOGOS_SLOT, LogoPhaseLabels(), 0);
    ShowSlot(hDlg, device, 0);
}

std::vector<uint8_t> Render(HWND hDlg, UniExportedFunctions& bridge, const PreviewPaper& paper) {
    const LogoPreview preview = LogoPreviewRequest(ReadControls(hDlg), paper);
    return preview.fromMemory
               ? bridge.GetBuffer_PrintLogoNVRAM(preview.number, preview.file.position)
               : bridge.GetBuffer_PrintLogoFILE(preview.file);
}

bool OnCommand(HWND hDlg, int id, int code) {
    if (id == IDC_LOGOS_PRINT_PREVIEW) {
        if (code == BN_CLICKED) {
            PrintPreview(hDlg, PageId::kLogo, Render,
                         "Impossible to print the preview of the logo");
        }
        return false;
    }
    if (id == IDC_LOGOS_SLOT) {
        UiDeviceCommon* device = PageDevice(hDlg);
        const int slot = ComboSelection(hDlg, IDC_LOGOS_SLOT);
        if (code == CBN_SELCHANGE && device != nullptr && slot >= 0) {
            ReadShownSlot(hDlg, *device);
            ShowSlot(hDlg, *device, static_cast<size_t>(slot));
            SetPicture(
                hDlg, IDC_LOGOS_SLOT_PICTURE,
                slot < static_cast<int>(kLogoEndPage) ? IDB_PNG_LOGO_TOP : IDB_PNG_LOGO_BOTTOM);
        }
        return false;  // another slot shown is no change of a setting
    }
    FollowChoices(hDlg);
    return true;
}

ValidationFindings Validate(HWND hDlg) {
    UiDeviceCommon* device = PageDevice(hDlg);
    if (device == nullptr) {
        return {};
    }
    ReadShownSlot(hDlg, *device);
    return ValidateLogoSlots(*device, PathExists);
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kLogo>() {
    static const PageDefinition definition{
        .pictures = kPictures,
        .helps = kHelps,
        .trackbars = {},
        .fill = Fill,
        .onCommand = OnCommand,
        .validate = Validate,
        .store = ReadShownSlot,
        .previews = kPreviews,
    };
    return definition;
}
