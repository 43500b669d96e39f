// kivprintdlg: opens Wine's print dialog (comdlg32's PrintDlgW) on a printer and presses its
// Properties button, as a user of any application does, so the plug-in's pages come up through
// the spooler and the printer's configuration module, with no code of ours in between.
//
//   kivprintdlg --printer NAME [--page TITLE --set ID=TEXT] [--screenshot FILE.png]
//               [--devmode-in FILE] [--devmode-out FILE]
//
// With --set it types TEXT into control ID of page TITLE and presses the sheet's OK; without, it
// cancels the sheet. It then presses the print dialog's OK and writes the devmode the dialog
// returned to --devmode-out. It prints what the control showed when the page came up
// ("shown: TEXT"). Exit codes: 0 done, 1 bad arguments, 2 a step that could not be done.
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "page_steps.h"
#include "png_capture.h"
#include "win/windows_headers_win.h"

#include <commctrl.h>
#include <commdlg.h>
#include <dlgs.h>

namespace {

struct Script {
    std::wstring printer;
    std::wstring page = L"Print adjust";
    int control = 0;
    std::wstring text;  // typed before OK; nothing to type: the sheet is cancelled
    std::wstring screenshot;
    std::wstring devmodeIn, devmodeOut;

    // What happened.
    HWND dialog = nullptr;
    bool sawSheet = false;
    bool failed = false;
    std::wstring why;
    std::wstring shown;
    int ticks = 0;
};
Script g_script;

void Fail(const std::wstring& why) {
    if (!g_script.failed)
        g_script.why = why;
    g_script.failed = true;
}

// The sheet is the thread's other dialog that answers for a tab control.
BOOL CALLBACK FindSheet(HWND window, LPARAM found) {
    if (window != g_script.dialog && IsWindowVisible(window) &&
        SendMessageW(window, PSM_GETTABCONTROL, 0, 0) != 0) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

// Both windows as they stand on the screen. The sheet comes up over the dialog's corner; moved
// down and to the right, it leaves the dialog's printer and Properties button in view.
void TakeScreenshot(HWND sheet) {
    RECT a, b, both;
    GetWindowRect(g_script.dialog, &a);
    SetWindowPos(sheet, nullptr, a.left + (a.right - a.left) * 3 / 5, a.top + 40, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    RedrawWindow(g_script.dialog, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RedrawWindow(sheet, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    GetWindowRect(sheet, &b);
    UnionRect(&both, &a, &b);
    int width = 0, height = 0;
    std::wstring error;
    if (!SaveScreenAreaPng(both, g_script.screenshot, width, height, error))
        Fail(L"screenshot: " + error);
}

// The sheet comes up inside the Properties button's call; a thread timer keeps running in its
// modal loop as in the dialog's.
void CALLBACK Step(HWND, UINT, UINT_PTR, DWORD) {
    Script& s = g_script;
    if (++s.ticks > 600) {  // 30 s: something waits for an answer nobody gives
        Fail(s.sawSheet ? L"the sheet did not close" : L"Properties opened no sheet");
        PostQuitMessage(2);
        return;
    }
    HWND sheet = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindSheet, reinterpret_cast<LPARAM>(&sheet));
    if (sheet != nullptr && !s.sawSheet) {
        s.sawSheet = true;
        const bool typing = s.control != 0;
        HWND page = ActivatePage(sheet, FindPage(SheetPageTitles(sheet), s.page));
        if (page == nullptr) {
            Fail(L"the sheet has no page \"" + s.page + L"\"");
        } else if (typing) {
            wchar_t shown[256] = {};
            if (GetDlgItem(page, s.control) == nullptr)
                Fail(L"the page has no control " + std::to_wstring(s.control));
            GetDlgItemTextW(page, s.control, shown, 256);
            s.shown = shown;
            SetDlgItemTextW(page, s.control, s.text.c_str());
        }
        if (!s.screenshot.empty())
            TakeScreenshot(sheet);
        SendMessageW(sheet, PSM_PRESSBUTTON, typing && !s.failed ? PSBTN_OK : PSBTN_CANCEL, 0);
    } else if (sheet == nullptr && s.sawSheet && s.dialog != nullptr) {
        PostMessageW(s.dialog, WM_COMMAND, s.failed ? IDCANCEL : IDOK, 0);
        s.dialog = nullptr;
    }
}

UINT_PTR CALLBACK PrintHook(HWND dialog, UINT msg, WPARAM, LPARAM) {
    if (msg == WM_INITDIALOG) {
        g_script.dialog = dialog;
        // The user's click on Properties, once the dialog is up.
        PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(psh2, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, psh2)));
        return TRUE;
    }
    return FALSE;
}

// DEVNAMES naming the printer, so the dialog opens on it.
HGLOBAL DevNamesFor(const std::wstring& printer) {
    const size_t chars = printer.size() + 3;  // the device, then empty driver and port names
    HGLOBAL names = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DEVNAMES) + chars * 2);
    auto* dn = static_cast<DEVNAMES*>(GlobalLock(names));
    const WORD at = sizeof(DEVNAMES) / sizeof(wchar_t);
    dn->wDeviceOffset = at;
    dn->wDriverOffset = static_cast<WORD>(at + printer.size() + 1);
    dn->wOutputOffset = static_cast<WORD>(at + printer.size() + 2);
    printer.copy(reinterpret_cast<wchar_t*>(dn) + at, printer.size());
    GlobalUnlock(names);
    return names;
}

// A devmode file as a movable block, or null when it is not a devmode.
HGLOBAL ReadDevmode(const std::wstring& path) {
    std::ifstream in(path.c_str(), std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    DEVMODEW head;
    if (bytes.size() < sizeof head)
        return nullptr;
    std::memcpy(&head, bytes.data(), sizeof head);
    if (head.dmSize < offsetof(DEVMODEW, dmFields) ||
        size_t{head.dmSize} + head.dmDriverExtra > bytes.size())
        return nullptr;
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
    GlobalUnlock(block);
    return block;
}

bool WriteDevmode(HGLOBAL block, const std::wstring& path) {
    const auto* dm = static_cast<const DEVMODEW*>(GlobalLock(block));
    if (dm == nullptr)
        return false;
    std::ofstream out(path.c_str(), std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(dm), size_t{dm->dmSize} + dm->dmDriverExtra);
    GlobalUnlock(block);
    return out.good();
}

bool ParseArguments(int argc, wchar_t** argv, Script& s) {
    for (int i = 1; i < argc; ++i) {
        const std::wstring option = argv[i];
        if (i + 1 >= argc)
            return false;
        const std::wstring value = argv[++i];
        if (option == L"--printer") {
            s.printer = value;
        } else if (option == L"--page") {
            s.page = value;
        } else if (option == L"--set") {
            const size_t eq = value.find(L'=');
            s.control = eq == std::wstring::npos ? 0 : _wtoi(value.substr(0, eq).c_str());
            if (s.control <= 0)
                return false;
            s.text = value.substr(eq + 1);
        } else if (option == L"--screenshot") {
            s.screenshot = value;
        } else if (option == L"--devmode-in") {
            s.devmodeIn = value;
        } else if (option == L"--devmode-out") {
            s.devmodeOut = value;
        } else {
            return false;
        }
    }
    return !s.printer.empty();
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    Script& s = g_script;
    if (!ParseArguments(argc, argv, s)) {
        std::fwprintf(stderr,
                      L"usage: kivprintdlg --printer NAME [--page TITLE --set ID=TEXT] "
                      L"[--screenshot FILE.png] [--devmode-in FILE] [--devmode-out FILE]\n");
        return 1;
    }
    PRINTDLGW pd = {};
    pd.lStructSize = sizeof pd;
    pd.Flags = PD_ENABLEPRINTHOOK | PD_NOSELECTION | PD_NOPAGENUMS;
    pd.lpfnPrintHook = PrintHook;
    pd.hDevNames = DevNamesFor(s.printer);
    if (!s.devmodeIn.empty() && (pd.hDevMode = ReadDevmode(s.devmodeIn)) == nullptr) {
        std::fwprintf(stderr, L"kivprintdlg: %ls is not a devmode\n", s.devmodeIn.c_str());
        return 1;
    }
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, Step);
    const BOOL ok = PrintDlgW(&pd);
    KillTimer(nullptr, timer);
    if (!s.shown.empty() || s.control != 0)
        std::wprintf(L"shown: %ls\n", s.shown.c_str());
    if (!ok && !s.failed)
        Fail(L"the print dialog failed (CommDlgExtendedError " +
             std::to_wstring(CommDlgExtendedError()) + L")");
    if (!s.failed && !s.devmodeOut.empty() && !WriteDevmode(pd.hDevMode, s.devmodeOut))
        Fail(L"could not write " + s.devmodeOut);
    GlobalFree(pd.hDevNames);
    GlobalFree(pd.hDevMode);
    if (s.failed) {
        std::fwprintf(stderr, L"kivprintdlg: %ls\n", s.why.c_str());
        return 2;
    }
    return 0;
}
