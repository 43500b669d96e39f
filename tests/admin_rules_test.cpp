// Tests of the Admin page's actions on fakes: what is written, what is started, what is shown.
#include <gtest/gtest.h>

#include "fake_log_ports.h"
#include "fake_program_launcher.h"
#include "infra/config.h"
#include "memory_hive.h"
#include "pages/admin_rules.h"

namespace {

using Starts = std::vector<std::string>;

TEST(AdminRules, RegistryButtonPointsTheEditorAtThePrintersKey) {
    const std::string path = AdminRegistryPath("KIV TRX");
    EXPECT_EQ(path, "HKCU\\SOFTWARE\\Orvane\\Kiv\\KIV TRX");
    for (bool writeFails : {false, true}) {
        SCOPED_TRACE(writeFails);
        MemoryHive hive;
        FakeTextCodec text;
        FakeProgramLauncher launcher;
        hive.writesFail = writeFails;
        EXPECT_FALSE(OpenRegistryEditor(false, path, hive, text, launcher));
        EXPECT_EQ(launcher.started,
                  writeFails ? Starts{} : Starts{"regedit.exe||c:\\windows\\system32"});
        RegistryValue value;
        EXPECT_EQ(hive.Query(kRegeditAppletKey, u"LastKey", 512, value),
                  writeFails ? RegistryStatus::kMissing : RegistryStatus::kOk);
        if (!writeFails) {
            EXPECT_EQ(WideTextFromBytes(value.data), text.Widen(path));
        }
    }
    // Windows 7: the path goes to the clipboard and into the message; nothing written or started.
    MemoryHive hive;
    FakeTextCodec text;
    FakeProgramLauncher launcher;
    const std::optional<RegistryNotice> notice =
        OpenRegistryEditor(true, path, hive, text, launcher);
    ASSERT_TRUE(notice);
    EXPECT_EQ(notice->clipboardText, path);
    EXPECT_EQ(notice->message, "Run regedit.exe and open the path " + path);
    EXPECT_TRUE(hive.writes.empty());
    EXPECT_TRUE(launcher.started.empty());
}

TEST(AdminRules, LogButtonSwitchesBetweenSevenAndZero) {
    MemoryHive hive;
    FakeTextCodec text;
    EXPECT_STREQ(LogButtonText(0), "ENABLE Log");
    EXPECT_STREQ(LogButtonText(3), "DISABLE Log");
    // Absent: off, so on; 100 reads as 7, so off; a string reads as absent, so on.
    EXPECT_EQ(SwitchLogging(hive, text, u"P"), 7u);
    EXPECT_EQ(SwitchLogging(hive, text, u"P"), 0u);
    hive.SetDword(ConfigurationKey(u"P"), u"LogVerbosity_UiUni", 100);
    EXPECT_EQ(SwitchLogging(hive, text, u"P"), 0u);
    hive.SetString(ConfigurationKey(u"P"), u"LogVerbosity_UiUni", u"7");
    EXPECT_EQ(SwitchLogging(hive, text, u"P"), 7u);
    uint32_t stored = 0;
    EXPECT_TRUE(ReadRegistryDword(hive, ConfigurationKey(u"P"), u"LogVerbosity_UiUni", &stored));
    EXPECT_EQ(stored, 7u);
    EXPECT_EQ(std::count(hive.writes.begin(), hive.writes.end(), u"LogVerbosity_LM"), 0);
}

TEST(AdminRules, OpenLogFolderStartsTheExplorerOnlyOnAnExistingFolder) {
    FakeFolders folders;
    folders.environment["ALLUSERSPROFILE"] = "C:\\ProgramData";
    FakeProgramLauncher launcher;
    EXPECT_TRUE(OpenLogFolder(kDefaultLogFolder, folders, launcher));
    EXPECT_EQ(launcher.started,
              Starts{"explorer.exe|C:\\ProgramData\\ORVANE\\KIV\\Logs|c:\\windows\\system32"});
    folders.folderUsable = false;
    EXPECT_FALSE(OpenLogFolder(kDefaultLogFolder, folders, launcher));
    folders.folderUsable = true;
    EXPECT_FALSE(OpenLogFolder(std::string(300, 'x'), folders, launcher));  // too long to expand
    EXPECT_EQ(launcher.started.size(), 1u);
}

}  // namespace
