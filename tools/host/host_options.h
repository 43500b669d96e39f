// Command-line options of kivhost.
#pragma once

#include <string>
#include <vector>

// The sheet button pressed once every page is up.
enum class SheetPress { kNone, kOk, kApply, kCancel };

// One scripted step on a page of the open sheet, run in command-line order before the press.
struct PageAction {
    enum class Kind { kSet, kSelect, kClick, kTrackbar, kDump };
    Kind kind = Kind::kSet;
    std::wstring page;  // tab index or page title; empty only for a dump of every page
    int control = 0;
    std::wstring text;      // kSet: the new window text
    int value = 0;          // kSelect: combo item index; kTrackbar: position
    unsigned heldKeys = 0;  // kClick: kHoldCtrl | kHoldShift, held down through the click
    int opening = 0;        // the sheet opening it belongs to (0: the first; see --reopen)
};
inline constexpr unsigned kHoldCtrl = 1, kHoldShift = 2;

struct HostOptions {
    std::wstring printer;      // --printer; default "KIV " + model
    std::wstring model;        // --model; chooses the GPD
    std::wstring devmodeFile;  // --devmode: the devmode to start from instead of the stored one
    std::wstring packageDir;   // --package; default <kivhost folder>\driver
    int verbosity = -1;        // --verbosity 0..7; -1 leaves the registry alone
    bool headless = false;     // --headless: the spooler's merge only, no sheet
    bool reset = false;        // --reset: starts from (and stores) the spooler's default
    bool lastDocument = true;  // --no-last-document: the print folder gets no last document
    int logLines = -1;         // --log-lines: new log lines to print; -1: 40 with --verbose
    bool verbose = false;      // --verbose: every step of the host's work
    bool showRecord = false;   // --show-record: the saved record field by field
    bool help = false;
    bool listModels = false;      // --list-models
    int comctl = 6;               // --comctl 5|6: the common-controls version the process runs with
    std::wstring port = L"none";  // --port none|bidi|no-bidi: the language monitor's state

    // The property sheet (everything below needs a sheet, so it excludes --headless).
    SheetPress press = SheetPress::kNone;  // --press ok|apply|cancel
    std::wstring screenshotDir;            // --screenshots DIR, after the steps
    std::wstring screenshotBeforeDir;      // --screenshots-before DIR
    int waitSeconds = 600;                 // --wait: without --press, the user's time to close
    bool time = false;                     // --time
    int timeRuns = 5;                      // --time-runs N (median of N)
    int soak = 0;                          // --soak N: openings measured for growth
    int property = 0;                      // --property N: sequences of random user steps
    unsigned seed = 1;                     // --seed S: the first sequence's seed
    bool answerYes = false;                // --answer yes|no for the plug-in's questions
    std::wstring fileAnswer;               // --file PATH for the plug-in's file dialogs
    std::vector<PageAction> actions;       // --page, --set, --select, --click, --trackbar,
                                           // --dump-controls, --hold
    // --reopen: the sheet is opened again after it closes, in the same process (the plug-in's
    // module-wide state, such as admin mode, carries over); steps after it act on the new one.
    int openings = 1;
};

inline constexpr wchar_t kDefaultModel[] = L"TRX418A CUT";

// The sheet's opening time may be at most this many times that of the baseline sheet (the same
// dialog templates with nothing filled in).
inline constexpr double kSheetTimeTarget = 1.3;

// What one opening of the sheet may leave behind on the heap under --soak (handles and GDI
// objects: nothing).
inline constexpr unsigned kSoakHeapLimit = 32768;

// Fills `opts` from the arguments (argv[0] is the program). False with a message on bad input.
bool ParseHostOptions(int argc, const wchar_t* const* argv, HostOptions& opts, std::wstring& error);

const wchar_t* HostUsage();
