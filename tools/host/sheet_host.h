// The printer's document property sheet as an application opens it: DocumentPropertiesW with a
// prompt, which the spooler hands to the driver's configuration module. The sheet comes up on
// this thread inside that call; the host finds it from the application's side (a CBT hook) and
// drives it from thread timers, which the sheet's own message loop dispatches.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host_options.h"
#include "win/oem_framework_win.h"

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

// A page's module and dialog template, found by the page's title among the dialogs of the
// modules the sheet's pages come from.
struct PageTemplate {
    HINSTANCE module = nullptr;
    WORD dialogId = 0;
};

struct SheetOutcome {
    LONG returned = 0;                // DocumentPropertiesW's (or CommonPropertySheetUIW's) answer
    int pages = 0;                    // every page of the sheet, the driver's included
    bool applied = false;             // an apply the plug-in accepted (the devmode was written)
    bool applyRefused = false;        // the last apply was refused (validation failed)
    bool stepFailed = false;          // a scripted step, screenshot or press could not be done
    bool closedByPlugin = false;      // a step made the plug-in close the sheet (SC_CLOSE)
    bool cameUp = false;              // the sheet window was found
    bool timedOut = false;            // nobody closed the sheet in time; cancelled
    int screenshots = 0;              // pictures taken after the steps
    double secondsToPagesUp = 0;      // from the caller's start to every page initialised
    std::vector<double> pageSeconds;  // each page's first activation (the first page's is 0)
    std::vector<std::wstring> titles;
    std::wstring lastBoxTitle;  // the title of the last message box answered
    // With random sequences: the user's choices on the plug-in's pages as the sheet came up
    // (PageChoices), each sequence's outcome, and the record after the closing OK.
    std::string choicesAtOpen;
    std::vector<SequenceOutcome> sequences;
    std::vector<uint8_t> recordAtOk;
};

// Opens the printer's sheet on `in` (a whole devmode) and returns when it is closed. `out` has
// the size the spooler asked for; it receives the devmode of each accepted apply and is left
// alone otherwise. `start` (QueryPerformanceCounter) is when the caller's clock started. False
// with a reason in `error` when the sheet could not be opened.
bool OpenPrinterSheet(HANDLE printer, std::wstring& printerName, std::vector<uint8_t>& in,
                      std::vector<uint8_t>& out, const SheetScript& script, LARGE_INTEGER start,
                      SheetOutcome& outcome, std::wstring& error);

// The dialog templates of the pages titled `titles`, looked up in `modules`; false with the
// title that none of them holds in `error`.
bool FindPageTemplates(const std::vector<std::wstring>& titles, const std::vector<HMODULE>& modules,
                       std::vector<PageTemplate>& pages, std::wstring& error);

// The baseline of --time: a sheet through CommonPropertySheetUIW with the same dialog templates
// (`pages`, the driver's first) driven by a procedure that fills nothing, each page activated
// once, then cancelled. The times run from just before the call.
bool OpenBaselineSheet(const std::vector<PageTemplate>& pages, SheetOutcome& outcome,
                       std::wstring& error);

double SecondsSince(LARGE_INTEGER start);
