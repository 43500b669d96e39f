// Tests of the Console page's rules: command modes, the shown text and the read-back.
#include "pages/console_rules.h"

#include <gtest/gtest.h>

#include "settings/setting_enums.h"
#include "settings/ui_device_common.h"
#include "support/fake_log_ports.h"
#include "support/memory_hive.h"

namespace {

std::vector<uint8_t> Bytes(const std::string& text) {
    return std::vector<uint8_t>(text.begin(), text.end());
}

TEST(ConsoleRules, ModesShowTheirTextAndControlsAndTheTextReadsBack) {
    UiDeviceCommon device("TEST", "", "", "");
    device.SetStartJobBufferMode(FREE_CMD_MODE_ZAP);
    device.SetStartJobBuffer(Bytes("A\\\x0A\x7F~\\x"));
    device.SetEndJobBufferMode(FREE_CMD_MODE_FILENAME);
    device.SetEndJobBuffer(Bytes("C:\\cmd\\end.prn"));
    const ConsolePageView view = MakeConsolePageView(device);
    EXPECT_EQ(view.start.source.selection, 2);
    EXPECT_EQ(view.start.text, "A\\\\x0A\\x7F~\\x5Cx");
    EXPECT_TRUE(view.start.textEnabled && !view.start.browseShown);
    EXPECT_EQ(view.end.source.selection, 1);
    EXPECT_EQ(view.end.text, "C:\\cmd\\end.prn");
    EXPECT_TRUE(view.end.textEnabled && view.end.browseShown);
    // None and an unknown mode: no text, nothing to type into.
    for (uint8_t mode : {FREE_CMD_MODE_NONE, uint8_t{7}}) {
        const CommandView none = CommandViewFor(mode, CommandText(mode, Bytes("x")));
        EXPECT_EQ(none.source.selection, 0);
        EXPECT_EQ(none.text, "");
        EXPECT_FALSE(none.textEnabled || none.browseShown);
    }

    StoreConsoleControls(device, {2, view.start.text, 0, ""});
    EXPECT_EQ(device.GetStartJobBufferMode(), FREE_CMD_MODE_ASCII);
    EXPECT_EQ(device.GetStartJobBuffer(), Bytes("A\\\x0A\x7F~\\x"));

    // A file keeps its path (as the edit hands it back); None keeps nothing.
    StoreConsoleControls(device, {1, std::string(300, 'p'), 0, "ignored"});
    EXPECT_EQ(device.GetStartJobBuffer().size(), kFreeBufferPathLimit);
    EXPECT_EQ(device.GetEndJobBufferMode(), FREE_CMD_MODE_NONE);
    EXPECT_TRUE(device.GetEndJobBuffer().empty());
}

TEST(ConsoleRules, RigsetFromItsUninstallEntry) {
    struct Case {
        uint32_t type;
        std::u16string location;
        const char* program;
    };
    const Case cases[] = {
        {kRegSz, u"C:\\Rigset", "C:\\Rigset\\OvRigset.exe"},
        {kRegSz, u"C:\\Rigset\\", "C:\\Rigset\\OvRigset.exe"},
        {kRegExpandSz, u"%PF%\\Orvane", "C:\\Program Files\\Orvane\\OvRigset.exe"},
        {kRegSz, u"", ""},
        {kRegExpandSz, u"%EMPTY%", ""},
        {kRegDword, u"C:", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.program);
        MemoryHive hive;
        FakeTextCodec text;
        FakeFolders folders;
        folders.environment = {{"PF", "C:\\Program Files"}, {"EMPTY", ""}};
        hive.Put(kRigsetUninstallKey, u"InstallLocation", c.type, Utf16Bytes(c.location));
        EXPECT_EQ(RigsetProgramPath(hive, text, folders), c.program);
    }
    EXPECT_EQ(WorkingFolderOf("D:/tools\\x/OvRigset.exe"), "D:/tools\\x");
    EXPECT_EQ(WorkingFolderOf("OvRigset.exe"), "");
}

}  // namespace
