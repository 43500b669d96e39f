// Apply: validating the visited pages, reading them back and saving the record for the framework.
#pragma once

#include "pages/page_view.h"
#include "session/page_context_win.h"
#include "settings/oemdev.h"

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

// The log line and the message box of a check's finding, owned by the page's dialog: true when
// the finding is a question answered Yes.
bool ReportValidationFinding(HWND hDlg, const ValidationFailure& finding);
