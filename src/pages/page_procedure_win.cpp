// The one dialog procedure of every document page, and the lookup of the pages.
#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>

#include "../../resources/resource.h"
#include "infra/guarded.h"
#include "infra/log.h"
#include "pages/page_framework_win.h"
#include "settings/ui_device_common.h"

namespace {

// Keeps the page's slot pointing at its current window; a changed window is logged.
void TrackSlot(HWND hDlg, PageId page, PageContext& context) {
    HWND& slot = context.Slot(page);
    if (slot == nullptr) {
        slot = hDlg;
    } else if (slot != hDlg) {
        slot = hDlg;
        const PageNames names = NamesOf(page);
        TheLog().Write(kLogInfo, names.logName.c_str(), "%s", names.remapText.c_str());
    }
}

// WM_INITDIALOG: the context of the PROPSHEETPAGEW is kept in the page (DWLP_USER) and on the
// sheet (GWLP_USERDATA, where the document callback finds it).
PageContext* Attach(HWND hDlg, LPARAM lParam) {
    const auto* sheetPage = reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
    PageContext* context =
        sheetPage != nullptr ? reinterpret_cast<PageContext*>(sheetPage->lParam) : nullptr;
    SetWindowLongPtrW(hDlg, DWLP_USER, reinterpret_cast<LONG_PTR>(context));
    if (HWND sheet = GetParent(hDlg)) {
        SetWindowLongPtrW(sheet, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(context));
    }
    return context;
}

// Filling sets texts, checks and selections; an edit answers a new text with EN_CHANGE, which
// must not light the sheet's Apply before the user has changed anything.
void FillOnce(HWND hDlg, PageId page, const PageDefinition& definition, PageContext& context) {
    uint8_t& filled = context.pageFilled[static_cast<size_t>(page)];
    if (filled != 0) {
        return;
    }
    filled = 1;
    // A fill that throws (Guarded catches it) must not leave the page filling for good: every
    // later change of the user would then be ignored and Apply never light.
    const FillingScope filling(hDlg);
    if (definition.fill != nullptr) {
        OemUiState* state = context.pOemUiState;
        if (state != nullptr && state->device != nullptr) {
            definition.fill(hDlg, *state->device);
        } else {
            // A sheet registered before the common UI entry made a capability object: the pages
            // show the working record through a model-less one, and nothing is read back.
            UiDeviceCommon recordView("", "", "", "");
            std::string modelName;
            const OEMDEV empty{};
            recordView.FillUIDeviceValuesWithOEMDEV(
                modelName, (state != nullptr ? state->workOEMDev : empty).payload);
            definition.fill(hDlg, recordView);
        }
    }
    GdiplusSession pictures;
    for (const PictureRow& row : definition.pictures) {
        SetPicture(hDlg, row.control, row.png);
    }
    for (const HelpRow& row : definition.helps) {
        SetPicture(hDlg, row.icon, IDB_PNG_HELP);
        CreateHelpTooltip(row.icon, hDlg, row.text);
    }
}

bool IsSettingNotification(int code) {
    return code == BN_CLICKED || code == CBN_SELCHANGE || code == EN_CHANGE;
}

void NotifyChanged(HWND hDlg) {
    SendMessageW(GetParent(hDlg), PSM_CHANGED, reinterpret_cast<WPARAM>(hDlg), 0);
}

constexpr wchar_t kImageFilter[] =
    L"Image files (*.bmp;*.png;*.jpg;*.jpeg;*.gif;*.tif;*.tiff)\0"
    L"*.bmp;*.png;*.jpg;*.jpeg;*.gif;*.tif;*.tiff\0All files (*.*)\0*.*\0";

// Browse puts the chosen file into the edit, whose change then redraws the preview and counts
// as the user's change; the preview follows the edit even while the page fills. The record and
// the rendering module take the path in the ANSI code page, so a path it cannot carry is refused.
bool OnPreviewCommand(HWND hDlg, PageId page, const PageDefinition& definition, int id, int code) {
    for (const PreviewRow& row : definition.previews) {
        if (id == row.browse && code == BN_CLICKED) {
            const std::string path = AskAnsiFileToOpen(hDlg, page, kImageFilter);
            if (!path.empty()) {
                WriteControlText(hDlg, row.path, path);
            }
            return true;
        }
        if (id == row.path && code == EN_CHANGE) {
            ShowPreview(hDlg, row.picture, ReadControlText(hDlg, row.path, kImagePathChars));
        }
    }
    return false;
}

void OnCommand(HWND hDlg, PageId page, const PageDefinition& definition, const PageContext* context,
               WPARAM wParam) {
    const int id = LOWORD(wParam);
    const int code = HIWORD(wParam);
    if (OnPreviewCommand(hDlg, page, definition, id, code)) {
        return;
    }
    for (const HelpRow& row : definition.helps) {
        if (row.icon == id) {
            if (code == STN_CLICKED) {
                PopUpHelp(id, hDlg, row.text);  // kept-behaviour: Help balloons pile up
            }
            return;
        }
    }
    // A picture's click shares its code with a button's; pictures hold no setting.
    const bool picture = std::any_of(definition.pictures.begin(), definition.pictures.end(),
                                     [id](const PictureRow& row) { return row.control == id; });
    if (picture && code == STN_CLICKED && definition.onPictureClick != nullptr &&
        (context == nullptr || !context->filling)) {
        definition.onPictureClick(hDlg, id);
        return;
    }
    if (picture || !IsSettingNotification(code) || (context != nullptr && context->filling)) {
        return;
    }
    const bool setting = definition.onCommand == nullptr || definition.onCommand(hDlg, id, code);
    if (setting) {
        NotifyChanged(hDlg);
    }
}

void OnHScroll(HWND hDlg, const PageDefinition& definition, LPARAM lParam) {
    HWND trackbar = reinterpret_cast<HWND>(lParam);
    const int id = trackbar != nullptr ? GetDlgCtrlID(trackbar) : 0;
    for (const TrackbarRow& row : definition.trackbars) {
        if (row.trackbar == id) {
            WriteControlText(hDlg, row.label, row.text(TrackbarPosition(hDlg, id)));
            NotifyChanged(hDlg);
            return;
        }
    }
}

void ReleasePictures(HWND hDlg, const PageDefinition& definition) {
    for (const PictureRow& row : definition.pictures) {
        ReleasePicture(hDlg, row.control);
    }
    for (const HelpRow& row : definition.helps) {
        ReleasePicture(hDlg, row.icon);
    }
    for (const PreviewRow& row : definition.previews) {
        ReleasePicture(hDlg, row.picture);
    }
}

// WM_DESTROY: nothing keeps pointing from the block to the dead window or back; the sheet lets
// go of the block with its last page.
void Detach(HWND hDlg, PageId page, PageContext& context) {
    if (context.Slot(page) == hDlg) {
        context.Slot(page) = nullptr;
    }
    SetWindowLongPtrW(hDlg, DWLP_USER, 0);
    HWND sheet = GetParent(hDlg);
    const bool lastPage = std::all_of(std::begin(kPageSlots), std::end(kPageSlots),
                                      [&](HWND PageContext::*slot) { return !(context.*slot); });
    if (sheet != nullptr && lastPage &&
        GetWindowLongPtrW(sheet, GWLP_USERDATA) == reinterpret_cast<LONG_PTR>(&context)) {
        SetWindowLongPtrW(sheet, GWLP_USERDATA, 0);
    }
}

INT_PTR RunPage(PageId page, const PageDefinition& definition, HWND hDlg, UINT message,
                WPARAM wParam, LPARAM lParam) {
    if (hDlg == nullptr) {
        TheLog().Write(kLogInfo, NamesOf(page).logName.c_str(), "hDlg NULL");
        return 0;
    }
    PageContext* context = PageContextOf(hDlg);
    if (context != nullptr) {
        TrackSlot(hDlg, page, *context);
    }
    switch (message) {
        case WM_INITDIALOG:
            context = Attach(hDlg, lParam);
            if (context != nullptr) {
                TrackSlot(hDlg, page, *context);
                FillOnce(hDlg, page, definition, *context);
            }
            return 1;
        case WM_COMMAND:
            OnCommand(hDlg, page, definition, context, wParam);
            return 1;
        case WM_HSCROLL:
            OnHScroll(hDlg, definition, lParam);
            return 1;
        case WM_DESTROY:
            ReleasePictures(hDlg, definition);
            if (context != nullptr) {
                Detach(hDlg, page, *context);
            }
            return 0;
        default:
            return 0;
    }
}

template <PageId kPage>
INT_PTR CALLBACK PageDialogProc(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunPageProcedure(kPage, DefinitionOf<kPage>(), hDlg, message, wParam, lParam);
}

// Every catalog row needs its page's DefinitionOf: a row without one fails to link.
template <size_t... kIndex>
constexpr std::array<const PageDefinition& (*)(), kPageCount> MakeDefinitions(
    std::index_sequence<kIndex...>) {
    return {&DefinitionOf<static_cast<PageId>(kIndex)>...};
}

constexpr std::array<const PageDefinition& (*)(), kPageCount> kDefinitions =
    MakeDefinitions(std::make_index_sequence<kPageCount>());

}  // namespace

INT_PTR CALLBACK DevicePropPageDocPrint(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    return PageDialogProc<PageId::kPrint>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocPrintAdjust(HWND hDlg, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
    return PageDialogProc<PageId::kPrintAdjust>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocCutMove(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    return PageDialogProc<PageId::kCutMove>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocAccessories(HWND hDlg, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
    return PageDialogProc<PageId::kAccessories>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocPeripherals(HWND hDlg, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
    return PageDialogProc<PageId::kPeripherals>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocPresentation(HWND hDlg, UINT message, WPARAM wParam,
                                               LPARAM lParam) {
    return PageDialogProc<PageId::kPresentation>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocWatermark(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    return PageDialogProc<PageId::kWatermark>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocCoupon(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    return PageDialogProc<PageId::kCoupon>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocLogo(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    return PageDialogProc<PageId::kLogo>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocConsole(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    return PageDialogProc<PageId::kConsole>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocAdmin(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    return PageDialogProc<PageId::kAdmin>(hDlg, message, wParam, lParam);
}
INT_PTR CALLBACK DevicePropPageDocVersion(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam) {
    return PageDialogProc<PageId::kVersion>(hDlg, message, wParam, lParam);
}

namespace {

struct PageProcedure {
    PageId page;
    DLGPROC procedure;
};
// What registration hands to the framework for each page.
constexpr PageProcedure kProcedures[] = {
    {.page = PageId::kPrint, .procedure = &DevicePropPageDocPrint},
    {.page = PageId::kPrintAdjust, .procedure = &DevicePropPageDocPrintAdjust},
    {.page = PageId::kCutMove, .procedure = &DevicePropPageDocCutMove},
    {.page = PageId::kAccessories, .procedure = &DevicePropPageDocAccessories},
    {.page = PageId::kPeripherals, .procedure = &DevicePropPageDocPeripherals},
    {.page = PageId::kPresentation, .procedure = &DevicePropPageDocPresentation},
    {.page = PageId::kWatermark, .procedure = &DevicePropPageDocWatermark},
    {.page = PageId::kCoupon, .procedure = &DevicePropPageDocCoupon},
    {.page = PageId::kLogo, .procedure = &DevicePropPageDocLogo},
    {.page = PageId::kConsole, .procedure = &DevicePropPageDocConsole},
    {.page = PageId::kAdmin, .procedure = &DevicePropPageDocAdmin},
    {.page = PageId::kVersion, .procedure = &DevicePropPageDocVersion},
};
static_assert(OneRowPerPageInOrder(kProcedures), "row i holds the procedure of PageId i");

}  // namespace

INT_PTR RunPageProcedure(PageId page, const PageDefinition& definition, HWND hDlg, UINT message,
                         WPARAM wParam, LPARAM lParam) {
    return Guarded(NamesOf(page).logName.c_str(), static_cast<INT_PTR>(0),
                   [&] { return RunPage(page, definition, hDlg, message, wParam, lParam); });
}

PageContext* PageContextOf(HWND hDlg) {
    return reinterpret_cast<PageContext*>(GetWindowLongPtrW(hDlg, DWLP_USER));
}

FillingScope::FillingScope(HWND hDlg) : context_(PageContextOf(hDlg)) {
    if (context_ != nullptr) {
        was_ = context_->filling;
        context_->filling = 1;
    }
}

FillingScope::~FillingScope() {
    if (context_ != nullptr) {
        context_->filling = was_;
    }
}

OemUiState* PageState(HWND hDlg) {
    PageContext* context = PageContextOf(hDlg);
    return context != nullptr ? context->pOemUiState : nullptr;
}

UiDeviceCommon* PageDevice(HWND hDlg) {
    OemUiState* state = PageState(hDlg);
    return state != nullptr ? state->device.get() : nullptr;
}

const PageDefinition* FindPageDefinition(PageId page) {
    const size_t index = static_cast<size_t>(page);
    return index < kPageCount ? &kDefinitions[index]() : nullptr;
}

DLGPROC PageProcedureOf(PageId page) {
    const size_t index = static_cast<size_t>(page);
    return index < kPageCount ? kProcedures[index].procedure : nullptr;
}
