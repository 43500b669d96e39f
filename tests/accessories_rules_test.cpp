// Tests of the Accessories page's rules: which groups show, their lists and the read-back.
#include <gtest/gtest.h>

#include "pages/accessories_rules.h"
#include "settings/device_factory.h"
#include "settings/ui_device_common.h"

namespace {

// No shipped model has a selector; a device that has one, and no feeder.
struct SelectorDevice : UiDeviceCommon {
    SelectorDevice() : UiDeviceCommon("SEL", "", "", "") {
        SetCapabilityFlag(kCapSelector, 1);
        SetSelectorList({0, 16, 32});
        SetSelector(32);
    }
};

TEST(AccessoriesRules, GroupsFollowTheFlagsAndSelectTheFirstEqualEntry) {
    auto feeder = CreateUiDevice("TRX430ATF", "", "", "");
    struct Case {
        uint16_t stored;
        int selection;
    };
    for (Case c : {Case{1002, 2}, Case{999, 0}, Case{1000, 0}}) {
        SCOPED_TRACE(c.stored);
        feeder->SetFeeder(c.stored);
        const AccessoriesView view = MakeAccessoriesView(*feeder);
        EXPECT_TRUE(view.feederShown);
        EXPECT_FALSE(view.selectorShown);
        EXPECT_EQ(view.feeder.labels,
                  (LabelList{"Autoselected feeder", "Feeder 1", "Feeder 2", "Feeder 3"}));
        EXPECT_EQ(view.feeder.selection, c.selection);
        EXPECT_TRUE(view.selector.labels.empty());
    }
    const AccessoriesView selector = MakeAccessoriesView(SelectorDevice());
    EXPECT_FALSE(selector.feederShown);
    EXPECT_EQ(selector.selector.labels,
              (LabelList{"Not set by Driver", "Ticket Out", "Ticket Stored"}));
    EXPECT_EQ(selector.selector.selection, 2);
}

TEST(AccessoriesRules, SelectionsAreStoredThroughTheOfferedLists) {
    auto device = CreateUiDevice("TRX430ATF", "", "", "");
    StoreAccessoriesControls(*device, AccessoriesControls{3, -1});
    EXPECT_EQ(device->GetFeeder(), 1003);
    EXPECT_EQ(device->GetSelector(), 0);
    SelectorDevice selector;
    StoreAccessoriesControls(selector, AccessoriesControls{-1, 1});
    EXPECT_EQ(selector.GetFeeder(), 0);
    EXPECT_EQ(selector.GetSelector(), 16);
}

}  // namespace
