// The document property sheet as the universal driver opens it: Wine's CommonPropertySheetUIW,
// the driver's own first page, the plug-in's pages, and apply routed to the plug-in's callback.
#pragma once

#include <cstdint>
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
    std::wstring screenshotDir;        // after the steps
    std::wstring screenshotBeforeDir;  // before the steps
    int waitSeconds = 600;             // without a press: how long the user has to close it
    bool answerYes = false;
    std::wstring fileAnswer;  // typed into the plug-in's file dialogs; empty: cancel them
    std::vector<PageAction> actions;
    // After the actions (--property): sequences of user steps chosen at random, each ended with
    // Apply; after a refused apply the sheet is cancelled, after the last accepted one it gets OK.
    struct Sequence {
        uint32_t seed = 1;
        int steps = 0;
    };
    std::vector<Sequence> sequences;
    std::wstring imageFile;  // a picture the steps may type as a path (made when missing)
};

// What became of one random sequence.
struct SequenceOutcome {
    bool applied = false;         // its Apply was accepted
    bool refused = false;         // its Apply was refused
    std::wstring boxTitle;        // the title of the last message box answered during it
    std::string choices;          // PageChoices before its Apply
    std::vector<uint8_t> record;  // the record after an accepted Apply
};

// A page as the plug-in added it: its module and dialog template.
struct PluginPageTemplate {
    HINSTANCE module = nullptr;
    WORD dialogId = 0;
};

struct SheetOutcome {
    LONG returned = 0;                // CommonPropertySheetUIW's return value
    DWORD result = 0;                 // its *pResult
    int pages = 0;                    // every page of the sheet, the driver's included
    bool applied = false;             // an apply the plug-in accepted
    bool applyRefused = false;        // the last apply was refused (validation failed)
    bool stepFailed = false;          // a scripted step, screenshot or press could not be done
    bool closedByPlugin = false;      // a step made the plug-in close the sheet (SC_CLOSE)
    bool cameUp = false;              // the sheet's first page was created
    bool timedOut = false;            // nobody closed the sheet in time; cancelled
    int screenshots = 0;              // pictures taken after the steps
    double secondsToPagesUp = 0;      // from the caller's start to every page initialised
    std::vector<double> pageSeconds;  // each page's first activation (the first page's is 0)
    std::vector<std::wstring> titles;
    std::vector<PluginPageTemplate> pluginPages;  // in the order the plug-in added them
    bool pageNotRebuildable = false;              // a page came without a resource template
    std::wstring lastBoxTitle;                    // the title of the last message box answered
    // With random sequences: the user's choices on the plug-in's pages as the sheet came up
    // (PageChoices), each sequence's outcome, and the record after the closing OK.
    std::string choicesAtOpen;
    std::vector<SequenceOutcome> sequences;
    std::vector<uint8_t> recordAtOk;
};

// Opens the sheet and returns when it is closed. `start` (QueryPerformanceCounter) is when the
// caller's clock started. False with a reason in `error` when the sheet could not be opened.
bool OpenPluginSheet(const SheetPlugin& plugin, const SheetScript& script, LARGE_INTEGER start,
                     SheetOutcome& outcome, std::wstring& error);

// The baseline of --time: the same sheet through CommonPropertySheetUIW, the driver's page and
// `pages` (the plug-in's own dialog templates) driven by a procedure that fills nothing, each
// page activated once, then cancelled. The times run from just before the call.
bool OpenBaselineSheet(const std::vector<PluginPageTemplate>& pages, SheetOutcome& outcome,
                       std::wstring& error);

// The CPSUICB_REASON_APPLYNOW call the driver's option page makes when the sheet applies.
LONG CallApplyNow(OEMCUIPPARAM& param, HWND hDlg);

double SecondsSince(LARGE_INTEGER start);
