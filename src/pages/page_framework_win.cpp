// The page framework: control helpers, help balloons and pictures.
#include "pages/page_framework_win.h"

#include <climits>
#include <cstring>
#include <vector>

#include "actions/raw_output.h"
#include "actions/uni_bridge.h"
#include "infra/log.h"
#include "ports/platform_win.h"
#include "session/session_printer.h"
#include "settings/ui_device_common.h"

// The lean Windows headers leave out the file dialogs.
#include <commdlg.h>

// The few GDI+ flat functions the pictures need. The C++ wrapper header drags in min/max
// macros and classes this code does not use; the flat exports are plain C.
extern "C" {
struct KivGdiplusStartupInput {
    UINT32 GdiplusVersion;
    void* DebugEventCallback;
    BOOL SuppressBackgroundThread;
    BOOL SuppressExternalCodecs;
};
using GpStatus = int;
using GpImage = void;
using GpBitmap = void;
using GpGraphics = void;
using GpBrush = void;
GpStatus WINAPI GdiplusStartup(ULONG_PTR* token, const KivGdiplusStartupInput* input, void* output);
void WINAPI GdiplusShutdown(ULONG_PTR token);
GpStatus WINAPI GdipLoadImageFromStream(IStream* stream, GpImage** image);
GpStatus WINAPI GdipLoadImageFromFile(const WCHAR* file, GpImage** image);
GpStatus WINAPI GdipGetImageWidth(GpImage* image, UINT* width);
GpStatus WINAPI GdipGetImageHeight(GpImage* image, UINT* height);
GpStatus WINAPI GdipDisposeImage(GpImage* image);
GpStatus WINAPI GdipCreateBitmapFromScan0(INT width, INT height, INT stride, INT format,
                                          BYTE* scan0, GpBitmap** bitmap);
GpStatus WINAPI GdipGetImageGraphicsContext(GpImage* image, GpGraphics** graphics);
GpStatus WINAPI GdipCreateSolidFill(DWORD color, GpBrush** brush);
GpStatus WINAPI GdipDeleteBrush(GpBrush* brush);
GpStatus WINAPI GdipFillRectangleI(GpGraphics* graphics, GpBrush* brush, INT x, INT y, INT width,
                                   INT height);
GpStatus WINAPI GdipSetInterpolationMode(GpGraphics* graphics, INT mode);
GpStatus WINAPI GdipDrawImageRectI(GpGraphics* graphics, GpImage* image, INT x, INT y, INT width,
                                   INT height);
GpStatus WINAPI GdipDeleteGraphics(GpGraphics* graphics);
GpStatus WINAPI GdipCreateHBITMAPFromBitmap(GpBitmap* bitmap, HBITMAP* hbitmap, DWORD background);
}

namespace {

constexpr GpStatus kGdipOk = 0;
constexpr GpStatus kGdipGenericError = 1;
constexpr GpStatus kGdipOutOfMemory = 3;
constexpr INT kPixelFormat24bppRGB = 0x00021808;
constexpr INT kInterpolationHighQualityBicubic = 7;
constexpr DWORD kWhite = 0xFFFFFFFF;

// Draws `image` at `place` on a white 24-bit canvas and hands the canvas out as an HBITMAP on
// white.
GpStatus RenderOnWhite(GpImage* image, INT canvasWidth, INT canvasHeight,
                       const PreviewPlacement& place, HBITMAP* out) {
    GpBitmap* canvas = nullptr;
    GpStatus status = GdipCreateBitmapFromScan0(canvasWidth, canvasHeight, 0, kPixelFormat24bppRGB,
                                                nullptr, &canvas);
    if (status != kGdipOk || canvas == nullptr) {
        return status != kGdipOk ? status : kGdipOutOfMemory;
    }
    GpGraphics* graphics = nullptr;
    status = GdipGetImageGraphicsContext(canvas, &graphics);
    if (status == kGdipOk) {
        GpBrush* white = nullptr;
        status = GdipCreateSolidFill(kWhite, &white);
        if (status == kGdipOk) {
            GdipFillRectangleI(graphics, white, 0, 0, canvasWidth, canvasHeight);
            GdipDeleteBrush(white);
        }
        GdipSetInterpolationMode(graphics, kInterpolationHighQualityBicubic);
        status = GdipDrawImageRectI(graphics, image, place.x, place.y, place.width, place.height);
        GdipDeleteGraphics(graphics);
    }
    if (status == kGdipOk) {
        status = GdipCreateHBITMAPFromBitmap(canvas, out, kWhite);
    }
    GdipDisposeImage(canvas);
    return status;
}

IStream* StreamOverResource(HMODULE module, int resourceId, const wchar_t* typeName) {
    HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(resourceId), typeName);
    if (resource == nullptr) {
        return nullptr;
    }
    DWORD size = SizeofResource(module, resource);
    HGLOBAL loaded = LoadResource(module, resource);
    const void* data = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (data == nullptr || size == 0) {
        return nullptr;
    }
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
    if (block == nullptr) {
        return nullptr;
    }
    void* target = GlobalLock(block);
    if (target == nullptr) {
        GlobalFree(block);
        return nullptr;
    }
    std::memcpy(target, data, size);
    GlobalUnlock(block);
    IStream* stream = nullptr;
    if (FAILED(CreateStreamOnHGlobal(block, TRUE, &stream)) || stream == nullptr) {
        GlobalFree(block);
        return nullptr;
    }
    return stream;
}

}  // namespace

GdiplusSession::GdiplusSession() {
    KivGdiplusStartupInput input{1, nullptr, FALSE, FALSE};
    started_ = GdiplusStartup(&token_, &input, nullptr) == kGdipOk;
}

GdiplusSession::~GdiplusSession() {
    if (started_) {
        GdiplusShutdown(token_);
    }
}

int SetControlState(HWND hDlg, int controlId, int mode) {
    HWND control = GetDlgItem(hDlg, controlId);
    if (control == nullptr) {
        return 0;
    }
    switch (mode) {
        case kControlShow:
            ShowWindow(control, SW_SHOWNORMAL);
            break;
        case kControlHide:
            ShowWindow(control, SW_HIDE);
            break;
        case kControlEnable:
            EnableWindow(control, TRUE);
            break;
        case kControlDisable:
            EnableWindow(control, FALSE);
            break;
        default:
            break;
    }
    return 1;
}

void SetControlsState(HWND hDlg, std::span<const int> controlIds, int mode) {
    for (int id : controlIds) {
        SetControlState(hDlg, id, mode);
    }
}

int IsControlEnabled(HWND hDlg, int controlId) {
    HWND control = GetDlgItem(hDlg, controlId);
    return control == nullptr ? 0 : IsWindowEnabled(control);
}

void FillComboFromLabels(HWND hDlg, int comboId, const LabelList& labels, int selection) {
    SendDlgItemMessageW(hDlg, comboId, CB_RESETCONTENT, 0, 0);
    for (const std::string& label : labels) {
        std::wstring wide = WidenAnsi(label);
        SendDlgItemMessageW(hDlg, comboId, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide.c_str()));
    }
    SendDlgItemMessageW(hDlg, comboId, CB_SETCURSEL, static_cast<WPARAM>(selection), 0);
}

int ComboSelection(HWND hDlg, int comboId) {
    return static_cast<int>(SendDlgItemMessageW(hDlg, comboId, CB_GETCURSEL, 0, 0));
}

bool IsChecked(HWND hDlg, int buttonId) {
    return SendDlgItemMessageW(hDlg, buttonId, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void SetChecked(HWND hDlg, int buttonId, bool checked) {
    SendDlgItemMessageW(hDlg, buttonId, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

void SetUpTrackbar(HWND hDlg, int trackbarId, int labelId, const TrackbarView& view) {
    SendDlgItemMessageW(hDlg, trackbarId, TBM_SETRANGE, TRUE, MAKELPARAM(view.min, view.max));
    SendDlgItemMessageW(hDlg, trackbarId, TBM_SETLINESIZE, 0, 1);
    SendDlgItemMessageW(hDlg, trackbarId, TBM_SETTICFREQ, 1, 0);
    SendDlgItemMessageW(hDlg, trackbarId, TBM_SETPOS, TRUE, view.position);
    WriteControlText(hDlg, labelId, view.label);
}

void SetTrackbarPosition(HWND hDlg, int trackbarId, int labelId, int position) {
    SendDlgItemMessageW(hDlg, trackbarId, TBM_SETPOS, TRUE, position);
    WriteControlText(hDlg, labelId, TrackbarLabel(position));
}

int TrackbarPosition(HWND hDlg, int trackbarId) {
    return static_cast<int>(SendDlgItemMessageW(hDlg, trackbarId, TBM_GETPOS, 0, 0));
}

std::string ReadControlText(HWND hDlg, int controlId, int bufferChars) {
    if (bufferChars <= 0) {
        return std::string();
    }
    std::vector<wchar_t> buffer(static_cast<size_t>(bufferChars) + 1, L'\0');
    LRESULT copied =
        SendDlgItemMessageW(hDlg, controlId, WM_GETTEXT, static_cast<WPARAM>(bufferChars),
                            reinterpret_cast<LPARAM>(buffer.data()));
    size_t length = copied > 0 ? static_cast<size_t>(copied) : 0;
    if (length >= static_cast<size_t>(bufferChars)) {
        length = static_cast<size_t>(bufferChars) - 1;
    }
    return NarrowAnsi(std::wstring_view(buffer.data(), length));
}

void WriteControlText(HWND hDlg, int controlId, std::string_view text) {
    std::wstring wide = WidenAnsi(text);
    SendDlgItemMessageW(hDlg, controlId, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
}

namespace {

// The help text's tool on the control. The common-controls 5 size is accepted by every version;
// the full size is refused where the host process runs without the version 6 manifest.
TOOLINFOW HelpTool(HWND hDlg, HWND control, const wchar_t* text, UINT flags) {
    TOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V2_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS | flags;
    tool.hwnd = hDlg;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = const_cast<wchar_t*>(text);
    return tool;
}

}  // namespace

HWND CreateHelpTooltip(int controlId, HWND hDlg, const wchar_t* text) {
    if (controlId == 0 || hDlg == nullptr || text == nullptr) {
        return nullptr;
    }
    // A window made for a missing control would live, unused, until the dialog closes.
    HWND control = GetDlgItem(hDlg, controlId);
    if (control == nullptr) {
        return nullptr;
    }
    HWND tip = CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_BALLOON | TTS_ALWAYSTIP,
                               CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, hDlg,
                               nullptr, nullptr, nullptr);
    if (tip == nullptr) {
        return nullptr;
    }
    TOOLINFOW tool = HelpTool(hDlg, control, text, 0);
    SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, 500);
    SendMessageW(tip, TTM_SETDELAYTIME, TTDT_AUTOPOP, MAKELPARAM(30000, 0));
    SendMessageW(tip, TTM_SETDELAYTIME, TTDT_RESHOW, MAKELPARAM(10, 0));
    return tip;
}

void PopUpHelp(int controlId, HWND hDlg, const wchar_t* text) {
    HWND tip = CreateHelpTooltip(controlId, hDlg, text);
    if (tip == nullptr) {
        return;
    }
    SendMessageW(tip, TTM_POPUP, 0, 0);
    if (IsWindowVisible(tip)) {
        return;
    }
    // Common controls 5 know no TTM_POPUP: the balloon is shown as a tip that tracks a point
    // under the icon instead.
    HWND control = GetDlgItem(hDlg, controlId);
    TOOLINFOW tool = HelpTool(hDlg, control, text, TTF_TRACK | TTF_ABSOLUTE);
    SendMessageW(tip, TTM_SETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool));
    RECT icon{};
    GetWindowRect(control, &icon);
    SendMessageW(tip, TTM_TRACKPOSITION, 0, MAKELPARAM((icon.left + icon.right) / 2, icon.bottom));
    SendMessageW(tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

HBITMAP LoadPngResourceBitmap(HMODULE module, int resourceId, const char* typeName) {
    std::wstring type = WidenAnsi(typeName != nullptr ? typeName : "");
    GdiplusSession session;
    if (!session.Started()) {
        return nullptr;
    }
    GpImage* image = nullptr;
    GpStatus status = kGdipOutOfMemory;
    if (IStream* stream = StreamOverResource(module, resourceId, type.c_str())) {
        status = GdipLoadImageFromStream(stream, &image);
        stream->Release();
    }
    HBITMAP bitmap = nullptr;
    if (status == kGdipOk && image != nullptr) {
        UINT width = 0;
        UINT height = 0;
        GdipGetImageWidth(image, &width);
        GdipGetImageHeight(image, &height);
        if (width == 0 || height == 0 || width > INT_MAX || height > INT_MAX) {
            status = kGdipGenericError;
        } else {
            const INT w = static_cast<INT>(width);
            const INT h = static_cast<INT>(height);
            status = RenderOnWhite(image, w, h, PreviewPlacement{w, h, 0, 0}, &bitmap);
        }
        GdipDisposeImage(image);
    }
    return status == kGdipOk ? bitmap : nullptr;
}

namespace {

// Shows `bitmap` (taken over; may be null) in a picture control and deletes every bitmap that
// nothing shows any more, under common controls 5 and 6 alike.
void ShowBitmap(HWND picture, HBITMAP bitmap) {
    if (picture == nullptr) {
        if (bitmap != nullptr) {
            DeleteObject(bitmap);
        }
        return;
    }
    HGDIOBJ previous = reinterpret_cast<HGDIOBJ>(
        SendMessageW(picture, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
    if (previous != nullptr && previous != bitmap) {
        DeleteObject(previous);
    }
    // Common controls 6 show their own copy of a bitmap whose pixels carry alpha (ours do, as
    // GDI+ makes them); the copy comes back from the next STM_SETIMAGE, the page's is unused.
    const auto shown =
        reinterpret_cast<HGDIOBJ>(SendMessageW(picture, STM_GETIMAGE, IMAGE_BITMAP, 0));
    if (bitmap != nullptr && shown != bitmap) {
        DeleteObject(bitmap);
    }
}

}  // namespace

void SetPicture(HWND hDlg, int pictureId, int pngId) {
    HMODULE module = reinterpret_cast<HMODULE>(GetWindowLongPtrW(hDlg, GWLP_HINSTANCE));
    ShowBitmap(GetDlgItem(hDlg, pictureId), LoadPngResourceBitmap(module, pngId, "PNG"));
}

void ReleasePicture(HWND hDlg, int pictureId) {
    ShowBitmap(GetDlgItem(hDlg, pictureId), nullptr);
}

HBITMAP LoadPreviewBitmap(const std::string& path, int boxWidth, int boxHeight) {
    const std::wstring widePath = WidenAnsi(path);
    if (widePath.empty() || GetFileAttributesW(widePath.c_str()) == INVALID_FILE_ATTRIBUTES ||
        boxWidth <= 0 || boxHeight <= 0) {
        return nullptr;
    }
    GdiplusSession session;
    GpImage* image = nullptr;
    if (!session.Started() || GdipLoadImageFromFile(widePath.c_str(), &image) != kGdipOk ||
        image == nullptr) {
        return nullptr;
    }
    UINT width = 0;
    UINT height = 0;
    GdipGetImageWidth(image, &width);
    GdipGetImageHeight(image, &height);
    HBITMAP bitmap = nullptr;
    GpStatus status = kGdipGenericError;
    if (std::optional<PreviewPlacement> place = FitPreview(boxWidth, boxHeight, width, height)) {
        status = RenderOnWhite(image, boxWidth, boxHeight, *place, &bitmap);
    }
    GdipDisposeImage(image);
    return status == kGdipOk ? bitmap : nullptr;
}

void ShowPreview(HWND hDlg, int pictureId, const std::string& path) {
    RECT box{};
    HWND picture = GetDlgItem(hDlg, pictureId);
    if (picture == nullptr || !GetClientRect(picture, &box)) {
        return;
    }
    ShowBitmap(picture, LoadPreviewBitmap(path, box.right - box.left, box.bottom - box.top));
}

bool PathExists(const std::string& path) {
    return GetFileAttributesW(WidenAnsi(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

namespace {

std::wstring AskFile(HWND hDlg, const wchar_t* filter, const wchar_t* saveExtension) {
    wchar_t path[MAX_PATH] = {};
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = hDlg;
    dialog.lpstrFilter = filter;
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    if (saveExtension != nullptr) {
        dialog.lpstrDefExt = saveExtension;
        dialog.Flags = OFN_PATHMUSTEXIST;
        return GetSaveFileNameW(&dialog) ? path : L"";
    }
    dialog.Flags = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST;
    return GetOpenFileNameW(&dialog) ? path : L"";
}

}  // namespace

std::wstring AskFileToOpen(HWND hDlg, const wchar_t* filter) {
    return AskFile(hDlg, filter, nullptr);
}

std::wstring AskFileToSave(HWND hDlg, const wchar_t* filter, const wchar_t* extension) {
    return AskFile(hDlg, filter, extension);
}

std::string AskAnsiFileToOpen(HWND hDlg, PageId page, const wchar_t* filter) {
    const std::wstring path = AskFileToOpen(hDlg, filter);
    if (path.empty()) {
        return {};
    }
    std::optional<std::string> narrow = NarrowAnsiExactly(path);
    if (!narrow) {
        TheLog().Write(kLogError, NamesOf(page).logName.c_str(),
                       "Browse error: path outside the ANSI code page <%s>",
                       NarrowAnsi(path).c_str());
        ShowPageError(hDlg, page,
                      "The path of the chosen file holds characters that the system code page "
                      "cannot carry. Choose a file whose folder and name use none of them.");
        return {};
    }
    return *std::move(narrow);
}

void ShowPageError(HWND hDlg, PageId page, const std::string& message) {
    const std::wstring text = WidenAnsi(message);
    const std::wstring title = WidenAnsi(PanelTitle(page));
    MessageBoxW(hDlg, text.c_str(), title.c_str(), MB_OK | MB_ICONERROR);
}

void PrintPreview(HWND hDlg, PageId page, PreviewRender render, const char* failed) {
    OemUiState* state = PageState(hDlg);
    if (state == nullptr || state->device == nullptr) {
        return;
    }
    const Platform& platform = WinPlatform();
    const RequestPrinter printer(*platform.spooler, *state);
    UniExportedFunctions bridge({*platform.spooler, *platform.modules, *platform.versions},
                                printer.Handle(), state->printerName);
    const PreviewPaper paper{static_cast<uint32_t>(state->paperWidthDots),
                             static_cast<uint32_t>(state->paperLengthDots),
                             static_cast<uint32_t>(state->device->GetModelNumber())};
    const PreviewSend sent =
        SendPreviewData(*platform.spooler, printer.Handle(), state->printerNameWide,
                        [&] { return render(hDlg, bridge, paper); });
    const PageNames names = NamesOf(page);
    const char* logName = names.logName.c_str();
    if (sent == PreviewSend::kOffline) {
        TheLog().Write(kLogError, logName, "Print preview error: Printer is Offline");
        ShowPageError(hDlg, page, "The printer is OFFLINE");
    } else if (sent != PreviewSend::kSent) {
        TheLog().Write(kLogError, logName, "Print preview error: %s",
                       sent == PreviewSend::kNoData ? "no data" : "Send to printer error");
        ShowPageError(hDlg, page, failed);
    }
}

bool FillTextBlock(HGLOBAL block, const std::string& text) {
    void* bytes = block != nullptr ? GlobalLock(block) : nullptr;
    if (bytes == nullptr)
        return false;
    std::memcpy(bytes, text.c_str(), text.size() + 1);
    GlobalUnlock(block);
    return true;
}

bool CopyTextToClipboard(HWND owner, const std::string& text) {
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (block == nullptr)
        return false;
    if (!FillTextBlock(block, text)) {
        GlobalFree(block);
        return false;
    }
    // The clipboard owns the block once SetClipboardData accepts it.
    const bool copied =
        OpenClipboard(owner) && EmptyClipboard() && SetClipboardData(CF_TEXT, block) != nullptr;
    if (!copied)
        GlobalFree(block);
    CloseClipboard();
    return copied;
}
