// The document property sheet: registering the plug-in's pages and answering the sheet's reasons.
#include "entry/property_sheets_win.h"

#include <cstddef>

#include "entry/intrface_win.h"
#include "infra/guarded.h"
#include "infra/log.h"
#include "session/page_context_win.h"
#include "pages/page_framework_win.h"
#include "settings/ui_device_common.h"

namespace {

const char kFn[] = "hrOEMDocumentPropertySheets";

uint32_t g_adminMode = 0;
uint32_t* g_keptAdminFlag = nullptr;

// The framework is handed full-size (version 4) pages; mingw-w64's declaration stops before the
// header bitmap, the last member.
struct PropSheetPageV4 {
    PROPSHEETPAGEW page;
    HBITMAP hbmHeader;
};
static_assert(sizeof(PropSheetPageV4) == 104);
static_assert(offsetof(PropSheetPageV4, hbmHeader) == 96);

// Frees the sheet's block on the heap it came from. The page windows and the sheet may outlive
// it (a framework that destroys them later, a second INIT): they let go of it first, so none
// of them reaches freed memory.
void FreePageBlock(OemUiState* state) {
    if (state == nullptr || state->pageBlock == nullptr)
        return;
    auto* block = static_cast<PageContext*>(state->pageBlock);
    const auto held = reinterpret_cast<LONG_PTR>(block);
    for (HWND PageContext::*slot : kPageSlots) {
        HWND page = block->*slot;
        if (page == nullptr || !IsWindow(page))
            continue;
        if (GetWindowLongPtrW(page, DWLP_USER) == held)
            SetWindowLongPtrW(page, DWLP_USER, 0);
        HWND sheet = GetParent(page);
        if (sheet != nullptr && GetWindowLongPtrW(sheet, GWLP_USERDATA) == held)
            SetWindowLongPtrW(sheet, GWLP_USERDATA, 0);
    }
    if (block->hHeap != nullptr)
        HeapFree(block->hHeap, 0, block);
    state->pageBlock = nullptr;
}

void RegisterPages(PPROPSHEETUI_INFO info, POEMUIPSPARAM psp, OemUiState* state,
                   uint32_t* adminFlag, uint32_t lmAvailable, uint32_t lmBidi, uint32_t lmEnable) {
    // A second INIT without a DESTROY between them: the first block goes.
    FreePageBlock(state);
    auto* block = static_cast<PageContext*>(
        HeapAlloc(psp->hOEMHeap, HEAP_ZERO_MEMORY, kPageContextBlockSize));
    if (block == nullptr) {
        TheLog().Write(kLogError, kFn, "page block allocation failed.");
        return;
    }
    block->hHeap = psp->hOEMHeap;
    uint8_t flags[kCapabilityFlagCount];
    UiDeviceCommon* device = state != nullptr ? state->device.get() : nullptr;
    if (device != nullptr) {
        for (size_t i = 0; i < kCapabilityFlagCount; ++i)
            flags[i] = device->GetCapabilityFlag(i);
    }
    const bool admin = adminFlag != nullptr && *adminFlag != 0;
    for (PageId id : PagesToRegister(device != nullptr ? flags : nullptr, admin)) {
        PropSheetPageV4 full{};
        PROPSHEETPAGEW& page = full.page;
        page.dwSize = sizeof full;
        page.hInstance = KivModuleHandle();
        page.pszTemplate = MAKEINTRESOURCEW(CatalogRow(id).dialogId);
        page.pfnDlgProc = PageProcedureOf(id);
        page.lParam = reinterpret_cast<LPARAM>(block);
        info->pfnComPropSheet(info->hComPropSheet, CPSFUNC_ADD_PROPSHEETPAGEW,
                              reinterpret_cast<LPARAM>(&page), 0);
        TheLog().Write(kLogDetail, kFn, "%s", NamesOf(id).addedText.c_str());
    }
    block->hComPropSheet = info->hComPropSheet;
    block->pOEMUIPSParam = psp;
    block->pfnComPropSheet = info->pfnComPropSheet;
    block->pOemUiState = state;
    block->lmAvailable = lmAvailable;
    block->lmBidi = lmBidi;
    block->lmEnable = lmEnable;
    block->m_bAdminMode = admin ? 1 : 0;
    if (state != nullptr)
        state->pageBlock = block;
}

}  // namespace

uint32_t* ModuleAdminFlag() {
    return &g_adminMode;
}
uint32_t* KeptAdminFlag() {
    return g_keptAdminFlag;
}

namespace {

HRESULT DocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam, OemUiState* state,
                               uint32_t* adminFlag, uint32_t lmAvailable, uint32_t lmBidi,
                               uint32_t lmEnable) {
    g_keptAdminFlag = adminFlag;
    if (pPSUIInfo == nullptr || pPSUIInfo->Version != PROPSHEETUI_INFO_VERSION) {
        TheLog().Write(kLogError, kFn, "ERROR_INVALID_PARAMETER.");
        SetLastError(ERROR_INVALID_PARAMETER);
        return E_FAIL;
    }
    switch (pPSUIInfo->Reason) {
        case PROPSHEETUI_REASON_INIT: {
            TheLog().Write(kLogInfo, kFn, "PROPSHEETUI_REASON_INIT");
            auto* psp = reinterpret_cast<POEMUIPSPARAM>(pPSUIInfo->lParamInit);
            if (psp != nullptr && pPSUIInfo->pfnComPropSheet != nullptr) {
                RegisterPages(pPSUIInfo, psp, state, adminFlag, lmAvailable, lmBidi, lmEnable);
            } else {
                TheLog().Write(kLogError, kFn, "no sheet parameters, no pages added.");
            }
            pPSUIInfo->Result = 0;
            break;
        }
        case PROPSHEETUI_REASON_GET_INFO_HEADER:
            TheLog().Write(kLogInfo, kFn, "PROPSHEETUI_REASON_GET_INFO_HEADER");
            pPSUIInfo->Result = 1;
            break;
        case PROPSHEETUI_REASON_DESTROY:
            TheLog().Write(kLogInfo, kFn, "PROPSHEETUI_REASON_DESTROY");
            FreePageBlock(state);
            pPSUIInfo->Result = 1;
            break;
        case PROPSHEETUI_REASON_SET_RESULT:
            TheLog().Write(kLogInfo, kFn, "PROPSHEETUI_REASON_SET_RESULT");
            pPSUIInfo->Result = lParam != 0 ? reinterpret_cast<PSETRESULT_INFO>(lParam)->Result : 0;
            break;
        case PROPSHEETUI_REASON_GET_ICON:
            TheLog().Write(kLogInfo, kFn, "PROPSHEETUI_REASON_GET_ICON");
            pPSUIInfo->Result = 0;
            break;
        case PROPSHEETUI_REASON_BEFORE_INIT:
            TheLog().Write(kLogInfo, kFn, "PROPSHEETUI_REASON_BEFORE_INIT");
            pPSUIInfo->Result = 1;
            break;
        default:
            pPSUIInfo->Result = 0;
            break;
    }
    return S_OK;
}

}  // namespace

HRESULT hrOEMDocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam, IPrintOemDriverUI*,
                                    OemUiState* state, uint32_t* adminFlag, uint32_t lmAvailable,
                                    uint32_t lmBidi, uint32_t lmEnable) {
    return Guarded(kFn, E_FAIL, [&] {
        return DocumentPropertySheets(pPSUIInfo, lParam, state, adminFlag, lmAvailable, lmBidi,
                                      lmEnable);
    });
}
