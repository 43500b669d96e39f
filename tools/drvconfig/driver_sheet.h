// The prompted document sheet as the universal driver adds it to the spooler's common property
// sheet: its own first page, the plug-in's pages, apply routed to the plug-in's callback.
#pragma once

#include "win/oem_framework_win.h"

// DrvDocumentPropertySheets with a sheet: `info->lParamInit` is the spooler's
// DOCUMENTPROPERTYHEADER. Each accepted apply (OK included) writes the composed devmode to the
// header's pdmOut, so the caller's buffer always holds what was last applied.
LONG DocumentSheet(PPROPSHEETUI_INFO info, LPARAM lParam);
