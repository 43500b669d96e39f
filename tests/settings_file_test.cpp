// The settings file of kivsettings: text format round trip, every refusal, show and decode.
#include "settings/settings_file.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "golden_file.h"
#include "package_models.h"
#include "settings/setting_enums.h"

namespace {

OEMDEV Defaults(UiDeviceCommon& model) {
    OEMDEV rec{};
    rec.dmExtraHeader = {OEMDEV_SIZE, KIVITEM_SIGNATURE, KIVITEM_VERSION};
    rec.dwSignHead1 = rec.dwSignHead2 = KIVITEM_SIGN_H;
    rec.dwVerCurrent = KIVITEM_VERCURRENT;
    rec.dwSignTail1 = rec.dwSignTail2 = KIVITEM_SIGN_T;
    model.FillOEMDEVWithDeviceValues(rec.payload, 1);
    return rec;
}

std::vector<uint8_t> BytesOf(const OEMDEV& rec) {
    const auto* b = reinterpret_cast<const uint8_t*>(&rec);
    return {b, b + sizeof rec};
}

TEST(SettingsFileTest, EveryModelsDefaultsRoundTrip) {
    for (const char* name : kPackageModels) {
        SCOPED_TRACE(name);
        auto model = MakePackageModel(name);
        const OEMDEV rec = Defaults(*model);
        const std::string text = WriteSettingsFile(rec);
        const SettingsFileResult read = ReadSettingsFile(text, OEMDEV{}, *model);
        for (const auto& p : read.problems)
            ADD_FAILURE() << "line " << p.line << ": " << p.message;
        EXPECT_EQ(BytesOf(read.record), BytesOf(rec));
        EXPECT_EQ(WriteSettingsFile(read.record), text);
        EXPECT_TRUE(ChangedSettings(rec, read.record).empty());
    }
}

}  // namespace
