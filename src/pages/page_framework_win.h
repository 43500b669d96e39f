// The page framework: page identities, state lookup, control helpers, help balloons and pictures.
#pragma once

#include <string>
#include <string_view>

#include "pages/label_tables.h"
#include "session/page_context_win.h"
#include "pages/page_id.h"
#include "pages/page_rules.h"
#include "win/text_win.h"
#include "win/windows_headers_win.h"

struct PageIdentity {
    const char* logName;    // the function name of the page's log lines
    const char* slotName;   // the name Apply logs when it visits the page
    const char* remapText;  // logged when the page's window changes
    HWND PageContext::*slot;
    uint8_t PageContext::*initialised;
};
const PageIdentity& PageIdentityOf(PageId page);

// Runs first for every message: finds the page's context in DWLP_USER and keeps the page's
// slot pointing at its current window. False (and "hDlg NULL" logged) when there is no window;
// the message is then not handled.
bool LookUpPageContext(HWND hDlg, PageId page, PageContext** context);

// WM_INITDIALOG: keeps the context of the PROPSHEETPAGEW in the page (DWLP_USER) and on the
// sheet (GWLP_USERDATA, where the document callback finds it). Returns it, or null.
PageContext* AttachPageContext(HWND hDlg, LPARAM lParam);
// True exactly once per page and sheet: the caller fills the controls then.
bool TakeFirstFill(PageContext* context, PageId page);

// Enables the sheet's Apply button.
void NotifyPageChanged(HWND hDlg);

// Mode 0 shows, 1 hides, 2 enables, 3 disables; 0 when the control does not exist.
inline constexpr int kControlShow = 0;
inline constexpr int kControlHide = 1;
inline constexpr int kControlEnable = 2;
inline constexpr int kControlDisable = 3;
int SetControlState(HWND hDlg, int controlId, int mode);
int IsControlEnabled(HWND hDlg, int controlId);

void FillComboFromLabels(HWND hDlg, int comboId, const LabelList& labels, int selection);
int ComboSelection(HWND hDlg, int comboId);
bool IsChecked(HWND hDlg, int buttonId);
void SetChecked(HWND hDlg, int buttonId, bool checked);

// Range, steps, position and the companion label of a trackbar.
void SetUpTrackbar(HWND hDlg, int trackbarId, int labelId, const TrackbarView& view);
// Moves a trackbar and rewrites its label.
void SetTrackbarPosition(HWND hDlg, int trackbarId, int labelId, int position);
int TrackbarPosition(HWND hDlg, int trackbarId);

// A control's text as WM_GETTEXT reads it into `bufferChars` characters (terminator included).
std::string ReadControlText(HWND hDlg, int controlId, int bufferChars);
void WriteControlText(HWND hDlg, int controlId, std::string_view text);

// A balloon that shows `text` while the pointer is over the control; null when anything is
// missing. The window lives until the dialog closes.
HWND CreateHelpTooltip(int controlId, HWND hDlg, const wchar_t* text);
// A help icon's click: one more balloon, shown at once.
void PopUpHelp(int controlId, HWND hDlg, const wchar_t* text);

// A PNG resource of `module` drawn on white as a 24-bit bitmap; null on any failure.
HBITMAP LoadPngResourceBitmap(HMODULE module, int resourceId, const char* typeName);
// An image file scaled into a white box of the given size, aspect kept, centred; null on any
// failure (including a file that does not exist).
HBITMAP LoadPreviewBitmap(const std::string& path, int boxWidth, int boxHeight);
// Shows PNG resource `pngId` of the dialog's own module in a picture control.
void SetPicture(HWND hDlg, int pictureId, int pngId);
// Frees the bitmaps the page's picture controls hold (on WM_DESTROY).
void ReleasePictures(HWND hDlg, const int* pictureIds, size_t count);

// Page procedures.
INT_PTR CALLBACK DevicePropPageDocPrint(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocPrintAdjust(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);
