// The page framework: what a page brings (its definition), control helpers, help balloons,
// pictures.
#pragma once

#include <string>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "pages/label_tables.h"
#include "pages/page_view.h"
#include "ports/spooler.h"
#include "session/page_context_win.h"
#include "win/text_win.h"
#include "win/windows_headers_win.h"

// Mode 0 shows, 1 hides, 2 enables, 3 disables; 0 when the control does not exist.
inline constexpr int kControlShow = 0;
inline constexpr int kControlHide = 1;
inline constexpr int kControlEnable = 2;
inline constexpr int kControlDisable = 3;
int SetControlState(HWND hDlg, int controlId, int mode);
int IsControlEnabled(HWND hDlg, int controlId);
// The same mode for every control of a group.
void SetControlsState(HWND hDlg, std::span<const int> controlIds, int mode);
// Mode kControlEnable or kControlDisable by a condition.
inline int EnableMode(bool enabled) {
    return enabled ? kControlEnable : kControlDisable;
}

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

// GDI+ started for as long as the object lives. Every image load holds one, so no GDI+ state
// outlives a load; a page fill holds one around all its pictures, so the library is loaded
// once per fill rather than once per picture (the inner sessions then only count).
class GdiplusSession {
  public:
    GdiplusSession();
    ~GdiplusSession();
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;
    bool Started() const { return started_; }

  private:
    ULONG_PTR token_ = 0;
    bool started_ = false;
};

// A PNG resource of `module` drawn on white as a 24-bit bitmap; null on any failure.
HBITMAP LoadPngResourceBitmap(HMODULE module, int resourceId, const char* typeName);
// Shows PNG resource `pngId` of the dialog's own module in a picture control.
void SetPicture(HWND hDlg, int pictureId, int pngId);
// Frees the bitmap a picture control holds (when the page is destroyed).
void ReleasePicture(HWND hDlg, int pictureId);

class UiDeviceCommon;

// What a page brings to the one page procedure: its pictures, help icons and trackbars, its fill
// from a core view, its dependent rules, and the check and read of its controls on Apply.
struct PictureRow {
    int control;
    int png;
};
struct HelpRow {
    int icon;  // shows PNG 122; a hover tooltip at fill, a balloon on click
    const wchar_t* text;
};
struct TrackbarRow {
    int trackbar;
    int label;  // rewritten when the user moves the trackbar
    std::string (*text)(int position) = TrackbarLabel;
};
// An image file the page names in an edit: Browse fills the edit, and the picture shows the
// file as it stands in the edit.
struct PreviewRow {
    int path;
    int browse;
    int picture;
};
struct PageDefinition {
    std::span<const PictureRow> pictures;
    std::span<const HelpRow> helps;
    std::span<const TrackbarRow> trackbars;
    // The one-time fill; nothing it sets counts as the user's change.
    void (*fill)(HWND hDlg, UiDeviceCommon& device);
    // A selection, click or edit on one of the page's controls: the dependent controls follow.
    // False when the control is an action, not a setting (the sheet's Apply stays as it is).
    // May be null.
    bool (*onCommand)(HWND hDlg, int controlId, int code);
    // Apply: what the check of the page's controls finds (questions, then at most one failure),
    // then their values into the device. Either may be null for a page that checks or keeps
    // nothing.
    ValidationFindings (*validate)(HWND hDlg);
    void (*store)(HWND hDlg, UiDeviceCommon& device);
    // A click on one of the page's pictures (a static control with notification); may be null.
    void (*onPictureClick)(HWND hDlg, int pictureId) = nullptr;
    std::span<const PreviewRow> previews = {};
};

// What an image path edit hands back: 255 characters and the terminator.
inline constexpr int kImagePathChars = 256;
// An image file fitted into a box of the given size, on white; null on any failure.
HBITMAP LoadPreviewBitmap(const std::string& path, int boxWidth, int boxHeight);
// Shows the file in a picture control, fitted to the control; an empty picture without one.
void ShowPreview(HWND hDlg, int pictureId, const std::string& path);
bool PathExists(const std::string& path);

// The file dialogs; an empty path when the user cancels.
std::wstring AskFileToOpen(HWND hDlg, const wchar_t* filter);
std::wstring AskFileToSave(HWND hDlg, const wchar_t* filter, const wchar_t* extension);

// A file chosen for an 8-bit path (a record's path field, the rendering module's argument): its
// path in the ANSI code page. A path that code page cannot carry is refused with a message and
// a log line, since it would name another file or none; empty then and when the user cancels.
std::string AskAnsiFileToOpen(HWND hDlg, PageId page, const wchar_t* filter);

// Shows a page's error message, titled with the page's name.
void ShowPageError(HWND hDlg, PageId page, const std::string& message);

class UniExportedFunctions;
// What an image page asks the rendering module for, from its controls.
using PreviewRender = std::vector<uint8_t> (*)(HWND hDlg, UniExportedFunctions& bridge,
                                               const PreviewPaper& paper);
// The print preview of an image page: the printer must be online, then the rendering module's
// data for what the page shows goes out as a "data" job. `failed` is the page's message when
// nothing could be printed.
void PrintPreview(HWND hDlg, PageId page, PreviewRender render, const char* failed);

// `text` with its terminator into a global block of at least that size; false when the block
// does not lock (a discarded one), and nothing is written then.
bool FillTextBlock(HGLOBAL block, const std::string& text);
// `text` on the clipboard as 8-bit text (CF_TEXT, in a movable block); false on any failure.
bool CopyTextToClipboard(HWND owner, const std::string& text);

// Each page's _win file defines the specialisation for its id; a catalog row without one fails
// to link.
template <PageId kPage>
const PageDefinition& DefinitionOf();

// The sheet's shared block as the page keeps it (DWLP_USER), and the capability object it
// reaches; null before the page's first WM_INITDIALOG or without one.
PageContext* PageContextOf(HWND hDlg);
UiDeviceCommon* PageDevice(HWND hDlg);
OemUiState* PageState(HWND hDlg);

// While it lives, the page's control changes are not the user's: a page that shows other
// values in its own controls (the Logos page's slots) does not light the sheet's Apply.
class FillingScope {
  public:
    explicit FillingScope(HWND hDlg);
    ~FillingScope();
    FillingScope(const FillingScope&) = delete;
    FillingScope& operator=(const FillingScope&) = delete;

  private:
    PageContext* context_;
    uint8_t was_ = 0;
};

// The one procedure behind every page's dialog procedure, run for `page` with `definition`;
// an exception is logged under the page's name and answered 0.
INT_PTR RunPageProcedure(PageId page, const PageDefinition& definition, HWND hDlg, UINT message,
                         WPARAM wParam, LPARAM lParam);
// The definition and the dialog procedure of a page; null for an id past the catalog.
const PageDefinition* FindPageDefinition(PageId page);
DLGPROC PageProcedureOf(PageId page);

// Each page's dialog procedure, as registration hands it to the framework; all of them run the
// one generic procedure with their page's definition.
INT_PTR CALLBACK DevicePropPageDocPrint(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocPrintAdjust(HWND hDlg, UINT message, WPARAM wParam,
                                              LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocCutMove(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocAccessories(HWND hDlg, UINT message, WPARAM wParam,
                                              LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocPeripherals(HWND hDlg, UINT message, WPARAM wParam,
                                              LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocPresentation(HWND hDlg, UINT message, WPARAM wParam,
                                               LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocWatermark(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocCoupon(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocLogo(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocConsole(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocAdmin(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK DevicePropPageDocVersion(HWND hDlg, UINT message, WPARAM wParam, LPARAM lParam);
