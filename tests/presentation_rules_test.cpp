// Tests of the Presentation page's rules: mode classes, page-to-page states, read-back.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "pages/presentation_rules.h"
#include "settings/device_factory.h"
#include "settings/ui_device_common.h"

namespace {

constexpr PortFlags kUnknownPort{false, false, false};

TEST(PresentationRules, ModeClassesAndPageToPageStates) {
    struct Case {
        uint8_t mode;
        bool length, duration, pageToPage;
    };
    // None, the Hold modes' ends (Hold, Hold with a length), Eject, the timeout modes with both
    // numbers, and a value off the grid.
    const Case cases[] = {
        {0, false, false, false},  {16, false, false, true},  {32, true, false, true},
        {48, false, false, true},  {64, false, false, false}, {96, true, true, false},
        {17, false, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.mode);
        EXPECT_EQ(LengthApplies(c.mode), c.length);
        EXPECT_EQ(DurationApplies(c.mode), c.duration);
        EXPECT_EQ(PageToPageApplies(c.mode), c.pageToPage);
        const PageToPageState checked = PageToPageStateFor(c.mode, true, kTimeoutModePresentation);
        EXPECT_EQ(checked.boxEnabled, c.pageToPage);
        EXPECT_EQ(checked.boxChecked, c.pageToPage);  // Eject and Retract uncheck the box
        EXPECT_EQ(checked.detailsEnabled, c.pageToPage);
    }
    const PageToPageState unchecked = PageToPageStateFor(16, false, kTimeoutModePresentation);
    EXPECT_TRUE(unchecked.boxEnabled);
    EXPECT_FALSE(unchecked.controlsEnabled);
    const PageToPageState unlimited = PageToPageStateFor(48, true, kTimeoutModeUnlimited);
    EXPECT_TRUE(unlimited.controlsEnabled);
    EXPECT_FALSE(unlimited.detailsEnabled);
}

TEST(PresentationRules, NoticeByPortFlags) {
    EXPECT_EQ(PageToPageNotice(kUnknownPort), nullptr);
    EXPECT_EQ(PageToPageNotice({true, true, true}), nullptr);
    EXPECT_STREQ(PageToPageNotice({true, false, true}), "Communication port not Bidirectional");
    EXPECT_STREQ(PageToPageNotice({true, true, false}),
                 "This feature is available only with\n\"Bidirectional Support\" enabled\n(see "
                 "\"Device Settings\")");
    auto zld90 = CreateUiDevice("ZLD90VII", "", "", "");
    auto vorta = CreateUiDevice("VORTA5X", "", "", "");
    // Shown, with controls, notice: hidden while the port is unknown, a notice for a port
    // that cannot use it, the controls on a bidirectional enabled port.
    const std::tuple<PortFlags, bool, bool, bool> ports[] = {
        {kUnknownPort, false, false, false},
        {{true, false, false}, true, false, true},
        {{true, true, false}, true, false, true},
        {{true, true, true}, true, true, false},
    };
    for (const auto& [port, shown, controls, notice] : ports) {
        const PresentationView view = MakePresentationView(*zld90, port);
        EXPECT_EQ(view.pageToPageShown, shown);
        EXPECT_EQ(view.pageToPageControls, controls);
        EXPECT_EQ(view.notice != nullptr, notice);
    }
    // A model without page to page shows neither the group nor the notice.
    const PresentationView none = MakePresentationView(*vorta, {true, false, false});
    EXPECT_FALSE(none.pageToPageShown);
    EXPECT_EQ(none.notice, nullptr);
}

// What a store writes; how a loaded record is shown is the transfer fuzzer's check (it stores
// every view back and requires the same record), but for page to page outside the Hold modes,
// which it tolerates.
TEST(PresentationRules, ControlsAreStoredAndShownAgain) {
    auto device = CreateUiDevice("ZLD90VII", "", "", "");  // modes 20 30 40 60 70
    // Mode, length, duration, LED, page to page on, its timeout, action and extra.
    const PresentationControls entered{1, "77", "12", 2, true, 0, "600", 1, 2};
    StorePresentationControls(*device, entered);
    EXPECT_EQ((std::vector<int>{device->GetPresentationMode(), device->GetPresentationValue(),
                                device->GetPresentationTimeout(), device->GetHeadLed(),
                                device->GetPage2PageEnable(), device->GetPage2PageTimeout(),
                                device->GetPage2PageAction(), device->GetPage2PageExtra()}),
              (std::vector<int>{48, 77, 12, 32, 1, 600, 32, 2}));
    EXPECT_EQ(MakePresentationView(*device, kUnknownPort).modeLabels,
              (LabelList{"Hold", "Hold (max length)", "Eject", "Eject with Timeout",
                         "Retract with Timeout"}));
    StorePresentationControls(*device, {-1, "", "", -1, false, 1, "600", -1, -1});
    EXPECT_EQ(device->GetPresentationMode(), 0);
    EXPECT_EQ(device->GetPage2PageTimeout(), kUnlimitedTimeout);
    EXPECT_EQ(device->GetPage2PageExtra(), 0);
    StorePresentationControls(*device, {0, "", "", 0, false, 0, "99999", 0, 0});
    EXPECT_EQ(device->GetPage2PageTimeout(), 65534);
    // Eject with a checked box left behind a notice: page to page is not saved on, and Eject
    // with Timeout shows a stored one unchecked.
    StorePresentationControls(*device, {2, "", "", 0, true, 0, "", 0, 0});
    EXPECT_EQ(device->GetPresentationMode(), 64);
    EXPECT_EQ(device->GetPage2PageEnable(), 0);
    device->SetPresentationMode(96);
    device->SetPage2PageEnable(1);
    EXPECT_FALSE(MakePresentationView(*device, kUnknownPort).controls.pageToPageChecked);
}

}  // namespace
