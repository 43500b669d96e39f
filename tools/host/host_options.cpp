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

}  // namespace

const wchar_t* HostUsage() {
    return L"usage: kivhost --headless [--model MODEL] [--printer NAME] [--devmode FILE]\n"
           L"               [--verbosity 0-7] [--package DIR] [--log-lines N]\n"
           L"  Installs the model's driver and printer into the Wine spooler, drives the KivUI\n"
           L"  plug-in as the universal driver does (devmode services, common UI entry, apply)\n"
           L"  and prints the settings record field by field and the start of the log.\n"
           L"  --model MODEL    model text of the driver's GPD (default \"TRX418A CUT\")\n"
           L"  --printer NAME   printer name (default \"KIV \" followed by the model)\n"
           L"  --devmode FILE   devmode kept between runs (default\n"
           L"                   %LOCALAPPDATA%\\KivHost\\<printer>.devmode)\n"
           L"  --verbosity N    writes LogVerbosity_UiUni for the printer before the run\n"
           L"  --package DIR    folder of the GPDs and KivUI.ini (default <kivhost>\\driver)\n"
           L"  --log-lines N    new log lines to print (default 40)\n";
}

bool ParseHostOptions(int argc, const wchar_t* const* argv, HostOptions& opts,
                      std::wstring& error) {
    opts = HostOptions{};
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
        std::wstring text;
        if (arg == L"--help" || arg == L"-h") {
            opts.help = true;
        } else if (arg == L"--headless") {
            opts.headless = true;
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
            if (!value(text))
                return false;
            if (!ParseInt(text, 0, 7, opts.verbosity)) {
                error = L"--verbosity takes a number from 0 to 7, not \"" + text + L"\"";
                return false;
            }
        } else if (arg == L"--log-lines") {
            if (!value(text))
                return false;
            if (!ParseInt(text, 0, 100000, opts.logLines)) {
                error = L"--log-lines takes a number from 0 to 100000, not \"" + text + L"\"";
                return false;
            }
        } else {
            error = L"unknown argument \"" + arg + L"\"";
            return false;
        }
    }
    if (opts.help)
        return true;
    if (!opts.headless) {
        error = L"this kivhost has no property sheet yet: run it with --headless";
        return false;
    }
    if (opts.model.empty())
        opts.model = kDefaultModel;
    if (opts.printer.empty())
        opts.printer = L"KIV " + opts.model;
    return true;
}
