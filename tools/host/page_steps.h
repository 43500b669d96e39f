// Scripted steps on the pages of an open property sheet: activation, control changes, dumps.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host_options.h"
#include "win/windows_headers_win.h"

// The titles of the sheet's pages, in tab order.
std::vector<std::wstring> SheetPageTitles(HWND sheet);

// Makes page `index` the current one (creating it on its first activation) and returns its
// window, null when the sheet has no such page.
HWND ActivatePage(HWND sheet, int index);

// Runs the sheet's messages for about `milliseconds`, so pages paint and posted work is done.
void PumpMessages(HWND sheet, DWORD milliseconds);

// The page a step names: a tab index ("2") or a title (case-insensitive); -1 when none matches.
int FindPage(const std::vector<std::wstring>& titles, const std::wstring& page);

// Carries out one step as a user would cause it: the control changes and its page hears the
// notification the change sends. Prints the step; false with a reason in `error`.
bool RunPageAction(HWND sheet, const std::vector<std::wstring>& titles, const PageAction& action,
                   std::wstring& error, bool quiet = false);

// Prints one CONTROL line per control of the page, in tab order.
void DumpPageControls(HWND page, int index, const std::wstring& title);

// A small seeded generator (xorshift32) for the random user steps; never 0.
struct StepRandom {
    uint32_t state;
    uint32_t Next();
    int Below(int count);  // 0 .. count-1; 0 when count <= 0
};
// User steps chosen at random on the plug-in's pages (never the driver's page 0): a list
// entry, a check box or option button, a text typed into an edit (mostly one the field takes,
// now and then a boundary or a wrong one), a trackbar position. Buttons that open dialogs or
// send jobs are never pressed. A step that opens an empty field (a box that switches on a path)
// is mostly followed by typing into it, as a user fills what they just switched on. Each step
// is carried out as RunPageAction does it; false with a reason in `error`.
class RandomStepper {
  public:
    explicit RandomStepper(std::wstring image) : imageFile_(std::move(image)) {}
    bool Step(HWND sheet, const std::vector<std::wstring>& titles, StepRandom& random,
              std::wstring& error);

  private:
    std::wstring TypedText(HWND edit, StepRandom& random) const;
    std::wstring imageFile_;  // an existing picture, typed as a path
    HWND fillNext_ = nullptr;
};
// What the user can see and change on the plug-in's pages (enabled, visible input controls):
// one line per control with its selection, check, text or position.
std::string PageChoices(HWND sheet, const std::vector<std::wstring>& titles);
