// Name tables of the setting enumerations and the one lookup they share.
#include "settings/setting_names.h"

#include "settings/setting_enums.h"

namespace {

#define KIV_NAME(symbol) \
    SettingName {        \
        symbol, #symbol  \
    }

constexpr SettingName kCdPins[] = {
    KIV_NAME(PRN_PROP_CDPINS_NO),
    KIV_NAME(PRN_PROP_CDPINS_PIN1),
    KIV_NAME(PRN_PROP_CDPINS_PIN2),
    KIV_NAME(PRN_PROP_CDPINS_PIN1AND2),
};
constexpr SettingName kCdPhase[] = {
    KIV_NAME(PRN_PROP_CDPHASE_NO),
    KIV_NAME(PRN_PROP_CDPHASE_START_DOC),
    KIV_NAME(PRN_PROP_CDPHASE_END_DOC),
    KIV_NAME(PRN_PROP_CDPHASE_END_PAGE),
};
constexpr SettingName kBuzzer[] = {
    KIV_NAME(PRN_PROP_BUZZER_NO),
    KIV_NAME(PRN_PROP_BUZZER_START_DOC),
    KIV_NAME(PRN_PROP_BUZZER_END_DOC),
};
constexpr SettingName kDensity[] = {
    KIV_NAME(PRN_PROP_DENS_NOTSETBYDRIVER),
    KIV_NAME(PRN_PROP_DENS_M50),
    KIV_NAME(PRN_PROP_DENS_M37),
    KIV_NAME(PRN_PROP_DENS_M25),
    KIV_NAME(PRN_PROP_DENS_M12),
    KIV_NAME(PRN_PROP_DENS_NORMAL),
    KIV_NAME(PRN_PROP_DENS_P12),
    KIV_NAME(PRN_PROP_DENS_P25),
    KIV_NAME(PRN_PROP_DENS_P37),
    KIV_NAME(PRN_PROP_DENS_P50),
};
constexpr SettingName kQuality[] = {
    KIV_NAME(PRN_PROP_QUAL_NOTSETBYDRIVER), KIV_NAME(PRN_PROP_QUAL_HQUALITY),
    KIV_NAME(PRN_PROP_QUAL_NORMAL),         KIV_NAME(PRN_PROP_QUAL_HSPEED),
    KIV_NAME(PRN_PROP_QUAL_VHSPEED),
};
constexpr SettingName kCutMode[] = {
    KIV_NAME(PRN_PROP_CUTTER_NOTSETBYDRIVER),  KIV_NAME(PRN_PROP_CUTTER_TEAROFF_END_PAGE),
    KIV_NAME(PRN_PROP_CUTTER_TEAROFF_END_JOB), KIV_NAME(PRN_PROP_CUTTER_TC_END_PAGE),
    KIV_NAME(PRN_PROP_CUTTER_PC_END_PAGE),     KIV_NAME(PRN_PROP_CUTTER_TC_END_DOC),
    KIV_NAME(PRN_PROP_CUTTER_PC_END_DOC),      KIV_NAME(PRN_PROP_CUTTER_TC_END_JOB),
    KIV_NAME(PRN_PROP_CUTTER_PC_END_JOB),      KIV_NAME(PRN_PROP_NO_CUT),
};
constexpr SettingName kRecovery[] = {
    KIV_NAME(PRN_PROP_RECOVERY_NOTSETBYDRIVER), KIV_NAME(PRN_PROP_RECOVERY_NO),
    KIV_NAME(PRN_PROP_RECOVERY_NORMAL_AT_CUT),  KIV_NAME(PRN_PROP_RECOVERY_TOTAL_AT_CUT),
    KIV_NAME(PRN_PROP_RECOVERY_START_PAGE),
};
constexpr SettingName kBlackMark[] = {
    KIV_NAME(PRN_PROP_BMARK_NOTSETBYDRIVER), KIV_NAME(PRN_PROP_BMARK_OFF),
    KIV_NAME(PRN_PROP_BMARK_BPAGE),          KIV_NAME(PRN_PROP_BMARK_EPAGE),
    KIV_NAME(PRN_PROP_BMARK_BEPAGE),
};
constexpr SettingName kContinuousMode[] = {
    KIV_NAME(PRN_PROP_CONTINUOUSMODE_AUTO),
    KIV_NAME(PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER),
    KIV_NAME(PRN_PROP_CONTINUOUSMODE_OFF_LOOPAWAY),
    KIV_NAME(PRN_PROP_CONTINUOUSMODE_ON_FEEDWAY),
};
constexpr SettingName kFeeder[] = {
    KIV_NAME(PRN_PROP_FEEDER_NOTSETBYDRIVER),
    KIV_NAME(PRN_PROP_FEEDER_AUTO),
    KIV_NAME(PRN_PROP_FEEDER_1),
    KIV_NAME(PRN_PROP_FEEDER_2),
    KIV_NAME(PRN_PROP_FEEDER_3),
};
constexpr SettingName kSelector[] = {
    KIV_NAME(PRN_PROP_SELECTOR_NOTSETBYDRIVER),
    KIV_NAME(PRN_PROP_SELECTOR_TOUT),
    KIV_NAME(PRN_PROP_SELECTOR_TSTORE),
};
constexpr SettingName kPresentation[] = {
    KIV_NAME(PRN_PROP_PRESENT_NOTSETBYDRIVER), KIV_NAME(PRN_PROP_PRESENT_HOLD_FIXED),
    KIV_NAME(PRN_PROP_PRESENT_HOLD_VALUE),     KIV_NAME(PRN_PROP_PRESENT_HOLD_MAX),
    KIV_NAME(PRN_PROP_PRESENT_EJECT),          KIV_NAME(PRN_PROP_PRESENT_RETRACT),
    KIV_NAME(PRN_PROP_PRESENT_PEJECT_TO),      KIV_NAME(PRN_PROP_PRESENT_PRETRACT_TO),
};
constexpr SettingName kHeadLed[] = {
    KIV_NAME(PRN_HLED_OFF),        KIV_NAME(PRN_HLED_BLINK),          KIV_NAME(PRN_HLED_BLINK_SLOW),
    KIV_NAME(PRN_HLED_BLINK_FAST), KIV_NAME(PRN_HLED_BLINK_ALWAYSON),
};
constexpr SettingName kPage2PageAction[] = {
    KIV_NAME(PRN_PROP_PAGE2PAGE_EJECT),
    KIV_NAME(PRN_PROP_PAGE2PAGE_RETRACT),
    KIV_NAME(PRN_PROP_PAGE2PAGE_HOLD),
};
constexpr SettingName kPage2PageAfterTo[] = {
    KIV_NAME(PRN_PROP_PAGE2PAGE_AFTERTO_DONOTHING),
    KIV_NAME(PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_DOC),
    KIV_NAME(PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_QUEUE),
};
constexpr SettingName kPage2PageCheckTo[] = {
    KIV_NAME(PRN_PROP_PAGE2PAGE_CHECKTO_BEGINPAGE),
    KIV_NAME(PRN_PROP_PAGE2PAGE_CHECKTO_ENDPAGE),
};
constexpr SettingName kWatermarkDrawPosition[] = {KIV_NAME(WK_OVER), KIV_NAME(WK_UNDER)};
constexpr SettingName kWatermarkDrawType[] = {
    KIV_NAME(WK_DKEEP),
    KIV_NAME(WK_DSTRETCH),
    KIV_NAME(WK_TILE),
    KIV_NAME(WK_COLUMN_TILE),
};
constexpr SettingName kWatermarkVHPosition[] = {
    KIV_NAME(WK_TOPLEFT),   KIV_NAME(WK_CENTERLEFT),   KIV_NAME(WK_BOTTOMLEFT),
    KIV_NAME(WK_TOPCENTER), KIV_NAME(WK_CENTERCENTER), KIV_NAME(WK_BOTTOMCENTER),
    KIV_NAME(WK_TOPRIGHT),  KIV_NAME(WK_CENTERRIGHT),  KIV_NAME(WK_BOTTOMRIGHT),
};
constexpr SettingName kImageDrawType[] = {KIV_NAME(IM_DKEEP), KIV_NAME(IM_DZOOM)};
constexpr SettingName kImageDrawPosition[] = {
    KIV_NAME(IM_DALIGN_LEFT),
    KIV_NAME(IM_DALIGN_CENTER),
    KIV_NAME(IM_DALIGN_RIGHT),
};
constexpr SettingName kLogoSource[] = {
    KIV_NAME(LOGO_TYPE_PRINTFROMFLASH),
    KIV_NAME(LOGO_TYPE_PRINTFROMFILE),
};
constexpr SettingName kCouponCut[] = {
    KIV_NAME(PRN_COP_CUTTER_NONE),
    KIV_NAME(PRN_COP_CUTTER_TC),
    KIV_NAME(PRN_COP_CUTTER_PC),
    KIV_NAME(PRN_COP_CUTTER_TEAROFF),
};
constexpr SettingName kCouponPosition[] = {KIV_NAME(COUPONPOS_NONE),
                                           KIV_NAME(COUPONPOS_BOTTOM_JOB)};
constexpr SettingName kReductionMode[] = {KIV_NAME(REDW_ABSOLUTEVAL), KIV_NAME(REDW_PERCENT)};
constexpr SettingName kConversionMode[] = {
    KIV_NAME(CMODE_AUTO),
    KIV_NAME(CMODE_NONE_THRESHOLD),
    KIV_NAME(CMODE_ERRDIFF_FLOYD_STEINBERG),
};
constexpr SettingName kFreeCmdMode[] = {
    KIV_NAME(FREE_CMD_MODE_NONE), KIV_NAME(FREE_CMD_MODE_FILENAME), KIV_NAME(FREE_CMD_MODE_ASCII),
    KIV_NAME(FREE_CMD_MODE_ZAP),  KIV_NAME(FREE_CMD_MODE_SPACE),
};

#undef KIV_NAME

}  // namespace

const std::span<const SettingName> kCdPinsNames = kCdPins;
const std::span<const SettingName> kCdPhaseNames = kCdPhase;
const std::span<const SettingName> kBuzzerNames = kBuzzer;
const std::span<const SettingName> kDensityNames = kDensity;
const std::span<const SettingName> kQualityNames = kQuality;
const std::span<const SettingName> kCutModeNames = kCutMode;
const std::span<const SettingName> kRecoveryNames = kRecovery;
const std::span<const SettingName> kBlackMarkNames = kBlackMark;
const std::span<const SettingName> kContinuousModeNames = kContinuousMode;
const std::span<const SettingName> kFeederNames = kFeeder;
const std::span<const SettingName> kSelectorNames = kSelector;
const std::span<const SettingName> kPresentationNames = kPresentation;
const std::span<const SettingName> kHeadLedNames = kHeadLed;
const std::span<const SettingName> kPage2PageActionNames = kPage2PageAction;
const std::span<const SettingName> kPage2PageAfterToNames = kPage2PageAfterTo;
const std::span<const SettingName> kPage2PageCheckToNames = kPage2PageCheckTo;
const std::span<const SettingName> kWatermarkDrawPositionNames = kWatermarkDrawPosition;
const std::span<const SettingName> kWatermarkDrawTypeNames = kWatermarkDrawType;
const std::span<const SettingName> kWatermarkVHPositionNames = kWatermarkVHPosition;
const std::span<const SettingName> kImageDrawTypeNames = kImageDrawType;
const std::span<const SettingName> kImageDrawPositionNames = kImageDrawPosition;
const std::span<const SettingName> kLogoSourceNames = kLogoSource;
const std::span<const SettingName> kCouponCutNames = kCouponCut;
const std::span<const SettingName> kCouponPositionNames = kCouponPosition;
const std::span<const SettingName> kReductionModeNames = kReductionMode;
const std::span<const SettingName> kConversionModeNames = kConversionMode;
const std::span<const SettingName> kFreeCmdModeNames = kFreeCmdMode;

std::string LookupSettingName(std::span<const SettingName> table, uint16_t value) {
    for (const SettingName& entry : table) {
        if (entry.value == value) {
            return entry.name;
        }
    }
    return "NOID";
}

std::string CdPinsName(uint8_t value) {
    return LookupSettingName(kCdPins, value);
}
std::string CdPhaseName(uint8_t value) {
    return LookupSettingName(kCdPhase, value);
}
std::string BuzzerName(uint8_t value) {
    return LookupSettingName(kBuzzer, value);
}
std::string DensityName(uint8_t value) {
    return LookupSettingName(kDensity, value);
}
std::string QualityName(uint8_t value) {
    return LookupSettingName(kQuality, value);
}
std::string CutModeName(uint8_t value) {
    return LookupSettingName(kCutMode, value);
}
std::string RecoveryName(uint8_t value) {
    return LookupSettingName(kRecovery, value);
}
std::string BlackMarkName(uint8_t value) {
    return LookupSettingName(kBlackMark, value);
}
std::string ContinuousModeName(uint8_t value) {
    return LookupSettingName(kContinuousMode, value);
}
std::string FeederName(uint16_t value) {
    return LookupSettingName(kFeeder, value);
}
std::string SelectorName(uint8_t value) {
    return LookupSettingName(kSelector, value);
}
std::string PresentationName(uint8_t value) {
    return LookupSettingName(kPresentation, value);
}
std::string HeadLedName(uint8_t value) {
    return LookupSettingName(kHeadLed, value);
}
std::string Page2PageActionName(uint8_t value) {
    return LookupSettingName(kPage2PageAction, value);
}
std::string Page2PageAfterToName(uint8_t value) {
    return LookupSettingName(kPage2PageAfterTo, value);
}
std::string Page2PageCheckToName(uint8_t value) {
    return LookupSettingName(kPage2PageCheckTo, value);
}
std::string WatermarkDrawPositionName(uint8_t value) {
    return LookupSettingName(kWatermarkDrawPosition, value);
}
std::string WatermarkDrawTypeName(uint8_t value) {
    return LookupSettingName(kWatermarkDrawType, value);
}
std::string WatermarkVHPositionName(uint8_t value) {
    return LookupSettingName(kWatermarkVHPosition, value);
}
std::string ImageDrawTypeName(uint8_t value) {
    return LookupSettingName(kImageDrawType, value);
}
std::string ImageDrawPositionName(uint8_t value) {
    return LookupSettingName(kImageDrawPosition, value);
}
std::string LogoSourceName(uint8_t value) {
    return LookupSettingName(kLogoSource, value);
}
std::string CouponCutName(uint8_t value) {
    return LookupSettingName(kCouponCut, value);
}
std::string CouponPositionName(uint8_t value) {
    return LookupSettingName(kCouponPosition, value);
}
std::string ReductionModeName(uint8_t value) {
    return LookupSettingName(kReductionMode, value);
}
std::string ConversionModeName(uint8_t value) {
    return LookupSettingName(kConversionMode, value);
}
std::string FreeCmdModeName(uint8_t value) {
    return LookupSettingName(kFreeCmdMode, value);
}
