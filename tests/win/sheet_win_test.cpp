// The document property sheet through the host: Wine's common sheet with the driver's page and
// the plug-in's pages, scripted steps, apply and its checks, and the sheet interface itself.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "../../resources/resource.h"
#include "actions/sha1.h"
#include "host_run_win.h"
#include "standin_stream_win.h"

#include <wincrypt.h>

namespace {

// The value after ` key=` on a host line: a quoted text with its escapes undone, or a word.
std::string ValueAfter(const std::string& line, const std::string& key) {
    const size_t at = line.find(" " + key + "=");
    if (at == std::string::npos)
        return "<absent>";
    size_t i = at + key.size() + 2;
    if (i >= line.size() || line[i] != '"')
        return line.substr(i, line.find(' ', i) - i);
    std::string value;
    for (++i; i < line.size() && line[i] != '"'; ++i) {
        const bool escaped = line[i] == '\\' && i + 1 < line.size();
        if (escaped)
            ++i;
        value += !escaped ? line[i] : line[i] == 'n' ? '\n' : line[i] == 'r' ? '\r' : line[i];
    }
    return value;
}

std::vector<std::string> LinesStarting(const std::string& output, const std::string& prefix) {
    std::vector<std::string> found;
    for (const std::string& line : Lines(output)) {
        if (line.rfind(prefix, 0) == 0)
            found.push_back(line);
    }
    return found;
}

// The sheet's page titles from the host's PAGE lines, the driver's first.
std::vector<std::string> PageTitles(const std::string& output) {
    std::vector<std::string> titles;
    for (const std::string& line : LinesStarting(output, "PAGE "))
        titles.push_back(line.substr(line.find('"') + 1, line.rfind('"') - line.find('"') - 1));
    return titles;
}

// One --dump-controls of one page: its CONTROL lines by control id.
struct ControlDump {
    std::map<int, std::string> controls;
    std::string Attr(int id, const std::string& key) const {
        auto it = controls.find(id);
        return it == controls.end() ? "<no control>" : ValueAfter(it->second, key);
    }
};

std::vector<ControlDump> DumpsOf(const std::string& output) {
    std::vector<ControlDump> dumps;
    for (const std::string& line : Lines(output)) {
        if (line.rfind("CONTROLS page=", 0) == 0)
            dumps.emplace_back();
        else if (line.rfind("CONTROL page=", 0) == 0 && !dumps.empty())
            dumps.back().controls[std::stoi(ValueAfter(line, "id"))] = line;
    }
    return dumps;
}

// Where the host's printer port writes what a job sends.
std::wstring PortFile(const std::wstring& printer) {
    wchar_t port[MAX_PATH];
    ExpandEnvironmentStringsW(
        (L"%LOCALAPPDATA%\\KivHost\\" + SafeFileName(printer) + L".prn").c_str(), port, MAX_PATH);
    return port;
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
        return RunHost(PrinterArgs(printer, model) + L" --verbose --log-lines 0 " + script);
    }
};

constexpr int kDitherType = 1026;
constexpr int kOffsetY = 1068, kRotation = 1066;
constexpr int kFilterControls[] = {1029, 1030, 1031, 1032, 1064, 1061};

// Opening a page fills it; only a user's change may tell the sheet that something changed.
TEST_F(SheetWin, OpeningEveryPageLeavesApplyDisabledAndAChangeLightsIt) {
    // ZLD90VII registers as many pages as any model; WR35VIIEJ is no model the factory knows,
    // the generic device.
    for (const wchar_t* model : {L"ZLD90VII", L"WR35VIIEJ"}) {
        SCOPED_TRACE(Narrow(model));
        const std::wstring printer = NewPrinter(model);
        const HostRun run = Sheet(printer, model, L"--page Print --trackbar 1027=0 --press cancel");
        ASSERT_EQ(0u, run.exitCode) << run.output;
        EXPECT_EQ(model[0] == L'W', Contains(run.output, "does not recognise")) << run.output;

        // Every page the plug-in registered is in the sheet and was opened.
        const std::vector<std::string> titles = PageTitles(run.output);
        ASSERT_GE(titles.size(), 3u) << run.output;
        EXPECT_EQ("Print", titles[1]);
        EXPECT_EQ("Print adjust", titles[2]);
        const std::string log = ReadFileText(LogPath(printer));
        size_t added = 0;
        for (size_t at = log.find("Added IDD_"); at != std::string::npos;
             at = log.find("Added IDD_", at + 1))
            ++added;
        EXPECT_EQ(titles.size() - 1, added) << log.substr(0, 3000);

        const std::vector<std::string> apply = LinesStarting(run.output, "APPLY ");
        ASSERT_EQ(2u, apply.size()) << run.output;
        EXPECT_EQ("APPLY enabled=0 (every page opened)", apply[0]);
        EXPECT_EQ("APPLY enabled=1 (after the steps)", apply[1]);
    }
}

// Each page's check through the sheet once accepted and once refused, and a saved value of each
// page that has no check; every edge of the rules is the core tests' business.
TEST_F(SheetWin, ARefusedApplyNamesThePageAndSavesNothing) {
    struct Case {
        const wchar_t* model;
        std::wstring script;
        const char* title;  // of the message box; null: accepted
        const char* message;
        const char* field;  // accepted: the saved field and the start of its value
        const char* saved;
    };
    const std::wstring filters =
        L"--page Print --select 1026=2 --trackbar 1027=128 --trackbar 1029=128 --trackbar 1030=";
    const std::wstring pulses = L"--page Peripherals --click 1016 --set 1019=";
    const wchar_t* const kCut = L"TRX418A CUT";
    const Case cases[] = {
        {kCut, L"--page \"Print adjust\" --set 1067=-1000", nullptr, nullptr, "offsetX", "-1000"},
        {kCut, L"--page \"Print adjust\" --set 1067=12a", "\"Print adjust\" Panel ",
         "The Offset value is not a integer", nullptr, nullptr},
        {kCut, filters + L"129", nullptr, nullptr, "convFilterUp", "129"},
        {kCut, filters + L"128", "\"Print\" Panel ",
         "The HIGH Filter must be a value > of the LOW Filter", nullptr, nullptr},
        {kCut, L"--page Console --select 1056=2 --set 1050=ABC\\x0A", nullptr, nullptr,
         "startJobBuffer", "[4 bytes] 41 42 43 0A"},
        {kCut, L"--page Console --select 1052=2 --set 1051=" + std::wstring(512, L'A'), nullptr,
         nullptr, "endJobBufferLength", "512"},
        {kCut, L"--page Console --select 1056=1", "\"Console\" Panel ",
         "The path of a free buffer file is wrong or empty", nullptr, nullptr},
        {L"J7", pulses + L"1 --set 1020=100", "\"Peripherals\" Panel ",
         "The Time On must be a value between 2 and 512", nullptr, nullptr},
        {L"J7", pulses + L"2 --set 1020=512", nullptr, nullptr, "cashDrawerTimeOff", "512"},
        {L"J7", L"--page Cut/Move --select 1005=5", nullptr, nullptr, "lfBeforeCut", "5"},
        {L"ZLD90VII", L"--page Presentation --select 1013=0 --set 1031=255", nullptr, nullptr,
         "presentationValue", "255"},
        {L"ZLD90VII", L"--page Presentation --select 1013=0 --set 1031=256",
         "\"Presentation\" Panel ", "The Presentation measure must be a value between 0 and 255",
         nullptr, nullptr},
        {L"TRX430ATF", L"--page Accessories --select 1126=2", nullptr, nullptr, "feeder",
         "PRN_PROP_FEEDER_2"},
        {kCut, L"--page Watermark --click 1005", "\"Watermark\" Panel ",
         "The path of the watermark image file is empty", nullptr, nullptr},
        // The question answered No.
        {kCut, L"--page Coupon --click 1042 --set 1047=C:\\gone.png", "\"Coupon\" Panel ",
         "The path of the coupon image file is wrong or the file doesn't exist. Do you want to "
         "continue to save this value?",
         nullptr, nullptr},
    };
    std::map<std::wstring, std::wstring> printers;
    for (const Case& c : cases) {
        SCOPED_TRACE(Narrow(c.model) + " " + Narrow(c.script));
        std::wstring& printer = printers[c.model];
        if (printer.empty())
            printer = NewPrinter(c.model);
        const std::string before = ReadFileText(DevmodePath(printer));
        const HostRun run = Sheet(printer, c.model, c.script + L" --press ok");
        const std::vector<std::string> boxes = LinesStarting(run.output, "MESSAGEBOX ");
        if (c.title == nullptr) {
            ASSERT_EQ(0u, run.exitCode) << run.output;
            EXPECT_TRUE(boxes.empty()) << run.output;
            EXPECT_EQ(0u, Field(run.output, c.field).rfind(c.saved, 0)) << run.output;
            EXPECT_NE(before, ReadFileText(DevmodePath(printer)));
            // The feeder choice reaches the public devmode's paper source.
            EXPECT_EQ(c.saved == std::string("PRN_PROP_FEEDER_2"),
                      Contains(ReadFileText(LogPath(printer)), "dmDefaultSource: 1002"));
        } else {
            EXPECT_EQ(3u, run.exitCode) << run.output;
            ASSERT_EQ(1u, boxes.size()) << run.output;
            EXPECT_EQ(c.title, ValueAfter(boxes[0], "title"));
            EXPECT_EQ(c.message, ValueAfter(boxes[0], "text"));
            EXPECT_TRUE(Contains(run.output, "APPLYNOW    : callback returned 3"));
            EXPECT_TRUE(Contains(run.output, "devmode     : not written"));
            EXPECT_EQ(before, ReadFileText(DevmodePath(printer)));
        }
    }
}

TEST_F(SheetWin, AppliedChangesSurviveCloseAndReopenUntilResetDefault) {
    const std::wstring model = L"ZLD90VII";
    const std::wstring printer = NewPrinter(model);
    const HostRun first = Sheet(printer, model,
                                L"--page \"Print adjust\" --set 1068=37 --click 1066 "
                                L"--page Print --select 1026=2 --press apply");
    ASSERT_EQ(0u, first.exitCode) << first.output;
    EXPECT_EQ("37", Field(first.output, "offsetY"));
    EXPECT_TRUE(Contains(first.output, "devmode     : written"));

    const HostRun second = Sheet(printer, model,
                                 L"--page \"Print adjust\" --dump-controls --page Print "
                                 L"--dump-controls --press cancel");
    ASSERT_EQ(0u, second.exitCode) << second.output;
    EXPECT_TRUE(Contains(second.output, "private bytes read")) << second.output;
    const std::vector<ControlDump> dumps = DumpsOf(second.output);
    ASSERT_EQ(2u, dumps.size()) << second.output;
    EXPECT_EQ("37", dumps[0].Attr(kOffsetY, "text"));
    EXPECT_EQ("1", dumps[0].Attr(kRotation, "checked"));
    EXPECT_EQ("Error Diffusion", dumps[1].Attr(kDitherType, "text"));
    for (int id : kFilterControls)
        EXPECT_EQ("1", dumps[1].Attr(id, "enabled")) << id;
    EXPECT_TRUE(Contains(second.output, "devmode     : not written"));

    // The Console's Reset Default asks, applies the model's defaults and closes the sheet.
    const HostRun reset =
        Sheet(printer, model, L"--answer yes --page Console --click 1166 --press cancel");
    const std::vector<std::string> boxes = LinesStarting(reset.output, "MESSAGEBOX ");
    ASSERT_EQ(1u, boxes.size()) << reset.output;
    EXPECT_EQ("Continue to reset the values to default?", ValueAfter(boxes[0], "text"));
    const HostRun third =
        Sheet(printer, model, L"--page \"Print adjust\" --dump-controls --press cancel");
    ASSERT_EQ(1u, DumpsOf(third.output).size()) << third.output;
    EXPECT_EQ("0", DumpsOf(third.output)[0].Attr(kOffsetY, "text"));
}

TEST_F(SheetWin, ScreenshotsGiveOnePngPerPageWithEveryPictureLoaded) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    // A page this model does not have, from an earlier run, goes; the user's own file stays.
    for (const wchar_t* name : {L"\\09_Admin.png", L"\\01_holiday.png"})
        std::ofstream((dir_ + name).c_str()) << "x";
    const HostRun run = Sheet(printer, L"TRX418A CUT",
                              L"--screenshots \"" + dir_ + L"\" --dump-controls --press cancel");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    EXPECT_EQ("", ReadFileText(dir_ + L"\\09_Admin.png"));
    EXPECT_EQ("x", ReadFileText(dir_ + L"\\01_holiday.png"));
    const std::vector<std::string> titles = PageTitles(run.output);
    ASSERT_GE(titles.size(), 3u);
    for (size_t i = 0; i < titles.size(); ++i) {
        char number[8];
        std::snprintf(number, sizeof number, "%02zu_", i);
        std::string name = number + titles[i] + ".png";
        for (char& ch : name)
            ch = ch == ' ' ? '_' : ch == '/' ? '-' : ch;
        SCOPED_TRACE(name);
        const std::string png = ReadFileText(dir_ + L"\\" + std::wstring(name.begin(), name.end()));
        ASSERT_GT(png.size(), 24u);
        EXPECT_EQ(std::string("\x89PNG\r\n\x1a\n", 8), png.substr(0, 8));
        // IHDR: big-endian width and height; a property sheet is a few hundred pixels a side.
        EXPECT_EQ(0, png[16] | png[17] | png[20] | png[21]);
        EXPECT_GT((static_cast<uint8_t>(png[18]) << 8) | static_cast<uint8_t>(png[19]), 300);
        EXPECT_GT((static_cast<uint8_t>(png[22]) << 8) | static_cast<uint8_t>(png[23]), 300);
    }
    // Every picture control of every page got its bitmap, but an image preview with no file.
    const std::vector<ControlDump> dumps = DumpsOf(run.output);
    EXPECT_EQ(titles.size(), dumps.size());
    for (const ControlDump& dump : dumps) {
        for (const auto& [id, line] : dump.controls) {
            const bool preview =
                id == IDC_WATERMARK_PREVIEW || id == IDC_COUPON_PREVIEW || id == IDC_LOGOS_PREVIEW;
            EXPECT_TRUE(preview || !Contains(line, "bitmap=none")) << line;
        }
    }
}

// A print preview puts the rendering module's stream for the page's values into the port file;
// a missing logo file is a question whose Yes keeps the path; the values and every logo slot
// come back at the next opening.
TEST_F(SheetWin, ImagePagesPreviewThroughTheRenderingModuleAndKeepTheirValues) {
    const std::wstring model = L"TRX418A CUT", printer = NewPrinter(model);
    const std::string name = Narrow(printer);
    const std::wstring port = PortFile(printer);
    const std::wstring image = dir_ + L"\\pattern.bmp", gone = dir_ + L"\\gone.bmp";
    const std::string bits = WritePatternBmp(Narrow(image));

    // Watermark: under (the default), tiled in columns, centred, brightness as it is.
    HostRun run = Sheet(printer, model,
                        L"--page Watermark --click 1005 --set 1011=" + image +
                            L" --select 1009=3 --select 1010=4 --click 1168 --press cancel");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    std::string stream = ReadFileText(port);
    const std::string head = StandInHead(4, name) + StandInText(Narrow(image));
    const std::string tail = std::string("\x01\x03\x22") + Le32(100) + bits;
    EXPECT_EQ(head.size() + 12 + tail.size(), stream.size());  // paper and model in between
    EXPECT_EQ(0u, stream.rfind(head, 0));
    EXPECT_TRUE(stream.ends_with(tail));
    EXPECT_TRUE(Contains(ReadFileText(LogPath(printer)), "UNI file path: "));

    // Logos: the printer's logo 5 on the right; another slot from a file that is not there.
    run = Sheet(printer, model,
                L"--answer yes --page Logos --select 1162=1 --click 1164 --select 1168=4 "
                L"--select 1176=2 --click 1177 --select 1162=3 --click 1164 --select 1166=1 "
                L"--set 1170=" +
                    gone + L" --page Coupon --click 1042 --set 1047=" + image +
                    L" --select 1050=2 --press ok");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    EXPECT_EQ(StandInHead(1, name) + Le32(5) + '\x02', ReadFileText(port));
    const std::vector<std::string> boxes = LinesStarting(run.output, "MESSAGEBOX ");
    ASSERT_EQ(1u, boxes.size()) << run.output;
    EXPECT_EQ(
        "The field of the logo file is wrong or the file doesn't exist. Do you want to "
        "continue to save this value?",
        ValueAfter(boxes[0], "text"));
    EXPECT_TRUE(Contains(run.output, "devmode     : written")) << run.output;

    run = Sheet(printer, model,
                L"--page Logos --select 1162=1 --dump-controls --select 1162=3 --dump-controls "
                L"--page Coupon --dump-controls --press cancel");
    const std::vector<ControlDump> dumps = DumpsOf(run.output);
    ASSERT_EQ(3u, dumps.size()) << run.output;
    EXPECT_EQ("1", dumps[0].Attr(IDC_LOGOS_ENABLE, "checked"));
    EXPECT_EQ("5", dumps[0].Attr(IDC_LOGOS_NUMBER, "text"));
    EXPECT_EQ("Right", dumps[0].Attr(IDC_LOGOS_ALIGN, "text"));
    EXPECT_EQ("File", dumps[1].Attr(IDC_LOGOS_SOURCE, "text"));
    EXPECT_EQ(Narrow(gone), dumps[1].Attr(IDC_LOGOS_PATH, "text"));
    EXPECT_EQ(Narrow(image), dumps[2].Attr(IDC_COUPON_PATH, "text"));
    EXPECT_EQ("3", dumps[2].Attr(IDC_COUPON_COPIES, "text"));
    EXPECT_NE("none", dumps[2].Attr(IDC_COUPON_PREVIEW, "bitmap"));
}

// The Console's actions reach Wine's spooler and the print folder, where the host's job left
// its last document; without one each action says so and opens no file dialog. The printer's
// name holds a character no file name can: its log and last document go by the mapped name.
TEST_F(SheetWin, ConsoleActionsPutTheirBytesInThePortFileAndTheCopy) {
    const std::wstring model = L"TRX418A CUT", printer = NewPrinter(model, L" a:b");
    const std::wstring port = PortFile(printer);
    const std::wstring last = dir_ + L"\\last" + SafeFileName(printer) + L"_UiUni.prn";
    const std::wstring copy = dir_ + L"\\copy.prn";
    const std::wstring console = L" --page Console ";

    HostRun run = Sheet(printer, model,
                        console +
                            L"--click 1162 --select 1052=1 --dump-controls --select 1052=0 "
                            L"--dump-controls --press cancel");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    EXPECT_GT(ReadFileText(last).size(), 10u);
    EXPECT_EQ(ReadFileText(last), ReadFileText(port));
    const std::vector<ControlDump> dumps = DumpsOf(run.output);
    ASSERT_EQ(2u, dumps.size());
    EXPECT_EQ("1 1", dumps[0].Attr(1051, "enabled") + " " + dumps[0].Attr(1173, "visible"));
    EXPECT_EQ("0 0", dumps[1].Attr(1051, "enabled") + " " + dumps[1].Attr(1173, "visible"));

    // Save last Doc copies it; Send file then sends the copy.
    DeleteFileW(port.c_str());
    run =
        Sheet(printer, model,
              L"--file \"" + copy + L"\"" + console + L"--click 1163 --click 1164 --press cancel");
    EXPECT_EQ(ReadFileText(last), ReadFileText(copy)) << run.output;
    EXPECT_EQ(ReadFileText(last), ReadFileText(port)) << run.output;
    EXPECT_TRUE(LinesStarting(run.output, "MESSAGEBOX").empty()) << run.output;

    // An empty file cannot be sent; without the set-up tool installed its button goes grey.
    DeleteFileW(last.c_str());
    const std::wstring empty = dir_ + L"\\empty.prn";
    std::ofstream{std::filesystem::path(empty)};
    run = Sheet(printer, model,
                L"--no-last-document --file \"" + empty + L"\"" + console +
                    L"--click 1162 --click 1163 --click 1164 --click 1165 --dump-controls "
                    L"--press cancel");
    EXPECT_EQ("0", DumpsOf(run.output).at(0).Attr(1165, "enabled")) << run.output;
    EXPECT_TRUE(Contains(ReadFileText(LogPath(printer)),
                         "Send file to printer error: Send to printer error"));
    std::vector<std::string> texts;
    for (const std::string& box : LinesStarting(run.output, "MESSAGEBOX ")) {
        EXPECT_EQ("\"Console\" Panel ", ValueAfter(box, "title"));
        texts.push_back(ValueAfter(box, "text"));
    }
    EXPECT_EQ(
        (std::vector<std::string>{"Impossible to send the last print",
                                  "Impossible to open the file", "Impossible to send the file"}),
        texts);
    EXPECT_EQ(1u, LinesStarting(run.output, "FILEDIALOG").size()) << run.output;

    // With a stored File command Browse lights Apply: the multi-line edit tells nobody of a text
    // the program sets.
    Sheet(printer, model, console + L"--select 1056=1 --set 1050=" + copy + L" --press ok");
    run = Sheet(
        printer, model,
        L"--file \"" + empty + L"\"" + console + L"--click 1170 --dump-controls --press cancel");
    EXPECT_EQ("APPLY enabled=1 (after the steps)", LinesStarting(run.output, "APPLY ").back());
    EXPECT_EQ(Narrow(empty), DumpsOf(run.output).at(0).Attr(1050, "text"));

    // A folder named in another script: the copy and the sent file go by their wide paths; a
    // command's path, which the settings keep in 8-bit text, is refused with a message.
    const std::wstring greek = dir_ + L"\\\u0395\u03bb\u03bb\u03b7\u03bd\u03b9\u03ba\u03ac";
    std::filesystem::create_directories(greek);
    const std::wstring greekFile = greek + L"\\\u03b4\u03bf\u03ba.prn";
    DeleteFileW(port.c_str());
    run = Sheet(printer, model,
                L"--file \"" + greekFile + L"\"" + console +
                    L"--click 1163 --click 1164 --click 1170 --dump-controls --press cancel");
    EXPECT_EQ(ReadFileText(last), ReadFileText(greekFile)) << run.output;
    EXPECT_EQ(ReadFileText(last), ReadFileText(port)) << run.output;
    EXPECT_EQ(Narrow(copy), DumpsOf(run.output).at(0).Attr(1050, "text"));
    EXPECT_EQ("APPLY enabled=0 (after the steps)", LinesStarting(run.output, "APPLY ").back());
    ASSERT_EQ(1u, LinesStarting(run.output, "MESSAGEBOX ").size()) << run.output;
    EXPECT_TRUE(Contains(LinesStarting(run.output, "MESSAGEBOX ")[0], "system code page"));

    // A printer set to work offline gets no file dialog for Send file.
    HANDLE h = nullptr;
    PRINTER_DEFAULTSW all = {nullptr, nullptr, PRINTER_ALL_ACCESS};
    ASSERT_TRUE(OpenPrinterW(const_cast<LPWSTR>(printer.c_str()), &h, &all));
    DWORD needed = 0;
    GetPrinterW(h, 2, nullptr, 0, &needed);
    std::vector<BYTE> info(needed);
    ASSERT_TRUE(GetPrinterW(h, 2, info.data(), needed, &needed));
    reinterpret_cast<PRINTER_INFO_2W*>(info.data())->Attributes |= PRINTER_ATTRIBUTE_WORK_OFFLINE;
    ASSERT_TRUE(SetPrinterW(h, 2, info.data(), 0));
    ClosePrinter(h);
    run = Sheet(printer, model,
                L"--file \"" + copy + L"\"" + console + L"--click 1164 --press cancel");
    const std::vector<std::string> boxes = LinesStarting(run.output, "MESSAGEBOX ");
    ASSERT_EQ(1u, boxes.size()) << run.output;
    EXPECT_EQ("The printer is OFFLINE", ValueAfter(boxes[0], "text"));
    EXPECT_TRUE(LinesStarting(run.output, "FILEDIALOG").empty()) << run.output;
    EXPECT_TRUE(
        Contains(ReadFileText(LogPath(printer)), "Send file to printer error: Printer is Offline"));
    DeleteFileW(port.c_str());
}

// Admin mode lives in the plug-in's module, so it is switched and seen in one host process:
// --reopen opens the sheet again. Each part of the output belongs to one opening.
std::vector<std::string> Openings(const std::string& output) {
    std::vector<std::string> parts;
    for (size_t at = output.find("OPENING "), next; at != std::string::npos; at = next) {
        next = output.find("OPENING ", at + 1);
        parts.push_back(output.substr(at, next - at));
    }
    return parts;
}
const std::wstring kToAdminMode = L"--page Version --hold ctrl+shift --click 1057 --reopen ";

TEST_F(SheetWin, CtrlShiftOnTheVersionPictureTogglesTheAdminPageOfTheNextOpening) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    // Ctrl alone and Shift alone do nothing; both switch admin mode and close the sheet.
    const HostRun run =
        Sheet(printer, L"TRX418A CUT",
              L"--page Version --hold ctrl --click 1057 --hold shift --click 1057 " + kToAdminMode +
                  kToAdminMode + L"--press cancel");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    const std::vector<std::string> parts = Openings(run.output);
    ASSERT_EQ(3u, parts.size()) << run.output;
    const char* shown[] = {"ADMIN MODE ON", "ADMIN MODE OFF", nullptr};
    for (size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(i == 1, Contains(parts[i], "\"Admin\" (plug-in)")) << parts[i];
        EXPECT_EQ(shown[i] != nullptr, Contains(parts[i], "SHEET closed by the plug-in"));
        const std::vector<std::string> boxes = LinesStarting(parts[i], "MESSAGEBOX ");
        ASSERT_EQ(shown[i] != nullptr ? 1u : 0u, boxes.size()) << parts[i];
        if (shown[i] != nullptr) {
            EXPECT_EQ(shown[i], ValueAfter(boxes[0], "text"));
            EXPECT_EQ("Version", ValueAfter(boxes[0], "title"));
        }
    }
}

TEST_F(SheetWin, TheAdminLogButtonWritesSevenThenZeroAndClosesTheSheet) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    for (DWORD written : {7u, 0u}) {
        SCOPED_TRACE(written);
        // The second run starts from the 7 the first one wrote.
        const HostRun run = Sheet(printer, L"TRX418A CUT",
                                  (written == 7 ? L"--verbosity 0 " : L"") + kToAdminMode +
                                      L"--page Admin --dump-controls --click 1164 --press cancel");
        ASSERT_EQ(0u, run.exitCode) << run.output;
        const std::vector<ControlDump> dumps = DumpsOf(run.output);
        ASSERT_EQ(1u, dumps.size()) << run.output;
        EXPECT_EQ(written == 7 ? "ENABLE Log" : "DISABLE Log", dumps[0].Attr(1164, "text"));
        EXPECT_EQ(2u, LinesStarting(run.output, "SHEET closed by the plug-in").size());
        DWORD value = 99, size = sizeof value;
        EXPECT_EQ(ERROR_SUCCESS,
                  RegGetValueW(HKEY_CURRENT_USER, (L"Software\\Orvane\\Kiv\\" + printer).c_str(),
                               L"LogVerbosity_UiUni", RRF_RT_REG_DWORD, nullptr, &value, &size));
        EXPECT_EQ(written, value);
    }
}

// A file's SHA-1 by the system's own CryptoAPI provider; empty when the file cannot be read.
std::string SystemSha1Hex(const std::string& path) {
    const std::string bytes = ReadFileText(std::wstring(path.begin(), path.end()));
    HCRYPTPROV provider = 0;
    HCRYPTHASH hash = 0;
    Sha1Digest digest;
    DWORD size = digest.size();
    const bool ok =
        !bytes.empty() &&
        CryptAcquireContextW(&provider, nullptr, nullptr, PROV_RSA_FULL, CRYPT_VERIFYCONTEXT) &&
        CryptCreateHash(provider, CALG_SHA1, 0, 0, &hash) &&
        CryptHashData(hash, reinterpret_cast<const BYTE*>(bytes.data()),
                      static_cast<DWORD>(bytes.size()), 0) &&
        CryptGetHashParam(hash, HP_HASHVAL, digest.data(), &size, 0) && size == digest.size();
    if (hash != 0)
        CryptDestroyHash(hash);
    if (provider != 0)
        CryptReleaseContext(provider, 0);
    return ok ? Sha1Hex(digest) : std::string();
}

// With both service switches on, every installed file of the driver is named by its path and
// carries the digest the system computes for it.
TEST_F(SheetWin, TheVersionReportsDigestsAreTheSystemsSha1OfTheInstalledFiles) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    const std::wstring key = L"Software\\Orvane\\Kiv\\" + printer;
    const DWORD on = 1;
    for (const wchar_t* name : {L"VersionReport_FullPath", L"VersionReport_Hash"})
        RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name, REG_DWORD, &on, sizeof on);
    const HostRun run =
        Sheet(printer, L"TRX418A CUT", L"--page Version --dump-controls --press cancel");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    const std::vector<ControlDump> dumps = DumpsOf(run.output);
    ASSERT_EQ(1u, dumps.size()) << run.output;
    const std::string report = dumps[0].Attr(1161, "text");
    const std::regex fileLine(R"((.:\\.+) : (?:\d+\.\d+\.\d+\.\d+|N/A) \[SHA1: (.*)\]\r?)");
    std::string files;
    for (const std::string& line : Lines(report)) {
        std::smatch match;
        if (std::regex_match(line, match, fileLine)) {
            EXPECT_EQ(SystemSha1Hex(match[1].str()), match[2].str()) << line;
            files += match[1].str().substr(match[1].str().find_last_of('\\')) + " ";
        }
    }
    // The plug-in and the model's GPD are among them (the common GPD is set aside).
    EXPECT_TRUE(Contains(files, "\\KivUI.dll ") && Contains(files, "\\KIV_TRX418A_CUT.GPD "))
        << report;
}

// The visible top-level window of `windowClass` whose title holds `title`, waited for up to
// `tries` tenths of a second (the plug-in's programs start after the host has gone).
HWND WaitForWindow(const wchar_t* windowClass, const std::wstring& title, int tries = 50) {
    for (; tries > 0; --tries) {
        for (HWND w = FindWindowExW(nullptr, nullptr, windowClass, nullptr); w != nullptr;
             w = FindWindowExW(nullptr, w, windowClass, nullptr)) {
            wchar_t text[512] = {};
            GetWindowTextW(w, text, 512);
            if (IsWindowVisible(w) && std::wstring(text).find(title) != std::wstring::npos)
                return w;
        }
        Sleep(100);
    }
    return nullptr;
}

// Closes a program's window and waits until it is gone, so the next case starts clean.
void CloseProgramWindow(HWND window) {
    PostMessageW(window, WM_CLOSE, 0, 0);
    for (int tries = 0; tries < 50 && IsWindow(window); ++tries)
        Sleep(100);
}

// Registry: on Windows 7 the key's path goes to the clipboard with a message; elsewhere it is
// the registry editor's last key and the editor starts (Wine reports Windows 7 unless told
// otherwise for the host). Open Log Folder opens the explorer on the log folder.
TEST_F(SheetWin, TheAdminRegistryAndLogFolderButtonsReachTheirPrograms) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    const std::string path = "HKCU\\SOFTWARE\\Orvane\\Kiv\\" + Narrow(printer);
    const wchar_t* regedit = L"Software\\Microsoft\\Windows\\CurrentVersion\\Applets\\Regedit";
    const wchar_t* hostVersion = L"Software\\Wine\\AppDefaults\\kivhost.exe";
    const std::wstring folderName = dir_.substr(dir_.find_last_of(L'\\') + 1);
    for (const bool windows7 : {true, false}) {
        SCOPED_TRACE(windows7 ? "Windows 7" : "Windows 10");
        RegDeleteKeyValueW(HKEY_CURRENT_USER, regedit, L"LastKey");
        if (!windows7)
            RegSetKeyValueW(HKEY_CURRENT_USER, hostVersion, L"Version", REG_SZ, L"win10", 12);
        const HostRun run = Sheet(printer, L"TRX418A CUT",
                                  kToAdminMode +
                                      L"--page Admin --click 1162 --click 1166 "
                                      L"--press cancel");
        RegDeleteTreeW(HKEY_CURRENT_USER, hostVersion);
        ASSERT_EQ(0u, run.exitCode) << run.output;
        const std::vector<std::string> boxes =
            LinesStarting(Openings(run.output)[1], "MESSAGEBOX ");
        wchar_t lastKey[512] = {};
        DWORD size = sizeof lastKey;
        RegGetValueW(HKEY_CURRENT_USER, regedit, L"LastKey", RRF_RT_REG_SZ, nullptr, lastKey,
                     &size);
        // The editor is started before the explorer, so it is up by the time the explorer is.
        HWND explorer = WaitForWindow(L"ExplorerWClass", folderName);
        EXPECT_NE(nullptr, explorer);
        HWND editor = WaitForWindow(L"RegEdit_RegEdit", L"", windows7 ? 1 : 50);
        if (windows7) {
            ASSERT_EQ(1u, boxes.size()) << run.output;
            EXPECT_EQ("Run regedit.exe and open the path " + path, ValueAfter(boxes[0], "text"));
            std::string copied;
            if (OpenClipboard(nullptr)) {
                HANDLE data = GetClipboardData(CF_TEXT);
                if (data != nullptr) {
                    copied = static_cast<const char*>(GlobalLock(data));
                    GlobalUnlock(data);
                }
                CloseClipboard();
            }
            EXPECT_EQ(path, copied);
            EXPECT_EQ(L"", std::wstring(lastKey));
            EXPECT_EQ(nullptr, editor);
        } else {
            EXPECT_TRUE(boxes.empty()) << run.output;
            EXPECT_EQ(path, Narrow(lastKey));
            EXPECT_NE(nullptr, editor);
        }
        for (HWND window : {editor, explorer}) {
            if (window != nullptr)
                CloseProgramWindow(window);
        }
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

    // Left to a user who never comes, the sheet says what it waits for and gives up.
    const HostRun left = Sheet(printer, L"TRX418A CUT", L"--wait 1");
    EXPECT_EQ(6u, left.exitCode) << left.output;
    EXPECT_TRUE(Contains(left.output, "close it with OK or Cancel")) << left.output;
    EXPECT_TRUE(Contains(left.output, "nobody closed it within 1 s; cancelled"));
}

}  // namespace
