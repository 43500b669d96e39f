// Tests of the per-printer configuration over an in-memory registry hive.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "infra/config.h"

namespace {

// A registry in memory: values by (key, name), with the buffer-size rule of the real query, and
// every write recorded in order.
class MemoryHive : public RegistryHive {
  public:
    std::map<std::pair<std::u16string, std::u16string>, RegistryValue> values;
    std::vector<std::string> writes;  // "name=value"
    bool writesFail = false;

    RegistryStatus Query(const std::u16string& subkey, const std::u16string& name, size_t maxBytes,
                         RegistryValue& out) override {
        auto it = values.find({subkey, name});
        if (it == values.end())
            return RegistryStatus::kMissing;
        if (it->second.data.size() > maxBytes)
            return RegistryStatus::kMoreData;
        out = it->second;
        return RegistryStatus::kOk;
    }
    bool SetDword(const std::u16string& subkey, const std::u16string& name,
                  uint32_t value) override {
        if (writesFail)
            return false;
        PutDword(subkey, name, value);
        writes.push_back(Narrow(name) + "=" + std::to_string(value));
        return true;
    }
    bool SetString(const std::u16string& subkey, const std::u16string& name,
                   const std::u16string& value) override {
        if (writesFail)
            return false;
        PutString(subkey, name, value);
        writes.push_back(Narrow(name) + "=" + Narrow(value));
        return true;
    }
    std::string Narrow(const std::u16string& wide) override {
        std::string out;
        for (char16_t c : wide)
            out += c < 0x100 ? static_cast<char>(c) : '?';
        return out;
    }
    std::u16string Widen(const std::string& narrow) override {
        std::u16string out;
        for (char c : narrow)
            out += static_cast<char16_t>(static_cast<unsigned char>(c));
        return out;
    }

    void Put(const std::u16string& key, const std::u16string& name, uint32_t type,
             std::vector<uint8_t> data) {
        values[{key, name}] = RegistryValue{type, std::move(data)};
    }
    void PutDword(const std::u16string& key, const std::u16string& name, uint32_t value) {
        std::vector<uint8_t> data(4);
        std::memcpy(data.data(), &value, 4);
        Put(key, name, kRegDword, data);
    }
    // Stored as the registry stores REG_SZ: UTF-16LE with its terminator.
    void PutString(const std::u16string& key, const std::u16string& name,
                   const std::u16string& text, uint32_t type = kRegSz) {
        std::vector<uint8_t> data;
        for (char16_t c : text) {
            data.push_back(static_cast<uint8_t>(c & 0xFF));
            data.push_back(static_cast<uint8_t>(c >> 8));
        }
        data.push_back(0);
        data.push_back(0);
        Put(key, name, type, data);
    }
    bool Has(const std::u16string& key, const std::u16string& name) const {
        return values.count({key, name}) != 0;
    }
};

const std::u16string kPrinter = u"KIV Test Printer";
const std::u16string kKey = u"Software\\Orvane\\Kiv\\KIV Test Printer";

TEST(Config, KeyIsRootPlusPrinterName) {
    EXPECT_EQ(kKey, ConfigurationKey(kPrinter));
}

TEST(Config, EmptyHiveGivesEveryDefault) {
    MemoryHive hive;
    Configuration config;
    config.logFolder = "stale";
    config.logVerbosity = 6;
    config.prnFolder = "stale";
    config.settingsUi = 1;
    ReadConfiguration(hive, kPrinter, config);
    EXPECT_EQ("%ALLUSERSPROFILE%\\ORVANE\\KIV\\Logs", config.logFolder);
    EXPECT_EQ(0u, config.logVerbosity);
    EXPECT_EQ("%ALLUSERSPROFILE%\\ORVANE\\KIV", config.prnFolder);
    EXPECT_EQ(0u, config.settingsUi);
}

TEST(Config, FirstOpeningWritesDefaultsBackInOrder) {
    MemoryHive hive;
    Configuration config;
    ReadConfiguration(hive, kPrinter, config);
    WriteConfiguration(hive, kPrinter, config, 0);
    const std::vector<std::string> expected = {"LogFolder=%ALLUSERSPROFILE%\\ORVANE\\KIV\\Logs",
                                               "LogVerbosity_UiUni=0", "Settings_Ui=0",
                                               "PrnFolder=%ALLUSERSPROFILE%\\ORVANE\\KIV"};
    EXPECT_EQ(expected, hive.writes);
    EXPECT_FALSE(hive.Has(kKey, u"LogVerbosity_LM"));
}

TEST(Config, LanguageMonitorVerbosityOnlyOnRequest) {
    MemoryHive hive;
    Configuration config;
    config.logVerbosity = 5;
    WriteConfiguration(hive, kPrinter, config, 1);
    ASSERT_EQ(5u, hive.writes.size());
    EXPECT_EQ("LogVerbosity_UiUni=5", hive.writes[1]);
    EXPECT_EQ("LogVerbosity_LM=5", hive.writes[2]);
    EXPECT_EQ("Settings_Ui=0", hive.writes[3]);
    // The language monitor's value is never read back into the plug-in's record.
    hive.PutDword(kKey, u"LogVerbosity_UiUni", 2);
    Configuration again;
    ReadConfiguration(hive, kPrinter, again);
    EXPECT_EQ(2u, again.logVerbosity);
}

TEST(Config, VerbosityValues) {
    struct Case {
        const char* what;
        uint32_t type;
        std::vector<uint8_t> data;
        uint32_t expected;
    };
    const Case cases[] = {
        {"100 is clamped", kRegDword, {100, 0, 0, 0}, 7},
        {"7 stays", kRegDword, {7, 0, 0, 0}, 7},
        {"8 is clamped", kRegDword, {8, 0, 0, 0}, 7},
        {"3 stays", kRegDword, {3, 0, 0, 0}, 3},
        {"huge is clamped", kRegDword, {0xFF, 0xFF, 0xFF, 0xFF}, 7},
        {"string counts as absent", kRegSz, {'5', 0, 0, 0}, 0},
        {"binary counts as absent", kRegBinary, {5, 0, 0, 0}, 0},
        {"short dword counts as absent", kRegDword, {5, 0}, 0},
        {"qword-sized dword counts as absent", kRegDword, {5, 0, 0, 0, 0, 0, 0, 0}, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        MemoryHive hive;
        hive.Put(kKey, u"LogVerbosity_UiUni", c.type, c.data);
        Configuration config;
        config.logVerbosity = 4;
        ReadConfiguration(hive, kPrinter, config);
        EXPECT_EQ(c.expected, config.logVerbosity);
    }
}

TEST(Config, SettingsUiIsNotClamped) {
    MemoryHive hive;
    hive.PutDword(kKey, u"Settings_Ui", 0xFFFFFFFF);
    Configuration config;
    ReadConfiguration(hive, kPrinter, config);
    EXPECT_EQ(0xFFFFFFFFu, config.settingsUi);
}

TEST(Config, FolderValues) {
    const std::u16string longText(600, u'x');
    const std::u16string fits(kRegistryStringChars - 1, u'y');
    struct Case {
        const char* what;
        std::u16string text;
        uint32_t type;
        std::string expected;  // empty: the default
    };
    const Case cases[] = {
        {"plain folder", u"D:\\Logs", kRegSz, "D:\\Logs"},
        {"unexpanded text is kept", u"%TEMP%\\kiv", kRegSz, "%TEMP%\\kiv"},
        {"empty string gives the default", u"", kRegSz, ""},
        {"expandable type counts as absent", u"D:\\Logs", kRegExpandSz, ""},
        {"multi-string counts as absent", u"D:\\Logs", kRegMultiSz, ""},
        {"too long for the buffer counts as absent", longText, kRegSz, ""},
        {"longest that fits", fits, kRegSz, std::string(fits.size(), 'y')},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        MemoryHive hive;
        hive.PutString(kKey, u"LogFolder", c.text, c.type);
        hive.PutString(kKey, u"PrnFolder", c.text, c.type);
        Configuration config;
        ReadConfiguration(hive, kPrinter, config);
        EXPECT_EQ(c.expected.empty() ? kDefaultLogFolder : c.expected, config.logFolder);
        EXPECT_EQ(c.expected.empty() ? kDefaultPrnFolder : c.expected, config.prnFolder);
    }
}

TEST(Config, EmptyLogFolderIsReplacedAndWrittenBack) {
    MemoryHive hive;
    hive.PutString(kKey, u"LogFolder", u"");
    Configuration config;
    ReadConfiguration(hive, kPrinter, config);
    WriteConfiguration(hive, kPrinter, config, 0);
    std::u16string stored;
    ASSERT_TRUE(ReadRegistryString(hive, kKey, u"LogFolder", &stored));
    EXPECT_EQ(u"%ALLUSERSPROFILE%\\ORVANE\\KIV\\Logs", stored);
}

TEST(Config, StringWithoutTerminatorOrWithOddLength) {
    MemoryHive hive;
    // "AB" without its terminator, plus a stray odd byte: the text is what the pairs hold.
    hive.Put(kKey, u"PrnFolder", kRegSz, {'A', 0, 'B', 0, 'C'});
    Configuration config;
    ReadConfiguration(hive, kPrinter, config);
    EXPECT_EQ("AB", config.prnFolder);
}

TEST(Config, UnterminatedStringFillingTheBufferIsTooLong) {
    // 512 characters without a terminator fit the query buffer but could not be written back
    // with one: the value counts as absent, so reading and writing back stay in step.
    MemoryHive hive;
    hive.Put(kKey, u"LogFolder", kRegSz, std::vector<uint8_t>(kRegistryStringChars * 2, 'z'));
    Configuration config;
    ReadConfiguration(hive, kPrinter, config);
    EXPECT_EQ(kDefaultLogFolder, config.logFolder);
}

TEST(Config, ValuesAreIndependentPerPrinter) {
    MemoryHive hive;
    hive.PutDword(u"Software\\Orvane\\Kiv\\A", u"LogVerbosity_UiUni", 6);
    hive.PutDword(u"Software\\Orvane\\Kiv\\B", u"LogVerbosity_UiUni", 2);
    Configuration a, b, c;
    ReadConfiguration(hive, u"A", a);
    ReadConfiguration(hive, u"B", b);
    ReadConfiguration(hive, u"C", c);
    EXPECT_EQ(6u, a.logVerbosity);
    EXPECT_EQ(2u, b.logVerbosity);
    EXPECT_EQ(0u, c.logVerbosity);
}

TEST(Config, FailedWritesAreSkipped) {
    MemoryHive hive;
    hive.writesFail = true;
    Configuration config;
    config.logVerbosity = 6;
    WriteConfiguration(hive, kPrinter, config, 1);
    EXPECT_TRUE(hive.values.empty());
}

TEST(Config, MultiStringValues) {
    MemoryHive hive;
    auto bytes = [](const std::u16string& s) {
        std::vector<uint8_t> d;
        for (char16_t c : s) {
            d.push_back(static_cast<uint8_t>(c));
            d.push_back(static_cast<uint8_t>(c >> 8));
        }
        return d;
    };
    hive.Put(kKey, u"Full", kRegMultiSz, bytes(std::u16string(u"one\0two\0\0", 9)));
    hive.Put(kKey, u"Cut", kRegMultiSz, bytes(std::u16string(u"one\0tw", 6)));
    hive.Put(kKey, u"Sz", kRegSz, bytes(std::u16string(u"one\0\0", 5)));
    std::vector<std::u16string> out;
    ASSERT_TRUE(ReadRegistryMultiString(hive, kKey, u"Full", &out));
    EXPECT_EQ((std::vector<std::u16string>{u"one", u"two"}), out);
    ASSERT_TRUE(ReadRegistryMultiString(hive, kKey, u"Cut", &out));
    EXPECT_EQ((std::vector<std::u16string>{u"one", u"tw"}), out);
    EXPECT_FALSE(ReadRegistryMultiString(hive, kKey, u"Sz", &out));
    EXPECT_FALSE(ReadRegistryMultiString(hive, kKey, u"Missing", &out));
}

}  // namespace
