// Apply: validating the visited pages, reading them back and saving the record for the framework.
#include "pages/save_settings_win.h"

#include <cstring>
#include <string>

#include "infra/log.h"
#include "pages/page_framework_win.h"
#include "settings/ui_device_common.h"

namespace {

constexpr const char* kValidateName = "ValidateDeviceInfoFromUI";
constexpr const char* kUpdateName = "UpdateDeviceInfoFromUI";
constexpr const char* kSaveName = "SaveSettingsPublicDM";

// The page's window when the user opened it during this sheet, else null.
HWND VisitedPage(const PageContext& context, PageId page) {
    return context.Slot(page);
}

}  // namespace

bool ReportValidationFinding(HWND hDlg, const ValidationFailure& finding) {
    TheLog().Write(kLogError, kValidateName, "%s", finding.logLine.c_str());
    std::wstring message = WidenAnsi(finding.message);
    std::wstring title = WidenAnsi(PanelTitle(finding.page));
    if (finding.question) {
        return MessageBoxW(hDlg, message.c_str(), title.c_str(), MB_YESNO | MB_ICONQUESTION) ==
               IDYES;
    }
    MessageBoxW(hDlg, message.c_str(), title.c_str(), MB_OK | MB_ICONERROR);
    return false;
}

BOOL ValidateDeviceInfoFromUI(PageContext* context, OemUiState* state) {
    TraceScope trace(kValidateName);
    // Without a capability object nothing is read back from the pages, so nothing needs a check.
    if (context == nullptr || state == nullptr || state->device == nullptr) {
        return trace.Return(TRUE);
    }
    for (PageId page : PagesInCheckOrder()) {
        HWND hDlg = VisitedPage(*context, page);
        const PageDefinition* definition = FindPageDefinition(page);
        if (hDlg == nullptr || definition == nullptr) {
            continue;
        }
        TheLog().Write(kLogDetail, kValidateName, "%s", NamesOf(page).slotName.c_str());
        if (definition->validate == nullptr) {
            continue;
        }
        for (const ValidationFailure& finding : definition->validate(hDlg)) {
            if (!ReportValidationFinding(hDlg, finding)) {
                return trace.Return(FALSE);
            }
        }
    }
    return trace.Return(TRUE);
}

void UpdateDeviceInfoFromUI(PageContext* context, OemUiState* state) {
    TraceScope trace(kUpdateName);
    if (context == nullptr || state == nullptr || state->device == nullptr) {
        return;
    }
    for (const PageCatalogRow& row : kPageCatalog) {
        HWND hDlg = VisitedPage(*context, row.page);
        const PageDefinition* definition = FindPageDefinition(row.page);
        if (!row.readOnApply || hDlg == nullptr || definition == nullptr) {
            continue;
        }
        TheLog().Write(kLogDetail, kUpdateName, "%s", NamesOf(row.page).slotName.c_str());
        if (definition->store != nullptr) {
            definition->store(hDlg, *state->device);
        }
    }
}

LONG SaveSettingsPublicDM(PageContext* context, OemUiState* state, OemDevPayload* recordBody,
                          POEMCUIPPARAM parameters) {
    TraceScope trace(kSaveName);
    if (!ValidateDeviceInfoFromUI(context, state)) {
        return trace.Return(3L);
    }
    UpdateDeviceInfoFromUI(context, state);
    if (state == nullptr) {
        return trace.Return(0L);
    }
    UiDeviceCommon* device = state->device.get();
    if (device != nullptr) {
        device->FillOEMDEVWithDeviceValues(state->workOEMDev.payload, 0);
    }
    if (recordBody != nullptr) {
        std::memcpy(recordBody, &state->workOEMDev.payload, sizeof(OemDevPayload));
    }
    if (device != nullptr && device->GetCapabilityFlag(kCapFeeder) != 0 &&
        device->GetFeeder() != 0 && parameters != nullptr && parameters->pPublicDM != nullptr) {
        // The universal driver reads a public field only where its dmFields bit is set.
        parameters->pPublicDM->dmFields |= DM_DEFAULTSOURCE;
        parameters->pPublicDM->dmDefaultSource = static_cast<short>(device->GetFeeder());
        TheLog().Write(kLogDetail, kSaveName, "dmDefaultSource: %d",
                       static_cast<int>(parameters->pPublicDM->dmDefaultSource));
    }
    return trace.Return(0L);
}
