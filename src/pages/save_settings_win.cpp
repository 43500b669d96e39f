// Apply: validating the visited pages, reading them back and saving the record for the framework.
#include "pages/save_settings_win.h"

#include <cstring>
#include <string>

#include "infra/log.h"

namespace {

constexpr const char* kValidateName = "ValidateDeviceInfoFromUI";
constexpr const char* kUpdateName = "UpdateDeviceInfoFromUI";
constexpr const char* kSaveName = "SaveSettingsPublicDM";

// One row per page that Apply visits, in the order the user is told about failures. A page
// without a check or without values of its own leaves that entry null.
struct PageSaveRow {
    PageId page;
    bool (*validate)(HWND hDlg, PageContext& context, OemUiState& state);
    void (*update)(HWND hDlg, PageContext& context, UiDeviceCommon& device);
};

constexpr PageSaveRow kPageSaveRows[] = {
    {PageId::kPrint, ValidatePrintPage, UpdatePrintPage},
    {PageId::kPrintAdjust, ValidatePrintAdjustPage, UpdatePrintAdjustPage},
};

HWND VisitedPage(const PageContext& context, PageId page) {
    return context.*PageIdentityOf(page).slot;
}

}  // namespace

void ReportValidationFailure(HWND hDlg, const ValidationFailure& failure) {
    TheLog().Write(kLogError, kValidateName, "%s", failure.logLine.c_str());
    std::wstring message = WidenAnsi(failure.message);
    std::wstring title = WidenAnsi(PanelTitle(failure.pageName));
    MessageBoxW(hDlg, message.c_str(), title.c_str(), MB_OK | MB_ICONERROR);
}

BOOL ValidateDeviceInfoFromUI(PageContext* context, OemUiState* state) {
    TraceScope trace(kValidateName);
    if (context == nullptr || state == nullptr) {
        return trace.Return(TRUE);
    }
    for (const PageSaveRow& row : kPageSaveRows) {
        HWND hDlg = VisitedPage(*context, row.page);
        if (hDlg == nullptr) {
            continue;
        }
        TheLog().Write(kLogDetail, kValidateName, "%s", PageIdentityOf(row.page).slotName);
        if (row.validate != nullptr && !row.validate(hDlg, *context, *state)) {
            return trace.Return(FALSE);
        }
    }
    return trace.Return(TRUE);
}

void UpdateDeviceInfoFromUI(PageContext* context, OemUiState* state) {
    TraceScope trace(kUpdateName);
    if (context == nullptr || state == nullptr || state->device == nullptr) {
        return;
    }
    for (const PageSaveRow& row : kPageSaveRows) {
        HWND hDlg = VisitedPage(*context, row.page);
        if (hDlg == nullptr) {
            continue;
        }
        TheLog().Write(kLogDetail, kUpdateName, "%s", PageIdentityOf(row.page).slotName);
        if (row.update != nullptr) {
            row.update(hDlg, *context, *state->device);
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
        parameters->pPublicDM->dmDefaultSource = static_cast<short>(device->GetFeeder());
        TheLog().Write(kLogDetail, kSaveName, "dmDefaultSource: %d",
                       static_cast<int>(parameters->pPublicDM->dmDefaultSource));
    }
    return trace.Return(0L);
}
