// Parses kivhost's command line.
#include "host_options.h"

#include <cwchar>

namespace {

// A whole decimal number within [lo, hi].
bool ParseInt(const std::wstring& text, int lo, int hi, int& value) {
    if (text.empty() || text.size() > 9)
        return false;
    int v = 0;
    for (wchar_t c : text) {
        if (c < L'0' || c > L'9')
            return false;
        v = v * 10 + (c - L'0');
    }
    if (v < lo || v > hi)
        return false;
    value = v;
    return true;
}

// "ID=VALUE" with a control id of 1..65535; VALUE may be empty.
bool SplitControlArg(const std::wstring& text, int& control, std::wstring& value) {
    const size_t eq = text.find(L'=');
    if (eq == std::wstring::npos)
        return false;
    if (!ParseInt(text.substr(0, eq), 1, 65535, control))
        return false;
    value = text.substr(eq + 1);
    return true;
}

}  // namespace

const wchar_t* HostUsage() {
    return L"usage: kivhost [options] [--page P step...]...\n"
           L"  Installs the model's driver and a printer on it into Wine's spooler and opens\n"
           L"  the printer's preferences as an application does: DocumentPropertiesW with the\n"
           L"  printer's per-user default devmode, the sheet with the driver's page and the\n"
           L"  plug-in's pages, and on OK SetPrinterW level 9. Prints a summary: printer, pages,\n"
           L"  what was applied and stored, where the screenshots and the log are.\n"
           L"  --model MODEL    a model of the driver package (default \"TRX418A CUT\")\n"
           L"  --list-models    prints the package's models, one per line, and exits\n"
           L"  --printer NAME   printer name (default \"KIV \" followed by the model)\n"
           L"  --devmode FILE   starts from this devmode file (public part, then private\n"
           L"                   part) instead of the printer's per-user default\n"
           L"  --reset          starts from the spooler's default and stores it\n"
           L"  --package DIR    folder of the GPDs and KivUI.ini (default <kivhost>\\driver)\n"
           L"  --verbosity N    writes LogVerbosity_UiUni (0-7) for the printer before the run\n"
           L"  --verbose        prints every step of the host's work, the record and the log\n"
           L"  --show-record    prints the saved settings record field by field\n"
           L"  --log-lines N    new log lines to print (default 0; 40 with --verbose)\n"
           L"  --headless       no window: the spooler's merge of the devmode, stored\n"
           L"  --no-last-document  leaves the print folder without the last document that\n"
           L"                   the host's job otherwise writes there (Reprint, Save last Doc)\n"
           L"  --press BUTTON   once every page is up and the steps are done: ok, apply (then\n"
           L"                   close with cancel) or cancel\n"
           L"  --wait SECONDS   without --press, how long the sheet waits for the user before\n"
           L"                   the host cancels it and exits with 6 (default 600)\n"
           L"  --screenshots DIR  one PNG per page after the steps, NN_<title>.png\n"
           L"  --screenshots-before DIR  the same before the steps\n"
           L"  --answer yes|no  answer to the plug-in's yes/no questions (default no)\n"
           L"  --file PATH      file name given to the plug-in's file dialogs (default cancel)\n"
           L"  --page P         the page (tab index from 0, or title) of the steps after it:\n"
           L"    --set ID=TEXT  sets a control's text      --select ID=N   picks combo item N\n"
           L"    --click ID     clicks a button or picture --trackbar ID=POS  moves a trackbar\n"
           L"    --hold ctrl|shift|ctrl+shift  keys held down through the next --click\n"
           L"    --dump-controls  prints the page's controls (every page before any --page)\n"
           L"  --reopen         once the sheet has closed, opens it again in the same process\n"
           L"                   (admin mode carries over); later steps, --screenshots and\n"
           L"                   --press act on the new opening, --press on every opening\n"
           L"  --time           times the sheet against the same sheet whose pages fill nothing\n"
           L"                   and exits with 4 when the ratio is over the target\n"
           L"  --time-runs N    repetitions for --time (median; default 5)\n"
           L"  --soak N         opens the full sheet N times in one process and exits with 5\n"
           L"                   when an opening leaves memory, handles or GDI objects behind\n"
           L"  --port STATE     the printer's port: none (no language monitor, the default),\n"
           L"                   bidi (a monitor, bidirectional) or no-bidi (a monitor, not\n"
           L"                   bidirectional)\n"
           L"  --comctl 5|6     common controls version of the process (default 6, as\n"
           L"                   applications run with their manifest)\n"
           L"  --property N     N sequences of random user steps on every page, each ended with\n"
           L"                   Apply, several per opening, each opening ended with OK; an\n"
           L"                   accepted apply must save a record that loads and saves to the\n"
           L"                   same bytes and reopens with the same choices; exits with 7 on\n"
           L"                   any violation\n"
           L"  --seed S         the first sequence's seed for --property (default 1; sequence\n"
           L"                   i uses S + i)\n"
           L"  --help           this text\n"
           L"  Exit codes: 1 a bad argument, path or model name, 2 a failed step, 3 a script\n"
           L"  step or apply that could not be done, 4 --time over target, 5 --soak growth,\n"
           L"  6 nobody closed the sheet in time, 7 a --property violation.\n";
}

bool ParseHostOptions(int argc, const wchar_t* const* argv, HostOptions& opts,
                      std::wstring& error) {
    opts = HostOptions{};
    std::wstring page;
    bool sheetOption = false;
    unsigned held = 0;
    for (int i = 1; i < argc; ++i) {
        const std::wstring arg = argv[i];
        auto value = [&](std::wstring& out) {
            if (i + 1 >= argc || argv[i + 1][0] == L'\0') {
                error = arg + L" needs a value";
                return false;
            }
            out = argv[++i];
            return true;
        };
        // A step on a page: it needs a --page before it.
        auto pageAction = [&](PageAction::Kind kind, const std::wstring& text) {
            PageAction action;
            action.kind = kind;
            action.page = page;
            if (page.empty() && kind != PageAction::Kind::kDump) {
                error = arg + L" needs a --page before it";
                return false;
            }
            action.opening = opts.openings - 1;
            std::wstring rest;
            switch (kind) {
                case PageAction::Kind::kSet:
                    if (!SplitControlArg(text, action.control, action.text)) {
                        error = L"--set takes ID=TEXT, not \"" + text + L"\"";
                        return false;
                    }
                    break;
                case PageAction::Kind::kSelect:
                case PageAction::Kind::kTrackbar:
                    if (!SplitControlArg(text, action.control, rest) ||
                        !ParseInt(rest, 0, 65535, action.value)) {
                        error = arg + L" takes ID=NUMBER, not \"" + text + L"\"";
                        return false;
                    }
                    break;
                case PageAction::Kind::kClick:
                    if (!ParseInt(text, 1, 65535, action.control)) {
                        error = L"--click takes a control id, not \"" + text + L"\"";
                        return false;
                    }
                    action.heldKeys = held;
                    held = 0;
                    break;
                case PageAction::Kind::kDump:
                    break;
            }
            opts.actions.push_back(action);
            sheetOption = true;
            return true;
        };
        std::wstring text;
        auto number = [&](int lo, int hi, int& out) {
            if (!value(text))
                return false;
            if (!ParseInt(text, lo, hi, out)) {
                error = arg + L" takes a number from " + std::to_wstring(lo) + L" to " +
                        std::to_wstring(hi) + L", not \"" + text + L"\"";
                return false;
            }
            return true;
        };
        if (arg == L"--help" || arg == L"-h") {
            opts.help = true;
        } else if (arg == L"--verbose") {
            opts.verbose = true;
        } else if (arg == L"--show-record") {
            opts.showRecord = true;
        } else if (arg == L"--wait") {
            if (!number(1, 86400, opts.waitSeconds))
                return false;
            sheetOption = true;
        } else if (arg == L"--screenshots-before") {
            if (!value(opts.screenshotBeforeDir))
                return false;
            sheetOption = true;
        } else if (arg == L"--list-models") {
            opts.listModels = true;
        } else if (arg == L"--headless") {
            opts.headless = true;
        } else if (arg == L"--reset") {
            opts.reset = true;
        } else if (arg == L"--no-last-document") {
            opts.lastDocument = false;
        } else if (arg == L"--printer") {
            if (!value(opts.printer))
                return false;
        } else if (arg == L"--model") {
            if (!value(opts.model))
                return false;
        } else if (arg == L"--devmode") {
            if (!value(opts.devmodeFile))
                return false;
        } else if (arg == L"--package") {
            if (!value(opts.packageDir))
                return false;
        } else if (arg == L"--verbosity") {
            if (!number(0, 7, opts.verbosity))
                return false;
        } else if (arg == L"--log-lines") {
            if (!number(0, 100000, opts.logLines))
                return false;
        } else if (arg == L"--press") {
            if (!value(text))
                return false;
            if (text == L"ok") {
                opts.press = SheetPress::kOk;
            } else if (text == L"apply") {
                opts.press = SheetPress::kApply;
            } else if (text == L"cancel") {
                opts.press = SheetPress::kCancel;
            } else {
                error = L"--press takes ok, apply or cancel, not \"" + text + L"\"";
                return false;
            }
            sheetOption = true;
        } else if (arg == L"--screenshots") {
            if (!value(opts.screenshotDir))
                return false;
            sheetOption = true;
        } else if (arg == L"--time") {
            opts.time = true;
            sheetOption = true;
        } else if (arg == L"--time-runs") {
            if (!number(1, 100, opts.timeRuns))
                return false;
            sheetOption = true;
        } else if (arg == L"--soak") {
            if (!number(1, 1000, opts.soak))
                return false;
            sheetOption = true;
        } else if (arg == L"--comctl") {
            if (!value(text))
                return false;
            if (text != L"5" && text != L"6") {
                error = L"--comctl takes 5 or 6, not \"" + text + L"\"";
                return false;
            }
            opts.comctl = text == L"5" ? 5 : 6;
        } else if (arg == L"--property") {
            if (!number(1, 100000, opts.property))
                return false;
            sheetOption = true;
        } else if (arg == L"--seed") {
            int seed = 0;
            if (!number(1, 2000000000, seed))
                return false;
            opts.seed = static_cast<unsigned>(seed);
            sheetOption = true;
        } else if (arg == L"--file") {
            if (!value(opts.fileAnswer))
                return false;
            sheetOption = true;
        } else if (arg == L"--port") {
            if (!value(text))
                return false;
            if (text != L"none" && text != L"bidi" && text != L"no-bidi") {
                error = L"--port takes none, bidi or no-bidi, not \"" + text + L"\"";
                return false;
            }
            opts.port = text;
        } else if (arg == L"--answer") {
            if (!value(text))
                return false;
            if (text != L"yes" && text != L"no") {
                error = L"--answer takes yes or no, not \"" + text + L"\"";
                return false;
            }
            opts.answerYes = text == L"yes";
            sheetOption = true;
        } else if (arg == L"--page") {
            if (!value(page))
                return false;
            sheetOption = true;
        } else if (arg == L"--set" || arg == L"--select" || arg == L"--trackbar" ||
                   arg == L"--click") {
            // "--set 1067=" is a legal way to empty a field, so the value may end in '='.
            if (!value(text))
                return false;
            const PageAction::Kind kind = arg == L"--set"      ? PageAction::Kind::kSet
                                          : arg == L"--select" ? PageAction::Kind::kSelect
                                          : arg == L"--click"  ? PageAction::Kind::kClick
                                                               : PageAction::Kind::kTrackbar;
            if (!pageAction(kind, text))
                return false;
        } else if (arg == L"--hold") {
            if (!value(text))
                return false;
            held = text == L"ctrl"         ? kHoldCtrl
                   : text == L"shift"      ? kHoldShift
                   : text == L"ctrl+shift" ? kHoldCtrl | kHoldShift
                                           : 0;
            if (held == 0) {
                error = L"--hold takes ctrl, shift or ctrl+shift, not \"" + text + L"\"";
                return false;
            }
            sheetOption = true;
        } else if (arg == L"--reopen") {
            ++opts.openings;
            page.clear();  // a step of the new opening names its page again
            sheetOption = true;
        } else if (arg == L"--dump-controls") {
            if (!pageAction(PageAction::Kind::kDump, L""))
                return false;
        } else {
            error = L"unknown argument \"" + arg + L"\"";
            return false;
        }
    }
    if (opts.help)
        return true;
    if (held != 0) {
        error = L"--hold needs a --click after it";
        return false;
    }
    if (opts.headless && sheetOption) {
        error =
            L"--headless opens no sheet: --press, --screenshots, --time and the page steps "
            L"need the sheet";
        return false;
    }
    if (opts.model.empty())
        opts.model = kDefaultModel;
    if (opts.printer.empty())
        opts.printer = L"KIV " + opts.model;
    return true;
}
