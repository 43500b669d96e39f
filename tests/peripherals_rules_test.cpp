// Tests of the Peripherals page's rules: phase labels by meaning and the read-back. The phase
// and pins a loaded drawer shows are the transfer fuzzer's check (it stores the view back).
#include <gtest/gtest.h>

#include <string>

#include "pages/peripherals_rules.h"
#include "settings/device_factory.h"
#include "settings/ui_device_common.h"

namespace {

TEST(PeripheralsRules, PhasesAreNamedByMeaningInTheModelsOrder) {
    auto j7 = CreateUiDevice("J7", "", "", "");  // drawer phases 30 10 20
    j7->SetBuzzer(32);
    j7->SetCashDrawerTimeOn(256);
    j7->SetCashDrawerTimeOff(0);  // never enabled: the default shows
    const PeripheralsView view = MakePeripheralsView(*j7);
    EXPECT_TRUE(view.drawerShown);
    EXPECT_FALSE(view.buzzerShown);
    EXPECT_EQ(view.phaseLabels, (LabelList{"End Page", "Begin Document", "End Document"}));
    EXPECT_TRUE(view.controls.buzzerChecked);
    EXPECT_EQ(view.controls.buzzerPhaseSelection, 1);
    EXPECT_EQ(view.controls.pulseOnText + "/" + view.controls.pulseOffText, "256/256");
    // "No phase" has no label and is left out of the choices.
    auto trx = CreateUiDevice("TRX430ATF", "", "", "");  // drawer phases 00 30 10
    EXPECT_EQ(DrawerPhaseChoices(*trx), (std::vector<uint8_t>{48, 16}));
    EXPECT_EQ(DrawerPhaseLabel(0), nullptr);
    EXPECT_STREQ(BuzzerPhaseLabel(16), "Begin Document");
    trx->SetBuzzer(0);
    EXPECT_FALSE(MakePeripheralsView(*trx).controls.buzzerChecked);
}

TEST(PeripheralsRules, ControlsAreStored) {
    auto j7 = CreateUiDevice("J7", "", "", "");
    StorePeripheralsControls(*j7, PeripheralsControls{true, "40", "600", 1, 1, true, 0});
    EXPECT_EQ(j7->GetCashDrawerEnable(), 1);
    EXPECT_EQ(j7->GetCashDrawerTimeOn(), 40);
    EXPECT_EQ(j7->GetCashDrawerTimeOff(), 600);
    EXPECT_EQ(j7->GetCashDrawerPhase(), 16);
    EXPECT_EQ(j7->GetCashDrawerPins(), 2);
    EXPECT_EQ(j7->GetBuzzer(), 16);
    StorePeripheralsControls(*j7, PeripheralsControls{false, "", "99999999", -1, -1, false, 1});
    EXPECT_EQ(j7->GetCashDrawerEnable(), 0);
    EXPECT_EQ(j7->GetCashDrawerTimeOff(), 0xFFFF);
    EXPECT_EQ(j7->GetCashDrawerPhase(), 0);
    EXPECT_EQ(j7->GetCashDrawerPins(), 1);
    EXPECT_EQ(j7->GetBuzzer(), 0);
}

}  // namespace
