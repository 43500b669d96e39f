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
    {PageId::kPrint, IDD_PROPPAGE_DOC_PRINT, "IDD_PROPPAGE_DOC_PRINT", "Print", "DocPrint", 0,
     false, 1, true},
    {PageId::kPrintAdjust, IDD_PROPPAGE_DOC_PRINT_ADJUST, "IDD_PROPPAGE_DOC_PRINT_ADJUST",
     "Print adjust", "DocPrintAdjust", 0, false, 2, true},
    {PageId::kCutMove, IDD_PROPPAGE_DOC_CUTMODE, "IDD_PROPPAGE_DOC_CUTMODE", "Cut/Move",
     "DocCutMove", CapabilityMask({7, 2, 5, 6}), false, 4, true},
    {PageId::kAccessories, IDD_PROPPAGE_DOC_ACCESSORIES, "IDD_PROPPAGE_DOC_ACCESSORIES",
     "Accessories", "DocAccessories", CapabilityMask({3, 4}), false, 0, true},
    {PageId::kPeripherals, IDD_PROPPAGE_DOC_PERIPHERALS, "IDD_PROPPAGE_DOC_PERIPHERALS",
     "Peripherals", "DocPeripherals", CapabilityMask({1, 0}), false, 3, true},
    {PageId::kPresentation, IDD_PROPPAGE_DOC_PRESENTATION, "IDD_PROPPAGE_DOC_PRESENTATION",
     "Presentation", "DocPresentation", CapabilityMask({10, 8, 9}), false, 5, true},
    {PageId::kWatermark, IDD_PROPPAGE_DOC_WATERMARK, "IDD_PROPPAGE_DOC_WATERMARK", "Watermark",
     "DocWatermark", 0, false, 6, true},
    {PageId::kCoupon, IDD_PROPPAGE_DOC_COUPON, "IDD_PROPPAGE_DOC_COUPON", "Coupon", "DocCoupon", 0,
     false, 7, true},
    {PageId::kLogo, IDD_PROPPAGE_DOC_LOGOS, "IDD_PROPPAGE_DOC_LOGOS", "Logos", "DocLogo", 0, false,
     8, true},
    {PageId::kConsole, IDD_PROPPAGE_DOC_CONSOLE, "IDD_PROPPAGE_DOC_CONSOLE", "Console",
     "DocConsole", 0, false, 9, true},
    {PageId::kAdmin, IDD_PROPPAGE_DOC_ADMIN, "IDD_PROPPAGE_DOC_ADMIN", "Admin", "DocAdmin", 0, true,
     0, false},
    {PageId::kVersion, IDD_PROPPAGE_DOC_VERSION, "IDD_PROPPAGE_DOC_VERSION", "Version",
     "DocVersion", 0, false, 0, false},
};

static_assert(std::size(kPageCatalog) == kPageCount, "one catalog row per page");

constexpr bool RowsInPageOrder() {
    for (size_t i = 0; i < kPageCount; ++i) {
        if (kPageCatalog[i].page != static_cast<PageId>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(RowsInPageOrder(), "row i describes PageId i");

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
