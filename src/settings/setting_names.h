// Symbolic names of the setting values, as the settings transfers write them into the log.
#pragma once

#include <cstdint>
#include <span>
#include <string>

// One row of a name table.
struct SettingName {
    uint16_t value;
    const char* name;
};

// The name of `value` in `table`, or "NOID" when the table does not list it.
std::string LookupSettingName(std::span<const SettingName> table, uint16_t value);

// The tables themselves, for readers that go from a name to its value.
extern const std::span<const SettingName> kCdPinsNames;
extern const std::span<const SettingName> kCdPhaseNames;
extern const std::span<const SettingName> kBuzzerNames;
extern const std::span<const SettingName> kDensityNames;
extern const std::span<const SettingName> kQualityNames;
extern const std::span<const SettingName> kCutModeNames;
extern const std::span<const SettingName> kRecoveryNames;
extern const std::span<const SettingName> kBlackMarkNames;
extern const std::span<const SettingName> kContinuousModeNames;
extern const std::span<const SettingName> kFeederNames;
extern const std::span<const SettingName> kSelectorNames;
extern const std::span<const SettingName> kPresentationNames;
extern const std::span<const SettingName> kHeadLedNames;
extern const std::span<const SettingName> kPage2PageActionNames;
extern const std::span<const SettingName> kPage2PageAfterToNames;
extern const std::span<const SettingName> kPage2PageCheckToNames;
extern const std::span<const SettingName> kWatermarkDrawPositionNames;
extern const std::span<const SettingName> kWatermarkDrawTypeNames;
extern const std::span<const SettingName> kWatermarkVHPositionNames;
extern const std::span<const SettingName> kImageDrawTypeNames;
extern const std::span<const SettingName> kImageDrawPositionNames;
extern const std::span<const SettingName> kLogoSourceNames;
extern const std::span<const SettingName> kCouponCutNames;
extern const std::span<const SettingName> kCouponPositionNames;
extern const std::span<const SettingName> kReductionModeNames;
extern const std::span<const SettingName> kConversionModeNames;
extern const std::span<const SettingName> kFreeCmdModeNames;

std::string CdPinsName(uint8_t value);
std::string CdPhaseName(uint8_t value);
std::string BuzzerName(uint8_t value);
std::string DensityName(uint8_t value);
std::string QualityName(uint8_t value);
std::string CutModeName(uint8_t value);
std::string RecoveryName(uint8_t value);
std::string BlackMarkName(uint8_t value);
std::string ContinuousModeName(uint8_t value);
std::string FeederName(uint16_t value);
std::string SelectorName(uint8_t value);
std::string PresentationName(uint8_t value);
std::string HeadLedName(uint8_t value);
std::string Page2PageActionName(uint8_t value);
std::string Page2PageAfterToName(uint8_t value);
std::string Page2PageCheckToName(uint8_t value);
std::string WatermarkDrawPositionName(uint8_t value);
std::string WatermarkDrawTypeName(uint8_t value);
std::string WatermarkVHPositionName(uint8_t value);
std::string ImageDrawTypeName(uint8_t value);
std::string ImageDrawPositionName(uint8_t value);
std::string LogoSourceName(uint8_t value);
std::string CouponCutName(uint8_t value);
std::string CouponPositionName(uint8_t value);
std::string ReductionModeName(uint8_t value);
std::string ConversionModeName(uint8_t value);
std::string FreeCmdModeName(uint8_t value);
