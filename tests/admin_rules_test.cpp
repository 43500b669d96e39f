// Tests of the Admin page's actions on fakes: what is written, what is started, what is shown.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "fake_log_ports.h"
#include "fake_program_launcher.h"
#include "infra/config.h"
#include "memory_hive.h"
#include "pages/admin_rules.h"

namespace {

using Starts = std::vector<std::string>;

// Windows 7 gets the path on the clipboard and in the message; elsewhere the editor is pointed
// at the key and started, unless the write fails.
TEST(AdminRules, RegistryButtonPointsTheEditorAtThePrintersKey) {
    const std::string path = AdminRegistryPath("KIV TRX");
    EXPECT_EQ(path, "HKCU\\SOFTWARE\\Orvane\\Kiv\\KIV TRX");
    for (auto [windows7, writeFails] : {std::pair{false, false}, {false, true}, {true, false}}) {
        SCOPED_TRACE(testing::Message() << "windows7 " << windows7 << ", fails " << writeFails);
        MemoryHive hive;
        FakeTextCodec text;
        FakeProgramLauncher launcher;
        hive.writesFail = writeFails;
        const std::optional<RegistryNotice> notice =
            OpenRegistryEditor(windows7, path, hive, text, launcher);
        const bool edited = !windows7 && !writeFails;
        EXPECT_EQ(launcher.started,
                  edited ? Starts{"regedit.exe||c:\\windows\\system32"} : Starts{});
        std::u16string lastKey;
        ReadRegistryString(hive, kRegeditAppletKey, u"LastKey", &lastKey);
        EXPECT_EQ(lastKey, edited ? text.Widen(path) : u"");
        ASSERT_EQ(notice.has_value(), windows7);
        if (windows7) {
            EXPECT_EQ(notice->clipboardText, path);
            EXPECT_EQ(notice->message, "Run regedit.exe and open the path " + path);
        }
    }
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
