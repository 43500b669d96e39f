// The common UI entry's last step: the document and printer branches of hrOEMPropertyPage.
#pragma once

#include "win/windows_headers_win.h"
#include "win/oem_framework_win.h"

// OEMCUIP_DOCPROP goes to hrDocumentPropertyPage, OEMCUIP_PRNPROP to hrPrinterPropertyPage; any
// other mode fails with E_FAIL and last error 87.
HRESULT hrOEMPropertyPage(DWORD dwMode, POEMCUIPPARAM pOemCUIPParam);
// Installs the document callback on the item-filling call, asks for no items otherwise.
HRESULT hrDocumentPropertyPage(DWORD dwMode, POEMCUIPPARAM pOemCUIPParam);
// The plug-in adds no items to the printer properties.
HRESULT hrPrinterPropertyPage(DWORD dwMode, POEMCUIPPARAM pOemCUIPParam);
// The plug-in adds no pages to the printer properties.
HRESULT hrOEMDevicePropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam);
