// The printer's document property sheet driven from the application's side.
//
// DocumentPropertiesW brings the sheet up modally on this thread. A CBT hook sees it activated
// (a dialog with a tab control) and sets a thread timer; the sheet's own message loop dispatches
// it, and the script runs from there, as the user's steps would. Whether an apply was accepted
// shows in the caller's devmode buffer, which the driver writes on each accepted apply only.
#include "sheet_host.h"

#include <cstdio>
#include <cstring>

#include "host_checks.h"
#include "host_output.h"
#include "page_steps.h"
#include "pages/page_catalog.h"
#include "png_capture.h"

#include <dlgs.h>  // the common file dialogs' control ids

namespace {

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
    // The printer's sheet, writing `out` on each accepted apply; or, with `out` null, the
    // baseline sheet of `baselinePages`.
    SheetHost(std::vector<uint8_t>* out, const SheetScript& script,
              const std::vector<PageTemplate>* baselinePages, LARGE_INTEGER start,
              SheetOutcome& outcome)
        : out_(out),
          script_(script),
          baselinePages_(baselinePages),
          start_(start),
          outcome_(outcome) {}

    // Runs `open` (the call that shows the sheet modally) with the hook in place.
    template <typename OpenFn>
    bool Run(OpenFn open, std::wstring& error);
    LONG BaselineCallback(PPROPSHEETUI_INFO info, LPARAM lParam);
    void OnActivate(HWND window);
    void AnswerFileDialog(HWND window);
    void BringUp();
    void AfterPress();

  private:
    bool Baseline() const { return out_ == nullptr; }
    void Press(SheetPress press);
    void StepFailed(const char* step, const std::wstring& why);
    void ShowApplyState(const char* when);
    int TakeScreenshots(const std::wstring& dir, const std::vector<std::wstring>& titles);

    void WaitForUser();
    void RunSequences(const std::vector<std::wstring>& titles);
    std::vector<uint8_t> Record() const;

  public:
    void GiveUp();

    std::vector<uint8_t>* out_;  // null for the baseline sheet
    std::vector<uint8_t> lastApplied_;
    const SheetScript& script_;
    const std::vector<PageTemplate>* baselinePages_;
    LARGE_INTEGER start_;
    SheetOutcome& outcome_;

    HWND sheet_ = nullptr;
    std::vector<UINT_PTR> timers_;  // thread timers set for this opening

    // Runs `step` from the sheet's own loop, as soon as it has nothing else to do.
    void Later(TIMERPROC step) { timers_.push_back(SetTimer(nullptr, 0, 0, step)); }
};

LONG CALLBACK BaselineSheetCallback(PPROPSHEETUI_INFO info, LPARAM lParam) {
    if (info == nullptr || info->lParamInit == 0)
        return ERR_CPSUI_GETLASTERROR;
    return reinterpret_cast<SheetHost*>(info->lParamInit)->BaselineCallback(info, lParam);
}

// The baseline's pages: the same templates with nothing filled in.
INT_PTR CALLBACK InertPageProc(HWND, UINT msg, WPARAM, LPARAM) {
    return msg == WM_INITDIALOG;
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

// The script starts from the sheet's own loop, once the sheet is shown.
void CALLBACK BringUpTimer(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    if (g_openSheet != nullptr)
        g_openSheet->BringUp();
}

// After a press: a sheet still open must be closed.
void CALLBACK AfterPressTimer(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    if (g_openSheet != nullptr)
        g_openSheet->AfterPress();
}

// The sheet left to the user closes by itself after the script's waiting time.
void CALLBACK WaitOver(HWND, UINT, UINT_PTR, DWORD) {
    if (g_openSheet != nullptr)
        g_openSheet->GiveUp();
}

LRESULT CALLBACK SheetHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE && g_openSheet != nullptr)
        g_openSheet->OnActivate(reinterpret_cast<HWND>(wParam));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

template <typename OpenFn>
bool SheetHost::Run(OpenFn open, std::wstring& error) {
    HHOOK hook = SetWindowsHookExW(WH_CBT, SheetHook, nullptr, GetCurrentThreadId());
    if (hook == nullptr) {
        error = L"SetWindowsHookExW(WH_CBT) failed";
        return false;
    }
    g_openSheet = this;
    outcome_.returned = open();
    g_openSheet = nullptr;
    // A timer this opening set must not fire in the next one.
    for (UINT_PTR timer : timers_)
        KillTimer(nullptr, timer);
    UnhookWindowsHookEx(hook);
    if (!outcome_.cameUp) {
        error = L"the sheet never came up (returned " + std::to_wstring(outcome_.returned) +
                L"; without a display run the host under xvfb-run, or with DISPLAY set, after "
                L"wineserver -k)";
        return false;
    }
    // The user's own OK or Apply wrote the buffer; a refused apply after an accepted one, or
    // Apply then Cancel, keeps what the accepted apply wrote.
    if (!Baseline() && reinterpret_cast<const DEVMODEW*>(out_->data())->dmSize != 0)
        lastApplied_ = *out_;
    else if (!Baseline() && !lastApplied_.empty())
        *out_ = lastApplied_;
    outcome_.applied = outcome_.applied || !lastApplied_.empty();
    return true;
}

LONG SheetHost::BaselineCallback(PPROPSHEETUI_INFO info, LPARAM lParam) {
    switch (info->Reason) {
        case PROPSHEETUI_REASON_INIT:
            info->Result = 0;
            if (info->pfnComPropSheet == nullptr || info->hComPropSheet == nullptr)
                return ERR_CPSUI_GETLASTERROR;
            for (const PageTemplate& t : *baselinePages_) {
                PROPSHEETPAGEW page = {};
                page.dwSize = sizeof page;
                page.hInstance = t.module;
                page.pszTemplate = MAKEINTRESOURCEW(t.dialogId);
                page.pfnDlgProc = InertPageProc;
                if (info->pfnComPropSheet(info->hComPropSheet, CPSFUNC_ADD_PROPSHEETPAGEW,
                                          reinterpret_cast<LPARAM>(&page), 0) == 0)
                    return ERR_CPSUI_GETLASTERROR;
            }
            return 1;
        case PROPSHEETUI_REASON_GET_INFO_HEADER: {
            auto* header = reinterpret_cast<PPROPSHEETUI_INFO_HEADER>(lParam);
            if (header == nullptr)
                return ERR_CPSUI_GETLASTERROR;
            header->Flags = PSUIHDRF_EXACT_PTITLE | PSUIHDRF_USEHICON;
            header->pTitle = const_cast<LPWSTR>(L"Baseline sheet");
            header->hInst = GetModuleHandleW(nullptr);
            header->hIcon = LoadIconW(nullptr, IDI_APPLICATION);
            info->Result = 1;
            return 1;
        }
        default:
            info->Result = 1;
            return 1;
    }
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
        Later(AfterPressTimer);
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
    Later(AfterPressTimer);
}

// The settings record of the last accepted apply, as the driver wrote it to the caller.
std::vector<uint8_t> SheetHost::Record() const {
    if (lastApplied_.size() < sizeof(DEVMODEW))
        return {};
    return std::vector<uint8_t>(lastApplied_.begin() + sizeof(DEVMODEW), lastApplied_.end());
}

// Removes the pictures of an earlier run first, so that a model with fewer pages leaves none of
// another model's behind; only names the host gives a page's picture go, any page of any model,
// so the user's own files in the folder stay. The number of pictures taken.
int SheetHost::TakeScreenshots(const std::wstring& dir, const std::vector<std::wstring>& titles) {
    std::wstring error;
    if (!MakeDirectories(dir, error)) {
        StepFailed("screenshots", error);
        return 0;
    }
    std::vector<std::wstring> anyPage = titles;
    for (const PageCatalogRow& row : kPageCatalog)
        anyPage.push_back(std::wstring(row.title, row.title + std::strlen(row.title)));
    WIN32_FIND_DATAW found;
    HANDLE old = FindFirstFileW((dir + L"\\??_*.png").c_str(), &found);
    if (old != INVALID_HANDLE_VALUE) {
        do {
            if (IsPagePicture(found.cFileName, anyPage, FileNamePart))
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
    timers_.push_back(
        SetTimer(nullptr, 0, static_cast<UINT>(script_.waitSeconds) * 1000u, WaitOver));
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
    // The driver writes the caller's buffer on each accepted apply only: a blank dmSize shows
    // whether this press wrote it.
    const bool applies = press != SheetPress::kCancel && !Baseline();
    if (applies)
        reinterpret_cast<DEVMODEW*>(out_->data())->dmSize = 0;
    // Sent, not posted as PropSheet_PressButton does, so the press is over when this returns.
    SendMessageW(sheet_, PSM_PRESSBUTTON, button, 0);
    if (!applies)
        return;
    const bool written = reinterpret_cast<const DEVMODEW*>(out_->data())->dmSize != 0;
    if (written)
        lastApplied_ = *out_;
    outcome_.applied = written;
    outcome_.applyRefused = !written;
}

void SheetHost::AfterPress() {
    // OK that the plug-in refused leaves the sheet open, and Apply never closes it.
    if (!IsWindow(sheet_))
        return;
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
    if (std::wstring(cls) != L"#32770")
        return;
    if (GetDlgItem(window, kSheetTabControlId) != nullptr) {
        // The sheet itself, shown: the script runs from its loop.
        if (sheet_ == nullptr) {
            sheet_ = window;
            outcome_.cameUp = true;
            Later(BringUpTimer);
        }
        return;
    }
    // Message boxes are answered only when a script drives the sheet; a user answers them.
    if (script_.press == SheetPress::kNone)
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

double SecondsSince(LARGE_INTEGER start) {
    LARGE_INTEGER now, frequency;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart - start.QuadPart) /
           static_cast<double>(frequency.QuadPart);
}

bool OpenPrinterSheet(HANDLE printer, std::wstring& printerName, std::vector<uint8_t>& in,
                      std::vector<uint8_t>& out, const SheetScript& script, LARGE_INTEGER start,
                      SheetOutcome& outcome, std::wstring& error) {
    outcome = SheetOutcome{};
    if (out.size() < sizeof(DEVMODEW) || in.size() < sizeof(DEVMODEW)) {
        error = L"no devmode to open the sheet on";
        return false;
    }
    SheetHost host(&out, script, nullptr, start, outcome);
    return host.Run(
        [&] {
            return DocumentPropertiesW(nullptr, printer, printerName.data(),
                                       reinterpret_cast<DEVMODEW*>(out.data()),
                                       reinterpret_cast<DEVMODEW*>(in.data()),
                                       DM_IN_BUFFER | DM_IN_PROMPT | DM_OUT_BUFFER);
        },
        error);
}

namespace {

// Skips a sz_Or_Ord member of a dialog template: 0 (none), 0xFFFF and an ordinal, or a string.
const WORD* SkipNameOrOrdinal(const WORD* p, const WORD* end) {
    if (p >= end)
        return end;
    if (*p == 0)
        return p + 1;
    if (*p == 0xFFFF)
        return p + 2;
    while (p < end && *p != 0)
        ++p;
    return p + 1;
}

// The caption of a dialog template (DLGTEMPLATEEX or DLGTEMPLATE), read within its `bytes`.
std::wstring DialogCaption(const void* data, DWORD bytes) {
    const auto* p = static_cast<const WORD*>(data);
    const WORD* end = p + bytes / sizeof(WORD);
    const bool extended = bytes >= 4 && p[0] == 1 && p[1] == 0xFFFF;
    // Header up to the menu: DLGTEMPLATEEX 26 bytes, DLGTEMPLATE 18.
    p += extended ? 13 : 9;
    p = SkipNameOrOrdinal(SkipNameOrOrdinal(p, end), end);
    std::wstring caption;
    while (p < end && *p != 0)
        caption += static_cast<wchar_t>(*p++);
    return caption;
}

struct TemplateSearch {
    const std::wstring* title;
    WORD found;
};

BOOL CALLBACK MatchDialog(HMODULE module, LPCWSTR, LPWSTR name, LONG_PTR param) {
    auto* search = reinterpret_cast<TemplateSearch*>(param);
    if (!IS_INTRESOURCE(name))
        return TRUE;
    HRSRC found = FindResourceW(module, name, MAKEINTRESOURCEW(5));  // RT_DIALOG
    HGLOBAL loaded = found != nullptr ? LoadResource(module, found) : nullptr;
    const void* data = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (data == nullptr || DialogCaption(data, SizeofResource(module, found)) != *search->title)
        return TRUE;
    search->found = static_cast<WORD>(reinterpret_cast<ULONG_PTR>(name));
    return FALSE;
}

}  // namespace

bool FindPageTemplates(const std::vector<std::wstring>& titles, const std::vector<HMODULE>& modules,
                       std::vector<PageTemplate>& pages, std::wstring& error) {
    pages.clear();
    for (const std::wstring& title : titles) {
        TemplateSearch search{&title, 0};
        for (HMODULE module : modules) {
            EnumResourceNamesW(module, MAKEINTRESOURCEW(5), MatchDialog,
                               reinterpret_cast<LONG_PTR>(&search));
            if (search.found != 0) {
                pages.push_back({module, search.found});
                break;
            }
        }
        if (search.found == 0) {
            error = L"no dialog template is titled " + title;
            return false;
        }
    }
    return true;
}

bool OpenBaselineSheet(const std::vector<PageTemplate>& pages, SheetOutcome& outcome,
                       std::wstring& error) {
    SheetScript script;
    script.activateAll = true;
    script.quiet = true;
    script.press = SheetPress::kCancel;
    outcome = SheetOutcome{};
    LARGE_INTEGER start;
    QueryPerformanceCounter(&start);
    SheetHost host(nullptr, script, &pages, start, outcome);
    if (!host.Run(
            [&] {
                return CommonPropertySheetUIW(nullptr, BaselineSheetCallback,
                                              reinterpret_cast<LPARAM>(&host), nullptr);
            },
            error))
        return false;
    if (outcome.pages != static_cast<int>(pages.size()) || outcome.stepFailed) {
        error = L"the baseline sheet brought up " + std::to_wstring(outcome.pages) +
                L" pages, not " + std::to_wstring(pages.size());
        return false;
    }
    return true;
}
