// The page catalog: one row per document page, in the order the sheet registers them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

#include "resource.h"

enum class PageId : int {
    kPrint,
    kPrintAdjust,
    kCutMove,
    kAccessories,
    kPeripherals,
    kPresentation,
    kWatermark,
    kCoupon,
    kLogo,
    kConsole,
    kAdmin,
    kVersion,
};
inline constexpr size_t kPageCount = 12;

constexpr uint16_t CapabilityMask(std::initializer_list<int> flags) {
    uint16_t mask = 0;
    for (int flag : flags) {
        mask = static_cast<uint16_t>(mask | (1u << flag));
    }
    return mask;
}

struct PageCatalogRow {
    PageId page;
    int dialogId;
    const char* dialogName;  // registration logs "Added " and this
    const char* title;       // the page name message-box titles carry
    // "DocPrint" names the log function (DevicePropPageDocPrint), the window slot
    // (m_hDlgDocPrint) and the remap line (ReMap hDlgDocPrint).
    const char* stem;
    uint16_t anyOfFlags;  // capability flags of which any adds the page; 0: always added
    bool adminOnly;
    uint8_t checkOrder;  // position in Apply's check (from 1); 0: never checked
    bool readOnApply;    // Apply reads the page's controls back into the settings
};

// Peripherals is checked before Cut/Move although it is registered after it: the user hears
// about a wrong pulse time first.
inline constexpr PageCatalogRow kPageCatalog[] = {
    {.page = PageId::kPrint,
     .dialogId = IDD_PROPPAGE_DOC_PRINT,
     .dialogName = "IDD_PROPPAGE_DOC_PRINT",
     .title = "Print",
     .stem = "DocPrint",
     .anyOfFlags = 0,
     .adminOnly = false,
     .checkOrder = 1,
     .readOnApply = true},
    {.page = PageId::kPrintAdjust,
     .dialogId = IDD_PROPPAGE_DOC_PRINT_ADJUST,
     .dialogName = "IDD_PROPPAGE_DOC_PRINT_ADJUST",
     .title = "Print adjust",
     .stem = "DocPrintAdjust",
     .anyOfFlags = 0,
     .adminOnly = false,
     .checkOrder = 2,
     .readOnApply = true},
    {.page = PageId::kCutMove,
     .dialogId = IDD_PROPPAGE_DOC_CUTMODE,
     .dialogName = "IDD_PROPPAGE_DOC_CUTMODE",
     .title = "Cut/Move",
     .stem = "DocCutMove",
     .anyOfFlags = CapabilityMask({7, 2, 5, 6}),
     .adminOnly = false,
     .checkOrder = 4,
     .readOnApply = true},
    {.page = PageId::kAccessories,
     .dialogId = IDD_PROPPAGE_DOC_ACCESSORIES,
     .dialogName = "IDD_PROPPAGE_DOC_ACCESSORIES",
     .title = "Accessories",
     .stem = "DocAccessories",
     .anyOfFlags = CapabilityMask({3, 4}),
     .adminOnly = false,
     .checkOrder = 0,
     .readOnApply = true},
    {.page = PageId::kPeripherals,
     .dialogId = IDD_PROPPAGE_DOC_PERIPHERALS,
     .dialogName = "IDD_PROPPAGE_DOC_PERIPHERALS",
     .title = "Peripherals",
     .stem = "DocPeripherals",
     .anyOfFlags = CapabilityMask({1, 0}),
     .adminOnly = false,
     .checkOrder = 3,
     .readOnApply = true},
    {.page = PageId::kPresentation,
     .dialogId = IDD_PROPPAGE_DOC_PRESENTATION,
     .dialogName = "IDD_PROPPAGE_DOC_PRESENTATION",
     .title = "Presentation",
     .stem = "DocPresentation",
     .anyOfFlags = CapabilityMask({10, 8, 9}),
     .adminOnly = false,
     .checkOrder = 5,
     .readOnApply = true},
    {.page = PageId::kWatermark,
     .dialogId = IDD_PROPPAGE_DOC_WATERMARK,
     .dialogName = "IDD_PROPPAGE_DOC_WATERMARK",
     .title = "Watermark",
     .stem = "DocWatermark",
     .anyOfFlags = 0,
     .adminOnly = false,
     .checkOrder = 6,
     .readOnApply = true},
    {.page = PageId::kCoupon,
     .dialogId = IDD_PROPPAGE_DOC_COUPON,
     .dialogName = "IDD_PROPPAGE_DOC_COUPON",
     .title = "Coupon",
     .stem = "DocCoupon",
     .anyOfFlags = 0,
     .adminOnly = false,
     .checkOrder = 7,
     .readOnApply = true},
    {.page = PageId::kLogo,
     .dialogId = IDD_PROPPAGE_DOC_LOGOS,
     .dialogName = "IDD_PROPPAGE_DOC_LOGOS",
     .title = "Logos",
     .stem = "DocLogo",
     .anyOfFlags = 0,
     .adminOnly = false,
     .checkOrder = 8,
     .readOnApply = true},
    {.page = PageId::kConsole,
     .dialogId = IDD_PROPPAGE_DOC_CONSOLE,
     .dialogName = "IDD_PROPPAGE_DOC_CONSOLE",
     .title = "Console",
     .stem = "DocConsole",
     .anyOfFlags = 0,
     .adminOnly = false,
     .checkOrder = 9,
     .readOnApply = true},
    {.page = PageId::kAdmin,
     .dialogId = IDD_PROPPAGE_DOC_ADMIN,
     .dialogName = "IDD_PROPPAGE_DOC_ADMIN",
     .title = "Admin",
     .stem = "DocAdmin",
     .anyOfFlags = 0,
     .adminOnly = true,
     .checkOrder = 0,
     .readOnApply = false},
    {.page = PageId::kVersion,
     .dialogId = IDD_PROPPAGE_DOC_VERSION,
     .dialogName = "IDD_PROPPAGE_DOC_VERSION",
     .title = "Version",
     .stem = "DocVersion",
     .anyOfFlags = 0,
     .adminOnly = false,
     .checkOrder = 0,
     .readOnApply = false},
};

// Whether a table keyed by page has one row per page, row i for PageId i.
template <typename Row, size_t kRows>
constexpr bool OneRowPerPageInOrder(const Row (&rows)[kRows]) {
    for (size_t i = 0; i < kRows; ++i) {
        if (rows[i].page != static_cast<PageId>(i)) {
            return false;
        }
    }
    return kRows == kPageCount;
}
static_assert(OneRowPerPageInOrder(kPageCatalog), "row i describes PageId i");

constexpr bool CheckOrderIsAPermutation() {
    size_t checked = 0;
    for (const PageCatalogRow& row : kPageCatalog) {
        if (row.checkOrder == 0) {
            continue;
        }
        ++checked;
        for (const PageCatalogRow& other : kPageCatalog) {
            if (&other != &row && other.checkOrder == row.checkOrder) {
                return false;
            }
        }
    }
    for (const PageCatalogRow& row : kPageCatalog) {
        if (row.checkOrder > checked) {
            return false;
        }
    }
    return true;
}
static_assert(CheckOrderIsAPermutation(), "check positions run 1..n without gaps or twins");

constexpr const PageCatalogRow& CatalogRow(PageId page) {
    return kPageCatalog[static_cast<size_t>(page)];
}

// A name derived from a catalog row, held in place so that a page needs no allocation to name
// itself (its log lines, and the line of an exception it stops).
struct PageName {
    char text[48] = {};
    constexpr const char* c_str() const { return text; }
};
constexpr PageName JoinName(const char* prefix, const char* rest) {
    PageName name;
    size_t length = 0;
    for (const char* part : {prefix, rest}) {
        for (; *part != '\0'; ++part) {
            if (length + 1 >= sizeof name.text) {
                throw "a page name is longer than PageName holds";
            }
            name.text[length++] = *part;
        }
    }
    return name;
}

struct PageNames {
    PageName logName;    // "DevicePropPageDocPrint"
    PageName slotName;   // "m_hDlgDocPrint", logged when Apply visits the page
    PageName remapText;  // "ReMap hDlgDocPrint", logged when the page's window changes
    PageName addedText;  // "Added IDD_PROPPAGE_DOC_PRINT"
};
constexpr PageNames NamesOf(PageId page) {
    const PageCatalogRow& row = CatalogRow(page);
    return PageNames{JoinName("DevicePropPage", row.stem), JoinName("m_hDlg", row.stem),
                     JoinName("ReMap hDlg", row.stem), JoinName("Added ", row.dialogName)};
}
constexpr bool EveryNameFits() {
    for (size_t i = 0; i < kPageCount; ++i) {
        NamesOf(static_cast<PageId>(i));  // a name too long stops the compilation here
    }
    return true;
}
static_assert(EveryNameFits());

// Whether the row's condition holds: admin-only rows need `admin`; a row with capability
// flags needs one of them set, or no capability object at all (`flags` null).
bool PageApplies(const PageCatalogRow& row, const uint8_t* flags, bool admin);
// The pages the sheet gets, in order: those whose condition holds.
std::vector<PageId> PagesToRegister(const uint8_t* flags, bool admin);
// The pages Apply checks, in the order the user hears about failures.
std::vector<PageId> PagesInCheckOrder();
