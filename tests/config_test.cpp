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
    Configuration Read() {
        Configuration config;
        config.logFolder = config.prnFolder = "stale";
        config.logVerbosity = config.settingsUi = 6;
        ReadConfiguration(hive, text, kPrinter, config);
        return config;
    }
};

// The first opening writes the defaults back in order under the printer's key; the language
// monitor's verbosity only on request, and it is never read back. A failed write is skipped.
TEST_F(ConfigTest, FirstOpeningWritesTheDefaultsBackInOrder) {
    Configuration config = Read();
    EXPECT_EQ(kDefaultLogFolder, config.logFolder);
    EXPECT_EQ(kDefaultPrnFolder, config.prnFolder);
    EXPECT_EQ(0u, config.logVerbosity + config.settingsUi);
    WriteConfiguration(hive, text, kPrinter, config, 0);
    config.logVerbosity = 5;
    WriteConfiguration(hive, text, kPrinter, config, 1);
    EXPECT_EQ(hive.writes,
              (std::vector<std::u16string>{u"LogFolder", u"LogVerbosity_UiUni", u"Settings_Ui",
                                           u"PrnFolder", u"LogFolder", u"LogVerbosity_UiUni",
                                           u"LogVerbosity_LM", u"Settings_Ui", u"PrnFolder"}));
    std::u16string stored;
    ASSERT_TRUE(ReadRegistryString(hive, kKey, u"LogFolder", &stored));
    EXPECT_EQ(u"%ALLUSERSPROFILE%\\ORVANE\\KIV\\Logs", stored);
    uint32_t lm = 0;
    EXPECT_TRUE(ReadRegistryDword(hive, kKey, u"LogVerbosity_LM", &lm));
    EXPECT_EQ(5u, lm);
    hive.SetDword(kKey, u"LogVerbosity_UiUni", 2);
    EXPECT_EQ(2u, Read().logVerbosity);
    hive.writesFail = true;
    WriteConfiguration(hive, text, u"B", config, 1);
    EXPECT_FALSE(hive.KeyExists(u"Software\\Orvane\\Kiv\\B"));
}

// A value of the wrong type or size reads as the default. The verbosity's clamp to 7 and the
// default for an empty folder are config_fuzzer's checks on every input.
TEST_F(ConfigTest, ValuesAreTypedBoundedAndClamped) {
    const std::u16string fits(kRegistryStringChars - 1, u'y');
    struct Case {
        const char16_t* name;
        uint32_t type;
        Bytes data;
        std::string expected;  // the field as text
    };
    const Case cases[] = {
        {u"LogVerbosity_UiUni", kRegSz, {'5', 0, 0, 0}, "0"},
        {u"LogVerbosity_UiUni", kRegDword, {5, 0}, "0"},
        {u"LogVerbosity_UiUni", kRegDword, {5, 0, 0, 0, 0}, "0"},
        {u"Settings_Ui", kRegDword, {0xFF, 0xFF, 0xFF, 0xFF}, "4294967295"},  // not clamped
        {u"LogFolder", kRegSz, Utf16Bytes(u"%TEMP%\\kiv\0"s), "%TEMP%\\kiv"},
        {u"PrnFolder", kRegExpandSz, Utf16Bytes(u"D:\\L\0"s), kDefaultPrnFolder},
        {u"LogFolder", kRegSz, Utf16Bytes(fits + u"y\0"s), kDefaultLogFolder},
        {u"PrnFolder", kRegSz, Utf16Bytes(fits + u'\0'), std::string(fits.size(), 'y')},
        {u"LogFolder", kRegSz, {'A', 0, 'B', 0, 'C'}, "AB"},  // no terminator, odd length
        // Fits the buffer, but could not be written back with its terminator.
        {u"PrnFolder", kRegSz, Bytes(kRegistryStringChars * 2, 'z'), kDefaultPrnFolder},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << &c - cases);
        hive.values.clear();
        hive.Put(kKey, c.name, c.type, c.data);
        const Configuration config = Read();
        const std::u16string name = c.name;
        EXPECT_EQ(c.expected, name == u"LogFolder"     ? config.logFolder
                              : name == u"PrnFolder"   ? config.prnFolder
                              : name == u"Settings_Ui" ? std::to_string(config.settingsUi)
                                                       : std::to_string(config.logVerbosity));
    }
}

}  // namespace
