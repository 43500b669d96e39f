// Scripted steps on the pages of an open property sheet: activation, control changes, dumps.
#pragma once

#include <string>
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
                   std::wstring& error);

// Prints one CONTROL line per control of the page, in tab order.
void DumpPageControls(HWND page, int index, const std::wstring& title);
