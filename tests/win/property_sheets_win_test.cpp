// The plug-in's page registration as the common property sheet sees it, with a recording sheet.
#include <gtest/gtest.h>

#include <vector>

#include "kivui_dll_win.h"

namespace {

// The block each page the plug-in adds carries.
std::vector<LPARAM> g_added;

LONG_PTR CALLBACK RecordingSheet(HANDLE, UINT, LPARAM lParam1, LPARAM) {
    g_added.push_back(reinterpret_cast<const PROPSHEETPAGEW*>(lParam1)->lParam);
    return static_cast<LONG_PTR>(g_added.size());
}

PROPSHEETUI_INFO Info(WORD reason, ULONG_PTR result) {
    PROPSHEETUI_INFO info{};
    info.cbSize = sizeof info;
    info.Version = PROPSHEETUI_INFO_VERSION;
    info.Reason = reason;
    info.Result = result;
    return info;
}

using PropertySheetsWin = OemUiTest;

TEST_F(PropertySheetsWin, InitAddsPagesSharingOneBlockAndDestroyFreesIt) {
    HANDLE heap = HeapCreate(0, 0, 0);
    OEMUIPSPARAM psp{};
    psp.cbSize = sizeof psp;
    psp.hOEMHeap = heap;
    PROPSHEETUI_INFO info = Info(PROPSHEETUI_REASON_INIT, 77);
    info.hComPropSheet = reinterpret_cast<HANDLE>(0x43440001);
    info.pfnComPropSheet = RecordingSheet;
    info.lParamInit = reinterpret_cast<LPARAM>(&psp);
    g_added.clear();

    ASSERT_EQ(S_OK, ui_->DocumentPropertySheets(&info, 0));
    EXPECT_EQ(0u, info.Result);
    // Which pages and in which order is seen in the sheet runs (SheetWin.OpeningEveryPage...).
    ASSERT_FALSE(g_added.empty());
    for (const LPARAM block : g_added)
        EXPECT_EQ(g_added[0], block) << "every page shares one block";
    // The block's head: sheet handle, parameters, sheet function.
    const auto* head = reinterpret_cast<const void* const*>(g_added[0]);
    EXPECT_EQ(info.hComPropSheet, head[0]);
    EXPECT_EQ(&psp, head[1]);
    EXPECT_EQ(reinterpret_cast<void*>(RecordingSheet), head[2]);
    EXPECT_TRUE(HeapValidate(heap, 0, reinterpret_cast<void*>(g_added[0])));

    // A second INIT frees the first block; DESTROY frees the second.
    const auto busyBlocks = [heap] {
        PROCESS_HEAP_ENTRY entry{};
        size_t busy = 0;
        while (HeapWalk(heap, &entry))
            busy += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
        return busy;
    };
    ASSERT_EQ(S_OK, ui_->DocumentPropertySheets(&info, 0));
    EXPECT_EQ(1u, busyBlocks());
    info.Reason = PROPSHEETUI_REASON_DESTROY;
    ASSERT_EQ(S_OK, ui_->DocumentPropertySheets(&info, 0));
    EXPECT_EQ(1u, info.Result);
    EXPECT_EQ(0u, busyBlocks());
    HeapDestroy(heap);
}

TEST_F(PropertySheetsWin, ReasonsWithoutAction) {
    struct Case {
        WORD reason;
        ULONG_PTR result;
    };
    const Case cases[] = {
        {PROPSHEETUI_REASON_GET_ICON, 0}, {PROPSHEETUI_REASON_BEFORE_INIT, 1}, {9, 0}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        PROPSHEETUI_INFO info = Info(c.reason, 55);
        EXPECT_EQ(S_OK, ui_->DocumentPropertySheets(&info, 0));
        EXPECT_EQ(c.result, info.Result);
    }
    SETRESULT_INFO setResult{};
    setResult.cbSize = sizeof setResult;
    setResult.Result = 1234;
    PROPSHEETUI_INFO info = Info(PROPSHEETUI_REASON_SET_RESULT, 0);
    EXPECT_EQ(S_OK, ui_->DocumentPropertySheets(&info, reinterpret_cast<LPARAM>(&setResult)));
    EXPECT_EQ(1234u, info.Result);

    // A destroy before any init frees nothing and still answers 1.
    info = Info(PROPSHEETUI_REASON_DESTROY, 0);
    EXPECT_EQ(S_OK, ui_->DocumentPropertySheets(&info, 0));
    EXPECT_EQ(1u, info.Result);
    // Another version of the block, or none, is refused with the invalid-parameter error.
    info = Info(PROPSHEETUI_REASON_INIT, 77);
    info.Version = 0x0200;
    for (PROPSHEETUI_INFO* refused : {&info, static_cast<PROPSHEETUI_INFO*>(nullptr)}) {
        SetLastError(0);
        EXPECT_EQ(E_FAIL, ui_->DocumentPropertySheets(refused, 0));
        EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
    }
    EXPECT_EQ(77u, info.Result);
}

}  // namespace
