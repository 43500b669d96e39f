// Tests of the Console page's rules: command modes, the shown text, the checks and the read-back.
#include "pages/console_rules.h"

#include <gtest/gtest.h>

#include "settings/setting_enums.h"
#include "support/fake_text_codec.h"
#include "support/memory_hive.h"
#include "settings/ui_device_common.h"

namespace {

std::vector<uint8_t> Bytes(const std::string& text) {
    return std::vector<uint8_t>(text.begin(), text.end());
}

TEST(ConsoleRules, ModesShowTheirTextAndControls) {
    UiDeviceCommon device("TEST", "", "", "");
    device.SetStartJobBufferMode(FREE_CMD_MODE_ZAP);
    device.SetStartJobBuffer(Bytes("A\\\x0A\x7F~"));
    device.SetEndJobBufferMode(FREE_CMD_MODE_FILENAME);
    device.SetEndJobBuffer(Bytes("C:\\cmd\\end.prn"));
    const ConsolePageView view = MakeConsolePageView(device);
    EXPECT_EQ(view.start.source.labels, ConsoleCommandSourceLabels());
    EXPECT_EQ(view.start.source.selection, 2);
    EXPECT_EQ(view.start.text, "A\\x5C\\x0A\\x7F~");
    EXPECT_TRUE(view.start.textEnabled && !view.start.browseShown);
    EXPECT_EQ(view.end.source.selection, 1);
    EXPECT_EQ(view.end.text, "C:\\cmd\\end.prn");
    EXPECT_TRUE(view.end.textEnabled && view.end.browseShown);

    // None and an unknown mode: no text, nothing to type into; stored bytes are not shown.
    for (uint8_t mode : {FREE_CMD_MODE_NONE, uint8_t{7}}) {
        const CommandView none = CommandViewFor(mode, CommandText(mode, Bytes("x")));
        EXPECT_EQ(none.source.selection, 0);
        EXPECT_EQ(none.text, "");
        EXPECT_FALSE(none.textEnabled || none.browseShown);
    }
    EXPECT_EQ(CommandModeFromSelection(2), FREE_CMD_MODE_ASCII);
    EXPECT_EQ(CommandModeFromSelection(-1), FREE_CMD_MODE_NONE);

    // Every byte value reads back from the text the page shows.
    std::vector<uint8_t> all;
    for (int i = 0; i < 256; ++i)
        all.push_back(static_cast<uint8_t>(i));
    UiDeviceCommon back("TEST", "", "", "");
    StoreConsoleControls(back, {2, CommandText(FREE_CMD_MODE_SPACE, {all.data(), 200}), 2,
                                CommandText(FREE_CMD_MODE_ASCII, {all.data() + 200, 56})});
    EXPECT_EQ(back.GetStartJobBuffer(), std::vector<uint8_t>(all.begin(), all.begin() + 200));
    EXPECT_EQ(back.GetEndJobBuffer(), std::vector<uint8_t>(all.begin() + 200, all.end()));
}

TEST(ConsoleRules, ApplyStoresModeAndBytes) {
    UiDeviceCommon device("TEST", "", "", "");
    device.SetEndJobBuffer(Bytes("old"));
    StoreConsoleControls(device, {2, "ABC\\x0A", 0, "ignored"});
    EXPECT_EQ(device.GetStartJobBufferMode(), FREE_CMD_MODE_ASCII);
    EXPECT_EQ(device.GetStartJobBuffer(), (std::vector<uint8_t>{0x41, 0x42, 0x43, 0x0A}));
    EXPECT_EQ(device.GetEndJobBufferMode(), FREE_CMD_MODE_NONE);
    EXPECT_TRUE(device.GetEndJobBuffer().empty());
    StoreConsoleControls(device, {1, "C:\\a.prn", 1, std::string(300, 'p')});
    EXPECT_EQ(device.GetStartJobBuffer(), Bytes("C:\\a.prn"));
    EXPECT_EQ(device.GetEndJobBuffer().size(), kFreeBufferPathLimit);
}

TEST(ConsoleRules, ChecksStartThenEndWithTheirTexts) {
    const auto exists = [](const std::string& path) { return path == "C:\\there.prn"; };
    const auto Start = [&](int mode, std::string text) {
        return ValidateConsoleControls({mode, std::move(text), 0, ""}, exists);
    };
    const auto End = [&](int mode, std::string text) {
        return ValidateConsoleControls({0, "", mode, std::move(text)}, exists);
    };
    const char* kPath = "The path of a free buffer file is wrong or empty";
    const char* kFormat = "The ASCII format of a free buffer file is wrong or empty";
    const char* kSize = "The free buffer size is over the max (512)";
    // 128 escapes of one byte each plus 384 plain characters: 512 bytes from 896 characters.
    std::string escapes512(384, 'B');
    for (int i = 0; i < 128; ++i)
        escapes512.insert(0, "\\x41");
    struct Case {
        std::optional<ValidationFailure> got;
        const char* message;  // null: passes
        std::string logLine;
    };
    const Case cases[] = {
        {Start(0, "anything"), nullptr, ""},
        {Start(1, "C:\\there.prn"), nullptr, ""},
        {Start(1, ""), kPath, "Free Buffers Start : Filename Empty"},
        {End(1, ""), kPath, "Free Buffers End : Filename Empty"},
        {Start(1, "C:\\gone.prn"), kPath,
         "Free Buffers Start : path doesn't exists <C:\\gone.prn>"},
        {End(1, "C:\\gone.prn"), kPath, "Free Buffers End : path doesn't exists <C:\\gone.prn>"},
        {Start(2, std::string(512, 'A')), nullptr, ""},
        {End(2, escapes512), nullptr, ""},
        {Start(2, std::string(513, 'A')), kSize,
         "Free Buffers Start : Buffer size error (513 512)"},
        {End(2, escapes512 + "C"), kSize, "Free Buffers End : Buffer size error (513 512)"},
        {Start(2, "\\xZZ"), kFormat, "Free Buffers Start : Buffer Empty"},
        {End(2, "A\\xZZ"), kFormat, "Free Buffers End : Buffer empty"},
        {Start(2, ""), kFormat, "Free Buffers Start : Buffer convertion error <>"},
        {End(2, ""), kFormat, "Free Buffers End : Buffer convertion error <>"},
        // The edit hands back 1535 characters, so a longer text is cut before parsing.
        {Start(2, std::string(1600, 'x')), kSize,
         "Free Buffers Start : Buffer size error (1535 512)"},
        // The start command is reported before the end command.
        {ValidateConsoleControls({1, "", 2, ""}, exists), kPath,
         "Free Buffers Start : Filename Empty"},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(testing::Message() << "case " << i);
        const Case& c = cases[i];
        EXPECT_EQ(c.got ? c.got->message + " | " + c.got->logLine : "",
                  c.message ? c.message + (" | " + c.logLine) : "");
        EXPECT_TRUE(!c.got || c.got->page == PageId::kConsole);
    }
}

TEST(ConsoleRules, RigsetFromItsUninstallEntry) {
    MemoryHive hive;
    FakeTextCodec text;
    EXPECT_EQ(RigsetProgramPath(hive, text), "");
    hive.Put(kRigsetUninstallKey, u"InstallLocation", kRegSz, Utf16Bytes(u"C:\\Orvane\\Rigset"));
    const std::string program = RigsetProgramPath(hive, text);
    EXPECT_EQ(program, "C:\\Orvane\\Rigset\\OvRigset.exe");
    EXPECT_EQ(WorkingFolderOf(program), "C:\\Orvane\\Rigset");
    EXPECT_EQ(WorkingFolderOf("D:/tools/OvRigset.exe"), "D:/tools");
    EXPECT_EQ(WorkingFolderOf("OvRigset.exe"), "");
    EXPECT_STREQ(RigsetParameters(true), "/SWLOGMENU");
    EXPECT_STREQ(RigsetParameters(false), "");
}

}  // namespace
