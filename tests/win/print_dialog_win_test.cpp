// Wine's own print dialog as the application: its Properties button reaches the plug-in's pages
// through the spooler, and its OK hands back a devmode whose record holds the user's change.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "host_run_win.h"
#include "settings/oemdev.h"

#include <commctrl.h>
#include <commdlg.h>
#include <dlgs.h>

namespace {

constexpr int kOffsetY = 1068;  // the Print adjust page's vertical offset edit

// One pass through the print dialog, driven from a thread timer: press Properties, wait for the
// sheet, act on the "Print adjust" page, close the sheet, then close the dialog.
struct DialogScript {
    std::wstring offsetToType;  // typed into the offset edit before OK; empty: cancel the sheet
    std::wstring offsetShown;   // what the edit showed when the page came up
    bool sawSheet = false;
    bool timedOut = false;
    HWND dialog = nullptr;
    int ticks = 0;
};
DialogScript* g_script = nullptr;

// The sheet is the thread's other dialog that answers for a tab control.
BOOL CALLBACK FindSheet(HWND window, LPARAM found) {
    if (window != g_script->dialog && IsWindowVisible(window) &&
        SendMessageW(window, PSM_GETTABCONTROL, 0, 0) != 0) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

bool SelectPage(HWND sheet, const std::wstring& title) {
    HWND tabs = PropSheet_GetTabControl(sheet);
    for (int i = 0; i < TabCtrl_GetItemCount(tabs); ++i) {
        wchar_t text[128] = {};
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 127;
        if (TabCtrl_GetItem(tabs, i, &item) && title == text)
            return PropSheet_SetCurSel(sheet, nullptr, i) != FALSE;
    }
    return false;
}

void CALLBACK Step(HWND, UINT, UINT_PTR, DWORD) {
    DialogScript& s = *g_script;
    if (++s.ticks > 400) {  // 20 s: something waits for an answer nobody gives
        s.timedOut = true;
        PostQuitMessage(1);
        return;
    }
    HWND sheet = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindSheet, reinterpret_cast<LPARAM>(&sheet));
    if (sheet != nullptr && !s.sawSheet) {
        s.sawSheet = true;
        if (!SelectPage(sheet, L"Print adjust")) {
            SendMessageW(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
            return;
        }
        HWND page = PropSheet_GetCurrentPageHwnd(sheet);
        wchar_t shown[32] = {};
        GetDlgItemTextW(page, kOffsetY, shown, 32);
        s.offsetShown = shown;
        if (!s.offsetToType.empty())
            SetDlgItemTextW(page, kOffsetY, s.offsetToType.c_str());
        SendMessageW(sheet, PSM_PRESSBUTTON, s.offsetToType.empty() ? PSBTN_CANCEL : PSBTN_OK, 0);
    } else if (sheet == nullptr && s.sawSheet && s.dialog != nullptr) {
        PostMessageW(s.dialog, WM_COMMAND, IDOK, 0);
        s.dialog = nullptr;
    }
}

UINT_PTR CALLBACK PrintHook(HWND dialog, UINT msg, WPARAM, LPARAM) {
    if (msg == WM_INITDIALOG) {
        g_script->dialog = dialog;
        PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(psh2, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(dialog, psh2)));
        return TRUE;
    }
    return FALSE;
}

// DEVNAMES naming the printer, so the dialog opens on it.
HGLOBAL DevNamesFor(const std::wstring& printer) {
    const size_t chars = printer.size() + 3;  // device, then empty driver and port names
    HGLOBAL names = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DEVNAMES) + chars * 2);
    auto* dn = static_cast<DEVNAMES*>(GlobalLock(names));
    const WORD at = sizeof(DEVNAMES) / sizeof(wchar_t);
    dn->wDeviceOffset = at;
    dn->wDriverOffset = static_cast<WORD>(at + printer.size() + 1);
    dn->wOutputOffset = static_cast<WORD>(at + printer.size() + 2);
    std::memcpy(reinterpret_cast<wchar_t*>(dn) + at, printer.c_str(), printer.size() * 2);
    GlobalUnlock(names);
    return names;
}

// The plug-in's record inside a devmode's private part, found by its header.
bool RecordIn(HGLOBAL devmode, OEMDEV& record) {
    const auto* dm = static_cast<const DEVMODEW*>(GlobalLock(devmode));
    bool found = false;
    if (dm != nullptr) {
        const auto* at = reinterpret_cast<const uint8_t*>(dm) + dm->dmSize;
        for (size_t i = 0; !found && i + sizeof record <= dm->dmDriverExtra; ++i) {
            OemDmExtraHeader head;
            std::memcpy(&head, at + i, sizeof head);
            found = head.dwSize == OEMDEV_SIZE && head.dwSignature == KIVITEM_SIGNATURE;
            if (found)
                std::memcpy(&record, at + i, sizeof record);
        }
        GlobalUnlock(devmode);
    }
    return found;
}

class PrintDialogWin : public HostTestBase {
  protected:
    PrintDialogWin() : HostTestBase(L"PrintDialogWin") {}

    // Opens the print dialog on `printer` with `devmode` (may be null) and runs `script`.
    bool Run(const std::wstring& printer, HGLOBAL& devmode, DialogScript& script) {
        g_script = &script;
        PRINTDLGW pd = {};
        pd.lStructSize = sizeof pd;
        pd.Flags = PD_ENABLEPRINTHOOK | PD_NOSELECTION | PD_NOPAGENUMS;
        pd.lpfnPrintHook = PrintHook;
        pd.hDevNames = DevNamesFor(printer);
        pd.hDevMode = devmode;
        const UINT_PTR timer = SetTimer(nullptr, 0, 50, Step);
        const BOOL ok = PrintDlgW(&pd);
        KillTimer(nullptr, timer);
        GlobalFree(pd.hDevNames);
        devmode = pd.hDevMode;
        g_script = nullptr;
        return ok != FALSE || script.timedOut;
    }
};

TEST_F(PrintDialogWin, PropertiesOpensThePagesAndOkReturnsTheChangedRecord) {
    HWND probe = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                                 nullptr);
    if (probe == nullptr)
        GTEST_SKIP() << "no display: run under xvfb-run";
    DestroyWindow(probe);
    const std::wstring printer = NewPrinter(L"ZLD90VII");
    WinePrinterSetup setup{printer, L"ZLD90VII", ModuleFolder(), ModuleFolder() + L"\\driver",
                           dir_ + L"\\" + SafeFileName(printer) + L".prn"};
    WinePrinterInfo info;
    std::wstring error;
    ASSERT_TRUE(InstallWinePrinter(setup, info, error)) << Narrow(error);

    HGLOBAL devmode = nullptr;
    DialogScript change;
    change.offsetToType = L"37";
    ASSERT_TRUE(Run(printer, devmode, change));
    ASSERT_FALSE(change.timedOut) << (change.sawSheet            ? "the sheet did not close"
                                      : change.dialog != nullptr ? "Properties opened no sheet"
                                                                 : "no print dialog");
    EXPECT_EQ(L"0", change.offsetShown);
    OEMDEV record;
    ASSERT_TRUE(RecordIn(devmode, record));
    EXPECT_EQ(37, record.payload.offsetY);
    EXPECT_EQ(std::string("ZLD90VII"), record.payload.modelName);

    // The next Properties, on the devmode the dialog handed back, shows the change.
    DialogScript look;
    ASSERT_TRUE(Run(printer, devmode, look));
    ASSERT_FALSE(look.timedOut);
    EXPECT_EQ(L"37", look.offsetShown);
    GlobalFree(devmode);
}

}  // namespace
