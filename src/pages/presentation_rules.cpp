// The Presentation page's rules: how the presenter hands out the ticket, and page to page.
#include "pages/presentation_rules.h"

#include <algorithm>
#include <cstdlib>

#include "infra/text_format.h"
#include "settings/setting_enums.h"
#include "settings/ui_device_common.h"

namespace {

// The number edits accept digits only; what they hold is read base 10, an empty one as 0.
long NumberFromText(std::string_view text) {
    std::string terminated(LimitText(text, kNumberTextLimit));
    return std::strtol(terminated.c_str(), nullptr, 10);
}

ValidationFailure Failure(const char* message, std::string logLine) {
    return ValidationFailure{message, PageId::kPresentation, std::move(logLine)};
}

}  // namespace

const char* PageToPageNotice(const PortFlags& port) {
    if (!port.statusKnown) {
        return nullptr;
    }
    if (!port.bidirectional) {
        return "Communication port not Bidirectional";
    }
    if (!port.bidiEnabled) {
        return "This feature is available only with\n\"Bidirectional Support\" enabled\n(see "
               "\"Device Settings\")";
    }
    return nullptr;
}

bool PageToPageShown(const UiDeviceCommon& device, const PortFlags& port) {
    return device.GetCapabilityFlag(kCapPage2Page) != 0 && port.statusKnown;
}

bool PageToPageUsable(const UiDeviceCommon& device, const PortFlags& port) {
    return PageToPageShown(device, port) && PageToPageNotice(port) == nullptr;
}

PageToPageState PageToPageStateFor(uint8_t mode, bool checked, int timeoutModeSelection) {
    const bool box = PageToPageApplies(mode);
    const bool on = box && checked;
    return PageToPageState{box, on, on, on && timeoutModeSelection != kTimeoutModeUnlimited};
}

uint8_t PresenterModeAt(const UiDeviceCommon& device, int selection) {
    return SelectedValue(device.GetPresentationList(), selection);
}

PresentationView MakePresentationView(const UiDeviceCommon& device, const PortFlags& port) {
    const auto& modes = device.GetPresentationList();
    const auto& leds = device.GetHeadLedList();
    const auto& actions = device.GetPage2PageActionList();
    const uint16_t timeout = device.GetPage2PageTimeout();
    const bool unlimited = timeout == kUnlimitedTimeout;
    const uint8_t extra = device.GetPage2PageExtra();
    PresentationControls controls{
        PresenterValueToIndex(modes, device.GetPresentationMode()),
        Format("%d", static_cast<int>(device.GetPresentationValue())),
        Format("%d", static_cast<int>(device.GetPresentationTimeout())),
        ValueToIndex(leds, device.GetHeadLed()),
        device.GetPage2PageEnable() != 0,
        unlimited ? kTimeoutModeUnlimited : kTimeoutModePresentation,
        unlimited ? std::string() : Format("%d", static_cast<int>(timeout)),
        ValueToIndex(actions, device.GetPage2PageAction()),
        extra < AfterTimeoutLabels().size() ? extra : 0,
    };
    const uint8_t mode = device.GetPresentationMode();
    const bool shown = PageToPageShown(device, port);
    const PageToPageState pageToPage =
        PageToPageStateFor(mode, controls.pageToPageChecked, controls.timeoutModeSelection);
    controls.pageToPageChecked = pageToPage.boxChecked;
    return PresentationView{
        controls,
        CapabilityLabels(Capability::Presenter, modes),
        CapabilityLabels(Capability::PresenterLed, leds),
        PageToPageTimeoutModeLabels(),
        CapabilityLabels(Capability::PageToPageAction, actions),
        AfterTimeoutLabels(),
        device.GetCapabilityFlag(kCapPresenter) != 0,
        device.GetCapabilityFlag(kCapHeadLed) != 0,
        shown,
        PageToPageUsable(device, port),
        shown ? PageToPageNotice(port) : nullptr,
        LengthApplies(mode),
        DurationApplies(mode),
        pageToPage,
    };
}

std::optional<ValidationFailure> ValidatePresentationControls(
    const UiDeviceCommon& device, const PortFlags& port, const PresentationControls& controls) {
    if (PageToPageUsable(device, port) && controls.pageToPageChecked &&
        controls.timeoutModeSelection == kTimeoutModePresentation) {
        if (controls.timeoutText.empty()) {
            return Failure("The Page to Page timeout value is empty",
                           "Page to Page : timeout value empty");
        }
        if (NumberFromText(controls.timeoutText) > kTimeoutMax) {
            return Failure("The Page to Page timeout value is over the max",
                           Format("Page to Page : timeout value out of range (%d  %d)", 0,
                                  static_cast<int>(kTimeoutMax)));
        }
    }
    if (device.GetCapabilityFlag(kCapPresenter) == 0) {
        return std::nullopt;
    }
    const uint8_t mode = PresenterModeAt(device, controls.modeSelection);
    if (LengthApplies(mode) && NumberFromText(controls.lengthText) > kPresentationMax) {
        return Failure("The Presentation measure must be a value between 0 and 255",
                       Format("Presentation : value out of range (%d  %d)", 0,
                              static_cast<int>(kPresentationMax)));
    }
    const long duration = NumberFromText(controls.durationText);
    if (DurationApplies(mode) && (duration < kDurationMin || duration > kPresentationMax)) {
        return Failure("The Presentation timeout must be a value between 1 and 255",
                       Format("Presentation : timeout value out of range (%d  %d)",
                              static_cast<int>(kDurationMin), static_cast<int>(kPresentationMax)));
    }
    return std::nullopt;
}

void StorePresentationControls(UiDeviceCommon& device, const PresentationControls& controls) {
    const uint8_t mode = PresenterModeAt(device, controls.modeSelection);
    // The Enable box may stand hidden behind a notice; outside the Hold class it means nothing.
    device.SetPage2PageEnable(controls.pageToPageChecked && PageToPageApplies(mode) ? 1 : 0);
    device.SetPage2PageTimeout(
        controls.timeoutModeSelection == kTimeoutModeUnlimited
            ? kUnlimitedTimeout
            : static_cast<uint16_t>(std::min(NumberFromText(controls.timeoutText), kTimeoutMax)));
    device.SetPage2PageAction(
        SelectedValue(device.GetPage2PageActionList(), controls.ticketSelection));
    const int queue = controls.printQueueSelection;
    device.SetPage2PageExtra(static_cast<uint8_t>(
        queue >= 0 && queue < static_cast<int>(AfterTimeoutLabels().size()) ? queue : 0));
    device.SetPresentationMode(mode);
    device.SetPresentationValue(static_cast<int32_t>(NumberFromText(controls.lengthText)));
    device.SetPresentationTimeout(static_cast<int32_t>(NumberFromText(controls.durationText)));
    device.SetHeadLed(SelectedValue(device.GetHeadLedList(), controls.ledSelection));
}
