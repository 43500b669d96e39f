// The document property sheet through the host: Wine's common sheet with the driver's page and
// the plug-in's pages, scripted steps, apply and its checks, and the sheet interface itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "../../resources/resource.h"
#include "actions/sha1.h"
#include "host_run_win.h"
#include "settings/oemdev.h"
#include "standin_stream_win.h"

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

// The texts of the message boxes in the output, in order.
std::vector<std::string> MessageTexts(const std::string& output) {
    std::vector<std::string> texts;
    for (const std::string& box : LinesStarting(output, "MESSAGEBOX "))
        texts.push_back(ValueAfter(box, "text"));
    return texts;
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

size_t Occurrences(const std::string& text, const std::string& what) {
    size_t count = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}

// Where the host's printer port writes what a job sends.
std::wstring PortFile(const std::wstring& printer) {
    wchar_t port[MAX_PATH];
    ExpandEnvironmentStringsW(
        (L"%LOCALAPPDATA%\\KivHost\\" + SafeFileName(printer) + L".prn").c_str(), port, MAX_PATH);
    return port;
}

class SheetWin : public HostTestBase {
  protected:
    SheetWin() : HostTestBase(L"SheetWin") {}
    HostRun Sheet(const std::wstring& printer, const std::wstring& model,
                  const std::wstring& script) {
        return RunHost(PrinterArgs(printer, model) + L" --verbose --log-lines 0 " + script);
    }
};

const char kModelReset[] = "Model is different, reset STRUCT";
constexpr int kOffsetY = 1068;

// Opening a page fills it; only a user's change may tell the sheet that something changed.
TEST_F(SheetWin, OpeningEveryPageLeavesApplyDisabledAndAChangeLightsIt) {
    // ZLD90VII registers as many pages as any model; WR35VIIEJ is no model the factory knows,
    // the generic device.
    for (const wchar_t* model : {L"ZLD90VII", L"WR35VIIEJ"}) {
        SCOPED_TRACE(NarrowAnsi(model));
        const std::wstring printer = NewPrinter(model);
        // A page picture of an earlier run goes; the user's own file stays.
        const std::wstring shots = dir_ + L"\\shots_" + model;
        std::filesystem::create_directories(shots);
        for (const wchar_t* name : {L"\\13_Admin.png", L"\\01_holiday.png"})
            std::ofstream((shots + name).c_str()) << "x";
        const HostRun run =
            Sheet(printer, model,
                  L"--screenshots \"" + shots +
                      L"\" --dump-controls --page Print --trackbar 1027=0 --press cancel");
        ASSERT_EQ(0u, run.exitCode) << run.output;
        EXPECT_EQ(model[0] == L'W', Contains(run.output, "does not recognise")) << run.output;
        EXPECT_EQ("", ReadFileText(shots + L"\\13_Admin.png"));
        EXPECT_EQ("x", ReadFileText(shots + L"\\01_holiday.png"));
        EXPECT_EQ(0u, ReadFileText(shots + L"\\01_Print.png").rfind("\x89PNG\r\n", 0));

        // Every page the plug-in registered is in the sheet, after the driver's, and was opened.
        const size_t pages = LinesStarting(run.output, "PAGE ").size();
        ASSERT_GE(pages, 3u) << run.output;
        const std::string log = ReadFileText(LogPath(printer));
        EXPECT_EQ(pages - 1, Occurrences(log, "Added IDD_")) << log.substr(0, 3000);
        // Every picture control of every page got its bitmap, but an image preview with no file.
        const std::vector<ControlDump> dumps = DumpsOf(run.output);
        EXPECT_EQ(pages, dumps.size());
        for (const ControlDump& dump : dumps) {
            for (const auto& [id, line] : dump.controls) {
                const bool preview = id == IDC_WATERMARK_PREVIEW || id == IDC_COUPON_PREVIEW ||
                                     id == IDC_LOGOS_PREVIEW;
                EXPECT_TRUE(preview || !Contains(line, "bitmap=none")) << line;
            }
        }

        const std::vector<std::string> apply = LinesStarting(run.output, "APPLY ");
        ASSERT_EQ(2u, apply.size()) << run.output;
        EXPECT_EQ("APPLY enabled=0 (every page opened)", apply[0]);
        EXPECT_EQ("APPLY enabled=1 (after the steps)", apply[1]);
    }
}

// Each page's check through the sheet once accepted and once refused, and a saved value of each
// page that has no check; every edge of the rules, and the texts their tables hold, are the core
// tests' business.
TEST_F(SheetWin, ARefusedApplyNamesThePageAndSavesNothing) {
    struct Case {
        const wchar_t* model;
        std::wstring steps;
        const char* refused = nullptr;  // the page the message names; null: accepted
        const char* saved = nullptr;    // accepted: the start of the saved record's line
        const char* text = nullptr;     // the message where no core test holds it
    };
    const std::wstring filters =
        L"--page Print --select 1026=2 --trackbar 1027=128 --trackbar 1029=128 --trackbar 1030=";
    const std::wstring pulses = L"--page Peripherals --click 1016 --set 1019=";
    const std::wstring adjust = L"--page \"Print adjust\" --set 1067=";
    const std::wstring presentation = L"--page Presentation --select 1013=0 --set 1031=";
    const std::wstring logos = L"--page Logos --select 1162=3 --click 1164 --select 1166=1 ";
    const wchar_t* const kCut = L"TRX418A CUT";
    const std::wstring image = dir_ + L"\\pattern.bmp";
    WritePatternBmp(NarrowAnsi(image));
    const Case cases[] = {
        {.model = kCut, .steps = adjust + L"-1000", .saved = "offsetX = -1000"},
        {.model = kCut, .steps = adjust + L"12a", .refused = "Print adjust"},
        {.model = kCut, .steps = filters + L"129", .saved = "convFilterUp = 129"},
        {.model = kCut, .steps = filters + L"128", .refused = "Print"},
        {.model = kCut,
         .steps = L"--page Console --select 1056=2 --set 1050=ABC\\x0A",
         .saved = "startJobBuffer = [4 bytes] 41 42 43 0A"},
        {.model = kCut, .steps = L"--page Console --select 1056=1", .refused = "Console"},
        {.model = L"J7", .steps = pulses + L"1 --set 1020=100", .refused = "Peripherals"},
        {.model = L"J7", .steps = pulses + L"2 --set 1020=512", .saved = "cashDrawerTimeOff = 512"},
        {.model = L"J7", .steps = L"--page Cut/Move --select 1005=5", .saved = "lfBeforeCut = 5"},
        {.model = L"ZLD90VII", .steps = presentation + L"255", .saved = "presentationValue = 255"},
        {.model = L"ZLD90VII", .steps = presentation + L"256", .refused = "Presentation"},
        {.model = L"TRX430ATF",
         .steps = L"--page Accessories --select 1126=2",
         .saved = "feeder = PRN_PROP_FEEDER_2"},
        {.model = kCut,
         .steps = L"--page Watermark --click 1005",
         .refused = "Watermark",
         .text = "The path of the watermark image file is empty"},
        // The question answered No.
        {.model = kCut,
         .steps = L"--page Coupon --click 1042 --set 1047=C:\\gone.png",
         .refused = "Coupon",
         .text = "The path of the coupon image file is wrong or the file doesn't exist. Do you "
                 "want to continue to save this value?"},
        {.model = kCut,
         .steps = logos + L"--set 1170=C:\\gone.bmp",
         .refused = "Logos",
         .text = "The field of the logo file is wrong or the file doesn't exist. Do you want to "
                 "continue to save this value?"},
        // Once refused, the image pages are accepted with a file that is there.
        {.model = kCut,
         .steps = L"--page Watermark --click 1005 --set 1011=" + image,
         .saved = "watermarkEnable = 1"},
        {.model = kCut,
         .steps = L"--page Coupon --click 1042 --select 1050=2 --set 1047=" + image,
         .saved = "couponCopies = 3"},
        {.model = kCut, .steps = logos + L"--set 1170=" + image, .saved = "logos[3].enable = 1"},
    };
    std::map<std::wstring, std::wstring> printers;
    for (const Case& c : cases) {
        SCOPED_TRACE(NarrowAnsi(c.model) + " " + NarrowAnsi(c.steps));
        std::wstring& printer = printers[c.model];
        if (printer.empty()) {
            printer = NewPrinter(c.model);
            // Opened and cancelled first: the spooler keeps a devmode of its own from then on.
            ASSERT_EQ(0u, Sheet(printer, c.model, L"--press cancel").exitCode);
        }
        const std::string before = StoredDevmode(printer);
        const HostRun run = Sheet(printer, c.model, c.steps + L" --press ok");
        const std::vector<std::string> boxes = LinesStarting(run.output, "MESSAGEBOX ");
        EXPECT_EQ(c.refused != nullptr ? 3u : 0u, run.exitCode) << run.output;
        EXPECT_EQ(c.refused != nullptr, before == StoredDevmode(printer));
        if (c.refused == nullptr) {
            EXPECT_TRUE(boxes.empty()) << run.output;
            EXPECT_TRUE(Contains("\n" + run.output, std::string("\n") + c.saved)) << run.output;
            // The feeder choice reaches the public devmode's paper source.
            EXPECT_EQ(Contains(c.saved, "FEEDER_2"),
                      Contains(ReadFileText(LogPath(printer)), "dmDefaultSource: 1002"));
        } else {
            ASSERT_EQ(1u, boxes.size()) << run.output;
            EXPECT_EQ("\"" + std::string(c.refused) + "\" Panel ", ValueAfter(boxes[0], "title"));
            EXPECT_TRUE(c.text == nullptr || c.text == ValueAfter(boxes[0], "text"));
            EXPECT_TRUE(Contains(run.output, "the plug-in refused the apply, nothing applied"));
            EXPECT_TRUE(Contains(run.output, "settings    : not stored"));
        }
    }
}

TEST_F(SheetWin, AppliedChangesSurviveCloseAndReopenUntilResetDefault) {
    const std::wstring model = L"ZLD90VII";
    const std::wstring printer = NewPrinter(model);
    const HostRun first = Sheet(printer, model,
                                L"--page \"Print adjust\" --set 1068=37 --page Print "
                                L"--select 1026=2 --press apply");
    ASSERT_EQ(0u, first.exitCode) << first.output;
    EXPECT_EQ("37", Field(first.output, "offsetY"));
    // The spooler keeps what was applied as the printer's per-user default.
    const std::string stored = StoredDevmode(printer);
    ASSERT_EQ(sizeof(DEVMODEW) + OEMDEV_SIZE, stored.size());
    EXPECT_EQ(37, RecordOf(stored).payload.offsetY);
    // A new printer starts from the model's own defaults (its cut mode is not the common one);
    // the next opening loads the saved record without resetting it.
    EXPECT_EQ("PRN_PROP_CUTTER_TC_END_PAGE (0x20)", Field(first.output, "cutMode"));
    const std::string firstLog = ReadFileText(LogPath(printer));
    EXPECT_TRUE(Contains(firstLog, kModelReset)) << firstLog.substr(0, 3000);

    // Which choices come back is the property test's business (kivhost --property). The
    // filters, which error diffusion lights and None greys, show that a view's enable states
    // reach the controls; Default after None puts the dithering defaults into the controls.
    const HostRun second = Sheet(printer, model,
                                 L"--page \"Print adjust\" --dump-controls --page Print "
                                 L"--dump-controls --select 1026=1 --click 1092 --dump-controls "
                                 L"--press cancel");
    ASSERT_EQ(0u, second.exitCode) << second.output;
    EXPECT_TRUE(Contains(second.output, "the per-user default (GetPrinterW level 9)"))
        << second.output;
    EXPECT_FALSE(Contains(ReadFileText(LogPath(printer)).substr(firstLog.size()), kModelReset));
    const std::vector<ControlDump> dumps = DumpsOf(second.output);
    ASSERT_EQ(3u, dumps.size()) << second.output;
    EXPECT_EQ("37", dumps[0].Attr(kOffsetY, "text"));
    EXPECT_EQ("1", dumps[1].Attr(IDC_PRINT_LOW_FILTER, "enabled"));
    EXPECT_EQ("Auto", dumps[2].Attr(IDC_PRINT_DITHERING_TYPE, "text"));
    EXPECT_EQ("50% (128/255)", dumps[2].Attr(IDC_PRINT_THRESHOLD_VALUE, "text"));
    EXPECT_EQ("0", dumps[2].Attr(IDC_PRINT_LOW_FILTER, "enabled"));
    EXPECT_TRUE(Contains(second.output, "settings    : not stored"));

    // The Console's Reset Default asks, applies the model's defaults and closes the sheet.
    const HostRun reset =
        Sheet(printer, model, L"--answer yes --page Console --click 1166 --press cancel");
    EXPECT_EQ(std::vector<std::string>{"Continue to reset the values to default?"},
              MessageTexts(reset.output))
        << reset.output;
    const HostRun third =
        Sheet(printer, model, L"--page \"Print adjust\" --dump-controls --press cancel");
    ASSERT_EQ(1u, DumpsOf(third.output).size()) << third.output;
    EXPECT_EQ("0", DumpsOf(third.output)[0].Attr(kOffsetY, "text"));
    // Four openings appended to one log, which keeps the one head (its two module lines) that
    // its first opening wrote.
    EXPECT_EQ(2u, Occurrences(ReadFileText(LogPath(printer)), "[LogFileInfo]"));
}

// A print preview puts the rendering module's stream for the page's values into the port file.
TEST_F(SheetWin, AWatermarkPreviewGoesThroughTheRenderingModuleToThePort) {
    const std::wstring model = L"TRX418A CUT", printer = NewPrinter(model);
    const std::wstring image = dir_ + L"\\pattern.bmp";
    const std::string bits = WritePatternBmp(NarrowAnsi(image));
    // Under (the default), tiled in columns, centred, brightness as it is.
    const HostRun run = Sheet(printer, model,
                              L"--page Watermark --click 1005 --set 1011=" + image +
                                  L" --select 1009=3 --select 1010=4 --click 1168 --press cancel");
    ASSERT_EQ(0u, run.exitCode) << run.output;
    const std::string stream = ReadFileText(PortFile(printer));
    const std::string head = StandInHead(4, NarrowAnsi(printer)) + StandInText(NarrowAnsi(image));
    // The paper in dots (80 x 297 mm at 203 dpi) and the model's number come between.
    EXPECT_EQ(head + Le32(639) + Le32(2373) + Le32(608) + "\x01\x03\x22" + Le32(100) + bits,
              stream);
}

// The Console's actions reach Wine's spooler and the print folder, where the host's job left
// its last document; without one each action says so. The printer's name holds a character no
// file name can (its log and last document go by the mapped name) and the chosen files lie in a
// folder named in another script (they go by their wide paths).
TEST_F(SheetWin, ConsoleActionsPutTheirBytesInThePortFileAndTheCopy) {
    const std::wstring model = L"TRX418A CUT", printer = NewPrinter(model, L" a:b");
    const std::wstring port = PortFile(printer);
    const std::wstring last = dir_ + L"\\last" + SafeFileName(printer) + L"_UiUni.prn";
    const std::wstring greek = dir_ + L"\\\u0395\u03bb\u03bb\u03b7\u03bd\u03b9\u03ba\u03ac";
    std::filesystem::create_directories(greek);
    const std::wstring copy = greek + L"\\\u03b4\u03bf\u03ba.prn", empty = dir_ + L"\\empty.prn";
    std::ofstream{std::filesystem::path(empty)};
    const auto offline = [&] {
        HANDLE h = nullptr;
        PRINTER_DEFAULTSW all = {nullptr, nullptr, PRINTER_ALL_ACCESS};
        ASSERT_TRUE(OpenPrinterW(const_cast<LPWSTR>(printer.c_str()), &h, &all));
        DWORD needed = 0;
        GetPrinterW(h, 2, nullptr, 0, &needed);
        std::vector<BYTE> info(needed);
        ASSERT_TRUE(GetPrinterW(h, 2, info.data(), needed, &needed));
        reinterpret_cast<PRINTER_INFO_2W*>(info.data())->Attributes |=
            PRINTER_ATTRIBUTE_WORK_OFFLINE;
        ASSERT_TRUE(SetPrinterW(h, 2, info.data(), 0));
        ClosePrinter(h);
    };
    const std::string browseRefused =
        "The path of the chosen file holds characters that the system code page cannot carry. "
        "Choose a file whose folder and name use none of them.";
    struct Row {
        std::wstring steps;  // after --page Console; --dump-controls shows Apply
        bool sent;           // the last document reached the port file and the copy
        std::vector<std::string> events = {};  // the file dialogs and the messages, in order
        std::string command = {};              // the command field after a dump
        bool lit = false;                      // Apply after the steps, with a dump
        std::string logged = {};
        std::function<void()> before = {};
    };
    const Row rows[] = {
        // Reprint and Save last Doc; a File command on the last document is stored.
        {.steps =
             L"--click 1162 --click 1163 --select 1056=1 --set \"1050=" + last + L"\" --press ok",
         .sent = true,
         .events = {"FILEDIALOG"}},
        // Send file sends the copy; a command's path, which the settings keep in 8-bit text, is
        // refused with a message.
        {.steps = L"--click 1164 --click 1165 --click 1170 --dump-controls --press cancel",
         .sent = true,
         .events = {"FILEDIALOG", "FILEDIALOG", browseRefused},
         .command = NarrowAnsi(last),
         .lit = false},
        // Browse lights Apply: the multi-line edit tells nobody of a text the program sets.
        {.steps = L"--no-last-document --click 1162 --click 1163 --click 1164 --click 1165 "
                  L"--click 1170 --dump-controls --press cancel",
         .sent = false,
         .events = {"Impossible to send the last print", "Impossible to open the file",
                    "FILEDIALOG", "Impossible to send the file", "FILEDIALOG"},
         .command = NarrowAnsi(empty),
         .lit = true,
         .logged = "Send file to printer error: Send to printer error",
         .before = [&] { DeleteFileW(last.c_str()); }},
        {.steps = L"--click 1164 --press cancel",
         .sent = false,
         .events = {"The printer is OFFLINE"},
         .logged = "Send file to printer error: Printer is Offline",
         .before = offline},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(NarrowAnsi(row.steps));
        DeleteFileW(port.c_str());
        if (row.before)
            row.before();
        const HostRun run =
            Sheet(printer, model,
                  L"--file \"" + (row.sent ? copy : empty) + L"\" --page Console " + row.steps);
        ASSERT_EQ(0u, run.exitCode) << run.output;
        EXPECT_EQ(row.sent ? ReadFileText(last) : "", ReadFileText(port));
        if (row.sent) {
            EXPECT_GT(ReadFileText(last).size(), 10u);
            EXPECT_EQ(ReadFileText(last), ReadFileText(copy));
        }
        std::vector<std::string> events;
        for (const std::string& line : Lines(run.output)) {
            if (line.rfind("FILEDIALOG", 0) == 0)
                events.push_back("FILEDIALOG");
            if (line.rfind("MESSAGEBOX ", 0) == 0) {
                EXPECT_EQ("\"Console\" Panel ", ValueAfter(line, "title"));
                events.push_back(ValueAfter(line, "text"));
            }
        }
        EXPECT_EQ(row.events, events) << run.output;
        if (!row.command.empty()) {
            // Without the set-up tool installed its button goes grey once pressed.
            EXPECT_EQ(row.command, DumpsOf(run.output).at(0).Attr(1050, "text"));
            EXPECT_EQ("0", DumpsOf(run.output).at(0).Attr(1165, "enabled"));
            EXPECT_EQ(
                row.lit ? "APPLY enabled=1 (after the steps)" : "APPLY enabled=0 (after the steps)",
                LinesStarting(run.output, "APPLY ").back());
        }
        EXPECT_TRUE(Contains(ReadFileText(LogPath(printer)), row.logged));
    }
    DeleteFileW(port.c_str());
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

// The keys held come from the system's keyboard state and the log button's value lands in the
// registry; which presses switch and which values alternate is the core tests' business.
// Registry: on Windows 7 the key's path goes to the clipboard with a message; elsewhere it is
// the registry editor's last key and the editor starts (Wine reports Windows 7 unless told
// otherwise for the host). Open Log Folder opens the explorer on the log folder.
TEST_F(SheetWin, CtrlShiftOpensTheAdminPageWhoseButtonsReachTheRegistryAndTheirPrograms) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    const std::wstring key = L"Software\\Orvane\\Kiv\\" + printer;
    const std::string path = "HKCU\\SOFTWARE\\Orvane\\Kiv\\" + NarrowAnsi(printer);
    const wchar_t* regedit = L"Software\\Microsoft\\Windows\\CurrentVersion\\Applets\\Regedit";
    const wchar_t* hostVersion = L"Software\\Wine\\AppDefaults\\kivhost.exe";
    const std::wstring folderName = dir_.substr(dir_.find_last_of(L'\\') + 1);
    struct Row {
        const wchar_t* version;  // what Wine reports to the host; null: its own, Windows 7
        std::vector<std::string> boxes;
        std::string clipboard, lastKey;
        bool editor;
    };
    const Row rows[] = {
        {.version = nullptr,
         .boxes = {"Run regedit.exe and open the path " + path},
         .clipboard = path,
         .lastKey = "",
         .editor = false},
        {.version = L"win10", .boxes = {}, .clipboard = "", .lastKey = path, .editor = true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.editor ? "Windows 10" : "Windows 7");
        RegDeleteKeyValueW(HKEY_CURRENT_USER, regedit, L"LastKey");
        if (row.version != nullptr)
            RegSetKeyValueW(HKEY_CURRENT_USER, hostVersion, L"Version", REG_SZ, row.version, 12);
        if (OpenClipboard(nullptr)) {
            EmptyClipboard();
            CloseClipboard();
        }
        const HostRun run = Sheet(
            printer, L"TRX418A CUT",
            L"--verbosity 0 --page Version --hold ctrl --click 1057 --hold shift --click 1057 "
            L"--hold ctrl+shift --click 1057 --reopen --page Admin --click 1162 --click 1166 "
            L"--click 1164 --press cancel");
        RegDeleteTreeW(HKEY_CURRENT_USER, hostVersion);
        ASSERT_EQ(0u, run.exitCode) << run.output;
        const std::vector<std::string> parts = Openings(run.output);
        ASSERT_EQ(2u, parts.size()) << run.output;
        EXPECT_EQ(std::vector<std::string>{"ADMIN MODE ON"}, MessageTexts(parts[0]));
        EXPECT_FALSE(Contains(parts[0], "\"Admin\" (plug-in)")) << parts[0];
        EXPECT_TRUE(Contains(parts[1], "\"Admin\" (plug-in)")) << parts[1];
        EXPECT_TRUE(Contains(parts[1], "SHEET closed by the plug-in"));
        EXPECT_EQ(row.boxes, MessageTexts(parts[1]));
        DWORD verbosity = 99, size = sizeof verbosity;
        RegGetValueW(HKEY_CURRENT_USER, key.c_str(), L"LogVerbosity_UiUni", RRF_RT_REG_DWORD,
                     nullptr, &verbosity, &size);
        EXPECT_EQ(7u, verbosity);
        std::string copied;
        if (OpenClipboard(nullptr)) {
            HANDLE data = GetClipboardData(CF_TEXT);
            if (data != nullptr) {
                copied = static_cast<const char*>(GlobalLock(data));
                GlobalUnlock(data);
            }
            CloseClipboard();
        }
        EXPECT_EQ(row.clipboard, copied);
        wchar_t lastKey[512] = {};
        size = sizeof lastKey;
        RegGetValueW(HKEY_CURRENT_USER, regedit, L"LastKey", RRF_RT_REG_SZ, nullptr, lastKey,
                     &size);
        EXPECT_EQ(row.lastKey, NarrowAnsi(lastKey));
        // The editor is started before the explorer, so it is up by the time the explorer is.
        const HWND explorer = WaitForWindow(L"ExplorerWClass", folderName);
        EXPECT_NE(nullptr, explorer);
        const HWND editor = WaitForWindow(L"RegEdit_RegEdit", L"", row.editor ? 50 : 1);
        EXPECT_EQ(row.editor, editor != nullptr);
        for (HWND window : {editor, explorer}) {
            if (window != nullptr)
                CloseProgramWindow(window);
        }
    }
}

// The report's digests against the file bytes read here, through the portable SHA-1 path (the
// report takes the fastest the processor offers).
std::string FileSha1Hex(const std::string& path) {
    const std::string bytes = ReadFileText(std::wstring(path.begin(), path.end()));
    Sha1 sha1(Sha1Path::kPortable);
    sha1.Update(bytes.data(), bytes.size());
    return bytes.empty() ? std::string() : Sha1Hex(sha1.Final());
}

// With both service switches on, every installed file of the driver is named by its path and
// carries the digest of its bytes.
TEST_F(SheetWin, TheVersionReportsDigestsAreTheSha1OfTheInstalledFiles) {
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
    const std::regex fileLine(R"((.:\\.+) : (?:\d+\.\d+\.\d+\.\d+|N/A) \[SHA1: (.*)\])");
    const std::vector<std::string> lines = Lines(report);
    std::string files;
    for (const std::string& line : lines) {
        std::smatch match;
        if (std::regex_match(line, match, fileLine)) {
            EXPECT_EQ(FileSha1Hex(match[1].str()), match[2].str()) << line;
            files += match[1].str().substr(match[1].str().find_last_of('\\')) + " ";
        }
    }
    // The plug-in and the model's GPD are among them (the common GPD is set aside).
    EXPECT_TRUE(Contains(files, "\\KivUI.dll ") && Contains(files, "\\KIV_TRX418A_CUT.GPD "))
        << report;
    // The system's numbers come from the system (the log head's OS lines share their record).
    OSVERSIONINFOW os{};
    os.dwOSVersionInfoSize = sizeof os;
    ASSERT_TRUE(GetVersionExW(&os));
    for (const std::string& number : {"MajorVersion: " + std::to_string(os.dwMajorVersion),
                                      "MinorVersion: " + std::to_string(os.dwMinorVersion),
                                      "Build: " + std::to_string(os.dwBuildNumber)})
        EXPECT_NE(lines.end(), std::find(lines.begin(), lines.end(), "OS " + number)) << report;
}

TEST_F(SheetWin, AStepThatCannotBeDoneCancelsTheSheet) {
    const std::wstring printer = NewPrinter(L"TRX418A CUT");
    const HostRun run = Sheet(printer, L"TRX418A CUT",
                              L"--page \"Print adjust\" --set 1067=5 --page Nowhere --click 1 "
                              L"--press ok");
    EXPECT_EQ(3u, run.exitCode) << run.output;
    EXPECT_TRUE(Contains(run.output, "the sheet has no page \"Nowhere\"")) << run.output;
    EXPECT_TRUE(Contains(run.output, "PRESS cancel"));
    EXPECT_TRUE(Contains(run.output, "nothing applied"));
    EXPECT_TRUE(Contains(run.output, "settings    : not stored"));

    // Left to a user who never comes, the sheet says what it waits for and gives up.
    const HostRun left = Sheet(printer, L"TRX418A CUT", L"--wait 1");
    EXPECT_EQ(6u, left.exitCode) << left.output;
    EXPECT_TRUE(Contains(left.output, "close it with OK or Cancel")) << left.output;
    EXPECT_TRUE(Contains(left.output, "nobody closed it within 1 s; cancelled"));
}

}  // namespace
