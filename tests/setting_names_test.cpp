// Tests of the setting name operations: every listed value by name, everything else "NOID".
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "settings/setting_names.h"

namespace {

struct NameCase {
    const char* operation;
    std::string (*name)(uint8_t);
    std::vector<std::pair<int, const char*>> listed;
    std::vector<int> unlisted;
};

const std::vector<NameCase>& Cases() {
    static const std::vector<NameCase> cases = {
        {"CdPins",
         CdPinsName,
         {{0, "PRN_PROP_CDPINS_NO"},
          {1, "PRN_PROP_CDPINS_PIN1"},
          {2, "PRN_PROP_CDPINS_PIN2"},
          {3, "PRN_PROP_CDPINS_PIN1AND2"}},
         {4, 16, 255}},
        {"CdPhase",
         CdPhaseName,
         {{0, "PRN_PROP_CDPHASE_NO"},
          {16, "PRN_PROP_CDPHASE_START_DOC"},
          {32, "PRN_PROP_CDPHASE_END_DOC"},
          {48, "PRN_PROP_CDPHASE_END_PAGE"}},
         {1, 17, 64}},
        {"Buzzer",
         BuzzerName,
         {{0, "PRN_PROP_BUZZER_NO"},
          {16, "PRN_PROP_BUZZER_START_DOC"},
          {32, "PRN_PROP_BUZZER_END_DOC"}},
         {1, 48}},
        {"Density",
         DensityName,
         {{0, "PRN_PROP_DENS_NOTSETBYDRIVER"},
          {16, "PRN_PROP_DENS_M50"},
          {32, "PRN_PROP_DENS_M37"},
          {48, "PRN_PROP_DENS_M25"},
          {64, "PRN_PROP_DENS_M12"},
          {80, "PRN_PROP_DENS_NORMAL"},
          {96, "PRN_PROP_DENS_P12"},
          {112, "PRN_PROP_DENS_P25"},
          {128, "PRN_PROP_DENS_P37"},
          {144, "PRN_PROP_DENS_P50"}},
         {17, 81, 160, 255}},
        {"Quality",
         QualityName,
         {{0, "PRN_PROP_QUAL_NOTSETBYDRIVER"},
          {16, "PRN_PROP_QUAL_HQUALITY"},
          {32, "PRN_PROP_QUAL_NORMAL"},
          {48, "PRN_PROP_QUAL_HSPEED"},
          {64, "PRN_PROP_QUAL_VHSPEED"}},
         {8, 80}},
        {"CutMode",
         CutModeName,
         {{0, "PRN_PROP_CUTTER_NOTSETBYDRIVER"},
          {16, "PRN_PROP_CUTTER_TEAROFF_END_PAGE"},
          {17, "PRN_PROP_CUTTER_TEAROFF_END_JOB"},
          {32, "PRN_PROP_CUTTER_TC_END_PAGE"},
          {48, "PRN_PROP_CUTTER_PC_END_PAGE"},
          {64, "PRN_PROP_CUTTER_TC_END_DOC"},
          {80, "PRN_PROP_CUTTER_PC_END_DOC"},
          {96, "PRN_PROP_CUTTER_TC_END_JOB"},
          {112, "PRN_PROP_CUTTER_PC_END_JOB"},
          {128, "PRN_PROP_NO_CUT"}},
         {18, 33, 144}},
        {"Recovery",
         RecoveryName,
         {{0, "PRN_PROP_RECOVERY_NOTSETBYDRIVER"},
          {16, "PRN_PROP_RECOVERY_NO"},
          {32, "PRN_PROP_RECOVERY_NORMAL_AT_CUT"},
          {48, "PRN_PROP_RECOVERY_TOTAL_AT_CUT"},
          {64, "PRN_PROP_RECOVERY_START_PAGE"}},
         {1, 80}},
        {"BlackMark",
         BlackMarkName,
         {{0, "PRN_PROP_BMARK_NOTSETBYDRIVER"},
          {16, "PRN_PROP_BMARK_OFF"},
          {32, "PRN_PROP_BMARK_BPAGE"},
          {48, "PRN_PROP_BMARK_EPAGE"},
          {64, "PRN_PROP_BMARK_BEPAGE"}},
         {2, 80}},
        {"ContinuousMode",
         ContinuousModeName,
         {{0, "PRN_PROP_CONTINUOUSMODE_AUTO"},
          {1, "PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER"},
          {16, "PRN_PROP_CONTINUOUSMODE_OFF_LOOPAWAY"},
          {32, "PRN_PROP_CONTINUOUSMODE_ON_FEEDWAY"}},
         {2, 48}},
        {"Selector",
         SelectorName,
         {{0, "PRN_PROP_SELECTOR_NOTSETBYDRIVER"},
          {16, "PRN_PROP_SELECTOR_TOUT"},
          {32, "PRN_PROP_SELECTOR_TSTORE"}},
         {1, 48}},
        {"Presentation",
         PresentationName,
         {{0, "PRN_PROP_PRESENT_NOTSETBYDRIVER"},
          {16, "PRN_PROP_PRESENT_HOLD_FIXED"},
          {32, "PRN_PROP_PRESENT_HOLD_VALUE"},
          {48, "PRN_PROP_PRESENT_HOLD_MAX"},
          {64, "PRN_PROP_PRESENT_EJECT"},
          {80, "PRN_PROP_PRESENT_RETRACT"},
          {96, "PRN_PROP_PRESENT_PEJECT_TO"},
          {112, "PRN_PROP_PRESENT_PRETRACT_TO"}},
         {1, 128}},
        {"HeadLed",
         HeadLedName,
         {{0, "PRN_HLED_OFF"},
          {16, "PRN_HLED_BLINK"},
          {32, "PRN_HLED_BLINK_SLOW"},
          {48, "PRN_HLED_BLINK_FAST"},
          {64, "PRN_HLED_BLINK_ALWAYSON"}},
         {1, 80}},
        // 0 is what the record holds while page to page is off, and still has no name.
        {"Page2PageAction",
         Page2PageActionName,
         {{16, "PRN_PROP_PAGE2PAGE_EJECT"},
          {32, "PRN_PROP_PAGE2PAGE_RETRACT"},
          {48, "PRN_PROP_PAGE2PAGE_HOLD"}},
         {0, 1, 64}},
        {"Page2PageAfterTo",
         Page2PageAfterToName,
         {{0, "PRN_PROP_PAGE2PAGE_AFTERTO_DONOTHING"},
          {1, "PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_DOC"},
          {2, "PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_QUEUE"}},
         {3, 16}},
        {"Page2PageCheckTo",
         Page2PageCheckToName,
         {{16, "PRN_PROP_PAGE2PAGE_CHECKTO_BEGINPAGE"}, {32, "PRN_PROP_PAGE2PAGE_CHECKTO_ENDPAGE"}},
         {0, 48}},
        {"WatermarkDrawPosition",
         WatermarkDrawPositionName,
         {{0, "WK_OVER"}, {1, "WK_UNDER"}},
         {2}},
        {"WatermarkDrawType",
         WatermarkDrawTypeName,
         {{0, "WK_DKEEP"}, {1, "WK_DSTRETCH"}, {2, "WK_TILE"}, {3, "WK_COLUMN_TILE"}},
         {4}},
        {"WatermarkVHPosition",
         WatermarkVHPositionName,
         {{17, "WK_TOPLEFT"},
          {18, "WK_CENTERLEFT"},
          {20, "WK_BOTTOMLEFT"},
          {33, "WK_TOPCENTER"},
          {34, "WK_CENTERCENTER"},
          {36, "WK_BOTTOMCENTER"},
          {65, "WK_TOPRIGHT"},
          {66, "WK_CENTERRIGHT"},
          {68, "WK_BOTTOMRIGHT"}},
         {0, 19, 0x44 + 1, 0x88}},
        {"ImageDrawType", ImageDrawTypeName, {{0, "IM_DKEEP"}, {1, "IM_DZOOM"}}, {2}},
        {"ImageDrawPosition",
         ImageDrawPositionName,
         {{0, "IM_DALIGN_LEFT"}, {1, "IM_DALIGN_CENTER"}, {2, "IM_DALIGN_RIGHT"}},
         {3}},
        {"LogoSource",
         LogoSourceName,
         {{0, "LOGO_TYPE_PRINTFROMFLASH"}, {1, "LOGO_TYPE_PRINTFROMFILE"}},
         {2}},
        {"CouponCut",
         CouponCutName,
         {{0, "PRN_COP_CUTTER_NONE"},
          {16, "PRN_COP_CUTTER_TC"},
          {32, "PRN_COP_CUTTER_PC"},
          {48, "PRN_COP_CUTTER_TEAROFF"}},
         {1, 64}},
        {"CouponPosition",
         CouponPositionName,
         {{0, "COUPONPOS_NONE"}, {16, "COUPONPOS_BOTTOM_JOB"}},
         {1, 32}},
        {"ReductionMode", ReductionModeName, {{0, "REDW_ABSOLUTEVAL"}, {1, "REDW_PERCENT"}}, {2}},
        {"ConversionMode",
         ConversionModeName,
         {{0, "CMODE_AUTO"}, {1, "CMODE_NONE_THRESHOLD"}, {2, "CMODE_ERRDIFF_FLOYD_STEINBERG"}},
         {3}},
        {"FreeCmdMode",
         FreeCmdModeName,
         {{0, "FREE_CMD_MODE_NONE"},
          {1, "FREE_CMD_MODE_FILENAME"},
          {17, "FREE_CMD_MODE_ASCII"},
          {18, "FREE_CMD_MODE_ZAP"},
          {19, "FREE_CMD_MODE_SPACE"}},
         {2, 16, 20}},
    };
    return cases;
}

TEST(SettingNamesTest, EveryListedValueHasItsNameAndEveryOtherIsNoid) {
    for (const NameCase& c : Cases()) {
        SCOPED_TRACE(c.operation);
        for (const auto& [value, name] : c.listed) {
            EXPECT_EQ(c.name(static_cast<uint8_t>(value)), name) << value;
        }
        for (int value : c.unlisted) {
            EXPECT_EQ(c.name(static_cast<uint8_t>(value)), "NOID") << value;
        }
        // Nothing outside the table is named: exactly the listed values have names.
        int named = 0;
        for (int v = 0; v < 256; ++v) {
            named += c.name(static_cast<uint8_t>(v)) != "NOID";
        }
        EXPECT_EQ(named, static_cast<int>(c.listed.size()));
    }
}

TEST(SettingNamesTest, FeederIsSixteenBitsWide) {
    EXPECT_EQ(FeederName(0), "PRN_PROP_FEEDER_NOTSETBYDRIVER");
    EXPECT_EQ(FeederName(1000), "PRN_PROP_FEEDER_AUTO");
    EXPECT_EQ(FeederName(1001), "PRN_PROP_FEEDER_1");
    EXPECT_EQ(FeederName(1002), "PRN_PROP_FEEDER_2");
    EXPECT_EQ(FeederName(1003), "PRN_PROP_FEEDER_3");
    for (int v : {1, 999, 1004, 1000 + 65536 / 2, 65535, 1000 & 0xFF}) {
        EXPECT_EQ(FeederName(static_cast<uint16_t>(v)), "NOID") << v;
    }
}

}  // namespace
