// The Console page: device actions (reprint, save, send, set-up tool, reset) and the job commands.
#include "../../resources/resource.h"
#include "actions/raw_output.h"
#include "infra/log.h"
#include "pages/console_rules.h"
#include "pages/page_framework_win.h"
#include "ports/platform_win.h"
#include "session/session_printer.h"
#include "settings/ui_device_common.h"

// The lean Windows headers leave out ShellExecute.
#include <shellapi.h>

namespace {

constexpr const char* kLogName = "DevicePropPageDocConsole";

constexpr wchar_t kStartHelp[] =
    L"START JOB COMMANDS\n\nAdd raw data before the document printout. It can be used to add\n"
    L"protocol commands (e.g. Additional Line feeds) or text at the\nbeginning of the "
    L"printout.\n\nUse with caution to avoid document printout corruption or print issues.\n";
constexpr wchar_t kEndHelp[] =
    L"END JOB COMMANDS\n\nAdd raw data after the document printout. It can be used to add\n"
    L"protocol commands (e.g. Additional Line feeds) or text at the\nend of the printout.\n\nUse "
    L"with caution to avoid document printout corruption or print issues.\n";

constexpr PictureRow kPictures[] = {{.control = IDC_CONSOLE_HEADER, .png = IDB_PNG_CONSOLE}};
constexpr HelpRow kHelps[] = {{.icon = IDC_CONSOLE_START_HELP, .text = kStartHelp},
                              {.icon = IDC_CONSOLE_END_HELP, .text = kEndHelp}};

constexpr wchar_t kSendFilter[] =
    L"Prn,Upg and Binary files(*.prn;*.upg;*.bin)\0*.prn;*.upg;*.bin\0";
constexpr wchar_t kSaveFilter[] = L"Prn file(*.prn)\0*.prn\0";

struct CommandControls {
    int source;
    int text;
    int browse;
};
constexpr CommandControls kStart = {.source = IDC_CONSOLE_START_SOURCE,
                                    .text = IDC_CONSOLE_START_TEXT,
                                    .browse = IDC_CONSOLE_START_BROWSE};
constexpr CommandControls kEnd = {.source = IDC_CONSOLE_END_SOURCE,
                                  .text = IDC_CONSOLE_END_TEXT,
                                  .browse = IDC_CONSOLE_END_BROWSE};

void ShowCommand(HWND hDlg, const CommandControls& ids, const CommandView& view) {
    FillComboFromLabels(hDlg, ids.source, view.source.labels, view.source.selection);
    WriteControlText(hDlg, ids.text, view.text);
    SetControlState(hDlg, ids.text, view.textEnabled ? kControlEnable : kControlDisable);
    SetControlState(hDlg, ids.browse, view.browseShown ? kControlShow : kControlHide);
}

void Fill(HWND hDlg, UiDeviceCommon& device) {
    const ConsolePageView view = MakeConsolePageView(device);
    ShowCommand(hDlg, kStart, view.start);
    ShowCommand(hDlg, kEnd, view.end);
}

void ShowError(HWND hDlg, const char* message) {
    ShowPageError(hDlg, PageId::kConsole, message);
}

// The printer as the page knows it: the framework's live handle (or the sentinel, so the
// printer is opened by name) and the name.
struct PagePrinter {
    PrinterHandle handle = kNoPrinterHandle;
    std::u16string name;
    OemUiState* state = nullptr;
};
PagePrinter PrinterOf(HWND hDlg) {
    PagePrinter printer;
    printer.state = PageState(hDlg);
    if (printer.state != nullptr) {
        printer.name = printer.state->printerNameWide;
        printer.handle = LiveFrameworkPrinter(*printer.state);
    }
    return printer;
}

// The configured print folder with its environment variables expanded.
std::string PrintFolder(const OemUiState& state) {
    std::string folder;
    if (!WinPlatform().log.folders->Expand(state.config.prnFolder, MAX_PATH, &folder)) {
        folder = state.config.prnFolder;
    }
    return folder;
}

void Reprint(HWND hDlg) {
    const PagePrinter printer = PrinterOf(hDlg);
    if (printer.state == nullptr) {
        return;
    }
    SessionSpooler spooler(*WinPlatform().spooler, *printer.state);
    if (!PrintLastDocument(spooler, *WinPlatform().log.text, printer.name,
                           PrintFolder(*printer.state), printer.handle)) {
        ShowError(hDlg, "Impossible to send the last print");
    }
}

void SaveLastDocument(HWND hDlg) {
    const PagePrinter printer = PrinterOf(hDlg);
    if (printer.state == nullptr) {
        return;
    }
    const std::wstring last = WidenAnsi(
        LastDocumentPath(PrintFolder(*printer.state), printer.name, *WinPlatform().log.text));
    if (GetFileAttributesW(last.c_str()) == INVALID_FILE_ATTRIBUTES) {
        ShowError(hDlg, "Impossible to open the file");
        return;
    }
    const std::wstring target = AskFileToSave(hDlg, kSaveFilter, L"prn");
    if (!target.empty() && !CopyFileW(last.c_str(), target.c_str(), FALSE)) {
        const unsigned long error = GetLastError();
        TheLog().Write(kLogError, kLogName, "Save last document error: copy to <%s> failed (%lu)",
                       NarrowAnsi(target).c_str(), error);
        ShowError(hDlg, "Impossible to save the last document");
    }
}

// A file the user chose, read through its wide path; nothing when it cannot be read whole or is
// larger than any job a receipt printer takes.
std::vector<uint8_t> ReadChosenFile(const std::wstring& path) {
    constexpr LONGLONG kMaxJobBytes = 256LL << 20;
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return {};
    }
    std::vector<uint8_t> contents;
    LARGE_INTEGER size{};
    if (GetFileSizeEx(file, &size) && size.QuadPart > 0 && size.QuadPart <= kMaxJobBytes) {
        contents.resize(static_cast<size_t>(size.QuadPart));
        DWORD got = 0;
        if (!ReadFile(file, contents.data(), static_cast<DWORD>(contents.size()), &got, nullptr) ||
            got != contents.size()) {
            contents.clear();
        }
    }
    CloseHandle(file);
    return contents;
}

void SendFile(HWND hDlg) {
    const PagePrinter printer = PrinterOf(hDlg);
    if (printer.state == nullptr) {
        return;
    }
    SessionSpooler spooler(*WinPlatform().spooler, *printer.state);
    if (!IsPrinterOnline(spooler, RequestPrinter(spooler, *printer.state).Handle())) {
        ShowError(hDlg, "The printer is OFFLINE");
        TheLog().Write(kLogError, kLogName, "Send file to printer error: Printer is Offline");
        return;
    }
    const std::wstring path = AskFileToOpen(hDlg, kSendFilter);
    if (path.empty()) {
        return;
    }
    if (!SendFileToPrinter(spooler, ReadChosenFile(path), IsPrinterDataFile(NarrowAnsi(path)),
                           printer.handle, printer.name)) {
        ShowError(hDlg, "Impossible to send the file");
        TheLog().Write(kLogError, kLogName, "Send file to printer error: Send to printer error");
    }
}

void OpenRigset(HWND hDlg) {
    const Platform& platform = WinPlatform();
    const std::string program =
        RigsetProgramPath(*platform.localMachine, *platform.log.text, *platform.log.folders);
    if (program.empty()) {
        SetControlState(hDlg, IDC_CONSOLE_OPEN_RIGSET, kControlDisable);
        return;
    }
    const bool ctrlHeld = (GetAsyncKeyState(VK_CONTROL) & 0x8000) != 0;
    const std::string folder = WorkingFolderOf(program);
    // ShellExecute reports success with a value above 32.
    const INT_PTR launched = reinterpret_cast<INT_PTR>(ShellExecuteA(
        hDlg, nullptr, program.c_str(), RigsetParameters(ctrlHeld), folder.c_str(), SW_SHOWNORMAL));
    if (launched <= 32) {
        TheLog().Write(kLogError, kLogName, "Open Rigset error: launch of <%s> failed (%d)",
                       program.c_str(), static_cast<int>(launched));
        ShowError(hDlg, "Impossible to launch the set-up application");
    }
}

// Without the sheet's block there is no flag to set, and OK would save the user's values instead.
void ResetDefault(HWND hDlg) {
    PageContext* context = PageContextOf(hDlg);
    if (context == nullptr) {
        return;
    }
    const std::wstring title = WidenAnsi(PanelTitle(PageId::kConsole));
    if (MessageBoxW(hDlg, L"Continue to reset the values to default?", title.c_str(),
                    MB_YESNO | MB_ICONQUESTION) != IDYES) {
        return;
    }
    context->m_bResetRequested = 1;
    // The sheet applies (the document callback then writes the model's defaults) and closes.
    SendMessageW(GetParent(hDlg), WM_COMMAND, IDOK, 0);
}

void OnSourceChanged(HWND hDlg, const CommandControls& ids) {
    const uint8_t mode = CommandModeFromSelection(ComboSelection(hDlg, ids.source));
    const CommandView view = CommandViewFor(mode, "");
    WriteControlText(hDlg, ids.text, view.text);
    SetControlState(hDlg, ids.text, view.textEnabled ? kControlEnable : kControlDisable);
    SetControlState(hDlg, ids.browse, view.browseShown ? kControlShow : kControlHide);
}

// A chosen file goes into the text box. The box is multi-line, and such an edit sends no change
// notification for a text set by the program: true tells the sheet that the page changed.
bool Browse(HWND hDlg, int textId) {
    const std::string path = AskAnsiFileToOpen(hDlg, PageId::kConsole, kSendFilter);
    if (path.empty()) {
        return false;
    }
    WriteControlText(hDlg, textId, path);
    return true;
}

bool OnCommand(HWND hDlg, int id, int code) {
    if (code == CBN_SELCHANGE && (id == kStart.source || id == kEnd.source)) {
        OnSourceChanged(hDlg, id == kStart.source ? kStart : kEnd);
        return true;
    }
    if (code == EN_CHANGE) {
        return id == kStart.text || id == kEnd.text;
    }
    if (code != BN_CLICKED) {
        return false;
    }
    switch (id) {
        case IDC_CONSOLE_REPRINT:
            Reprint(hDlg);
            break;
        case IDC_CONSOLE_SAVE_LAST_DOC:
            SaveLastDocument(hDlg);
            break;
        case IDC_CONSOLE_SEND_FILE:
            SendFile(hDlg);
            break;
        case IDC_CONSOLE_OPEN_RIGSET:
            OpenRigset(hDlg);
            break;
        case IDC_CONSOLE_RESET_DEFAULT:
            ResetDefault(hDlg);
            break;
        case IDC_CONSOLE_START_BROWSE:
            return Browse(hDlg, kStart.text);
        case IDC_CONSOLE_END_BROWSE:
            return Browse(hDlg, kEnd.text);
        default:
            break;
    }
    return false;
}

ConsoleControls ReadControls(HWND hDlg) {
    // The edits hand back the text's first characters only, as many as the rules name.
    constexpr int kTextChars = static_cast<int>(kFreeBufferTextLimit) + 1;
    return ConsoleControls{
        .startSelection = ComboSelection(hDlg, kStart.source),
        .startText = ReadControlText(hDlg, kStart.text, kTextChars),
        .endSelection = ComboSelection(hDlg, kEnd.source),
        .endText = ReadControlText(hDlg, kEnd.text, kTextChars),
    };
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kConsole>() {
    static const PageDefinition definition{
        .pictures = kPictures,
        .helps = kHelps,
        .trackbars = {},
        .fill = Fill,
        .onCommand = OnCommand,
        .validate =
            [](HWND hDlg) {
                return Findings(ValidateConsoleControls(ReadControls(hDlg), PathExists));
            },
        .store = [](HWND hDlg,
                    UiDeviceCommon& device) { StoreConsoleControls(device, ReadControls(hDlg)); },
    };
    return definition;
}
