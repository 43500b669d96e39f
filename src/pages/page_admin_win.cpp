// The Admin page: the registry editor at the printer's key, the log switch and the log folder.
#include "../../resources/resource.h"
#include "actions/os_manager.h"
#include "pages/admin_rules.h"
#include "pages/page_framework_win.h"
#include "ports/platform_win.h"
#include "ports/program_launcher_win.h"

namespace {

constexpr PictureRow kPictures[] = {{IDC_ADMIN_HEADER, IDB_PNG_ADMIN}};

const OemUiState* StateOf(HWND hDlg) {
    const PageContext* context = PageContextOf(hDlg);
    return context != nullptr ? context->pOemUiState : nullptr;
}

void Fill(HWND hDlg, UiDeviceCommon&) {
    if (const OemUiState* state = StateOf(hDlg))
        WriteControlText(hDlg, IDC_ADMIN_LOG, LogButtonText(state->config.logVerbosity));
}

void OnRegistry(HWND hDlg, const OemUiState& state) {
    const Platform& platform = WinPlatform();
    OSManager os(*platform.os, *platform.localMachine, *platform.log.text);
    ProgramLauncherWin launcher;
    const std::optional<RegistryNotice> notice =
        OpenRegistryEditor(os.IsWindows7(), AdminRegistryPath(state.printerName),
                           *platform.currentUser, *platform.log.text, launcher);
    if (!notice)
        return;
    CopyTextToClipboard(hDlg, notice->clipboardText);
    MessageBoxA(hDlg, notice->message.c_str(), CatalogRow(PageId::kAdmin).title,
                MB_OK | MB_ICONINFORMATION);
}

bool OnCommand(HWND hDlg, int id, int code) {
    const OemUiState* state = StateOf(hDlg);
    if (code != BN_CLICKED || state == nullptr)
        return false;
    const Platform& platform = WinPlatform();
    if (id == IDC_ADMIN_REGISTRY) {
        OnRegistry(hDlg, *state);
    } else if (id == IDC_ADMIN_LOG) {
        SwitchLogging(*platform.currentUser, *platform.log.text, state->printerNameWide);
        // The log is opened with the sheet, so the switch takes effect at the next opening.
        SendMessageW(GetParent(hDlg), WM_SYSCOMMAND, SC_CLOSE, 0);
    } else if (id == IDC_ADMIN_OPEN_LOG_FOLDER) {
        ProgramLauncherWin launcher;
        OpenLogFolder(state->config.logFolder, *platform.log.folders, launcher);
    }
    return false;  // actions, not settings
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kAdmin>() {
    static const PageDefinition definition{kPictures, {}, {}, Fill, OnCommand, nullptr, nullptr};
    return definition;
}
