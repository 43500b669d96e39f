// Tests of the Cut/Move page's rules: groups by flag, selections, the line-feed count.
#include <gtest/gtest.h>

#include "pages/cut_move_rules.h"
#include "settings/device_factory.h"
#include "settings/ui_device_common.h"

namespace {

TEST(CutMoveRules, SelectionsAndTheLineFeedCount) {
    auto device = CreateUiDevice("VORTA5X", "", "", "");  // cut 00 20* 30, continuous 01* 10 20
    const CutMoveView view = MakeCutMoveView(*device);
    // Each group follows its capability flag; an unknown model shows none.
    EXPECT_TRUE(view.cutterShown && view.blackMarkShown && view.continuousShown);
    EXPECT_FALSE(view.recoveryShown || !view.recovery.labels.empty());
    EXPECT_EQ(view.lfBeforeCut.labels.size(), 16u);
    const CutMoveView none = MakeCutMoveView(*CreateUiDevice("UNKNOWN", "", "", ""));
    EXPECT_FALSE(none.cutterShown || none.blackMarkShown || none.continuousShown);
    EXPECT_TRUE(none.lfBeforeCut.labels.empty());
    const CutMoveView recovery = MakeCutMoveView(*CreateUiDevice("TRX430ATF", "", "", ""));
    EXPECT_TRUE(recovery.recoveryShown && !recovery.recovery.labels.empty());
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
