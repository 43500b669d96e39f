// Tests of the Print and Print adjust pages on real dialogs: fill, reactions, validation, save.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "../../resources/resource.h"
#include "entry/oem_ui_state.h"
#include "pages/page_framework_win.h"
#include "pages/save_settings_win.h"
#include "settings/ui_device_common.h"
#include "win/windows_headers.h"

namespace {

// Closes every message box the code under test opens and remembers what it said.
struct MessageBoxCapture {
    std::wstring title;
    std::wstring text;
    int count = 0;
};
MessageBoxCapture* g_capture = nullptr;

BOOL CALLBACK LongestStatic(HWND child, LPARAM lParam) {
    wchar_t className[32] = {};
    GetClassNameW(child, className, 32);
    if (_wcsicmp(className, L"Static") == 0) {
        wchar_t text[512] = {};
        GetWindowTextW(child, text, 512);
        auto* longest = reinterpret_cast<std::wstring*>(lParam);
        if (wcslen(text) > longest->size()) {
            *longest = text;
        }
    }
    return TRUE;
}

LRESULT CALLBACK CloseMessageBoxes(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE && g_capture != nullptr) {
        HWND box = reinterpret_cast<HWND>(wParam);
        wchar_t className[32] = {};
        GetClassNameW(box, className, 32);
        if (wcscmp(className, L"#32770") == 0) {
            wchar_t title[256] = {};
            GetWindowTextW(box, title, 256);
            g_capture->title = title;
            g_capture->text.clear();
            EnumChildWindows(box, LongestStatic, reinterpret_cast<LPARAM>(&g_capture->text));
            ++g_capture->count;
            PostMessageW(box, WM_COMMAND, IDOK, 0);
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

std::wstring Text(HWND hDlg, int id) {
    wchar_t buffer[128] = {};
    GetDlgItemTextW(hDlg, id, buffer, 128);
    return buffer;
}

int ComboCount(HWND hDlg, int id) {
    return static_cast<int>(SendDlgItemMessageW(hDlg, id, CB_GETCOUNT, 0, 0));
}

class PagesWin : public testing::Test {
  protected:
    void SetUp() override {
        INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
        InitCommonControlsEx(&controls);
        module_ = LoadLibraryW(L"KivUI.dll");
        ASSERT_NE(module_, nullptr);
        sheet_ = CreateWindowExW(0, L"STATIC", L"sheet", WS_POPUP, 0, 0, 400, 400, nullptr, nullptr,
                                 nullptr, nullptr);
        ASSERT_NE(sheet_, nullptr);

        auto device = std::make_unique<UiDeviceCommon>("TEST", "", "", "");
        device->SetQualityList({32, 16, 48});
        device->SetQuality(16);
        device->SetDensityList({80, 64, 96});
        device->SetDensity(96);
        device->SetConvMode(2);
        device->SetConvThreshold(100);
        device->SetConvFilterDown(40);
        device->SetConvFilterUp(200);
        device->SetOffsetX(-25);
        device->SetOffsetY(300);
        device->SetWhiteTopCrop(1);
        device->SetRotate180(1);
        device->SetReductionEnable(0);
        device->SetReductionValue(75);
        state_.device = std::move(device);
        std::memset(&context_, 0, sizeof context_);
        context_.pOemUiState = &state_;

        capture_ = MessageBoxCapture{};
        g_capture = &capture_;
        hook_ = SetWindowsHookExW(WH_CBT, CloseMessageBoxes, nullptr, GetCurrentThreadId());
    }

    void TearDown() override {
        if (hook_ != nullptr) {
            UnhookWindowsHookEx(hook_);
        }
        g_capture = nullptr;
        for (HWND page : pages_) {
            DestroyWindow(page);
        }
        if (sheet_ != nullptr) {
            DestroyWindow(sheet_);
        }
        if (module_ != nullptr) {
            FreeLibrary(module_);
        }
    }

    HWND OpenPage(int templateId, DLGPROC procedure) {
        PROPSHEETPAGEW page{};
        page.dwSize = sizeof page;
        page.hInstance = module_;
        page.pszTemplate = MAKEINTRESOURCEW(templateId);
        page.pfnDlgProc = procedure;
        page.lParam = reinterpret_cast<LPARAM>(&context_);
        HWND hDlg = CreateDialogParamW(module_, MAKEINTRESOURCEW(templateId), sheet_, procedure,
                                       reinterpret_cast<LPARAM>(&page));
        if (hDlg != nullptr) {
            pages_.push_back(hDlg);
            // Any message after WM_INITDIALOG puts the window into the page's slot.
            SendMessageW(hDlg, WM_NULL, 0, 0);
        }
        return hDlg;
    }

    HMODULE module_ = nullptr;
    HWND sheet_ = nullptr;
    HHOOK hook_ = nullptr;
    std::vector<HWND> pages_;
    OemUiState state_;
    PageContext context_;
    MessageBoxCapture capture_;
};

TEST_F(PagesWin, PrintPageFillsOnceFromTheModel) {
    HWND hDlg = OpenPage(IDD_PROPPAGE_DOC_PRINT, DevicePropPageDocPrint);
    ASSERT_NE(hDlg, nullptr);
    EXPECT_EQ(context_.m_hDlgDocPrint, hDlg);
    EXPECT_EQ(context_.m_bInitDocPrint, 1);
    EXPECT_EQ(GetWindowLongPtrW(sheet_, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(&context_));

    EXPECT_EQ(ComboCount(hDlg, IDC_PRINT_QUALITY), 3);
    EXPECT_EQ(ComboSelection(hDlg, IDC_PRINT_QUALITY), 1);
    EXPECT_EQ(ComboSelection(hDlg, IDC_PRINT_DENSITY), 2);
    EXPECT_EQ(ComboCount(hDlg, IDC_PRINT_DITHERING_TYPE), 3);
    EXPECT_EQ(ComboSelection(hDlg, IDC_PRINT_DITHERING_TYPE), 2);
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_THRESHOLD), 100);
    EXPECT_EQ(Text(hDlg, IDC_PRINT_THRESHOLD_VALUE), L"39% (100/255)");
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER), 40);
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER), 200);
    EXPECT_EQ(IsControlEnabled(hDlg, IDC_PRINT_LOW_FILTER), TRUE);
    // The threshold cannot reach either end.
    EXPECT_EQ(SendDlgItemMessageW(hDlg, IDC_PRINT_THRESHOLD, TBM_GETRANGEMIN, 0, 0), 1);
    EXPECT_EQ(SendDlgItemMessageW(hDlg, IDC_PRINT_THRESHOLD, TBM_GETRANGEMAX, 0, 0), 254);

    // A second WM_INITDIALOG does not refill the controls.
    SendDlgItemMessageW(hDlg, IDC_PRINT_QUALITY, CB_SETCURSEL, 2, 0);
    PROPSHEETPAGEW page{};
    page.lParam = reinterpret_cast<LPARAM>(&context_);
    SendMessageW(hDlg, WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(&page));
    EXPECT_EQ(ComboSelection(hDlg, IDC_PRINT_QUALITY), 2);

    EXPECT_EQ(SetControlState(hDlg, 4242, kControlDisable), 0);
    EXPECT_EQ(IsControlEnabled(hDlg, 4242), 0);
    EXPECT_EQ(CreateHelpTooltip(4242, hDlg, L"x"), nullptr);
}

TEST_F(PagesWin, PrintPageStoredNoneOpensWithFiltersAtTheirEnds) {
    state_.device->SetConvMode(1);
    HWND hDlg = OpenPage(IDD_PROPPAGE_DOC_PRINT, DevicePropPageDocPrint);
    ASSERT_NE(hDlg, nullptr);
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER), 0);
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER), 255);
    EXPECT_EQ(state_.device->GetConvFilterDown(), 0);
    EXPECT_EQ(state_.device->GetConvFilterUp(), 255);
    EXPECT_EQ(IsControlEnabled(hDlg, IDC_PRINT_HIGH_FILTER_CAPTION), FALSE);
}

TEST_F(PagesWin, PrintTypeNoneThenDefault) {
    HWND hDlg = OpenPage(IDD_PROPPAGE_DOC_PRINT, DevicePropPageDocPrint);
    ASSERT_NE(hDlg, nullptr);
    SendDlgItemMessageW(hDlg, IDC_PRINT_DITHERING_TYPE, CB_SETCURSEL, 1, 0);
    SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(IDC_PRINT_DITHERING_TYPE, CBN_SELCHANGE), 0);
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER), 0);
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER), 255);
    EXPECT_EQ(Text(hDlg, IDC_PRINT_LOW_FILTER_VALUE), L"0% (0/255)");
    EXPECT_EQ(Text(hDlg, IDC_PRINT_HIGH_FILTER_VALUE), L"100% (255/255)");
    for (int id : {IDC_PRINT_LOW_FILTER, IDC_PRINT_HIGH_FILTER, IDC_PRINT_LOW_FILTER_VALUE,
                   IDC_PRINT_HIGH_FILTER_VALUE, IDC_PRINT_LOW_FILTER_CAPTION,
                   IDC_PRINT_HIGH_FILTER_CAPTION}) {
        SCOPED_TRACE(id);
        EXPECT_EQ(IsControlEnabled(hDlg, id), FALSE);
    }

    // Default after None: Type shows Auto, the filters stay disabled.
    SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(IDC_PRINT_DEFAULT, BN_CLICKED), 0);
    EXPECT_EQ(ComboSelection(hDlg, IDC_PRINT_DITHERING_TYPE), 0);
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_THRESHOLD), 128);
    EXPECT_EQ(Text(hDlg, IDC_PRINT_THRESHOLD_VALUE), L"50% (128/255)");
    EXPECT_EQ(IsControlEnabled(hDlg, IDC_PRINT_LOW_FILTER), FALSE);

    // Auto afterwards enables the filters and keeps 0 and 255.
    SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(IDC_PRINT_DITHERING_TYPE, CBN_SELCHANGE), 0);
    EXPECT_EQ(IsControlEnabled(hDlg, IDC_PRINT_LOW_FILTER), TRUE);
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER), 0);
    EXPECT_EQ(TrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER), 255);
}

TEST_F(PagesWin, PrintFilterFailureStopsTheApply) {
    HWND hDlg = OpenPage(IDD_PROPPAGE_DOC_PRINT, DevicePropPageDocPrint);
    ASSERT_NE(hDlg, nullptr);
    SetTrackbarPosition(hDlg, IDC_PRINT_THRESHOLD, IDC_PRINT_THRESHOLD_VALUE, 128);
    SetTrackbarPosition(hDlg, IDC_PRINT_LOW_FILTER, IDC_PRINT_LOW_FILTER_VALUE, 128);
    SetTrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER, IDC_PRINT_HIGH_FILTER_VALUE, 128);
    OemDevPayload body{};
    body.convThreshold = 77;
    EXPECT_EQ(SaveSettingsPublicDM(&context_, &state_, &body, nullptr), 3);
    EXPECT_EQ(capture_.count, 1);
    EXPECT_EQ(capture_.title, L"\"Print\" Panel ");
    EXPECT_EQ(capture_.text, L"The HIGH Filter must be a value > of the LOW Filter");
    EXPECT_EQ(body.convThreshold, 77);  // nothing read, nothing copied out
    EXPECT_EQ(state_.device->GetConvThreshold(), 100);

    SetTrackbarPosition(hDlg, IDC_PRINT_HIGH_FILTER, IDC_PRINT_HIGH_FILTER_VALUE, 129);
    EXPECT_EQ(SaveSettingsPublicDM(&context_, &state_, &body, nullptr), 0);
    EXPECT_EQ(capture_.count, 1);
    EXPECT_EQ(body.convThreshold, 128);
    EXPECT_EQ(body.convFilterDown, 128);
    EXPECT_EQ(body.convFilterUp, 129);
    EXPECT_EQ(body.convMode, 2);
}

TEST_F(PagesWin, PrintAdjustFillsAndSavesOffsetsAndReduction) {
    HWND hDlg = OpenPage(IDD_PROPPAGE_DOC_PRINT_ADJUST, DevicePropPageDocPrintAdjust);
    ASSERT_NE(hDlg, nullptr);
    EXPECT_EQ(context_.m_hDlgDocPrintAdjust, hDlg);
    EXPECT_EQ(Text(hDlg, IDC_ADJUST_X_OFFSET), L"-25");
    EXPECT_EQ(Text(hDlg, IDC_ADJUST_Y_OFFSET), L"300");
    EXPECT_TRUE(IsChecked(hDlg, IDC_ADJUST_CROP_TOP));
    EXPECT_FALSE(IsChecked(hDlg, IDC_ADJUST_CROP_BOTTOM));
    EXPECT_TRUE(IsChecked(hDlg, IDC_ADJUST_ROTATION));
    EXPECT_FALSE(IsChecked(hDlg, IDC_ADJUST_REDUCTION_ENABLE));
    EXPECT_EQ(IsControlEnabled(hDlg, IDC_ADJUST_REDUCTION_VALUE), FALSE);
    EXPECT_EQ(ComboCount(hDlg, IDC_ADJUST_REDUCTION_VALUE), 8);
    EXPECT_EQ(ComboSelection(hDlg, IDC_ADJUST_REDUCTION_VALUE), 5);

    SetDlgItemTextW(hDlg, IDC_ADJUST_X_OFFSET, L"-1000");
    SetDlgItemTextW(hDlg, IDC_ADJUST_Y_OFFSET, L"1000");
    SetChecked(hDlg, IDC_ADJUST_REDUCTION_ENABLE, true);
    SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(IDC_ADJUST_REDUCTION_ENABLE, BN_CLICKED), 0);
    EXPECT_EQ(IsControlEnabled(hDlg, IDC_ADJUST_REDUCTION_VALUE), TRUE);
    SendDlgItemMessageW(hDlg, IDC_ADJUST_REDUCTION_VALUE, CB_SETCURSEL, 3, 0);
    SetChecked(hDlg, IDC_ADJUST_SKIP_WHITE, true);

    OemDevPayload body{};
    EXPECT_EQ(SaveSettingsPublicDM(&context_, &state_, &body, nullptr), 0);
    EXPECT_EQ(capture_.count, 0);
    EXPECT_EQ(body.offsetX, -1000);
    EXPECT_EQ(body.offsetY, 1000);
    EXPECT_EQ(body.reductionEnable, 1);
    EXPECT_EQ(body.reductionValue, 50);
    EXPECT_EQ(body.skipWhitePages, 1);
    EXPECT_EQ(body.whiteTopCrop, 1);
    EXPECT_EQ(body.rotate180, 1);
}

TEST_F(PagesWin, PrintAdjustOffsetFailures) {
    HWND hDlg = OpenPage(IDD_PROPPAGE_DOC_PRINT_ADJUST, DevicePropPageDocPrintAdjust);
    ASSERT_NE(hDlg, nullptr);
    struct Case {
        const wchar_t* x;
        const wchar_t* y;
        const wchar_t* message;
    };
    const Case cases[] = {
        {L"1001", L"0", L"The Offset must be a value between -1000 and 1000"},
        {L"0", L"-1001", L"The Offset must be a value between -1000 and 1000"},
        {L"12a", L"0", L"The Offset value is not a integer"},
        {L"0", L"", L"The Offset value is not a integer"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
        SetDlgItemTextW(hDlg, IDC_ADJUST_X_OFFSET, c.x);
        SetDlgItemTextW(hDlg, IDC_ADJUST_Y_OFFSET, c.y);
        const int before = capture_.count;
        EXPECT_EQ(ValidateDeviceInfoFromUI(&context_, &state_), FALSE);
        EXPECT_EQ(capture_.count, before + 1);
        EXPECT_EQ(capture_.title, L"\"Print adjust\" Panel ");
        EXPECT_EQ(capture_.text, c.message);
    }
}

TEST_F(PagesWin, UnvisitedPagesAreNeitherCheckedNorRead) {
    HWND hDlg = OpenPage(IDD_PROPPAGE_DOC_PRINT_ADJUST, DevicePropPageDocPrintAdjust);
    ASSERT_NE(hDlg, nullptr);
    SetDlgItemTextW(hDlg, IDC_ADJUST_X_OFFSET, L"oops");
    context_.m_hDlgDocPrintAdjust = nullptr;
    OemDevPayload body{};
    EXPECT_EQ(SaveSettingsPublicDM(&context_, &state_, &body, nullptr), 0);
    EXPECT_EQ(capture_.count, 0);
    EXPECT_EQ(body.offsetX, -25);
    EXPECT_EQ(ValidateDeviceInfoFromUI(nullptr, &state_), TRUE);
}

TEST_F(PagesWin, SlotFollowsTheCurrentWindowAndNullWindowIsNotHandled) {
    HWND first = OpenPage(IDD_PROPPAGE_DOC_PRINT, DevicePropPageDocPrint);
    ASSERT_NE(first, nullptr);
    // Opening the page again (same sheet) remaps the slot without refilling.
    HWND second = OpenPage(IDD_PROPPAGE_DOC_PRINT, DevicePropPageDocPrint);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(context_.m_hDlgDocPrint, second);
    EXPECT_EQ(ComboCount(second, IDC_PRINT_QUALITY), 0);
    EXPECT_EQ(DevicePropPageDocPrint(nullptr, WM_COMMAND, 0, 0), 0);
}

TEST_F(PagesWin, PreviewBitmapOfMissingFileIsNull) {
    EXPECT_EQ(LoadPreviewBitmap("C:\\no\\such\\file.png", 100, 100), nullptr);
    EXPECT_EQ(LoadPngResourceBitmap(module_, 9999, "PNG"), nullptr);
}

// A 24-bit bottom-up BMP of one colour.
void WriteBmp(const std::wstring& path, int width, int height, COLORREF colour) {
    const int stride = (width * 3 + 3) & ~3;
    BITMAPFILEHEADER file{};
    BITMAPINFOHEADER info{};
    info.biSize = sizeof info;
    info.biWidth = width;
    info.biHeight = height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = file.bfOffBits + static_cast<DWORD>(stride * height);
    std::vector<BYTE> pixels(static_cast<size_t>(stride * height), 0);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            BYTE* p = &pixels[static_cast<size_t>(y * stride + x * 3)];
            p[0] = GetBValue(colour);
            p[1] = GetGValue(colour);
            p[2] = GetRValue(colour);
        }
    }
    HANDLE h = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(h, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    WriteFile(h, &file, sizeof file, &written, nullptr);
    WriteFile(h, &info, sizeof info, &written, nullptr);
    WriteFile(h, pixels.data(), static_cast<DWORD>(pixels.size()), &written, nullptr);
    CloseHandle(h);
}

TEST_F(PagesWin, PreviewIsScaledAndCentredOnWhite) {
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    const std::wstring path = std::wstring(folder) + L"kiv_pages_preview.bmp";
    WriteBmp(path, 100, 50, RGB(255, 0, 0));
    HBITMAP bitmap = LoadPreviewBitmap(NarrowAnsi(path), 200, 200);
    DeleteFileW(path.c_str());
    ASSERT_NE(bitmap, nullptr);
    BITMAP info{};
    ASSERT_NE(GetObjectW(bitmap, sizeof info, &info), 0);
    EXPECT_EQ(info.bmWidth, 200);
    EXPECT_EQ(info.bmHeight, 200);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, bitmap);
    struct Probe {
        int x, y;
        COLORREF colour;
    };
    // Drawn 200 x 100 at (0, 50): white bands above and below.
    const Probe probes[] = {
        {100, 10, RGB(255, 255, 255)},
        {100, 100, RGB(255, 0, 0)},
        {5, 60, RGB(255, 0, 0)},
        {100, 190, RGB(255, 255, 255)},
    };
    for (const Probe& probe : probes) {
        SCOPED_TRACE(testing::Message() << probe.x << "," << probe.y);
        EXPECT_EQ(GetPixel(dc, probe.x, probe.y), probe.colour);
    }
    SelectObject(dc, old);
    DeleteDC(dc);
    DeleteObject(bitmap);
}

TEST_F(PagesWin, PngResourceLoadsAtItsOwnSize) {
    HBITMAP bitmap = LoadPngResourceBitmap(module_, IDB_PNG_HELP, "PNG");
    if (FindResourceW(module_, MAKEINTRESOURCEW(IDB_PNG_HELP), L"PNG") == nullptr) {
        GTEST_SKIP() << "the plug-in carries no help picture yet";
    }
    ASSERT_NE(bitmap, nullptr);
    BITMAP info{};
    ASSERT_NE(GetObjectW(bitmap, sizeof info, &info), 0);
    EXPECT_GT(info.bmWidth, 0);
    EXPECT_GT(info.bmHeight, 0);
    DeleteObject(bitmap);
}

}  // namespace
