// Tests of the per-printer configuration over an in-memory registry hive.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake_text_codec.h"
#include "infra/config.h"
#include "memory_hive.h"

namespace {

using namespace std::string_literals;
using Bytes = std::vector<uint8_t>;

const std::u16string kPrinter = u"KIV Test Printer";
const std::u16string kKey = u"Software\\Orvane\\Kiv\\KIV Test Printer";

struct ConfigTest : ::testing::Test {
    MemoryHive hive;
    FakeTextCodec text;
    Configuration Read(const std::u16string& printer = kPrinter) {
        Configuration config;
        config.logFolder = config.prnFolder = "stale";
        config.logVerbosity = config.settingsUi = 6;
        ReadConfiguration(hive, text, printer, config);
        return config;
    }
};

TEST_F(ConfigTest, FirstOpeningGivesDefaultsAndWritesThemBackInOrder) {
    const Configuration config = Read();
    EXPECT_EQ(kDefaultLogFolder, config.logFolder);
    EXPECT_EQ(kDefaultPrnFolder, config.prnFolder);
    EXPECT_EQ(0u, config.logVerbosity + config.settingsUi);
    WriteConfiguration(hive, text, kPrinter, config, 0);
    EXPECT_EQ(hive.writes, (std::vector<std::u16string>{u"LogFolder", u"LogVerbosity_UiUni",
                                                        u"Settings_Ui", u"PrnFolder"}));
    std::u16string stored;
    ASSERT_TRUE(ReadRegistryString(hive, kKey, u"LogFolder", &stored));
    EXPECT_EQ(u"%ALLUSERSPROFILE%\\ORVANE\\KIV\\Logs", stored);
}

TEST_F(ConfigTest, LanguageMonitorVerbosityOnlyOnRequestAndNeverReadBack) {
    Configuration config;
    config.logVerbosity = 5;
    WriteConfiguration(hive, text, kPrinter, config, 1);
    ASSERT_EQ(5u, hive.writes.size());
    EXPECT_EQ(u"LogVerbosity_LM", hive.writes[2]);
    uint32_t lm = 0;
    EXPECT_TRUE(ReadRegistryDword(hive, kKey, u"LogVerbosity_LM", &lm));
    EXPECT_EQ(5u, lm);
    hive.SetDword(kKey, u"LogVerbosity_UiUni", 2);
    EXPECT_EQ(2u, Read().logVerbosity);
}

TEST_F(ConfigTest, NumberValuesAreClampedAndTyped) {
    struct Case {
        const char16_t* name;
        uint32_t type;
        Bytes data;
        uint32_t expected;
    };
    const Case cases[] = {
        {u"LogVerbosity_UiUni", kRegDword, {7, 0, 0, 0}, 7},
        {u"LogVerbosity_UiUni", kRegDword, {0xFF, 0xFF, 0xFF, 0xFF}, 7},
        {u"LogVerbosity_UiUni", kRegSz, {'5', 0, 0, 0}, 0},
        {u"LogVerbosity_UiUni", kRegDword, {5, 0}, 0},
        {u"LogVerbosity_UiUni", kRegDword, {5, 0, 0, 0, 0}, 0},
        {u"Settings_Ui", kRegDword, {0xFF, 0xFF, 0xFF, 0xFF}, 0xFFFFFFFF},  // not clamped
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << &c - cases);
        hive.values.clear();
        hive.Put(kKey, c.name, c.type, c.data);
        const Configuration config = Read();
        EXPECT_EQ(c.expected, c.name[0] == u'S' ? config.settingsUi : config.logVerbosity);
    }
}

TEST_F(ConfigTest, FolderValues) {
    const std::u16string fits(kRegistryStringChars - 1, u'y');
    struct Case {
        uint32_t type;
        Bytes data;
        std::string expected;  // empty: the default
    };
    const Case cases[] = {
        {kRegSz, Utf16Bytes(u"%TEMP%\\kiv\0"s), "%TEMP%\\kiv"},
        {kRegSz, {0, 0}, ""},
        {kRegExpandSz, Utf16Bytes(u"D:\\L\0"s), ""},
        {kRegSz, Utf16Bytes(fits + u"y\0"s), ""},
        {kRegSz, Utf16Bytes(fits + u'\0'), std::string(fits.size(), 'y')},
        {kRegSz, {'A', 0, 'B', 0, 'C'}, "AB"},  // no terminator, odd length
        // Fits the buffer, but could not be written back with its terminator.
        {kRegSz, Bytes(kRegistryStringChars * 2, 'z'), ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << &c - cases);
        hive.Put(kKey, u"LogFolder", c.type, c.data);
        hive.Put(kKey, u"PrnFolder", c.type, c.data);
        const Configuration config = Read();
        EXPECT_EQ(c.expected.empty() ? kDefaultLogFolder : c.expected, config.logFolder);
        EXPECT_EQ(c.expected.empty() ? kDefaultPrnFolder : c.expected, config.prnFolder);
    }
}

TEST_F(ConfigTest, PrintersAreIndependentAndFailedWritesAreSkipped) {
    hive.SetDword(u"Software\\Orvane\\Kiv\\A", u"LogVerbosity_UiUni", 6);
    EXPECT_EQ(6u, Read(u"A").logVerbosity);
    EXPECT_EQ(0u, Read(u"B").logVerbosity);
    hive.writesFail = true;
    WriteConfiguration(hive, text, u"B", Read(u"B"), 1);
    EXPECT_EQ(1u, hive.values.size());
}

}  // namespace
