// The common UI entry's last step: the document and printer branches of hrOEMPropertyPage.
#include "entry/property_page_entry_win.h"

#include "entry/doc_callback_win.h"
#include "infra/log.h"

namespace {

HRESULT InvalidParameter(const char* functionName) {
    TheLog().Write(kLogError, functionName, "ERROR_INVALID_PARAMETER.");
    SetLastError(ERROR_INVALID_PARAMETER);
    return E_FAIL;
}

}  // namespace

HRESULT hrOEMPropertyPage(DWORD dwMode, POEMCUIPPARAM pOemCUIPParam) {
    switch (dwMode) {
        case OEMCUIP_DOCPROP:
            return hrDocumentPropertyPage(dwMode, pOemCUIPParam);
        case OEMCUIP_PRNPROP:
            return hrPrinterPropertyPage(dwMode, pOemCUIPParam);
        default:
            return InvalidParameter("hrOEMPropertyPage");
    }
}

HRESULT hrDocumentPropertyPage(DWORD, POEMCUIPPARAM pOemCUIPParam) {
    if (pOemCUIPParam == nullptr)
        return InvalidParameter("hrDocumentPropertyPage");
    if (pOemCUIPParam->pOEMOptItems != nullptr) {
        pOemCUIPParam->OEMCUIPCallback = OEMDocUICallBack;
    } else {
        // The counting call: the plug-in adds no items of its own to the driver's pages.
        pOemCUIPParam->cOEMOptItems = 0;
    }
    TheLog().Write(kLogInfo, "hrDocumentPropertyPage", "requesting items.");
    return S_OK;
}

HRESULT hrPrinterPropertyPage(DWORD, POEMCUIPPARAM pOemCUIPParam) {
    if (pOemCUIPParam == nullptr)
        return InvalidParameter("hrPrinterPropertyPage");
    pOemCUIPParam->cOEMOptItems = 0;
    TheLog().Write(kLogInfo, "hrPrinterPropertyPage", "requesting items.");
    return S_OK;
}

HRESULT hrOEMDevicePropertySheets(PPROPSHEETUI_INFO, LPARAM) {
    return S_OK;
}
