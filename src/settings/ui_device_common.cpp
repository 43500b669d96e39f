// UiDeviceCommon: identity, capability flags, list lookups and the generic device's operations.
#include "settings/ui_device_common.h"

#include <iterator>
#include <utility>

UiDeviceCommon::UiDeviceCommon(std::string modelName, std::string second, std::string third,
                               std::string fourth)
    : modelName_(std::move(modelName)),
      secondaryName_(std::move(second)),
      thirdName_(std::move(third)),
      fourthName_(std::move(fourth)) {
    KeepStartingValues();
}

UiDeviceCommon::~UiDeviceCommon() = default;

std::string UiDeviceCommon::GetModelName() const {
    return std::string();
}

void UiDeviceCommon::ExportCapabilities(OemDevPayload&) const {}

int UiDeviceCommon::GetModelNumber() const {
    return 0;
}

std::unique_ptr<UiDeviceCommon> UiDeviceCommon::Clone() const {
    return std::unique_ptr<UiDeviceCommon>(new UiDeviceCommon(*this));
}

uint8_t UiDeviceCommon::GetCapabilityFlag(size_t index) const {
    return index < capabilityFlags_.size() ? capabilityFlags_[index] : 0;
}

void UiDeviceCommon::SetCapabilityFlag(size_t index, uint8_t value) {
    if (index < capabilityFlags_.size()) {
        capabilityFlags_[index] = value;
    }
}

void UiDeviceCommon::TakeCapabilityFlagsFromExport() {
    OemDevPayload scratch{};
    ExportCapabilities(scratch);
    capabilityFlags_ = {scratch.supCashDrawer, scratch.supBuzzer,         scratch.supCutter,
                        scratch.supFeeder,     scratch.supSelector,       scratch.supRecovery,
                        scratch.supBlackMark,  scratch.supContinuousMode, scratch.supPresentation,
                        scratch.supHeadLed,    scratch.supPage2Page};
}

void UiDeviceCommon::KeepStartingValues() {
    starts_ = {
        .cashDrawerPhase = cashDrawerPhase_,
        .buzzer = buzzer_,
        .density = density_,
        .quality = quality_,
        .cutMode = cutMode_,
        .recovery = recovery_,
        .continuousMode = continuousMode_,
        .selector = selector_,
        .presentationMode = presentationMode_,
        .headLed = headLed_,
        .blackMark = blackMark_,
        .page2PageAction = page2PageAction_,
        .page2PageExtra = page2PageExtra_,
        .feeder = feeder_,
        .presentationTimeout = presentationTimeout_,
    };
}

namespace {

constexpr int kPercentSteps[] = {12, 25, 37, 50, 62, 75, 87, 100};

}  // namespace

int UiDeviceCommon::PercentFromPosition(int position) {
    if (position < 0 || position >= static_cast<int>(std::size(kPercentSteps))) {
        return kPercentSteps[0];
    }
    return kPercentSteps[position];
}

int UiDeviceCommon::PositionFromPercent(int percent) {
    for (size_t i = 0; i < std::size(kPercentSteps); ++i) {
        if (kPercentSteps[i] == percent) {
            return static_cast<int>(i);
        }
    }
    return 0;
}

const LogoSettings& UiDeviceCommon::GetLogo(size_t index) const {
    static const LogoSettings kNoLogo;
    return index < logos_.size() ? logos_[index] : kNoLogo;
}

void UiDeviceCommon::SetLogo(size_t index, LogoSettings logo) {
    if (index < logos_.size()) {
        logos_[index] = std::move(logo);
    }
}
