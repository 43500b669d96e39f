// PageContext: the one block that every page of a document property sheet shares.
#pragma once

#include <cstddef>
#include <iterator>
#include <cstdint>

#include "pages/page_catalog.h"
#include "session/oem_ui_state.h"
#include "win/oem_framework_win.h"
#include "win/windows_headers_win.h"

// The page registration allocates this block on the framework's heap, zero-filled and 200
// bytes long, and hands it to every page as the lParam of its PROPSHEETPAGEW. The head is
// what the registration and the document callback read; its order is fixed.
struct PageContext {
    HANDLE hComPropSheet;             // the sheet the pages were added to
    POEMUIPSPARAM pOEMUIPSParam;      // the framework's parameters of this opening
    PFNCOMPROPSHEET pfnComPropSheet;  // the framework's sheet function
    OemUiState* pOemUiState;          // the interface object's state
    uint32_t lmAvailable;             // language-monitor flags, copied at registration
    uint32_t lmBidi;
    uint32_t lmEnable;

    // Each page's current window, null until the page has been shown; Apply reads a page's
    // controls only when its slot is set. Generic code reaches them through Slot().
    HWND m_hDlgDocPrint;
    HWND m_hDlgDocPrintAdjust;
    HWND m_hDlgDocCutMove;
    HWND m_hDlgDocAccessories;
    HWND m_hDlgDocPeripherals;
    HWND m_hDlgDocPresentation;
    HWND m_hDlgDocWatermark;
    HWND m_hDlgDocCoupon;
    HWND m_hDlgDocLogo;
    HWND m_hDlgDocConsole;
    HWND m_hDlgDocAdmin;
    HWND m_hDlgDocVersion;
    // 1 once the page has filled its controls; the controls are the working copy from then on.
    uint8_t pageFilled[kPageCount];

    uint8_t m_bAdminMode;       // the sheet was opened in administrator mode
    uint8_t m_bResetRequested;  // Console's Reset Default: the next apply reloads the defaults
    uint8_t filling;            // a page is filling its controls: their notifications are not
                                // the user's changes
    HANDLE hHeap;               // the heap the block was allocated on, where it is freed

    HWND& Slot(PageId page);
    HWND Slot(PageId page) const;
};

// The window slots in catalog order: the one place that maps a page to its slot.
inline constexpr HWND PageContext::*kPageSlots[] = {
    &PageContext::m_hDlgDocPrint,       &PageContext::m_hDlgDocPrintAdjust,
    &PageContext::m_hDlgDocCutMove,     &PageContext::m_hDlgDocAccessories,
    &PageContext::m_hDlgDocPeripherals, &PageContext::m_hDlgDocPresentation,
    &PageContext::m_hDlgDocWatermark,   &PageContext::m_hDlgDocCoupon,
    &PageContext::m_hDlgDocLogo,        &PageContext::m_hDlgDocConsole,
    &PageContext::m_hDlgDocAdmin,       &PageContext::m_hDlgDocVersion,
};
static_assert(std::size(kPageSlots) == kPageCount, "one window slot per catalog page");

constexpr bool SlotsInPageOrder() {
    const PageContext probe{};
    for (size_t i = 0; i + 1 < kPageCount; ++i) {
        if (!(&(probe.*kPageSlots[i]) < &(probe.*kPageSlots[i + 1]))) {
            return false;
        }
    }
    return true;
}
static_assert(SlotsInPageOrder(), "slot i belongs to PageId i");

inline HWND& PageContext::Slot(PageId page) {
    return this->*kPageSlots[static_cast<size_t>(page)];
}
inline HWND PageContext::Slot(PageId page) const {
    return this->*kPageSlots[static_cast<size_t>(page)];
}

inline constexpr size_t kPageContextBlockSize = 200;

static_assert(sizeof(PageContext) <= kPageContextBlockSize,
              "the page block is allocated with a fixed size");
static_assert(offsetof(PageContext, hComPropSheet) == 0);
static_assert(offsetof(PageContext, pOEMUIPSParam) == 8);
static_assert(offsetof(PageContext, pfnComPropSheet) == 16);
static_assert(offsetof(PageContext, pOemUiState) == 24);
static_assert(offsetof(PageContext, lmAvailable) == 32);
static_assert(offsetof(PageContext, lmBidi) == 36);
static_assert(offsetof(PageContext, lmEnable) == 40);
static_assert(offsetof(PageContext, m_hDlgDocPrint) == 48);
static_assert(offsetof(PageContext, m_hDlgDocVersion) == 48 + 8 * (kPageCount - 1),
              "the slots follow each other without gaps");
static_assert(offsetof(PageContext, pageFilled) == 144);
