// Tests of the printer models and the model factory: each model against tests/data/models.txt.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

#include "golden_file.h"
#include "package_models.h"
#include "settings/device_factory.h"
#include "settings/record_dump.h"
#include "settings/setting_names.h"

namespace {

// The record lines in which `payload` differs from `base` (by default a cleared record).
std::string PayloadLines(const OemDevPayload& payload, const OemDevPayload& base = {}) {
    OEMDEV baseRecord{}, rec{};
    baseRecord.payload = base;
    rec.payload = payload;
    std::istringstream before(DescribeOemDev(baseRecord)), with(DescribeOemDev(rec));
    std::string out, baseLine, line;
    while (std::getline(before, baseLine) && std::getline(with, line)) {
        if (line != baseLine) {
            out += "  " + line + "\n";
        }
    }
    return out;
}

// An offered list by value names; an offer without a name could not be shown or logged.
template <typename T, typename Name>
std::string ListLine(const char* what, const std::vector<T>& values, Name name) {
    if (values.empty()) {
        return "";
    }
    std::string line = std::string("  ") + what + ":";
    for (T v : values) {
        EXPECT_NE(name(v), "NOID") << what << " " << int(v);
        line += ' ';
        line += name(v);
    }
    return line + "\n";
}

// What each model is: class, number, flags, its capability export, the record it saves when
// nothing was changed, how a reset differs from that, and its offered lists. The export and the
// saved start record are the bytes that records in the field hold, so any change to them shows
// as a changed line.
TEST(ModelsTest, EachModelMatchesTheExpectedFile) {
    std::string text;
    for (const char* name : kPackageModels) {
        SCOPED_TRACE(name);
        std::unique_ptr<UiDeviceCommon> d = MakePackageModel(name);
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(d->GetModelName(), name);
        std::string flags;
        for (size_t i = 0; i < kCapabilityFlagCount; ++i) {
            flags += static_cast<char>('0' + d->GetCapabilityFlag(i));
        }
        text += "== " + d->GetModelName() + ": " + typeid(*d).name() + ", number " +
                std::to_string(d->GetModelNumber()) + ", flags " + flags + ", names " +
                d->GetThirdName() + " " + d->GetFourthName() + "\n";
        OemDevPayload exported{};
        d->ExportCapabilities(exported);
        text += " export\n" + PayloadLines(exported);
        OemDevPayload start{};
        d->FillOEMDEVWithDeviceValues(start, 0);
        text += " start record\n" + PayloadLines(start);
        // A reset starts from what the export writes, where the untouched object may not.
        OemDevPayload reset{};
        MakePackageModel(name)->FillOEMDEVWithDeviceValues(reset, 1);
        text += " reset record, where it differs\n" + PayloadLines(reset, start);
        text += " lists\n" + ListLine("density", d->GetDensityList(), DensityName) +
                ListLine("quality", d->GetQualityList(), QualityName) +
                ListLine("cut", d->GetCutModeList(), CutModeName) +
                ListLine("recovery", d->GetRecoveryList(), RecoveryName) +
                ListLine("black mark", d->GetBlackMarkList(), BlackMarkName) +
                ListLine("presentation", d->GetPresentationList(), PresentationName) +
                ListLine("continuous", d->GetContinuousModeList(), ContinuousModeName) +
                ListLine("head LED", d->GetHeadLedList(), HeadLedName) +
                ListLine("page to page", d->GetPage2PageActionList(), Page2PageActionName) +
                ListLine("selector", d->GetSelectorList(), SelectorName) +
                ListLine("feeder", d->GetFeederList(), FeederName) +
                ListLine("drawer phase", d->GetCashDrawerPhaseList(), CdPhaseName) +
                ListLine("buzzer", d->GetBuzzerList(), BuzzerName);
    }
    ExpectGoldenFile("models.txt", text);
}

// The match is exact: any other spelling builds the generic device, which exports nothing.
TEST(ModelsTest, OtherNamesBuildTheGenericDevice) {
    for (const char* name : {"WR35VIIEJ", "zld90vii", "J7 ", " J7", "TRX418A", "", "HB5820A-ej"}) {
        SCOPED_TRACE(name);
        std::unique_ptr<UiDeviceCommon> device = CreateUiDevice(name, "s", "t", "f");
        ASSERT_NE(device, nullptr);
        EXPECT_EQ(typeid(*device), typeid(UiDeviceCommon));
        EXPECT_EQ(device->GetModelName(), "");
        EXPECT_EQ(device->GetBuiltModelName(), name);
        OemDevPayload payload;
        std::memset(&payload, 0xA5, sizeof(payload));
        const OemDevPayload before = payload;
        device->ExportCapabilities(payload);
        EXPECT_EQ(std::memcmp(&payload, &before, sizeof(payload)), 0);
    }
}

}  // namespace
