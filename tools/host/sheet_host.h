// The document property sheet as the universal driver opens it: Wine's CommonPropertySheetUIW,
// the driver's own first page, the plug-in's pages, and apply routed to the plug-in's callback.
#pragma once

#include <string>
#include <vector>

#include "host_options.h"
#include "win/oem_framework_win.h"

// What the sheet needs from the host's run. Every pointer must outlive the sheet.
struct SheetPlugin {
    IPrintOemUI* ui = nullptr;
    HMODULE module = nullptr;
    HANDLE printer = nullptr;
    HANDLE heap = nullptr;
    std::wstring* printerName = nullptr;  // the buffer OEMCUIPPARAM points into
    std::wstring model;
    std::wstring pluginPath;
    DEVMODEW* publicDM = nullptr;
    OEMCUIPPARAM* param = nullptr;  // the second CommonUIProp call's block, callback installed
};

// What to do once the sheet is up; the default leaves the sheet to the user.
struct SheetScript {
    bool activateAll = false;  // activate every page once (timing, screenshots, steps, press)
    bool quiet = false;        // timing runs print nothing about the pages
    SheetPress press = SheetPress::kNone;
    std::wstring screenshotDir;
    bool answerYes = false;
    std::vector<PageAction> actions;
};

struct SheetOutcome {
    LONG returned = 0;                // CommonPropertySheetUIW's return value
    DWORD result = 0;                 // its *pResult
    int pages = 0;                    // every page of the sheet, the driver's included
    bool applied = false;             // an apply the plug-in accepted
    bool applyRefused = false;        // the last apply was refused (validation failed)
    bool stepFailed = false;          // a scripted step, screenshot or press could not be done
    int messageBoxes = 0;             // message boxes the plug-in showed and the host answered
    double secondsToInit = 0;         // from the caller's start to the sheet callback's INIT
    double secondsToShown = 0;        // ... to the sheet's first page shown and its loop running
    double secondsToPagesUp = 0;      // ... to every page initialised
    std::vector<double> pageSeconds;  // each page's first activation (the first page's is 0)
    std::vector<std::wstring> titles;
};

// Opens the sheet and returns when it is closed. `start` (QueryPerformanceCounter) is when the
// caller's clock started. False with a reason in `error` when the sheet could not be opened.
bool OpenPluginSheet(const SheetPlugin& plugin, const SheetScript& script, LARGE_INTEGER start,
                     SheetOutcome& outcome, std::wstring& error);

// The baseline of --time: the same CommonPropertySheetUIW path with `pages` blank pages of the
// host's own, each activated once, then cancelled. `seconds` runs from just before the call.
bool OpenBlankSheet(int pages, SheetOutcome& outcome, std::wstring& error);

double SecondsSince(LARGE_INTEGER start);
