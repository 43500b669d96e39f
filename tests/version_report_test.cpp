// Tests of the version report: file lines, the set-aside common GPD, options, version lines, OS.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "actions/version_report.h"
#include "fake_version_query.h"
#include "memory_files.h"
#include "memory_hive.h"

namespace {

const std::string kDir = "C:\\Windows\\System32\\spool\\drivers\\x64\\3\\";

struct ReportFixture {
    FakeVersionQuery versions;
    MemoryFiles files;
    VersionReportInputs in;

    ReportFixture() {
        in.driver.driverPath = kDir + "KivUI.dll";
        in.driver.configFile = kDir + "KivUI.dll";
        in.driver.dataFile = kDir + "KIV_TRX418A_CUT.GPD";
        in.driver.dependentFiles = {kDir + "KivUI.ini", kDir + "kiv_common.gpd"};
        in.driver.infPath = "C:\\Windows\\INF\\oem7.inf";
        in.monitorModule = "KIV_LM.DLL";
        in.os = {"Windows 10 Pro",
                 "22H2",
                 {{"MajorVersion", 10}, {"MinorVersion", 0}, {"Build", 19045}}};
        versions.versions[kDir + "KivUI.dll"] = {1, 2, 3, 4};
        versions.versions["c:\\windows\\system32\\KIV_LM.DLL"] = {5, 0, 0, 1};
        files.files[kDir + "KIV_TRX418A_CUT.GPD"] = "*% model\r\n*GPDFileVersion: \"1.0\"\r\n";
        files.files[kDir + "kiv_common.gpd"] = "*% GPDCOMMONFileVersion: 1.0\n";
        files.files[in.driver.infPath] = "[Version]\n  DriverVer=01/02/2026,1.0.0.0\n";
        files.files[kDir + "KivUI.dll"] = "abc";
    }
    std::vector<std::string> Lines() { return VersionReportLines(in, versions, files); }
};

const std::vector<std::string> kOsLines = {"OS ProductName: Windows 10 Pro",
                                           "OS DisplayVersion: 22H2", "OS MajorVersion: 10",
                                           "OS MinorVersion: 0", "OS Build: 19045"};

TEST(VersionReport, LinesInOrderWithoutOptions) {
    ReportFixture f;
    std::vector<std::string> expected = {
        "KivUI.dll : 1.2.3.4",         "KIV_TRX418A_CUT.GPD : N/A", "KivUI.ini : N/A",
        "KIV_LM.DLL : 5.0.0.1",        "*GPDFileVersion: \"1.0\"",  "*% GPDCOMMONFileVersion: 1.0",
        "DriverVer=01/02/2026,1.0.0.0"};
    expected.insert(expected.end(), kOsLines.begin(), kOsLines.end());
    EXPECT_EQ(f.Lines(), expected);
    EXPECT_EQ(JoinReportLines({"a", "", "b"}), "a\r\n\r\nb");
}

TEST(VersionReport, FullPathAndHashOptions) {
    ReportFixture f;
    f.in.options = {true, true};
    f.in.monitorModule.clear();
    f.in.driver.infPath.clear();
    f.in.os = {};
    const std::vector<std::string> lines = f.Lines();
    const std::string abc = " [SHA1: a9993e364706816aba3e25717850c26c9cd0d89d]";
    ASSERT_EQ(lines.size(), 10u);
    EXPECT_EQ(lines[0], kDir + "KivUI.dll : 1.2.3.4" + abc);
    EXPECT_EQ(lines[2], kDir + "KivUI.ini : N/A [SHA1: ]");  // unreadable: no digest
    EXPECT_EQ(lines[4].substr(0, 33), "*% GPDCOMMONFileVersion: 1.0 [SHA");
    EXPECT_EQ(lines[5], "OS ProductName: ");

    MemoryHive hive;
    hive.SetDword(u"Software\\Orvane\\Kiv\\P", u"VersionReport_Hash", 1);
    const VersionReportOptions options = ReadVersionReportOptions(hive, u"P");
    EXPECT_TRUE(options.hash);
    EXPECT_FALSE(options.fullPath);
}

}  // namespace
