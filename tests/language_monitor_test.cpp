// Tests of the language monitor's module lookup and status query on fakes.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "actions/language_monitor.h"
#include "fake_spooler.h"
#include "fake_text_codec.h"
#include "fake_version_query.h"
#include "golden_file.h"
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

// Each "LM: <monitor>|<module>|<its description>|<printer attributes>|<size answer>|<setting>"
// case of language_monitor.txt, and the status with the sizes the setting was asked with.
TEST(LanguageMonitor, StatusOutcomesInTheirOrderOfTests) {
    ExpectGoldenCases(
        "language_monitor.txt", [](const std::string& line) -> std::optional<std::string> {
            if (!line.starts_with("LM: "))
                return std::nullopt;
            const std::vector<std::string> c = CaseFields(line);
            MonitorFixture f;
            if (!c.at(0).empty() && !c.at(1).empty())
                f.Install(c.at(0), c.at(1));
            else
                f.spooler.driver.monitorName = c.at(0);
            if (!c.at(2).empty())
                f.versions.strings[{c.at(1), "FileDescription"}] = c.at(2);
            f.spooler.attributes = static_cast<uint32_t>(std::stoul(c.at(3), nullptr, 16));
            f.driver.sizeResult = static_cast<int32_t>(std::stoul(c.at(4), nullptr, 16));
            f.driver.value = c.at(5);
            std::string answer = GetLMStatusName(f.Status());
            for (uint32_t size : f.driver.sizesAsked)
                answer.append(" ").append(std::to_string(size));
            return answer;
        });
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
