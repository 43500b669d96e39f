// The document properties callback: apply, page activation and the Reset Default request.
#include "entry/doc_callback_win.h"

#include <cstring>

#include "session/oem_ui_state.h"
#include "session/page_context_win.h"
#include "pages/save_settings_win.h"
#include "entry/record_repair.h"
#include "infra/guarded.h"
#include "infra/log.h"
#include "settings/ui_device_common.h"

namespace {

const char kCallbackName[] = "OEMDocUICallBack";

// The framework's record is ours only when it carries our signature and room for the whole
// record; anything else is left untouched.
bool IsOurRecord(const void* record) {
    OEM_DMEXTRAHEADER header;
    std::memcpy(&header, record, sizeof header);
    return header.dwSignature == KIVITEM_SIGNATURE && header.dwSize >= OEMDEV_SIZE;
}

// Apply: a pending Reset Default writes the model's defaults; otherwise the visited pages are
// checked, read back and saved. The state comes from the page block when a plug-in page was
// opened, else from pOEMUserData, so apply saves even when no plug-in page was shown.
LONG ApplyNow(HWND hDlg, POEMCUIPPARAM param) {
    PageContext* block = FindPageBlock(hDlg);
    OemUiState* state = block != nullptr ? block->pOemUiState : nullptr;
    if (state == nullptr && param != nullptr)
        state = static_cast<OemUiState*>(param->pOEMUserData);
    OEMDEV* record = nullptr;
    if (param != nullptr && param->pOEMDM != nullptr && IsOurRecord(param->pOEMDM)) {
        record = static_cast<OEMDEV*>(param->pOEMDM);
    }
    OemDevPayload* body = record != nullptr ? &record->payload : nullptr;
    LONG result = CPSUICB_ACTION_NONE;
    if (block != nullptr && block->m_bResetRequested != 0) {
        TheLog().Write(kLogInfo, kCallbackName, "RESET Settings to DEFAULT");
        if (state == nullptr || !state->device || body == nullptr) {
            // Nothing was reset: the request stays and the sheet must not close as if it had.
            TheLog().Write(kLogError, kCallbackName,
                           "RESET Settings to DEFAULT failed: the framework record is not ours");
            return CPSUICB_ACTION_NO_APPLY_EXIT;
        }
        block->m_bResetRequested = 0;
        state->device->FillOEMDEVWithDeviceValues(*body, 1);
    } else {
        result = SaveSettingsPublicDM(block, state, body, param);
    }
    // The body just written belongs to the frame the opening repaired; with the old frame (a
    // layout version 1, say) every later opening would reset the record and lose this apply.
    if (result == CPSUICB_ACTION_NONE && state != nullptr && record != nullptr) {
        CopyRepairedFrame(state->workOEMDev, *record);
    }
    return result;
}

}  // namespace

PageContext* FindPageBlock(HWND hDlg) {
    if (hDlg == nullptr)
        return nullptr;
    HWND sheet = GetParent(hDlg);
    if (sheet == nullptr)
        return nullptr;
    return reinterpret_cast<PageContext*>(GetWindowLongPtrW(sheet, GWLP_USERDATA));
}

namespace {

LONG DocUICallBack(PCPSUICBPARAM pCallbackParam, POEMCUIPPARAM pOEMUIParam) {
    if (pCallbackParam == nullptr)
        return CPSUICB_ACTION_NONE;
    switch (pCallbackParam->Reason) {
        case CPSUICB_REASON_APPLYNOW:
            TheLog().Write(kLogDetail, kCallbackName, "CPSUICB_REASON_APPLYNOW");
            return ApplyNow(pCallbackParam->hDlg, pOEMUIParam);
        case CPSUICB_REASON_SETACTIVE:
            TheLog().Write(kLogDetail, kCallbackName, "CPSUICB_REASON_SETACTIVE");
            if (PageContext* block = FindPageBlock(pCallbackParam->hDlg);
                block != nullptr && block->pfnComPropSheet != nullptr) {
                // The answer is unused (kept-behaviour: Page count at activation).
                block->pfnComPropSheet(block->hComPropSheet, CPSFUNC_GET_PAGECOUNT, 0, 0);
            }
            return CPSUICB_ACTION_NONE;
        case CPSUICB_REASON_KILLACTIVE:
            TheLog().Write(kLogDetail, kCallbackName, "CPSUICB_REASON_KILLACTIVE");
            return CPSUICB_ACTION_NONE;
        default:
            return CPSUICB_ACTION_NONE;
    }
}

}  // namespace

LONG APIENTRY OEMDocUICallBack(PCPSUICBPARAM pCallbackParam, POEMCUIPPARAM pOEMUIParam) {
    // An apply that threw saved nothing: the sheet must not close as though it had.
    const bool applying =
        pCallbackParam != nullptr && pCallbackParam->Reason == CPSUICB_REASON_APPLYNOW;
    return Guarded(kCallbackName, applying ? CPSUICB_ACTION_NO_APPLY_EXIT : CPSUICB_ACTION_NONE,
                   [&] { return DocUICallBack(pCallbackParam, pOEMUIParam); });
}
