// Tests of the Print and Print adjust pages on real dialogs: fill, reactions, validation, save.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "../../resources/resource.h"
#include "entry/doc_callback_win.h"
#include "entry/property_sheets_win.h"
#include "kivui_dll_win.h"
#include "session/oem_ui_state.h"
#include "pages/page_framework_win.h"
#include "pages/save_settings_win.h"
#include "settings/device_factory.h"
#include "settings/setting_enums.h"
#include "settings/ui_device_common.h"
#include "win/windows_headers_win.h"

namespace {

// The message boxes the code under test opened, each closed at once.
int g_boxes = 0;
LRESULT CALLBACK CloseMessageBoxes(int code, WPARAM wParam, LPARAM lParam) {
    HWND box = reinterpret_cast<HWND>(wParam);
    wchar_t className[32] = {};
    if (code == HCBT_ACTIVATE && GetClassNameW(box, className, 32) &&
        wcscmp(className, L"#32770") == 0) {
        ++g_boxes;
        PostMessageW(box, WM_COMMAND, IDOK, 0);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

std::wstring Text(HWND hDlg, int id) {
    wchar_t buffer[128] = {};
    GetDlgItemTextW(hDlg, id, buffer, 128);
    return buffer;
}

// The sheet window the pages live in; it counts what would light its Apply button.
int g_changedCount = 0;
LRESULT CALLBACK SheetProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == PSM_CHANGED)
        ++g_changedCount;
    return DefWindowProcW(window, message, wParam, lParam);
}

void Command(HWND hDlg, int id, WORD notification) {
    SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(id, notification), 0);
}

class PagesWin : public testing::Test {
  protected:
    void SetUp() override {
        INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
        InitCommonControlsEx(&controls);
        WNDCLASSW sheetClass{};
        sheetClass.lpfnWndProc = SheetProc;
        sheetClass.lpszClassName = L"KivTestSheet";
        RegisterClassW(&sheetClass);
        sheet_ = CreateWindowExW(0, L"KivTestSheet", L"sheet", WS_POPUP, 0, 0, 400, 400, nullptr,
                                 nullptr, nullptr, nullptr);
        g_changedCount = 0;
        ASSERT_NE(sheet_, nullptr);

        auto device = std::make_unique<UiDeviceCommon>("TEST", "", "", "");
        device->SetConvThreshold(100);
        device->SetOffsetX(-25);
        state_.device = std::move(device);
        std::memset(&context_, 0, sizeof context_);
        context_.pOemUiState = &state_;
        g_boxes = 0;
        hook_ = SetWindowsHookExW(WH_CBT, CloseMessageBoxes, nullptr, GetCurrentThreadId());
    }

    void TearDown() override {
        UnhookWindowsHookEx(hook_);
        for (HWND page : pages_)
            DestroyWindow(page);
        DestroyWindow(sheet_);
    }

    HWND OpenPage(PageId id) {
        const DLGPROC procedure = PageProcedureOf(id);
        const int templateId = CatalogRow(id).dialogId;
        PROPSHEETPAGEW page{};
        page.dwSize = sizeof page;
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

    const HMODULE module_ = KivUiDll::Get().module;
    HWND sheet_ = nullptr;
    HHOOK hook_ = nullptr;
    std::vector<HWND> pages_;
    OemUiState state_;
    PageContext context_;
};

// A feeder model's choice (here its starting one) becomes the public paper source, with its
// field bit (the host's own devmode always carries that bit, so only a direct call shows it).
TEST_F(PagesWin, AFeederChoiceSetsThePaperSourceWithItsFieldBit) {
    state_.device = CreateUiDevice("TRX430ATF", "", "", "");
    OemDevPayload body{};
    DEVMODEW dm{};
    OEMCUIPPARAM parameters{};
    parameters.pPublicDM = &dm;
    EXPECT_EQ(SaveSettingsPublicDM(&context_, &state_, &body, &parameters), 0);
    EXPECT_EQ(dm.dmFields & DM_DEFAULTSOURCE ? dm.dmDefaultSource : 0, PRN_PROP_FEEDER_AUTO);
}

// The page layer's edges: a help icon's click shows its balloon (this process has common
// controls 5, which know no TTM_POPUP); a balloon for a control that is not there, a clipboard
// block that does not lock and a Reset Default on a record that is not ours (refused, the
// request kept for the next apply) fail without leaving anything behind.
TEST_F(PagesWin, HelpShowsAndEdgesFailWithoutLeavingAnythingBehind) {
    HWND hDlg = OpenPage(PageId::kPrint);
    ASSERT_NE(hDlg, nullptr);
    const auto tips = [](bool shown) {
        int count = 0;
        for (HWND tip = nullptr; (tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr));)
            count += !shown || IsWindowVisible(tip);
        return count;
    };
    ShowWindow(sheet_, SW_SHOW);
    ShowWindow(hDlg, SW_SHOW);
    Command(hDlg, IDC_PRINT_HELP, STN_CLICKED);
    EXPECT_EQ(tips(true), 1);
    const int before = tips(false);
    EXPECT_EQ(CreateHelpTooltip(4242, hDlg, L"HELP"), nullptr);
    EXPECT_EQ(tips(false), before);
    EXPECT_EQ(IsControlEnabled(hDlg, 4242), 0);  // a missing control is simply not enabled
    EXPECT_EQ(PageProcedureOf(PageId::kPrint)(nullptr, WM_COMMAND, 0, 0), 0);
    HGLOBAL discarded = GlobalAlloc(GMEM_MOVEABLE, 0);
    EXPECT_FALSE(FillTextBlock(discarded, "report"));
    GlobalFree(discarded);

    context_.m_bResetRequested = 1;
    OEMDEV foreign{};
    OEMCUIPPARAM param{};
    param.pOEMDM = &foreign;
    CPSUICBPARAM apply{};
    apply.Reason = CPSUICB_REASON_APPLYNOW;
    apply.hDlg = hDlg;
    EXPECT_EQ(OEMDocUICallBack(&apply, &param), CPSUICB_ACTION_NO_APPLY_EXIT);
    EXPECT_EQ(context_.m_bResetRequested, 1);
}

// The page block's life: freeing it clears what the pages and the sheet hold of it (a block on
// no heap is cleared, not freed), and a fill that throws leaves its page taking changes.
TEST_F(PagesWin, NothingPointsAtAFreedBlockAndAFailedFillStillTakesChanges) {
    HWND first = OpenPage(PageId::kPrint);
    ASSERT_NE(first, nullptr);
    state_.pageBlock = &context_;
    PROPSHEETUI_INFO info{};
    info.Version = PROPSHEETUI_INFO_VERSION;
    info.Reason = PROPSHEETUI_REASON_DESTROY;
    uint32_t admin = 0;
    ASSERT_EQ(hrOEMDocumentPropertySheets(&info, 0, nullptr, &state_, &admin, 0, 0, 0), S_OK);
    EXPECT_EQ(GetWindowLongPtrW(first, DWLP_USER), 0);
    EXPECT_EQ(GetWindowLongPtrW(sheet_, GWLP_USERDATA), 0);

    static PageDefinition throwing = DefinitionOf<PageId::kPrint>();
    throwing.fill = [](HWND, UiDeviceCommon&) { throw 1; };
    PROPSHEETPAGEW page{};
    page.lParam = reinterpret_cast<LPARAM>(&context_);
    HWND hDlg = CreateDialogParamW(
        module_, MAKEINTRESOURCEW(CatalogRow(PageId::kPrint).dialogId), sheet_,
        [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            return RunPageProcedure(PageId::kPrint, throwing, window, message, wParam, lParam);
        },
        reinterpret_cast<LPARAM>(&page));
    ASSERT_NE(hDlg, nullptr);
    pages_.push_back(hDlg);
    Command(hDlg, IDC_PRINT_QUALITY, CBN_SELCHANGE);
    EXPECT_EQ(g_changedCount, 1);
}

// A sheet opened before the common UI entry made a capability object: the pages show the
// working record, and OK saves it as it stood: nothing is read back, so nothing is refused.
TEST_F(PagesWin, WithoutACapabilityObjectThePagesShowTheRecordAndOkKeepsIt) {
    state_.device->FillOEMDEVWithDeviceValues(state_.workOEMDev.payload, 0);
    state_.device.reset();
    HWND print = OpenPage(PageId::kPrint);
    HWND adjust = OpenPage(PageId::kPrintAdjust);
    HWND version = OpenPage(PageId::kVersion);
    ASSERT_TRUE(print != nullptr && adjust != nullptr && version != nullptr);
    EXPECT_EQ(Text(print, IDC_PRINT_THRESHOLD_VALUE), L"39% (100/255)");
    EXPECT_EQ(Text(adjust, IDC_ADJUST_X_OFFSET), L"-25");
    EXPECT_NE(Text(version, IDC_VERSION_REPORT), L"");
    SetDlgItemTextW(adjust, IDC_ADJUST_X_OFFSET, L"oops");
    OemDevPayload body{};
    EXPECT_EQ(SaveSettingsPublicDM(&context_, &state_, &body, nullptr), 0);
    EXPECT_EQ(g_boxes, 0);
    EXPECT_EQ(0, std::memcmp(&body, &state_.workOEMDev.payload, sizeof body));
}

}  // namespace
