// The document property sheet through the host: Wine's common sheet with the driver's page and
// the plug-in's pages, scripted steps, apply and its checks, and the sheet interface itself.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "pages/page_catalog.h"
#include "host_run_win.h"
#include "kivui_dll_win.h"
#include "settings/device_factory.h"

namespace {

// A value inside double quotes after `key=` on a host line, escapes undone.
std::string QuotedAfter(const std::string& line, const std::string& key) {
    const size_t at = line.find(" " + key + "=\"");
    if (at == std::string::npos)
        return "<absent>";
    std::string value;
    for (size_t i = at + key.size() + 3; i < line.size(); ++i) {
        if (line[i] == '"')
            return value;
        if (line[i] == '\\' && i + 1 < line.size()) {
            ++i;
            value += line[i] == 'n' ? '\n' : line[i];
        } else {
            value += line[i];
        }
    }
    return "<unterminated>";
}

// A bare value after `key=` (up to the next blank).
std::string WordAfter(const std::string& line, const std::string& key) {
    const size_t at = line.find(" " + key + "=");
    if (at == std::string::npos)
        return "<absent>";
    const size_t start = at + key.size() + 2;
    return line.substr(start, line.find(' ', start) - start);
}

struct SheetPage {
    std::string title;
    bool plugin;
};

std::vector<SheetPage> PagesOf(const std::string& output) {
    std::vector<SheetPage> pages;
    for (const std::string& line : Lines(output)) {
        if (line.rfind("PAGE ", 0) != 0)
            continue;
        const size_t open = line.find('"');
        const size_t close = line.rfind('"');
        if (open == std::string::npos || close <= open)
            continue;
        pages.push_back({line.substr(open + 1, close - open - 1), Contains(line, "(plug-in)")});
    }
    return pages;
}

// One --dump-controls of one page: its CONTROL lines by control id.
struct ControlDump {
    int page = -1;
    std::map<int, std::string> controls;
    std::string Text(int id) const { return QuotedAfter(Line(id), "text"); }
    std::string Attr(int id, const std::string& key) const { return WordAfter(Line(id), key); }
    std::string Line(int id) const {
        auto it = controls.find(id);
        return it == controls.end() ? std::string("<no control>") : it->second;
    }
};

std::vector<ControlDump> DumpsOf(const std::string& output) {
    std::vector<ControlDump> dumps;
    for (const std::string& line : Lines(output)) {
        if (line.rfind("CONTROLS page=", 0) == 0) {
            dumps.emplace_back();
            dumps.back().page = std::stoi(line.substr(14));
        } else if (line.rfind("CONTROL page=", 0) == 0 && !dumps.empty()) {
            const std::string id = WordAfter(line, "id");
            dumps.back().controls[std::stoi(id)] = line;
        }
    }
    return dumps;
}

struct MessageBoxSeen {
    std::string title;
    std::string text;
};

std::vector<MessageBoxSeen> MessageBoxesOf(const std::string& output) {
    std::vector<MessageBoxSeen> boxes;
    for (const std::string& line : Lines(output)) {
        if (line.rfind("MESSAGEBOX ", 0) == 0)
            boxes.push_back({QuotedAfter(line, "title"), QuotedAfter(line, "text")});
    }
    return boxes;
}

// The sheet title of each plug-in dialog, as its template's caption gives it.
std::string TitleOfDialog(int dialogId) {
    static const std::map<int, std::string> titles = {
        {9, "Print"},         {108, "Print adjust"}, {109, "Cut/Move"},  {117, "Accessories"},
        {112, "Peripherals"}, {115, "Presentation"}, {107, "Watermark"}, {114, "Coupon"},
        {113, "Logos"},       {111, "Console"},      {116, "Admin"},     {110, "Version"}};
    auto it = titles.find(dialogId);
    return it == titles.end() ? "?" : it->second;
}

// The pages the registration would add for `model`, in order, had every page been written.
std::vector<std::string> ExpectedPages(const std::string& model) {
    const auto device = CreateUiDevice(model, "", "", "");
    uint8_t flags[kCapabilityFlagCount];
    for (size_t i = 0; i < kCapabilityFlagCount; ++i)
        flags[i] = device->GetCapabilityFlag(i);
    std::vector<std::string> titles;
    for (const PageCatalogRow& row : kPageCatalog) {
        if (PageApplies(row, flags, false))
            titles.push_back(TitleOfDialog(row.dialogId));
    }
    return titles;
}

// Titles of the pages the plug-in's log says it added, in order.
std::vector<std::string> AddedInLog(const std::string& log) {
    std::map<std::string, int> dialogOfText;
    for (const PageCatalogRow& row : kPageCatalog)
        dialogOfText[NamesOf(row.page).addedText.c_str()] = row.dialogId;
    std::vector<std::string> titles;
    for (const std::string& line : Lines(log)) {
        for (const auto& [text, dialog] : dialogOfText) {
            // The text ends the line; "..._PRINT" must not match "..._PRINT_ADJUST".
            if (line.size() >= text.size() &&
                line.compare(line.size() - text.size(), text.size(), text) == 0)
                titles.push_back(TitleOfDialog(dialog));
        }
    }
    return titles;
}

bool IsSubsequence(const std::vector<std::string>& part, const std::vector<std::string>& whole) {
    size_t at = 0;
    for (const std::string& item : whole) {
        if (at < part.size() && part[at] == item)
            ++at;
    }
    return at == part.size();
}

std::string Join(const std::vector<std::string>& items) {
    std::string out;
    for (const std::string& item : items) {
        if (!out.empty())
            out += ", ";
        out += item;
    }
    return "[" + out + "]";
}

// Windows need a display (Xvfb in the test script); without one Wine cannot create any.
bool HaveDisplay() {
    HWND probe = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                                 nullptr);
    if (probe == nullptr)
        return false;
    DestroyWindow(probe);
    return true;
}

class SheetWin : public HostTestBase {
  protected:
    SheetWin() : HostTestBase(L"SheetWin") {}
    void SetUp() override {
        HostTestBase::SetUp();
        if (!HaveDisplay())
            GTEST_SKIP() << "no display: run under xvfb-run";
    }
    HostRun Sheet(const std::wstring& printer, const std::wstring& model,
                  const std::wstring& script) {
        return RunHost(PrinterArgs(printer, model) + L" --log-lines 0 " + script);
    }
};

constexpr int kDitherType = 1026;
constexpr int kThreshold = 1027, kThresholdLabel = 1028;
constexpr int kLowFilter = 1029, kLowLabel = 1031, kLowCaption = 1064;
constexpr int kHighFilter = 1030, kHighLabel = 1032, kHighCaption = 1061;
constexpr int kDitherDefault = 1092;
constexpr int kOffsetX = 1067, kOffsetY = 1068, kRotation = 1066;
constexpr int kFilterControls[] = {kLowFilter, kHighFilter, kLowLabel,
                                   kHighLabel, kLowCaption, kHighCaption};

TEST_F(SheetWin, PagesFollowTheModelsCapabilitiesInRegistrationOrder) {
    // WR35VIIEJ is no model the factory knows: a capability object with no flag set, the
    // seven unconditional pages.
    ASSERT_EQ(7u, ExpectedPages("WR35VIIEJ").size());
    for (const wchar_t* model : {L"WR35VIIEJ", L"ZLD90VII", L"TRX430ATF"}) {
        SCOPED_TRACE(Narrow(model));
        const std::wstring printer = NewPrinter(model);
        const HostRun run = Sheet(printer, model, L"--press cancel");
        ASSERT_EQ(0u, run.exitCode) << run.output;

        const std::vector<SheetPage> pages = PagesOf(run.output);
        ASSERT_FALSE(pages.empty()) << run.output;
        EXPECT_FALSE(pages[0].plugin) << "the driver's page comes first";
        std::vector<std::string> plugin;
        for (size_t i = 1; i < pages.size(); ++i) {
            EXPECT_TRUE(pages[i].plugin) << pages[i].title;
            plugin.push_back(pages[i].title);
        }
        // Until every page exists the sheet shows the registered ones, in the table's order.
        const std::vector<std::string> expected = ExpectedPages(Narrow(model));
        EXPECT_TRUE(IsSubsequence(plugin, expected)) << Join(plugin) << " in " << Join(expected);
        EXPECT_EQ(AddedInLog(ReadFileText(LogPath(printer))), plugin);
        ASSERT_GE(plugin.size(), 2u);
        EXPECT_EQ("Print", plugin[0]);
        EXPECT_EQ("Print adjust", plugin[1]);
        EXPECT_TRUE(Contains(run.output, "DocumentPropertySheets: INIT -> 0x00000000"));
        EXPECT_TRUE(
            Contains(run.output, "DocumentPropertySheets: DESTROY -> 0x00000000, Result 1"));
        EXPECT_TRUE(Contains(run.output, "devmode     : not written"));
    }
}

TEST_F(SheetWin, PrintPageLabelsFollowTypeDefaultAndTrackbars) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    const HostRun run = Sheet(
        printer, L"TRX418A CUT",
        L"--page Print --select 1026=1 --dump-controls --click 1092 --dump-controls "
        L"--trackbar 1027=254 --dump-controls --trackbar 1027=0 --dump-controls --press cancel");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    const std::vector<ControlDump> dumps = DumpsOf(run.output);
    ASSERT_EQ(4u, dumps.size()) << run.output;

    // None: both filters reset at once and out of reach.
    const ControlDump& none = dumps[0];
    EXPECT_EQ("None", none.Text(kDitherType));
    EXPECT_EQ("0% (0/255)", none.Text(kLowLabel));
    EXPECT_EQ("100% (255/255)", none.Text(kHighLabel));
    EXPECT_EQ("0", none.Attr(kLowFilter, "pos"));
    EXPECT_EQ("255", none.Attr(kHighFilter, "pos"));
    for (int id : kFilterControls)
        EXPECT_EQ("0", none.Attr(id, "enabled")) << id;

    // Default: Auto, threshold 128, filters 0 and 255, and the filters stay disabled.
    const ControlDump& reset = dumps[1];
    EXPECT_EQ("0", reset.Attr(kDitherType, "sel"));
    EXPECT_EQ("Auto", reset.Text(kDitherType));
    EXPECT_EQ("50% (128/255)", reset.Text(kThresholdLabel));
    EXPECT_EQ("0% (0/255)", reset.Text(kLowLabel));
    EXPECT_EQ("100% (255/255)", reset.Text(kHighLabel));
    for (int id : kFilterControls)
        EXPECT_EQ("0", reset.Attr(id, "enabled")) << id;

    // The threshold runs from 1 to 254 only; the label truncates.
    EXPECT_EQ("99% (254/255)", dumps[2].Text(kThresholdLabel));
    EXPECT_EQ("1..254", dumps[2].Attr(kThreshold, "range"));
    EXPECT_EQ("1", dumps[3].Attr(kThreshold, "pos"));
    EXPECT_EQ("0% (1/255)", dumps[3].Text(kThresholdLabel));
    EXPECT_TRUE(MessageBoxesOf(run.output).empty());
}

TEST_F(SheetWin, OffsetsOutsideTheRangeOrNotIntegersAreRefusedAndNothingIsSaved) {
    struct Case {
        const wchar_t* text;
        const char* message;  // null: accepted
        const char* saved;
    };
    const Case cases[] = {
        {L"-1000", nullptr, "-1000"},
        {L"1001", "The Offset must be a value between -1000 and 1000", nullptr},
        {L"12a", "The Offset value is not a integer", nullptr},
        {L"--5", "The Offset value is not a integer", nullptr},
        {L"", "The Offset value is not a integer", nullptr},
        {L"1000", nullptr, "1000"},
    };
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    for (const Case& c : cases) {
        SCOPED_TRACE("offset \"" + Narrow(c.text) + "\"");
        const std::string before = ReadFileText(DevmodePath(printer));
        const HostRun run =
            Sheet(printer, L"TRX418A CUT",
                  L"--page \"Print adjust\" --set 1067=" + std::wstring(c.text) + L" --press ok");
        const std::vector<MessageBoxSeen> boxes = MessageBoxesOf(run.output);
        if (c.message == nullptr) {
            ASSERT_EQ(0u, run.exitCode) << run.output;
            EXPECT_TRUE(boxes.empty()) << run.output;
            EXPECT_EQ(c.saved, Field(run.output, "offsetX"));
            EXPECT_NE(before, ReadFileText(DevmodePath(printer)));
        } else {
            EXPECT_EQ(3u, run.exitCode) << run.output;
            ASSERT_EQ(1u, boxes.size()) << run.output;
            EXPECT_EQ("\"Print adjust\" Panel ", boxes[0].title);
            EXPECT_EQ(c.message, boxes[0].text);
            EXPECT_TRUE(Contains(run.output, "APPLYNOW    : callback returned 3"));
            EXPECT_TRUE(Contains(run.output, "devmode     : not written"));
            EXPECT_EQ("<absent>", Field(run.output, "offsetX"));
            EXPECT_EQ(before, ReadFileText(DevmodePath(printer)));
        }
    }
}

TEST_F(SheetWin, FiltersMustLeaveRoomBetweenLowAndHigh) {
    struct Case {
        int low, high;
        bool accepted;
    };
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    for (const Case& c : {Case{128, 128, false}, Case{128, 129, true}}) {
        SCOPED_TRACE(std::to_string(c.low) + "/" + std::to_string(c.high));
        const HostRun run =
            Sheet(printer, L"TRX418A CUT",
                  L"--page Print --select 1026=2 --trackbar 1027=128 --trackbar 1029=" +
                      std::to_wstring(c.low) + L" --trackbar 1030=" + std::to_wstring(c.high) +
                      L" --press ok");
        const std::vector<MessageBoxSeen> boxes = MessageBoxesOf(run.output);
        if (c.accepted) {
            ASSERT_EQ(0u, run.exitCode) << run.output;
            EXPECT_TRUE(boxes.empty()) << run.output;
            EXPECT_EQ(std::to_string(c.low), Field(run.output, "convFilterDown"));
            EXPECT_EQ(std::to_string(c.high), Field(run.output, "convFilterUp"));
        } else {
            EXPECT_EQ(3u, run.exitCode) << run.output;
            ASSERT_EQ(1u, boxes.size()) << run.output;
            EXPECT_EQ("\"Print\" Panel ", boxes[0].title);
            EXPECT_EQ("The HIGH Filter must be a value > of the LOW Filter", boxes[0].text);
            EXPECT_TRUE(Contains(run.output, "devmode     : not written"));
        }
    }
}

TEST_F(SheetWin, AppliedChangesSurviveCloseAndReopenThroughTheDevmodeFile) {
    const std::wstring model = L"ZLD90VII";
    const std::wstring printer = NewPrinter(model);
    const HostRun first = Sheet(printer, model,
                                L"--page \"Print adjust\" --set 1068=37 --click 1066 "
                                L"--page Print --select 1026=2 --press apply");
    ASSERT_EQ(0u, first.exitCode) << first.output;
    EXPECT_TRUE(Contains(first.output, "PRESS apply")) << first.output;
    EXPECT_EQ("37", Field(first.output, "offsetY"));
    EXPECT_TRUE(Contains(first.output, "devmode     : written"));

    const HostRun second = Sheet(printer, model,
                                 L"--page \"Print adjust\" --dump-controls --page Print "
                                 L"--dump-controls --press cancel");
    ASSERT_EQ(0u, second.exitCode) << second.output;
    EXPECT_TRUE(Contains(second.output, "private bytes read")) << second.output;
    const std::vector<ControlDump> dumps = DumpsOf(second.output);
    ASSERT_EQ(2u, dumps.size()) << second.output;
    EXPECT_EQ("37", dumps[0].Text(kOffsetY));
    EXPECT_EQ("0", dumps[0].Text(kOffsetX));
    EXPECT_EQ("1", dumps[0].Attr(kRotation, "checked"));
    EXPECT_EQ("Error Diffusion", dumps[1].Text(kDitherType));
    for (int id : kFilterControls)
        EXPECT_EQ("1", dumps[1].Attr(id, "enabled")) << id;
    // A cancelled sheet writes nothing back.
    EXPECT_TRUE(Contains(second.output, "devmode     : not written"));
}

TEST_F(SheetWin, ScreenshotsGiveOnePngPerPageWithEveryPictureLoaded) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    const std::wstring shots = dir_ + L"\\shots";
    scratchDirs_.push_back(shots);
    const HostRun run = Sheet(printer, L"TRX418A CUT",
                              L"--screenshots \"" + shots + L"\" --dump-controls --press cancel");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    const std::vector<SheetPage> pages = PagesOf(run.output);
    ASSERT_GE(pages.size(), 3u);
    for (size_t i = 0; i < pages.size(); ++i) {
        std::string name = pages[i].title;
        for (char& ch : name)
            ch = ch == ' ' ? '_' : ch == '/' ? '-' : ch;
        const std::wstring file = shots + L"\\" + (i < 10 ? L"0" : L"") + std::to_wstring(i) +
                                  L"_" + std::wstring(name.begin(), name.end()) + L".png";
        scratchFiles_.push_back(file);
        SCOPED_TRACE(Narrow(file));
        const std::string png = ReadFileText(file);
        ASSERT_GT(png.size(), 24u);
        EXPECT_EQ(std::string("\x89PNG\r\n\x1a\n", 8), png.substr(0, 8));
        // IHDR: big-endian width and height; a property sheet is a few hundred pixels a side.
        auto be32 = [&](size_t at) {
            return (static_cast<uint32_t>(static_cast<uint8_t>(png[at])) << 24) |
                   (static_cast<uint32_t>(static_cast<uint8_t>(png[at + 1])) << 16) |
                   (static_cast<uint32_t>(static_cast<uint8_t>(png[at + 2])) << 8) |
                   static_cast<uint8_t>(png[at + 3]);
        };
        EXPECT_GT(be32(16), 300u);
        EXPECT_GT(be32(20), 300u);
    }
    // Every picture control of every page got its bitmap.
    const std::vector<ControlDump> dumps = DumpsOf(run.output);
    EXPECT_EQ(pages.size(), dumps.size());
    for (const ControlDump& dump : dumps) {
        for (const auto& [id, line] : dump.controls)
            EXPECT_FALSE(Contains(line, "bitmap=none")) << line;
    }
}

TEST_F(SheetWin, AStepThatCannotBeDoneCancelsTheSheet) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    const HostRun run = Sheet(printer, L"TRX418A CUT",
                              L"--page \"Print adjust\" --set 1067=5 --page Nowhere --click 1 "
                              L"--press ok");
    EXPECT_EQ(3u, run.exitCode) << run.output;
    EXPECT_TRUE(Contains(run.output, "the sheet has no page \"Nowhere\"")) << run.output;
    EXPECT_TRUE(Contains(run.output, "PRESS cancel"));
    EXPECT_FALSE(Contains(run.output, "APPLYNOW"));
    EXPECT_TRUE(Contains(run.output, "devmode     : not written"));
}

// The sheet interface straight through the DLL, as the framework calls it.
TEST(SheetWinInterface, DocumentPropertySheetsRefusesOtherVersionsAndToleratesDestroyFirst) {
    ASSERT_TRUE(KivUiDll::Get().Loaded());
    ComRef<IPrintOemUI> ui(KivUiDll::Get().CreateOemUI());
    ASSERT_NE(nullptr, ui.get());

    HANDLE heap = HeapCreate(0, 0, 0);
    ASSERT_NE(nullptr, heap);
    OEMUIPSPARAM ps = {};
    ps.cbSize = sizeof ps;
    ps.hOEMHeap = heap;

    struct Case {
        const char* name;
        WORD version;
        WORD reason;
        HRESULT hr;
        DWORD lastError;  // checked when hr fails
        ULONG_PTR result;
    };
    const Case cases[] = {
        {"version 0x0200", 0x0200, PROPSHEETUI_REASON_INIT, E_FAIL, ERROR_INVALID_PARAMETER, 77},
        {"version 0", 0, PROPSHEETUI_REASON_INIT, E_FAIL, ERROR_INVALID_PARAMETER, 77},
        {"destroy before init", 0x0100, PROPSHEETUI_REASON_DESTROY, S_OK, 0, 1},
        {"get info header", 0x0100, PROPSHEETUI_REASON_GET_INFO_HEADER, S_OK, 0, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        PROPSHEETUI_INFO info = {};
        info.cbSize = sizeof info;
        info.Version = c.version;
        info.Flags = PSUIINFO_UNICODE;
        info.Reason = c.reason;
        info.lParamInit = reinterpret_cast<LPARAM>(&ps);
        info.Result = 77;
        SetLastError(0);
        EXPECT_EQ(c.hr, ui->DocumentPropertySheets(&info, 0));
        if (FAILED(c.hr)) {
            EXPECT_EQ(c.lastError, GetLastError());
        }
        EXPECT_EQ(c.result, info.Result);
    }
    SetLastError(0);
    EXPECT_EQ(E_FAIL, ui->DocumentPropertySheets(nullptr, 0));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
    // Nothing was freed on the heap the destroy named.
    EXPECT_TRUE(HeapValidate(heap, 0, nullptr));
    HeapDestroy(heap);
}

}  // namespace
