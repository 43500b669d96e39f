// Tests of OSManager on fakes: the classification table, the registry numbers, the query fallback.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "actions/os_manager.h"
#include "fake_log_ports.h"
#include "fake_os_version.h"
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

TEST(OSManager, ClassificationTableAndRegistryNumbers) {
    struct Case {
        uint32_t major, minor, platformId;
        int registryMajor, registryMinor;  // -1: value absent
        const char* line;                  // nullptr: no classification line
        int loggedMajor, loggedMinor;
    };
    // The ends of each major number's table, the 6.2/6.3 rule (Windows 10 behind the
    // compatibility numbers only when the registry says 10), 10.0 and the platform-id row.
    const Case cases[] = {
        {4, 0, 2, 10, 0, "Windows NT", 0, 0},      {5, 2, 2, -1, -1, "Windows Server 2003", 0, 0},
        {5, 3, 2, -1, -1, "Other Windows", 0, 0},  {6, 0, 2, -1, -1, "Windows Vista", 0, 0},
        {6, 1, 2, 10, 0, "Windows 7", 0, 0},       {6, 2, 2, 10, 0, "Windows 10", 10, 0},
        {6, 3, 2, 10, 3, "Windows 10", 10, 3},     {6, 2, 2, 10, -1, "Windows 8/8.1", 10, 0},
        {6, 3, 2, -1, 3, "Windows 8/8.1", 0, 3},   {6, 3, 2, 6, 3, "Windows 8/8.1", 6, 3},
        {6, 4, 2, 10, 0, "Other Windows", 0, 0},   {10, 0, 2, 10, 0, "Windows 10", 0, 0},
        {10, 1, 2, -1, -1, "Other Windows", 0, 0}, {6, 2, 1, 10, 0, nullptr, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.major << "." << c.minor << " id " << c.platformId << " registry "
                     << c.registryMajor << "/" << c.registryMinor);
        OsFixture f;
        f.os.record = {c.major, c.minor, 19045, c.platformId};
        if (c.registryMajor >= 0)
            f.PutNumber(u"CurrentMajorVersionNumber", static_cast<uint32_t>(c.registryMajor));
        if (c.registryMinor >= 0)
            f.PutNumber(u"CurrentMinorVersionNumber", static_cast<uint32_t>(c.registryMinor));
        Lines expected;
        if (c.line != nullptr)
            expected.push_back(kOs + c.line);
        const std::string numbers[] = {"64bit",
                                       "MajorVersion: " + std::to_string(c.major),
                                       "MinorVersion: " + std::to_string(c.minor),
                                       "CMajorVersion: " + std::to_string(c.loggedMajor),
                                       "CMinorVersion: " + std::to_string(c.loggedMinor),
                                       "Build: 19045"};
        for (const std::string& n : numbers)
            expected.push_back(kOs + n);
        EXPECT_EQ(f.Logged(), expected);
    }
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
