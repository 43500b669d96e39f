// The document property sheet as the universal driver opens it, through Wine's compstui.
//
// The sheet callback adds the driver's own first page and then the plug-in's page function,
// which forwards every reason to IPrintOemUI::DocumentPropertySheets; the plug-in adds its
// pages with the real pfnComPropSheet. Wine's common sheet has no option-item tree page, so the
// driver's page is the one that routes apply to the plug-in's OEMCUIPCallback, as the tree
// page does on Windows.
#include "sheet_host.h"

#include <cstdio>

#include "host_output.h"
#include "drv_config_resource.h"
#include "page_steps.h"
#include "png_capture.h"

#include <dlgs.h>  // the common file dialogs' control ids

namespace {

// Posted by the first page once the sheet exists; handled inside the sheet's own loop.
constexpr UINT kMsgBringUp = WM_APP + 1;
// Posted after a press, to see whether the sheet is still open and must be closed.
constexpr UINT kMsgAfterPress = WM_APP + 2;

// The tab control and the Apply button of a property sheet (Windows' and Wine's ids alike); a
// message box has no tab control.
constexpr int kSheetTabControlId = 0x3020;
constexpr int kApplyButtonId = 0x3021;
// The message box's text control, in Windows' and Wine's message box template alike.
constexpr int kMessageBoxTextId = 0xFFFF;
// Marks a message box the host has answered.
constexpr wchar_t kAnsweredProp[] = L"KivHostAnswered";

class SheetHost;
// The sheet that is open on this thread; the message-box hook has no other way to find it.
SheetHost* g_openSheet = nullptr;

const char* ReasonName(WORD reason) {
    switch (reason) {
        case PROPSHEETUI_REASON_INIT:
            return "INIT";
        case PROPSHEETUI_REASON_GET_INFO_HEADER:
            return "GET_INFO_HEADER";
        case PROPSHEETUI_REASON_DESTROY:
            return "DESTROY";
        case PROPSHEETUI_REASON_SET_RESULT:
            return "SET_RESULT";
        case PROPSHEETUI_REASON_GET_ICON:
            return "GET_ICON";
        case PROPSHEETUI_REASON_BEFORE_INIT:
            return "BEFORE_INIT";
        default:
            return "?";
    }
}

std::wstring FileNamePart(const std::wstring& title) {
    std::wstring name;
    for (wchar_t c : title) {
        if (c == L' ')
            name += L'_';
        else if (c < 32 || std::wstring(L"\\/:*?\"<>|").find(c) != std::wstring::npos)
            name += L'-';
        else
            name += c;
    }
    return name.empty() ? L"page" : name;
}

class SheetHost {
  public:
    SheetHost(const SheetPlugin* plugin, const SheetScript& script,
              const std::vector<PluginPageTemplate>* baselinePages, LARGE_INTEGER start,
              SheetOutcome& outcome)
        : plugin_(plugin),
          script_(script),
          baselinePages_(baselinePages),
          start_(start),
          outcome_(outcome) {}

    bool Open(std::wstring& error);

    LONG SheetCallback(PPROPSHEETUI_INFO info, LPARAM lParam);
    LONG ForwardToPlugin(PPROPSHEETUI_INFO info, LPARAM lParam);
    LONG_PTR ComPropSheet(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2);
    INT_PTR PageProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam);
    void OnActivate(HWND window);
    void AnswerFileDialog(HWND window);

  private:
    bool Baseline() const { return plugin_ == nullptr; }
    bool AddPages(PPROPSHEETUI_INFO info);
    void FillDriverPage(HWND hDlg);
    void ShowPaperSource(HWND hDlg);
    LONG_PTR OnApply(HWND hDlg);
    void BringUp();
    void AfterPress();
    void Press(SheetPress press);
    void StepFailed(const char* step, const std::wstring& why);
    void ShowApplyState(const char* when);
    int TakeScreenshots(const std::wstring& dir, const std::vector<std::wstring>& titles);

    void WaitForUser();
    void RunSequences(const std::vector<std::wstring>& titles);
    std::vector<uint8_t> Record() const;

  public:
    void GiveUp();

    const SheetPlugin* plugin_;  // null for the baseline sheet
    const SheetScript& script_;
    const std::vector<PluginPageTemplate>* baselinePages_;
    LARGE_INTEGER start_;
    SheetOutcome& outcome_;

    OEMUIPSPARAM psParam_ = {};               // lParamInit of the plug-in's page function
    PFNCOMPROPSHEET comPropSheet_ = nullptr;  // the sheet's own function behind the host's
    std::wstring title_;
    HWND sheet_ = nullptr;
    HWND firstPage_ = nullptr;
    bool bringUpPosted_ = false;
    UINT_PTR waitTimer_ = 0;
};

LONG HostSheetCallback(PPROPSHEETUI_INFO info, LPARAM lParam) {
    if (info == nullptr || info->lParamInit == 0)
        return ERR_CPSUI_GETLASTERROR;
    return reinterpret_cast<SheetHost*>(info->lParamInit)->SheetCallback(info, lParam);
}

// The plug-in's page function as the driver registers it. The host finds itself through
// pOemEntry, the member of OEMUIPSPARAM that is the driver's own.
LONG PluginPageFunction(PPROPSHEETUI_INFO info, LPARAM lParam) {
    if (info == nullptr || info->lParamInit == 0)
        return ERR_CPSUI_GETLASTERROR;
    auto* ps = reinterpret_cast<POEMUIPSPARAM>(info->lParamInit);
    if (ps->pOemEntry == nullptr)
        return ERR_CPSUI_GETLASTERROR;
    return static_cast<SheetHost*>(ps->pOemEntry)->ForwardToPlugin(info, lParam);
}

// The plug-in is handed this in place of the sheet's function, which it forwards to, so that the
// host learns which dialog templates the plug-in's pages use; the plug-in keeps it for later calls.
LONG_PTR CALLBACK HostComPropSheet(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2) {
    return g_openSheet != nullptr ? g_openSheet->ComPropSheet(sheet, function, lParam1, lParam2)
                                  : 0;
}

// The baseline's pages: the plug-in's templates with nothing filled in.
INT_PTR CALLBACK InertPageProc(HWND, UINT msg, WPARAM, LPARAM) {
    return msg == WM_INITDIALOG;
}

INT_PTR CALLBACK HostPageProc(HWND hDlg, UINT msg, WPARAM wParam, LPARAM lParam) {
    auto* host = reinterpret_cast<SheetHost*>(GetWindowLongPtrW(hDlg, DWLP_USER));
    if (msg == WM_INITDIALOG) {
        const auto* page = reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
        host = page != nullptr ? reinterpret_cast<SheetHost*>(page->lParam) : nullptr;
        SetWindowLongPtrW(hDlg, DWLP_USER, reinterpret_cast<LONG_PTR>(host));
    }
    return host != nullptr ? host->PageProc(hDlg, msg, wParam, lParam) : FALSE;
}

// Notes the plug-in's own close of the sheet (a page sends its parent SC_CLOSE), after which the
// script has nothing left to act on.
LRESULT CALLBACK SheetCloseWatch(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                 DWORD_PTR data) {
    if (msg == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_CLOSE)
        reinterpret_cast<SheetOutcome*>(data)->closedByPlugin = true;
    else if (msg == WM_NCDESTROY)
        RemoveWindowSubclass(window, SheetCloseWatch, id);
    return DefSubclassProc(window, msg, wParam, lParam);
}

// The sheet left to the user closes by itself after the script's waiting time.
void CALLBACK WaitOver(HWND, UINT, UINT_PTR, DWORD) {
    if (g_openSheet != nullptr)
        g_openSheet->GiveUp();
}

LRESULT CALLBACK MessageBoxHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE && g_openSheet != nullptr)
        g_openSheet->OnActivate(reinterpret_cast<HWND>(wParam));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool SheetHost::Open(std::wstring& error) {
    if (!Baseline()) {
        psParam_.cbSize = sizeof psParam_;
        psParam_.poemuiobj = plugin_->param->poemuiobj;
        psParam_.hPrinter = plugin_->printer;
        psParam_.pPrinterName = plugin_->printerName->data();
        psParam_.hModule = plugin_->module;
        psParam_.hOEMHeap = plugin_->heap;
        psParam_.pPublicDM = plugin_->publicDM;
        psParam_.pOEMDM = plugin_->param->pOEMDM;
        psParam_.pOEMUserData = plugin_->param->pOEMUserData;
        psParam_.dwFlags = plugin_->param->dwFlags;
        psParam_.pOemEntry = this;
        title_ = *plugin_->printerName + L" Printing Preferences";
    } else {
        title_ = L"Baseline sheet";
    }

    // Message boxes are answered only when a script drives the sheet; a user answers them.
    HHOOK hook = nullptr;
    if (script_.press != SheetPress::kNone) {
        hook = SetWindowsHookExW(WH_CBT, MessageBoxHook, nullptr, GetCurrentThreadId());
        if (hook == nullptr) {
            error = L"SetWindowsHookExW(WH_CBT) failed";
            return false;
        }
    }
    g_openSheet = this;
    DWORD result = 0;
    outcome_.returned =
        CommonPropertySheetUIW(nullptr, HostSheetCallback, reinterpret_cast<LPARAM>(this), &result);
    outcome_.result = result;
    g_openSheet = nullptr;
    if (waitTimer_ != 0)
        KillTimer(nullptr, waitTimer_);
    if (hook != nullptr)
        UnhookWindowsHookEx(hook);
    if (outcome_.returned < 0) {
        error = L"CommonPropertySheetUIW returned " + std::to_wstring(outcome_.returned);
        return false;
    }
    if (!outcome_.cameUp) {
        error =
            L"the sheet never came up (Wine has no display: run the host under xvfb-run, or "
            L"with DISPLAY set, after wineserver -k)";
        return false;
    }
    return true;
}

LONG SheetHost::SheetCallback(PPROPSHEETUI_INFO info, LPARAM lParam) {
    switch (info->Reason) {
        case PROPSHEETUI_REASON_BEFORE_INIT:
            // Wine sends this first, with a null sheet handle: nothing can be added yet.
            info->Result = 1;
            return 1;
        case PROPSHEETUI_REASON_INIT:
            info->Result = 0;
            return AddPages(info) ? 1 : ERR_CPSUI_GETLASTERROR;
        case PROPSHEETUI_REASON_GET_INFO_HEADER: {
            auto* header = reinterpret_cast<PPROPSHEETUI_INFO_HEADER>(lParam);
            if (header == nullptr)
                return ERR_CPSUI_GETLASTERROR;
            header->Flags = PSUIHDRF_EXACT_PTITLE | PSUIHDRF_USEHICON;
            header->pTitle = title_.data();
            header->hInst = GetModuleHandleW(nullptr);
            header->hIcon = LoadIconW(nullptr, IDI_APPLICATION);
            info->Result = 1;
            return 1;
        }
        case PROPSHEETUI_REASON_DESTROY:
            info->Result = 1;
            return 1;
        default:
            return 1;
    }
}

bool SheetHost::AddPages(PPROPSHEETUI_INFO info) {
    if (info->pfnComPropSheet == nullptr || info->hComPropSheet == nullptr)
        return false;
    std::vector<PluginPageTemplate> pages = {{GetModuleHandleW(nullptr), IDD_DRIVER_PAGE}};
    if (Baseline())
        pages.insert(pages.end(), baselinePages_->begin(), baselinePages_->end());
    for (size_t i = 0; i < pages.size(); ++i) {
        PROPSHEETPAGEW page = {};
        page.dwSize = sizeof page;
        page.hInstance = pages[i].module;
        page.pszTemplate = MAKEINTRESOURCEW(pages[i].dialogId);
        page.pfnDlgProc = i == 0 ? HostPageProc : InertPageProc;
        page.lParam = reinterpret_cast<LPARAM>(this);
        if (info->pfnComPropSheet(info->hComPropSheet, CPSFUNC_ADD_PROPSHEETPAGEW,
                                  reinterpret_cast<LPARAM>(&page), 0) == 0) {
            Fail("CPSFUNC_ADD_PROPSHEETPAGEW", L"the sheet refused page " + std::to_wstring(i));
            return false;
        }
    }
    if (Baseline())
        return true;
    // The plug-in's pages come after the driver's, added by the plug-in itself.
    const LONG_PTR added = info->pfnComPropSheet(info->hComPropSheet, CPSFUNC_ADD_PFNPROPSHEETUIW,
                                                 reinterpret_cast<LPARAM>(PluginPageFunction),
                                                 reinterpret_cast<LPARAM>(&psParam_));
    if (added == 0 && !script_.quiet)
        Out("sheet       : the plug-in's page function failed; only the driver's page shows\n");
    return true;
}

LONG SheetHost::ForwardToPlugin(PPROPSHEETUI_INFO info, LPARAM lParam) {
    const PFNCOMPROPSHEET sheetFunction = info->pfnComPropSheet;
    if (sheetFunction != nullptr && sheetFunction != HostComPropSheet) {
        comPropSheet_ = sheetFunction;
        info->pfnComPropSheet = HostComPropSheet;
    }
    const HRESULT hr = plugin_->ui->DocumentPropertySheets(info, lParam);
    info->pfnComPropSheet = sheetFunction;
    if (!script_.quiet) {
        Detail("DocumentPropertySheets: %s -> %s, Result %lld\n", ReasonName(info->Reason),
               Utf8(Hr(hr)).c_str(), static_cast<long long>(info->Result));
    }
    // The framework's convention: 1 or more lets the sheet go on, less is a failure.
    return SUCCEEDED(hr) ? 1 : ERR_CPSUI_GETLASTERROR;
}

LONG_PTR SheetHost::ComPropSheet(HANDLE sheet, UINT function, LPARAM lParam1, LPARAM lParam2) {
    if (comPropSheet_ == nullptr)
        return 0;
    const LONG_PTR result = comPropSheet_(sheet, function, lParam1, lParam2);
    const auto* page = reinterpret_cast<const PROPSHEETPAGEW*>(lParam1);
    if (function == CPSFUNC_ADD_PROPSHEETPAGEW && result != 0 && page != nullptr) {
        if ((page->dwFlags & PSP_DLGINDIRECT) == 0 && IS_INTRESOURCE(page->pszTemplate))
            outcome_.pluginPages.push_back(
                {page->hInstance,
                 static_cast<WORD>(reinterpret_cast<ULONG_PTR>(page->pszTemplate))});
        else
            outcome_.pageNotRebuildable = true;
    }
    return result;
}

INT_PTR SheetHost::PageProc(HWND hDlg, UINT msg, WPARAM, LPARAM lParam) {
    switch (msg) {
        case WM_INITDIALOG:
            if (firstPage_ == nullptr) {
                firstPage_ = hDlg;
                outcome_.cameUp = true;
                sheet_ = GetParent(hDlg);
                if (!Baseline())
                    FillDriverPage(hDlg);
            }
            // The sheet is not shown yet; the rest runs from its own message loop.
            if (!bringUpPosted_) {
                bringUpPosted_ = true;
                PostMessageW(hDlg, kMsgBringUp, 0, 0);
            }
            return TRUE;
        case kMsgBringUp:
            BringUp();
            return TRUE;
        case kMsgAfterPress:
            AfterPress();
            return TRUE;
        case WM_NOTIFY: {
            const auto* header = reinterpret_cast<const NMHDR*>(lParam);
            if (header != nullptr && header->code == PSN_APPLY && !Baseline() &&
                hDlg == firstPage_) {
                SetWindowLongPtrW(hDlg, DWLP_MSGRESULT, OnApply(hDlg));
                return TRUE;
            }
            return FALSE;
        }
        default:
            return FALSE;
    }
}

void SheetHost::FillDriverPage(HWND hDlg) {
    const DEVMODEW& dm = *plugin_->publicDM;
    SetDlgItemTextW(hDlg, IDC_DRIVER_PRINTER, plugin_->printerName->c_str());
    SetDlgItemTextW(hDlg, IDC_DRIVER_MODEL, plugin_->model.c_str());
    const size_t slash = plugin_->pluginPath.find_last_of(L"\\/");
    SetDlgItemTextW(hDlg, IDC_DRIVER_PLUGIN,
                    slash == std::wstring::npos ? plugin_->pluginPath.c_str()
                                                : plugin_->pluginPath.c_str() + slash + 1);
    wchar_t text[128];
    // The devmode comes from a file; a damaged one must not print nonsense such as "0.-5 mm".
    const int dpi = dm.dmYResolution > 0 ? dm.dmYResolution : 0;
    const int width = dm.dmPaperWidth > 0 ? dm.dmPaperWidth : 0;
    const int length = dm.dmPaperLength > 0 ? dm.dmPaperLength : 0;
    if (dpi > 0) {
        std::swprintf(text, 128, L"%d.%d x %d.%d mm (%d x %d dots)", width / 10, width % 10,
                      length / 10, length % 10, static_cast<int>(width * dpi / 254.0 + 0.5),
                      static_cast<int>(length * dpi / 254.0 + 0.5));
    } else {
        std::swprintf(text, 128, L"%d.%d x %d.%d mm", width / 10, width % 10, length / 10,
                      length % 10);
    }
    SetDlgItemTextW(hDlg, IDC_DRIVER_PAPER, text);
    std::swprintf(text, 128, L"%d dpi", dpi);
    SetDlgItemTextW(hDlg, IDC_DRIVER_RESOLUTION, text);
    SetDlgItemTextW(hDlg, IDC_DRIVER_ORIENTATION,
                    dm.dmOrientation == DMORIENT_LANDSCAPE ? L"Landscape" : L"Portrait");
    std::swprintf(text, 128, L"%d", dm.dmCopies);
    SetDlgItemTextW(hDlg, IDC_DRIVER_COPIES, text);
    ShowPaperSource(hDlg);
    // The plug-in hides the driver's colour item in favour of its own black-and-white settings.
    const OEMCUIPPARAM& param = *plugin_->param;
    bool colourHidden = false;
    for (DWORD i = 0; i < param.cDrvOptItems && param.pDrvOptItems != nullptr; ++i) {
        if (param.pDrvOptItems[i].DMPubID == DMPUB_COLOR &&
            (param.pDrvOptItems[i].Flags & OPTIF_HIDE) != 0)
            colourHidden = true;
    }
    SetDlgItemTextW(hDlg, IDC_DRIVER_COLOR,
                    colourHidden ? L"Monochrome; conversion to black and white is on the Print page"
                                 : L"Monochrome");
}

void SheetHost::ShowPaperSource(HWND hDlg) {
    wchar_t text[64];
    const short source = plugin_->publicDM->dmDefaultSource;
    if (source == 0)
        std::swprintf(text, 64, L"Automatically select");
    else
        std::swprintf(text, 64, L"Source %d", source);
    SetDlgItemTextW(hDlg, IDC_DRIVER_SOURCE, text);
}

LONG_PTR SheetHost::OnApply(HWND hDlg) {
    if (CallApplyNow(*plugin_->param, hDlg) == CPSUICB_ACTION_NO_APPLY_EXIT) {
        outcome_.applyRefused = true;
        return PSNRET_INVALID_NOCHANGEPAGE;
    }
    outcome_.applyRefused = false;
    outcome_.applied = true;
    ShowPaperSource(hDlg);
    return PSNRET_NOERROR;
}

void SheetHost::StepFailed(const char* step, const std::wstring& why) {
    Fail(step, why);
    outcome_.stepFailed = true;
}

// Whether the sheet's Apply button is lit, i.e. whether some page told the sheet it changed.
void SheetHost::ShowApplyState(const char* when) {
    if (!script_.quiet)
        Detail("APPLY enabled=%d (%s)\n",
               IsWindowEnabled(GetDlgItem(sheet_, kApplyButtonId)) ? 1 : 0, when);
}

void SheetHost::BringUp() {
    const std::vector<std::wstring> titles = SheetPageTitles(sheet_);
    outcome_.pages = static_cast<int>(titles.size());
    outcome_.titles = titles;
    if (!script_.quiet) {
        for (size_t i = 0; i < titles.size(); ++i) {
            Detail("PAGE %zu %s%s\n", i, Quoted(titles[i]).c_str(),
                   i == 0 ? " (driver)" : " (plug-in)");
        }
    }
    if (!script_.activateAll) {
        WaitForUser();
        return;
    }

    // Every page once: each one is created, so it receives its WM_INITDIALOG, on activation.
    int up = 0;
    double before = SecondsSince(start_);
    for (size_t i = 0; i < titles.size(); ++i) {
        if (ActivatePage(sheet_, static_cast<int>(i)) != nullptr)
            ++up;
        const double now = SecondsSince(start_);
        outcome_.pageSeconds.push_back(i == 0 ? 0 : now - before);
        before = now;
    }
    outcome_.secondsToPagesUp = SecondsSince(start_);
    ActivatePage(sheet_, 0);
    if (up != static_cast<int>(titles.size()))
        StepFailed("activate pages",
                   std::to_wstring(titles.size() - up) + L" page(s) did not come up");
    else if (!script_.quiet)
        Detail("sheet       : %d pages up\n", up);
    ShowApplyState("every page opened");

    if (!script_.screenshotBeforeDir.empty())
        TakeScreenshots(script_.screenshotBeforeDir, titles);

    SetWindowSubclass(sheet_, SheetCloseWatch, 1, reinterpret_cast<DWORD_PTR>(&outcome_));
    for (const PageAction& action : script_.actions) {
        std::wstring error;
        if (!RunPageAction(sheet_, titles, action, error)) {
            StepFailed("page step", error);
            break;
        }
        PumpMessages(sheet_, 20);
        if (outcome_.closedByPlugin) {
            Out("SHEET closed by the plug-in\n");
            return;
        }
    }
    if (!script_.sequences.empty()) {
        RunSequences(titles);
        return;
    }
    if (!script_.actions.empty())
        ShowApplyState("after the steps");
    if (!script_.screenshotDir.empty() && !outcome_.stepFailed)
        outcome_.screenshots = TakeScreenshots(script_.screenshotDir, titles);

    // A failed step must not save half a script's changes: the sheet is cancelled instead.
    SheetPress press = outcome_.stepFailed ? SheetPress::kCancel : script_.press;
    if (press == SheetPress::kNone) {
        WaitForUser();
        return;
    }
    Press(press);
    if (press != SheetPress::kCancel)
        PostMessageW(firstPage_, kMsgAfterPress, 0, 0);
}

// The sequences of --property, in this one opening: each one's steps, its choices and an Apply.
// A refusal ends the opening with Cancel; an opening whose every Apply was accepted ends with OK.
void SheetHost::RunSequences(const std::vector<std::wstring>& titles) {
    if (!script_.imageFile.empty() &&
        GetFileAttributesW(script_.imageFile.c_str()) == INVALID_FILE_ATTRIBUTES) {
        int width = 0, height = 0;
        std::wstring error;
        if (!SaveWindowPng(sheet_, script_.imageFile, width, height, error))
            StepFailed("picture for the steps", error);
    }
    outcome_.choicesAtOpen = PageChoices(sheet_, titles);
    bool stop = outcome_.stepFailed;
    for (const SheetScript::Sequence& sequence : script_.sequences) {
        if (stop)
            break;
        SequenceOutcome& done = outcome_.sequences.emplace_back();
        StepRandom random{sequence.seed != 0 ? sequence.seed : 1};
        RandomStepper stepper{script_.imageFile};
        for (int i = 0; i < sequence.steps && !outcome_.closedByPlugin; ++i) {
            std::wstring error;
            if (!stepper.Step(sheet_, titles, random, error)) {
                StepFailed("random step", error);
                break;
            }
            PumpMessages(sheet_, 0);
        }
        if (outcome_.closedByPlugin || outcome_.stepFailed)
            return;
        done.choices = PageChoices(sheet_, titles);
        outcome_.lastBoxTitle.clear();
        outcome_.applyRefused = false;
        const bool appliedBefore = outcome_.applied;
        outcome_.applied = false;
        Press(SheetPress::kApply);
        done.applied = outcome_.applied;
        done.refused = outcome_.applyRefused;
        done.boxTitle = outcome_.lastBoxTitle;
        outcome_.applied = outcome_.applied || appliedBefore;
        if (done.applied)
            done.record = Record();
        stop = !done.applied;
    }
    if (stop || outcome_.stepFailed) {
        Press(SheetPress::kCancel);
        return;
    }
    Press(SheetPress::kOk);
    outcome_.recordAtOk = Record();
    PostMessageW(firstPage_, kMsgAfterPress, 0, 0);
}

// The settings record as the plug-in's apply leaves it in the driver's buffer.
std::vector<uint8_t> SheetHost::Record() const {
    const auto* bytes = static_cast<const uint8_t*>(plugin_->param->pOEMDM);
    return std::vector<uint8_t>(bytes, bytes + plugin_->publicDM->dmDriverExtra);
}

// Removes the pictures of an earlier run first, so that a model with fewer pages leaves none of
// another model's behind. The number of pictures taken.
int SheetHost::TakeScreenshots(const std::wstring& dir, const std::vector<std::wstring>& titles) {
    std::wstring error;
    if (!MakeDirectories(dir, error)) {
        StepFailed("screenshots", error);
        return 0;
    }
    WIN32_FIND_DATAW found;
    HANDLE old = FindFirstFileW((dir + L"\\??_*.png").c_str(), &found);
    if (old != INVALID_HANDLE_VALUE) {
        do {
            DeleteFileW((dir + L"\\" + found.cFileName).c_str());
        } while (FindNextFileW(old, &found));
        FindClose(old);
    }
    int taken = 0;
    for (size_t i = 0; i < titles.size() && !outcome_.stepFailed; ++i) {
        ActivatePage(sheet_, static_cast<int>(i));
        RedrawWindow(sheet_, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
        PumpMessages(sheet_, 150);
        wchar_t number[8];
        std::swprintf(number, 8, L"%02zu", i);
        const std::wstring path = dir + L"\\" + number + L"_" + FileNamePart(titles[i]) + L".png";
        int width = 0, height = 0;
        if (SaveWindowPng(sheet_, path, width, height, error)) {
            Detail("SCREENSHOT %s %dx%d\n", Utf8(path).c_str(), width, height);
            ++taken;
        } else {
            StepFailed("screenshot", error);
        }
    }
    ActivatePage(sheet_, 0);
    return taken;
}

void SheetHost::WaitForUser() {
    Out("sheet       : open; close it with OK or Cancel (the host gives up and cancels after %d "
        "s; --press closes it by itself)\n",
        script_.waitSeconds);
    waitTimer_ = SetTimer(nullptr, 0, static_cast<UINT>(script_.waitSeconds) * 1000u, WaitOver);
}

void SheetHost::GiveUp() {
    if (sheet_ == nullptr || !IsWindow(sheet_))
        return;
    outcome_.timedOut = true;
    Out("sheet       : nobody closed it within %d s; cancelled\n", script_.waitSeconds);
    Press(SheetPress::kCancel);
}

void SheetHost::Press(SheetPress press) {
    const WPARAM button = press == SheetPress::kOk      ? PSBTN_OK
                          : press == SheetPress::kApply ? PSBTN_APPLYNOW
                                                        : PSBTN_CANCEL;
    if (!script_.quiet) {
        Detail("PRESS %s\n", press == SheetPress::kOk      ? "ok"
                             : press == SheetPress::kApply ? "apply"
                                                           : "cancel");
    }
    // Sent, not posted as PropSheet_PressButton does, so the press is over when this returns.
    SendMessageW(sheet_, PSM_PRESSBUTTON, button, 0);
}

void SheetHost::AfterPress() {
    // OK that the plug-in refused leaves the sheet open, and Apply never closes it.
    if (outcome_.applyRefused && !script_.quiet)
        Out("sheet       : the plug-in refused the apply; closing with cancel\n");
    Press(SheetPress::kCancel);
}

void SheetHost::OnActivate(HWND window) {
    // A box is activated again whenever it regains the focus; it is answered once.
    if (window == sheet_ || GetPropW(window, kAnsweredProp) != nullptr)
        return;
    wchar_t cls[16] = {};
    GetClassNameW(window, cls, 16);
    if (std::wstring(cls) != L"#32770" || GetDlgItem(window, kSheetTabControlId) != nullptr)
        return;
    HWND textControl = GetDlgItem(window, kMessageBoxTextId);
    if (textControl == nullptr) {
        AnswerFileDialog(window);
        return;
    }
    wchar_t title[512] = {};
    wchar_t text[2048] = {};
    GetWindowTextW(window, title, 512);
    GetWindowTextW(textControl, text, 2048);
    int answer = IDOK;
    if (GetDlgItem(window, IDYES) != nullptr)
        answer = script_.answerYes ? IDYES : IDNO;
    else if (GetDlgItem(window, IDOK) == nullptr)
        answer = IDCANCEL;
    if (!script_.quiet) {
        Out("MESSAGEBOX title=%s text=%s answer=%s\n", Quoted(title).c_str(), Quoted(text).c_str(),
            answer == IDYES  ? "yes"
            : answer == IDNO ? "no"
            : answer == IDOK ? "ok"
                             : "cancel");
    }
    outcome_.lastBoxTitle = title;
    SetPropW(window, kAnsweredProp, reinterpret_cast<HANDLE>(1));
    PostMessageW(window, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(window, answer)));
}

void SheetHost::AnswerFileDialog(HWND window) {
    // The file name box of the common file dialogs: the combo of the explorer style, or the
    // edit of the old style.
    HWND name = GetDlgItem(window, cmb13);
    if (name == nullptr)
        name = GetDlgItem(window, edt1);
    if (name == nullptr)
        return;
    wchar_t title[512] = {};
    GetWindowTextW(window, title, 512);
    const bool give = !script_.fileAnswer.empty();
    Out("FILEDIALOG title=%s answer=%s\n", Quoted(title).c_str(),
        give ? Quoted(script_.fileAnswer).c_str() : "cancel");
    outcome_.lastBoxTitle = title;
    SetPropW(window, kAnsweredProp, reinterpret_cast<HANDLE>(1));
    if (give)
        SetWindowTextW(name, script_.fileAnswer.c_str());
    PostMessageW(window, WM_COMMAND, MAKEWPARAM(give ? IDOK : IDCANCEL, BN_CLICKED), 0);
}

}  // namespace

LONG CallApplyNow(OEMCUIPPARAM& param, HWND hDlg) {
    CPSUICBPARAM cb = {};
    cb.cbSize = sizeof cb;
    cb.Reason = CPSUICB_REASON_APPLYNOW;
    cb.hDlg = hDlg;
    cb.pOptItem = param.pOEMOptItems;
    cb.cOptItem = static_cast<WORD>(param.cOEMOptItems);
    cb.Result = CPSUI_OK;
    const LONG action = param.OEMCUIPCallback(&cb, &param);
    Detail("APPLYNOW    : callback returned %ld%s\n", static_cast<long>(action),
           action == CPSUICB_ACTION_NO_APPLY_EXIT ? " (not applied)" : "");
    return action;
}

double SecondsSince(LARGE_INTEGER start) {
    LARGE_INTEGER now, frequency;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart - start.QuadPart) /
           static_cast<double>(frequency.QuadPart);
}

bool OpenPluginSheet(const SheetPlugin& plugin, const SheetScript& script, LARGE_INTEGER start,
                     SheetOutcome& outcome, std::wstring& error) {
    outcome = SheetOutcome{};
    if (plugin.param == nullptr || plugin.param->OEMCUIPCallback == nullptr) {
        error = L"the plug-in installed no OEMCUIPCallback, so the sheet could not apply";
        return false;
    }
    SheetHost host(&plugin, script, nullptr, start, outcome);
    return host.Open(error);
}

bool OpenBaselineSheet(const std::vector<PluginPageTemplate>& pages, SheetOutcome& outcome,
                       std::wstring& error) {
    SheetScript script;
    script.activateAll = true;
    script.quiet = true;
    script.press = SheetPress::kCancel;
    outcome = SheetOutcome{};
    LARGE_INTEGER start;
    QueryPerformanceCounter(&start);
    SheetHost host(nullptr, script, &pages, start, outcome);
    if (!host.Open(error))
        return false;
    if (outcome.pages != static_cast<int>(pages.size()) + 1 || outcome.stepFailed) {
        error = L"the baseline sheet brought up " + std::to_wstring(outcome.pages) +
                L" pages, not " + std::to_wstring(pages.size() + 1);
        return false;
    }
    return true;
}
