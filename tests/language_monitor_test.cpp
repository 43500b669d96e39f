// Tests of the language monitor's module lookup and status query on fakes.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "actions/language_monitor.h"
#include "fake_spooler.h"
#include "fake_text_codec.h"
#include "fake_version_query.h"
#include "memory_hive.h"

namespace {

// Answers "BidiSupport" with `value`, or with `sizeResult` to the size question.
class FakeDriverSettings : public DriverSettingSource {
  public:
    int32_t sizeResult = kResultFail;
    std::string value = "ENABLE_WAITJOB";
    std::vector<uint32_t> sizesAsked;

    int32_t GetDriverSetting(const char* feature, char* output, uint32_t size,
                             uint32_t* needed) override {
        sizesAsked.push_back(size);
        *needed = static_cast<uint32_t>(value.size() + 1);
        if (output == nullptr)
            return sizeResult;
        value.copy(output, size);
        return kResultOk;
    }
};

struct MonitorFixture {
    FakeSpooler spooler;
    MemoryHive machine;
    FakeTextCodec text;
    FakeVersionQuery versions;
    FakeDriverSettings driver;

    // The driver names `monitor`, whose key holds `module`.
    void Install(const std::string& monitor, const std::string& module) {
        spooler.driver.monitorName = monitor;
        machine.Put(std::u16string(kMonitorsKey) + u"\\" + text.Widen(monitor), u"Driver", kRegSz,
                    Utf16Bytes(text.Widen(module) + u'\0'));
    }
    uint8_t Status() {
        return QueryLanguageMonitorStatus({spooler, machine, text, versions}, driver, 0x51);
    }
};

TEST(LanguageMonitor, StatusOutcomesInTheirOrderOfTests) {
    struct Case {
        const char* name;
        std::string monitor, module, description;
        uint32_t attributes;
        int32_t sizeResult;
        std::string setting;
        uint8_t status;
    };
    const std::string own = "KIV_LM.DLL", desc = "ORVANE Driver LM x64";
    const Case cases[] = {
        {"no monitor", "", "", desc, 0x800, kResultFail, "ENABLE_WAITJOB", LM_NOT_AVAILABLE},
        {"monitor without key", "Kiv LM", "", desc, 0x800, kResultFail, "ENABLE_WAITJOB",
         LM_NOT_AVAILABLE},
        {"foreign _lm.dll", "Kiv LM", "other_lm.dll", "Other LM", 0x800, kResultFail,
         "ENABLE_WAITJOB", LM_NOT_AVAILABLE},
        {"description case", "Kiv LM", own, "orvane driver lm", 0x800, kResultFail,
         "ENABLE_WAITJOB", LM_NOT_AVAILABLE},
        {"bidi off", "Kiv LM", own, desc, 0x400, kResultFail, "ENABLE_WAITJOB", LM_BIDI_NOT_ENABLE},
        {"setting unreadable", "Kiv LM", own, desc, 0x800, static_cast<int32_t>(0x80070057u), "",
         LM_SETT_NOT_AVAILABLE},
        {"size query succeeds", "Kiv LM", own, desc, 0x800, kResultOk, "ENABLE_WAITJOB",
         LM_ENABLED},
        {"not waitjob", "Kiv LM", own, desc, 0xA00, kResultFail, "DISABLE", LM_DISABLED},
        {"a size no setting has", "Kiv LM", own, desc, 0x800, kResultFail,
         "ENABLE_WAITJOB" + std::string(1 << 16, ' '), LM_SETT_NOT_AVAILABLE},
        {"other naming, setting alone", "pjlmon", "pjlmon.dll", "", 0x800, kResultFail,
         "ENABLE_WAITJOB", LM_ENABLED},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        MonitorFixture f;
        if (!c.monitor.empty() && !c.module.empty())
            f.Install(c.monitor, c.module);
        else
            f.spooler.driver.monitorName = c.monitor;
        if (!c.description.empty())
            f.versions.strings[{c.module, "FileDescription"}] = c.description;
        f.spooler.attributes = c.attributes;
        f.driver.sizeResult = c.sizeResult;
        f.driver.value = c.setting;
        EXPECT_EQ(f.Status(), c.status);
        if (c.status == LM_ENABLED || c.status == LM_DISABLED) {  // the size, then the value
            const uint32_t size = static_cast<uint32_t>(c.setting.size() + 1);
            EXPECT_EQ(f.driver.sizesAsked, (std::vector<uint32_t>{0, size}));
        }
    }
}

TEST(LanguageMonitor, StatusNamesAndFlags) {
    // Status, name, and the available, bidi and enable flags.
    const std::tuple<uint8_t, const char*, std::vector<uint32_t>> cases[] = {
        {0, "LM_NOT_AVAILABLE", {0, 0, 0}},
        {1, "LM_DISABLED", {1, 1, 0}},
        {3, "LM_BIDI_NOT_ENABLE", {1, 0, 0}},
        {10, "LM_ENABLED", {1, 1, 1}},
        {255, "NOID", {0, 0, 0}},
    };
    for (const auto& [status, name, flags] : cases) {
        SCOPED_TRACE(static_cast<int>(status));
        EXPECT_STREQ(name, GetLMStatusName(status));
        const LmFlags f = LmFlagsFromStatus(status);
        EXPECT_EQ(flags, (std::vector<uint32_t>{f.available, f.bidi, f.enable}));
    }
}

}  // namespace
