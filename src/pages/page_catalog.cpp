// The orders the sheet reads from the page catalog.
#include "pages/page_catalog.h"

#include <algorithm>

#include "settings/ui_device_common.h"

bool PageApplies(const PageCatalogRow& row, const uint8_t* flags, bool admin) {
    if (row.adminOnly) {
        return admin;
    }
    if (row.anyOfFlags == 0 || flags == nullptr) {
        return true;
    }
    for (size_t i = 0; i < kCapabilityFlagCount; ++i) {
        if ((row.anyOfFlags & (1u << i)) != 0 && flags[i] != 0) {
            return true;
        }
    }
    return false;
}

std::vector<PageId> PagesToRegister(const uint8_t* flags, bool admin) {
    std::vector<PageId> pages;
    for (const PageCatalogRow& row : kPageCatalog) {
        if (PageApplies(row, flags, admin)) {
            pages.push_back(row.page);
        }
    }
    return pages;
}

std::vector<PageId> PagesInCheckOrder() {
    std::vector<const PageCatalogRow*> rows;
    for (const PageCatalogRow& row : kPageCatalog) {
        if (row.checkOrder != 0) {
            rows.push_back(&row);
        }
    }
    std::sort(rows.begin(), rows.end(), [](const PageCatalogRow* a, const PageCatalogRow* b) {
        return a->checkOrder < b->checkOrder;
    });
    std::vector<PageId> pages;
    for (const PageCatalogRow* row : rows) {
        pages.push_back(row->page);
    }
    return pages;
}
