// PageContext: the one block that every page of a document property sheet shares.
#pragma once

// Platform header: included by _win files only.
#include <cstddef>
#include <cstdint>

#include "session/oem_ui_state.h"
#include "win/windows_headers_win.h"
#include "win/oem_framework_win.h"

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

    // Each page's current window, null until the page has been shown. Apply reads a page's
    // controls only when its slot is set.
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
    uint8_t m_bInitDocPrint;
    uint8_t m_bInitDocPrintAdjust;
    uint8_t m_bInitDocCutMove;
    uint8_t m_bInitDocAccessories;
    uint8_t m_bInitDocPeripherals;
    uint8_t m_bInitDocPresentation;
    uint8_t m_bInitDocWatermark;
    uint8_t m_bInitDocCoupon;
    uint8_t m_bInitDocLogo;
    uint8_t m_bInitDocConsole;
    uint8_t m_bInitDocAdmin;
    uint8_t m_bInitDocVersion;

    uint8_t m_bAdminMode;       // the sheet was opened in administrator mode
    uint8_t m_bResetRequested;  // Console's Reset Default: the next apply reloads the defaults
};

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
