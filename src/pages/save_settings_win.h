// Apply: validating the visited pages, reading them back and saving the record for the framework.
#pragma once

#include "session/page_context_win.h"
#include "pages/page_framework_win.h"
#include "pages/page_rules.h"
#include "settings/ui_device_common.h"

// 1 when every visited page holds acceptable values (or there is nothing to check); 0 at the
// first failure, which the user has then been shown.
BOOL ValidateDeviceInfoFromUI(PageContext* context, OemUiState* state);
// Reads every visited page into the capability object.
void UpdateDeviceInfoFromUI(PageContext* context, OemUiState* state);
// The apply path: 3 when validation failed (nothing read); else the pages are read, the model's
// limits enforced into the working record, the record's body copied to `recordBody` (the
// framework's record, 24 bytes past its start) and the paper source set; 0 then.
LONG SaveSettingsPublicDM(PageContext* context, OemUiState* state, OemDevPayload* recordBody,
                          POEMCUIPPARAM parameters);

// The message box and the log line of a failed check, owned by the page's dialog.
void ReportValidationFailure(HWND hDlg, const ValidationFailure& failure);

// Per-page parts of Apply; each page file provides its pair.
bool ValidatePrintPage(HWND hDlg, PageContext& context, OemUiState& state);
void UpdatePrintPage(HWND hDlg, PageContext& context, UiDeviceCommon& device);
bool ValidatePrintAdjustPage(HWND hDlg, PageContext& context, OemUiState& state);
void UpdatePrintAdjustPage(HWND hDlg, PageContext& context, UiDeviceCommon& device);
