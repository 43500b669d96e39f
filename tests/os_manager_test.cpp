// Tests of OSManager on fakes: the classification table, the registry numbers, the query fallback.
#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "actions/os_manager.h"
#include "fake_log_ports.h"
#include "fake_os_version.h"
#include "golden_file.h"
#include "memory_hive.h"

namespace {

using Lines = std::vector<std::string>;

struct OsFixture {
    FakeOsVersion os;
    MemoryHive machine;
    FakeTextCodec text;
    OSManager manager{os, machine, text};

    void PutNumber(const char16_t* name, uint32_t value) {
        machine.Put(kCurrentVersionKey, name, kRegDword, {static_cast<uint8_t>(value), 0, 0, 0});
    }
    void PutText(const char16_t* name, const std::u16string& value) {
        machine.Put(kCurrentVersionKey, name, kRegSz, Utf16Bytes(value + u'\0'));
    }
    Lines Logged() {
        ScopedTestLog log(kLogInfo);
        manager.LogSystemVersion(TheLog());
        return log.Messages();
    }
};

const std::string kOs = "LogSystemVersion: OS-> ";

// Each "OS: <major> <minor> <platform id> <registry major> <registry minor>" case of
// os_versions.txt (-1: the registry value is absent) and the lines logged for it.
TEST(OSManager, ClassificationTableAndRegistryNumbers) {
    ExpectGoldenCases("os_versions.txt", [](const std::string& line) -> std::optional<std::string> {
        if (!line.starts_with("OS: "))
            return std::nullopt;
        OsFixture f;
        int registryMajor = 0, registryMinor = 0;
        std::istringstream(line.substr(4)) >> f.os.record.major >> f.os.record.minor >>
            f.os.record.platformId >> registryMajor >> registryMinor;
        f.os.record.build = 19045;
        if (registryMajor >= 0)
            f.PutNumber(u"CurrentMajorVersionNumber", static_cast<uint32_t>(registryMajor));
        if (registryMinor >= 0)
            f.PutNumber(u"CurrentMinorVersionNumber", static_cast<uint32_t>(registryMinor));
        std::string logged;
        for (const std::string& message : f.Logged())
            logged += (logged.empty() ? "" : " | ") +
                      (message.starts_with(kOs) ? message.substr(kOs.size()) : "?" + message);
        return logged;
    });
}

TEST(OSManager, NamesAndNumbersFromRegistryAndRecord) {
    OsFixture f;
    f.os.record = {10, 0, 22631, 2};
    f.PutText(u"DisplayVersion", u"23H2");
    f.PutText(u"ProductName", u"Windows 10 Pro");
    const Lines logged = f.Logged();
    ASSERT_EQ(logged.size(), 9u);
    EXPECT_EQ(logged[2], kOs + "DisplayVersion: 23H2");
    EXPECT_EQ(logged[3], kOs + "ProductName: Windows 10 Pro");
    EXPECT_EQ(f.manager.GetDisplayVersion(), "23H2");
    EXPECT_EQ(f.manager.GetProductName(), "Windows 10 Pro");
    const std::map<std::string, uint32_t> map = f.manager.GetVersionMap();
    EXPECT_EQ(map, (std::map<std::string, uint32_t>{
                       {"MajorVersion", 10}, {"MinorVersion", 0}, {"Build", 22631}}));
}

TEST(OSManager, ShortQueryFallbackAndBothFailing) {
    OsFixture f;
    f.os.record = {6, 1, 7601, 2};
    f.os.extendedFails = true;
    EXPECT_TRUE(f.manager.IsWindows7());
    EXPECT_EQ(f.os.asked, (std::vector<bool>{true, false}));

    f.os.shortFails = true;
    f.PutText(u"ProductName", u"Windows 7");
    EXPECT_FALSE(f.manager.IsWindows7());
    EXPECT_TRUE(f.manager.GetVersionMap().empty());
    EXPECT_TRUE(f.Logged().empty());
}

}  // namespace
