// The document property sheet: registering the plug-in's pages and answering the sheet's reasons.
#pragma once

#include <cstdint>

#include "session/oem_ui_state.h"
#include "win/windows_headers_win.h"
#include "win/oem_framework_win.h"

// The process-wide administrator flag (0 off, 1 on); the Version page toggles it through the
// pointer the registration keeps.
uint32_t* ModuleAdminFlag();
// The flag pointer handed to the last registration, null before the first one.
uint32_t* KeptAdminFlag();

HRESULT hrOEMDocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam,
                                    IPrintOemDriverUI* helper, OemUiState* state,
                                    uint32_t* adminFlag, uint32_t lmAvailable, uint32_t lmBidi,
                                    uint32_t lmEnable);
