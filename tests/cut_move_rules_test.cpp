// Tests of the Cut/Move page's rules: groups by flag, selections, the line-feed count.
#include <gtest/gtest.h>

#include "pages/cut_move_rules.h"
#include "settings/device_factory.h"
#include "settings/ui_device_common.h"

namespace {

TEST(CutMoveRules, GroupsFollowTheFlags) {
    struct Case {
        const char* model;
        bool cutter, recovery, blackMark, continuous;
    };
    const Case cases[] = {
        {"J7", true, false, true, false},        {"TRX430ATF", true, true, true, false},
        {"VORTA5X", true, false, true, true},    {"N5", true, false, false, false},
        {"UNKNOWN", false, false, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.model);
        const CutMoveView view = MakeCutMoveView(*CreateUiDevice(c.model, "", "", ""));
        EXPECT_EQ(view.cutterShown, c.cutter);
        EXPECT_EQ(view.recoveryShown, c.recovery);
        EXPECT_EQ(view.blackMarkShown, c.blackMark);
        EXPECT_EQ(view.continuousShown, c.continuous);
        EXPECT_EQ(view.recovery.labels.empty(), !c.recovery);
        EXPECT_EQ(view.lfBeforeCut.labels.size(), c.cutter ? 16u : 0u);
    }
}

TEST(CutMoveRules, SelectionsAndTheLineFeedCount) {
    auto device = CreateUiDevice("VORTA5X", "", "", "");  // cut 00 20* 30, continuous 01* 10 20
    const CutMoveView view = MakeCutMoveView(*device);
    EXPECT_EQ(view.cutMode.labels,
              (LabelList{"Not set by Driver", "Total Cut end Page", "Partial Cut end Page"}));
    EXPECT_EQ(view.cutMode.selection, 1);
    EXPECT_EQ(view.continuous.labels, (LabelList{"Not set by Driver", "Loopaway", "Feedaway"}));
    EXPECT_EQ(view.continuous.selection, 0);
    for (auto [stored, shown] : {std::pair{7, 7}, {15, 15}, {16, 0}, {-1, 0}}) {
        SCOPED_TRACE(stored);
        device->SetLfBeforeCut(stored);
        EXPECT_EQ(MakeCutMoveView(*device).lfBeforeCut.selection, shown);
    }
    StoreCutMoveControls(*device, CutMoveControls{2, 12, -1, 2, 2});
    EXPECT_EQ(device->GetCutMode(), 48);
    EXPECT_EQ(device->GetLfBeforeCut(), 12);
    EXPECT_EQ(device->GetRecovery(), 0);
    EXPECT_EQ(device->GetBlackMark(), 32);
    EXPECT_EQ(device->GetContinuousMode(), 32);
    StoreCutMoveControls(*device, CutMoveControls{0, -1, -1, 0, 0});
    EXPECT_EQ(device->GetLfBeforeCut(), 0);
}

}  // namespace
