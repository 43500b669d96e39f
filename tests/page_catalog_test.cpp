// Tests of the page catalog: registration conditions, derived names, the orders Apply follows.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "pages/page_catalog.h"
#include "settings/ui_device_common.h"

namespace {

// The dialogs whose condition holds, built or not, in catalog order.
std::vector<int> Applying(const uint8_t* flags, bool admin) {
    std::vector<int> ids;
    for (const PageCatalogRow& row : kPageCatalog) {
        if (PageApplies(row, flags, admin))
            ids.push_back(row.dialogId);
    }
    return ids;
}

TEST(PageCatalog, ConditionsPerFlag) {
    struct Case {
        std::vector<int> setFlags;
        bool admin;
        std::vector<int> ids;
    };
    const Case cases[] = {
        {{}, false, {9, 108, 107, 114, 113, 111, 110}},
        {{}, true, {9, 108, 107, 114, 113, 111, 116, 110}},
        {{7}, false, {9, 108, 109, 107, 114, 113, 111, 110}},
        {{0, 2, 3, 8}, true, {9, 108, 109, 117, 112, 115, 107, 114, 113, 111, 116, 110}},
    };
    for (const Case& c : cases) {
        std::array<uint8_t, kCapabilityFlagCount> flags{};
        for (int f : c.setFlags)
            flags[f] = 1;
        SCOPED_TRACE(testing::PrintToString(c.setFlags) + (c.admin ? " admin" : ""));
        EXPECT_EQ(c.ids, Applying(flags.data(), c.admin));
    }
    // Without a capability object every conditional page applies.
    EXPECT_EQ(Applying(nullptr, false).size(), 11u);
}

TEST(PageCatalog, NamesDerivedFromTheStem) {
    const PageNames print = NamesOf(PageId::kPrint);
    EXPECT_STREQ(print.logName.c_str(), "DevicePropPageDocPrint");
    EXPECT_STREQ(print.slotName.c_str(), "m_hDlgDocPrint");
    EXPECT_STREQ(print.remapText.c_str(), "ReMap hDlgDocPrint");
    EXPECT_STREQ(print.addedText.c_str(), "Added IDD_PROPPAGE_DOC_PRINT");
    // The rows whose names do not follow the page's title.
    EXPECT_STREQ(NamesOf(PageId::kCutMove).addedText.c_str(), "Added IDD_PROPPAGE_DOC_CUTMODE");
    EXPECT_STREQ(NamesOf(PageId::kLogo).logName.c_str(), "DevicePropPageDocLogo");
    EXPECT_STREQ(NamesOf(PageId::kLogo).addedText.c_str(), "Added IDD_PROPPAGE_DOC_LOGOS");
}

TEST(PageCatalog, CheckOrderPutsPeripheralsBeforeCutMoveAndSkipsTheRest) {
    EXPECT_EQ(PagesInCheckOrder(),
              (std::vector<PageId>{PageId::kPrint, PageId::kPrintAdjust, PageId::kPeripherals,
                                   PageId::kCutMove, PageId::kPresentation, PageId::kWatermark,
                                   PageId::kCoupon, PageId::kLogo, PageId::kConsole}));
}

}  // namespace
