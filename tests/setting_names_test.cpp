// Tests of the setting name operations: every value of every table against tests/data.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "golden_file.h"
#include "settings/setting_names.h"

namespace {

// Every value that has a name, one "Operation value NAME" line each. The log and the record
// dump write these names and support tools read them back, so a missing, extra, misspelled or
// renumbered name shows as a changed line.
TEST(SettingNamesTest, EveryNamedValueMatchesTheExpectedFile) {
    const std::pair<const char*, std::string (*)(uint8_t)> operations[] = {
        {"CdPins", CdPinsName},
        {"CdPhase", CdPhaseName},
        {"Buzzer", BuzzerName},
        {"Density", DensityName},
        {"Quality", QualityName},
        {"CutMode", CutModeName},
        {"Recovery", RecoveryName},
        {"BlackMark", BlackMarkName},
        {"ContinuousMode", ContinuousModeName},
        {"Selector", SelectorName},
        {"Presentation", PresentationName},
        {"HeadLed", HeadLedName},
        {"Page2PageAction", Page2PageActionName},
        {"Page2PageAfterTo", Page2PageAfterToName},
        {"Page2PageCheckTo", Page2PageCheckToName},
        {"WatermarkDrawPosition", WatermarkDrawPositionName},
        {"WatermarkDrawType", WatermarkDrawTypeName},
        {"WatermarkVHPosition", WatermarkVHPositionName},
        {"ImageDrawType", ImageDrawTypeName},
        {"ImageDrawPosition", ImageDrawPositionName},
        {"LogoSource", LogoSourceName},
        {"CouponCut", CouponCutName},
        {"CouponPosition", CouponPositionName},
        {"ReductionMode", ReductionModeName},
        {"ConversionMode", ConversionModeName},
        {"FreeCmdMode", FreeCmdModeName},
    };
    std::string text;
    auto add = [&text](const char* operation, int value, const std::string& name) {
        if (name != "NOID") {
            char line[128];
            std::snprintf(line, sizeof line, "%s %d %s\n", operation, value, name.c_str());
            text += line;
        }
    };
    for (const auto& [operation, name] : operations) {
        for (int v = 0; v < 256; ++v) {
            add(operation, v, name(static_cast<uint8_t>(v)));
        }
    }
    // The feeder is the one 16-bit setting: 1002 and 234 share their low byte.
    for (int v = 0; v < 65536; ++v) {
        add("Feeder", v, FeederName(static_cast<uint16_t>(v)));
    }
    ExpectGoldenFile("setting_names.txt", text);
}

}  // namespace
