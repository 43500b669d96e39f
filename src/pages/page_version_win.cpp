// The Version page: the report of the driver's files and the system, its copy, and the hidden
// admin-mode switch on the header picture.
#include "../../resources/resource.h"
#include "actions/language_monitor.h"
#include "actions/os_manager.h"
#include "actions/version_report.h"
#include "entry/property_sheets_win.h"
#include "pages/page_framework_win.h"
#include "pages/version_rules.h"
#include "ports/file_reader_win.h"
#include "ports/platform_win.h"
#include "session/session_printer.h"

namespace {

constexpr PictureRow kPictures[] = {{IDC_VERSION_LOGO, IDB_PNG_VERSION_LOGO}};

std::string BuildReport(const OemUiState& state) {
    const Platform& platform = WinPlatform();
    const RequestPrinter printer(*platform.spooler, state);
    VersionReportInputs in;
    if (printer.Handle() != kNoPrinterHandle) {
        platform.spooler->DriverInfo(printer.Handle(), &in.driver);
        in.monitorModule = GetLanguageMonitorDll(*platform.spooler, *platform.localMachine,
                                                 *platform.log.text, printer.Handle(), "");
    }
    OSManager os(*platform.os, *platform.localMachine, *platform.log.text);
    in.os = {os.GetProductName(), os.GetDisplayVersion(), os.GetVersionMap()};
    in.options = ReadVersionReportOptions(*platform.currentUser, state.printerNameWide);
    FileReaderWin files;
    return JoinReportLines(VersionReportLines(in, *platform.versions, files));
}

void Fill(HWND hDlg, UiDeviceCommon&) {
    const PageContext* context = PageContextOf(hDlg);
    if (context != nullptr && context->pOemUiState != nullptr)
        WriteControlText(hDlg, IDC_VERSION_REPORT, BuildReport(*context->pOemUiState));
}

bool OnCommand(HWND hDlg, int id, int code) {
    if (id == IDC_VERSION_COPY && code == BN_CLICKED) {
        const int length = GetWindowTextLengthA(GetDlgItem(hDlg, IDC_VERSION_REPORT));
        CopyTextToClipboard(hDlg, ReadControlText(hDlg, IDC_VERSION_REPORT, length + 1));
    }
    return false;  // the report is not a setting
}

void OnPictureClick(HWND hDlg, int id) {
    const bool ctrl = (GetAsyncKeyState(VK_CONTROL) & 0x8000) != 0;
    const bool shift = (GetAsyncKeyState(VK_SHIFT) & 0x8000) != 0;
    const char* message = ToggleAdminMode(ctrl, shift, KeptAdminFlag());
    if (message == nullptr)
        return;
    MessageBoxA(hDlg, message, CatalogRow(PageId::kVersion).title, MB_OK | MB_ICONINFORMATION);
    SendMessageW(GetParent(hDlg), WM_SYSCOMMAND, SC_CLOSE, 0);
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kVersion>() {
    static const PageDefinition definition{
        kPictures, {}, {}, Fill, OnCommand, nullptr, nullptr, OnPictureClick,
    };
    return definition;
}
