// Command-line options of kivhost.
#pragma once

#include <string>

struct HostOptions {
    std::wstring printer;      // --printer; default "KIV " + model
    std::wstring model;        // --model; chooses the GPD
    std::wstring devmodeFile;  // --devmode; default %LOCALAPPDATA%\KivHost\<printer>.devmode
    std::wstring packageDir;   // --package; default <kivhost folder>\driver
    int verbosity = -1;        // --verbosity 0..7; -1 leaves the registry alone
    bool headless = false;     // --headless: devmode services and common UI entry only
    int logLines = 40;         // --log-lines: how many new log lines to print
    bool help = false;
};

inline constexpr wchar_t kDefaultModel[] = L"TRX418A CUT";

// Fills `opts` from the arguments (argv[0] is the program). False with a message on bad input.
bool ParseHostOptions(int argc, const wchar_t* const* argv, HostOptions& opts, std::wstring& error);

const wchar_t* HostUsage();
