// kivsettings.exe on printers of Wine's spooler: export and import through the driver, refused
// files that write nothing, and decode of a stored devmode, truncated and random bytes.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

#include "host_run_win.h"
#include "settings/oemdev.h"

namespace {

HostRun Settings(const std::wstring& args) {
    return RunProgram(L"kivsettings.exe", args);
}

// `text` with the line of `setting` replaced by `line`; `number` gets its 1-based number.
std::string WithLine(const std::string& text, const std::string& setting, const std::string& line,
                     size_t* number = nullptr) {
    std::string out;
    size_t at = 0;
    for (const std::string& each : Lines(text)) {
        ++at;
        const bool hit = each.rfind(setting + " ", 0) == 0 || each.rfind(setting + "=", 0) == 0;
        if (hit && number != nullptr)
            *number = at;
        out += (hit ? line : each) + "\n";
    }
    return out;
}

void WriteText(const std::wstring& path, const std::string& text) {
    std::ofstream(path.c_str(), std::ios::binary) << text;
}

// The plug-in's record in a devmode the driver composed (right after the public part).
OEMDEV RecordOf(const std::string& devmode) {
    OEMDEV rec{};
    const auto* dm = reinterpret_cast<const DEVMODEW*>(devmode.data());
    if (devmode.size() >= sizeof(DEVMODEW) && dm->dmSize + sizeof rec <= devmode.size())
        std::memcpy(&rec, devmode.data() + dm->dmSize, sizeof rec);
    return rec;
}

class KivSettingsWin : public HostTestBase {
  protected:
    KivSettingsWin() : HostTestBase(L"KivSettingsWin") {}

    std::wstring Installed(const std::wstring& model) {
        const std::wstring printer = NewPrinter(model);
        InstallPrinter(printer, model);
        return printer;
    }
    // Exports the printer's settings into the scratch folder and returns the file's text.
    std::string Export(const std::wstring& printer, const std::wstring& name) {
        const HostRun run =
            Settings(L"export \"" + printer + L"\" \"" + dir_ + L"\\" + name + L"\"");
        EXPECT_EQ(0u, run.exitCode) << run.output;
        return ReadFileText(dir_ + L"\\" + name);
    }
    HostRun Import(const std::wstring& printer, const std::wstring& name) {
        return Settings(L"import \"" + printer + L"\" \"" + dir_ + L"\\" + name + L"\"");
    }
};

TEST_F(KivSettingsWin, ExportImportExportKeepsFileAndRecordAndAChangeReachesThePages) {
    const std::wstring printer = Installed(L"ZLD90VII");
    const std::string first = Export(printer, L"a.txt");
    ASSERT_EQ(0u, Import(printer, L"a.txt").exitCode);
    const OEMDEV record = RecordOf(StoredDevmode(printer));
    EXPECT_EQ(first, Export(printer, L"b.txt"));
    const HostRun again = Import(printer, L"b.txt");
    EXPECT_TRUE(Contains(again.output, "nothing changed")) << again.output;
    const OEMDEV stored = RecordOf(StoredDevmode(printer));
    EXPECT_EQ(0, std::memcmp(&record, &stored, sizeof(OEMDEV)));

    WriteText(dir_ + L"\\c.txt", WithLine(first, "offsetY", "offsetY = 37"));
    const HostRun changed = Import(printer, L"c.txt");
    ASSERT_EQ(0u, changed.exitCode) << changed.output;
    EXPECT_TRUE(Contains(changed.output, "offsetY: 0 -> 37")) << changed.output;
    EXPECT_EQ(37, RecordOf(StoredDevmode(printer)).payload.offsetY);
    // The pages open on the stored settings and store them again on OK.
    const HostRun host =
        RunHost(PrinterArgs(printer, L"ZLD90VII") + L" --press ok --show-record --log-lines 0");
    ASSERT_EQ(0u, host.exitCode) << host.output;
    EXPECT_EQ("37", Field(host.output, "offsetY")) << host.output;

    // The devmode kivhost stored, as a support case brings it, then damaged.
    const std::string devmode = StoredDevmode(printer);
    std::mt19937 random(7);
    std::string noise(devmode.size(), '\0');
    for (char& c : noise)
        c = static_cast<char>(random());
    struct Case {
        const char* name;
        std::string bytes;
        DWORD exitCode;
    } cases[] = {
        {.name = "stored devmode", .bytes = devmode, .exitCode = 0},
        {.name = "truncated", .bytes = devmode.substr(0, devmode.size() / 2), .exitCode = 2},
        {.name = "random bytes", .bytes = noise, .exitCode = 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        WriteText(dir_ + L"\\saved.devmode", c.bytes);
        const HostRun run = Settings(L"decode \"" + dir_ + L"\\saved.devmode\"");
        EXPECT_EQ(c.exitCode, run.exitCode) << run.output;
        // Decoded as show prints it, or one line on what is wrong.
        EXPECT_TRUE(c.exitCode == 0 ? Field(run.output, "offsetY").rfind("37", 0) == 0
                                    : Lines(run.output).size() == 1)
            << run.output;
    }
    EXPECT_EQ(1u, Settings(L"decode \"" + dir_ + L"\\absent.devmode\"").exitCode);
}

TEST_F(KivSettingsWin, ARefusedFileNamesItsLineAndWritesNothing) {
    const std::wstring printer = Installed(L"ZLD90VII");
    const std::string own = Export(printer, L"own.txt");
    const std::string other = Export(Installed(L"J7"), L"other.txt");
    size_t line = 0;
    const std::string badLine = WithLine(own, "offsetY", "offsetY = sideways", &line);
    struct Case {
        const char* name;
        std::string text;
        std::string expected;  // in the output
    } cases[] = {
        {.name = "bad line", .text = badLine, .expected = ".txt:" + std::to_string(line) + ":"},
        {.name = "another model", .text = other, .expected = "J7"},
        // The model offers two total cuts; the refusal lists them.
        {.name = "unoffered value",
         .text = WithLine(own, "cutMode", "cutMode = PRN_PROP_CUTTER_PC_END_JOB"),
         .expected = "PRN_PROP_CUTTER_TC_END_DOC"},
    };
    const std::string before = StoredDevmode(printer);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        WriteText(dir_ + L"\\bad.txt", c.text);
        const HostRun run = Import(printer, L"bad.txt");
        EXPECT_EQ(2u, run.exitCode) << run.output;
        EXPECT_TRUE(Contains(run.output, c.expected)) << run.output;
        EXPECT_TRUE(StoredDevmode(printer) == before) << "the refused file changed the printer";
    }
}

}  // namespace
