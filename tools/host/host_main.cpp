// kivhost: opens a KIV printer's preferences under Wine as an application does.
//
// It installs the model's driver package into Wine's spooler (the configuration module
// KivDrvCfg.dll plays the universal driver's UI part and loads the plug-in), opens the printer,
// reads its per-user default devmode (GetPrinterW level 9; the spooler's default when there is
// none) and calls DocumentPropertiesW with a prompt. The sheet comes up on this thread inside that
// call; the host finds it and drives it as a user would (pages, controls, Apply, OK), and stores
// what was applied with SetPrinterW level 9, where Windows keeps printing preferences. It prints
// the resulting settings record and the log lines the run produced. Every failed step ends the
// program with a message and a non-zero code, the ones --help lists: 1 a bad argument, path or
// model name, 2 a failed step, 3 a sheet script that could not be carried out or an apply the
// plug-in refused, 4 a --time ratio over its target, 5 a --soak that found growth per opening
// over its limits, 6 a sheet nobody closed within --wait, 7 a --property sequence that broke
// what an apply must keep.
#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "devmode_file.h"
#include "host_checks.h"
#include "host_options.h"
#include "driver_package.h"
#include "host_output.h"
#include "host_resource.h"
#include "process_usage.h"
#include "settings/device_factory.h"
#include "settings/oemdev.h"
#include "settings/record_dump.h"
#include "settings/ui_device_common.h"
#include "sheet_host.h"
#include "win/oem_framework_win.h"
#include "wine_printer.h"

#include <shlobj.h>

namespace {

constexpr wchar_t kConfigRoot[] = L"Software\\Orvane\\Kiv\\";
constexpr wchar_t kDefaultLogFolder[] = L"%ALLUSERSPROFILE%\\ORVANE\\KIV\\Logs";
constexpr wchar_t kDefaultPrnFolder[] = L"%ALLUSERSPROFILE%\\ORVANE\\KIV";
constexpr size_t kMaxLogBytesShown = 1u << 20;

int FailExit(const char* step, const std::wstring& why) {
    Fail(step, why);
    return 2;
}

std::wstring Expand(const std::wstring& text) {
    std::vector<wchar_t> buf(2048);
    const DWORD n =
        ExpandEnvironmentStringsW(text.c_str(), buf.data(), static_cast<DWORD>(buf.size()));
    return (n == 0 || n > buf.size()) ? text : std::wstring(buf.data());
}

bool WriteVerbosity(const std::wstring& printer, DWORD verbosity, std::wstring& error) {
    const std::wstring key = kConfigRoot + printer;
    HKEY h = nullptr;
    LSTATUS rc = RegCreateKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, nullptr, 0,
                                 KEY_WRITE | KEY_WOW64_64KEY, nullptr, &h, nullptr);
    if (rc == ERROR_SUCCESS) {
        rc = RegSetValueExW(h, L"LogVerbosity_UiUni", 0, REG_DWORD,
                            reinterpret_cast<const BYTE*>(&verbosity), sizeof verbosity);
        RegCloseKey(h);
    }
    if (rc != ERROR_SUCCESS)
        error = L"HKCU\\" + key + L": " + Win32ErrorText(rc);
    return rc == ERROR_SUCCESS;
}

// A folder of the printer's configuration (its registry value, else the default), expanded.
std::wstring ConfiguredFolder(const std::wstring& printer, const wchar_t* value,
                              const wchar_t* fallback) {
    std::wstring folder = fallback;
    const std::wstring key = kConfigRoot + printer;
    wchar_t buf[1024] = {};
    DWORD size = sizeof buf - sizeof(wchar_t);
    DWORD type = 0;
    HKEY h = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ | KEY_WOW64_64KEY, &h) ==
        ERROR_SUCCESS) {
        if (RegQueryValueExW(h, value, nullptr, &type, reinterpret_cast<BYTE*>(buf), &size) ==
                ERROR_SUCCESS &&
            type == REG_SZ && buf[0] != L'\0')
            folder = buf;
        RegCloseKey(h);
    }
    return Expand(folder);
}

// The plug-in's log file: its configured folder (default when absent), printer + "_UI.log",
// the name as a file name carries it.
std::wstring LogFilePath(const std::wstring& printer) {
    return ConfiguredFolder(printer, L"LogFolder", kDefaultLogFolder) + L"\\" +
           SafeFileName(printer) + L"_UI.log";
}

// The host's print job, left in the print folder as the rendering side leaves every job it
// sends: "last" + printer + "_UiUni.prn". Reprint and Save last Doc on the Console use it.
bool WriteLastDocument(const std::wstring& printer, const std::wstring& model, std::wstring& path) {
    const std::wstring folder = ConfiguredFolder(printer, L"PrnFolder", kDefaultPrnFolder);
    SHCreateDirectoryExW(nullptr, folder.c_str(), nullptr);
    path = folder + L"\\last" + SafeFileName(printer) + L"_UiUni.prn";
    // Initialise, two lines of text, feed and a total cut.
    std::string job = "\x1B@KIV host job on " + Utf8(printer) + "\r\nModel " + Utf8(model) +
                      "\r\n\x1B"
                      "d\x03\x1DV";
    job += '\0';
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const BOOL ok = WriteFile(file, job.data(), static_cast<DWORD>(job.size()), &written, nullptr);
    CloseHandle(file);
    return ok && written == job.size();
}

// Size of a file, 0 when it does not exist.
ULONGLONG FileSize(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return 0;
    return (static_cast<ULONGLONG>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

// The lines of `path` after byte `from` (the whole file when it shrank), bounded.
std::vector<std::string> LinesAfter(const std::wstring& path, ULONGLONG from) {
    std::vector<std::string> lines;
    HANDLE f = CreateFileW(path.c_str(), GENERIC_READ,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (f == INVALID_HANDLE_VALUE)
        return lines;
    LARGE_INTEGER size = {};
    GetFileSizeEx(f, &size);
    // A log that was cut at its size limit during the run started anew.
    if (static_cast<ULONGLONG>(size.QuadPart) < from)
        from = 0;
    LARGE_INTEGER pos;
    pos.QuadPart = static_cast<LONGLONG>(from);
    SetFilePointerEx(f, pos, nullptr, FILE_BEGIN);
    std::string text(kMaxLogBytesShown, '\0');
    DWORD got = 0;
    if (!ReadFile(f, text.data(), static_cast<DWORD>(text.size()), &got, nullptr))
        got = 0;
    CloseHandle(f);
    text.resize(got);
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(std::move(line));
        start = end + 1;
    }
    return lines;
}

// The printer as the application holds it: its handle, its name and its devmodes' size.
struct SheetRun {
    HANDLE printer = nullptr;
    std::wstring printerName;
    size_t devmodeBytes = 0;
    // The settings the next opening starts from: the devmode the last accepted apply wrote.
    std::vector<uint8_t> devmode;
    std::wstring driverDir;  // where the spooler keeps the driver's files

    ~SheetRun() {
        if (printer != nullptr)
            ClosePrinter(printer);
    }
    // The plug-in's record in the devmode.
    std::vector<uint8_t> Record() const {
        return std::vector<uint8_t>(devmode.begin() + sizeof(DEVMODEW), devmode.end());
    }
};

// One opening of the printer's sheet through the spooler; an accepted apply becomes the
// settings of the next opening.
bool OpenSheetOnce(SheetRun& run, const SheetScript& script, SheetOutcome& outcome) {
    std::vector<uint8_t> out(run.devmodeBytes, 0);
    LARGE_INTEGER start;
    QueryPerformanceCounter(&start);
    std::wstring error;
    if (!OpenPrinterSheet(run.printer, run.printerName, run.devmode, out, script, start, outcome,
                          error))
        return Fail("open the property sheet", error);
    if (outcome.applied)
        run.devmode = out;
    return true;
}

// The spooler's answer to DocumentPropertiesW without a prompt: `in` merged (or, when empty,
// the default) into `out`.
bool SpoolerDevmode(SheetRun& run, const std::vector<uint8_t>& in, std::vector<uint8_t>& out) {
    out.assign(run.devmodeBytes, 0);
    std::vector<uint8_t> input = in;
    const LONG rc = DocumentPropertiesW(
        nullptr, run.printer, run.printerName.data(), reinterpret_cast<DEVMODEW*>(out.data()),
        input.empty() ? nullptr : reinterpret_cast<DEVMODEW*>(input.data()),
        DM_OUT_BUFFER | (input.empty() ? 0 : DM_IN_BUFFER));
    return rc == IDOK || Fail("DocumentPropertiesW", L"returned " + std::to_wstring(rc) + L" (" +
                                                         Win32ErrorText(GetLastError()) + L")");
}

// The printer's per-user default devmode (GetPrinterW level 9); empty when there is none.
std::vector<uint8_t> StoredDefault(HANDLE printer) {
    DWORD needed = 0;
    GetPrinterW(printer, 9, nullptr, 0, &needed);
    if (needed < sizeof(PRINTER_INFO_9W) || needed > (1u << 20))
        return {};
    std::vector<BYTE> buf(needed);
    if (!GetPrinterW(printer, 9, buf.data(), needed, &needed))
        return {};
    const DEVMODEW* dm = reinterpret_cast<const PRINTER_INFO_9W*>(buf.data())->pDevMode;
    if (dm == nullptr)
        return {};
    const auto* bytes = reinterpret_cast<const uint8_t*>(dm);
    const size_t room = static_cast<size_t>(buf.data() + buf.size() - bytes);
    return std::vector<uint8_t>(bytes,
                                bytes + std::min(room, size_t{dm->dmSize} + dm->dmDriverExtra));
}

// Whether `devmode` holds settings someone chose. A new printer's default is the plug-in's
// default record, whose body stays blank until the pages first open; the plug-in fills it with
// the model's defaults then, which loses nothing and is no reset worth reporting.
bool HoldsChosenSettings(const std::vector<uint8_t>& devmode) {
    DEVMODEW dm;
    if (devmode.size() < sizeof dm)
        return false;
    std::memcpy(&dm, devmode.data(), sizeof dm);
    OEMDEV record;
    if (dm.dmDriverExtra < sizeof record || size_t{dm.dmSize} + sizeof record > devmode.size())
        return true;  // another driver's private part: the plug-in says what it makes of it
    std::memcpy(&record, devmode.data() + dm.dmSize, sizeof record);
    return record.dmExtraHeader.dwSignature != KIVITEM_SIGNATURE ||
           record.payload.modelName[0] != '\0';
}

bool StoreDefault(SheetRun& run) {
    PRINTER_INFO_9W info{.pDevMode = reinterpret_cast<DEVMODEW*>(run.devmode.data())};
    return SetPrinterW(run.printer, 9, reinterpret_cast<BYTE*>(&info), 0) ||
           Fail("SetPrinterW level 9", Win32ErrorText(GetLastError()));
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

// The sheet against the baseline (the same sheet with the plug-in's dialog templates driven by
// a procedure that fills nothing), both through CommonPropertySheetUIW and cancelled once every
// page is up, so the ratio is what the plug-in's own work costs and not what Wine pays for each
// control window. A first pair warms up what any first sheet pays for (classes, fonts, the
// plug-in's first GDI+ start).
bool TimeSheet(SheetRun& run, int runs, double& ratio) {
    SheetScript script;
    script.activateAll = true;
    script.quiet = true;
    script.press = SheetPress::kCancel;
    // Whole openings, and each page's first activation (the driver's page, the first, is 0).
    std::vector<double> sheet, baseline, ratios;
    std::vector<std::vector<double>> perPage, basePerPage;
    std::vector<std::wstring> titles;
    // The modules the pages come from stay loaded for the whole measurement, as they did when
    // the driver held the plug-in for the host's whole run; the baseline takes its templates
    // from them.
    const std::unique_ptr<std::remove_pointer_t<HMODULE>, decltype(&FreeLibrary)> config(
        LoadLibraryW((run.driverDir + L"\\KivDrvCfg.dll").c_str()), FreeLibrary),
        plugin(LoadLibraryW((run.driverDir + L"\\KivUI.dll").c_str()), FreeLibrary);
    if (config == nullptr || plugin == nullptr)
        return Fail("time the sheet",
                    L"the driver's modules in " + run.driverDir + L" could not be loaded");
    for (int i = 0; i <= runs; ++i) {
        SheetOutcome outcome;
        if (!OpenSheetOnce(run, script, outcome))
            return false;
        if (outcome.stepFailed)
            return Fail("time the sheet", L"the sheet's pages did not all come up");
        if (outcome.applied)
            return Fail("time the sheet", L"a cancelled sheet applied");
        std::vector<PageTemplate> pages;
        std::wstring error;
        if (!FindPageTemplates(outcome.titles, {config.get(), plugin.get()}, pages, error))
            return Fail("time the sheet", error);
        SheetOutcome base;
        if (!OpenBaselineSheet(pages, base, error))
            return Fail("time the baseline sheet", error);
        if (i == 0)
            continue;
        sheet.push_back(outcome.secondsToPagesUp);
        baseline.push_back(base.secondsToPagesUp);
        if (base.secondsToPagesUp > 0)
            ratios.push_back(outcome.secondsToPagesUp / base.secondsToPagesUp);
        perPage.resize(outcome.pageSeconds.size());
        basePerPage.resize(outcome.pageSeconds.size());
        for (size_t p = 0; p < outcome.pageSeconds.size() && p < base.pageSeconds.size(); ++p) {
            perPage[p].push_back(outcome.pageSeconds[p]);
            basePerPage[p].push_back(base.pageSeconds[p]);
        }
        titles = outcome.titles;
    }
    if (ratios.empty())
        return Fail("time the baseline sheet", L"it took no measurable time");
    // Each pair runs back to back, so the median of their ratios shrugs off a machine whose load
    // changes between pairs.
    ratio = Median(ratios);
    Out("time        : sheet %.1f ms, baseline %.1f ms (%zu pages each, medians of %d)\n",
        Median(sheet) * 1000, Median(baseline) * 1000, titles.size(), runs);
    std::string each;
    for (size_t p = 1; p < perPage.size() && p < titles.size(); ++p) {
        char part[160];
        std::snprintf(part, sizeof part, "%s%s %.1f/%.1f", p > 1 ? ", " : "",
                      Utf8(titles[p]).c_str(), Median(perPage[p]) * 1000,
                      Median(basePerPage[p]) * 1000);
        each += part;
    }
    Out("time        : first activation per page, sheet/baseline (ms): %s\n", each.c_str());
    Out("sheet/baseline ratio: %.2f, median of the pairs (target <= %.1f)\n", ratio,
        kSheetTimeTarget);
    return true;
}

// Opens the full sheet (every page activated, then cancelled) `openings` times in this process
// and compares what the process holds before and after. Two openings first warm up what only a
// first sheet pays for (window classes, fonts, the first GDI+ start); the first of them switches
// admin mode on (Ctrl+Shift on the Version page's picture), so the Admin page is in every
// measured opening. `grew` is set when an opening leaves more than the heap limit behind, or any
// handle or GDI object.
bool SoakSheet(SheetRun& run, int openings, bool& grew) {
    constexpr int kVersionPicture = 1057;
    SheetScript script;
    script.activateAll = true;
    script.quiet = true;
    script.press = SheetPress::kCancel;
    PageAction toAdminMode;
    toAdminMode.kind = PageAction::Kind::kClick;
    toAdminMode.page = L"Version";
    toAdminMode.control = kVersionPicture;
    toAdminMode.heldKeys = kHoldCtrl | kHoldShift;
    script.actions.push_back(toAdminMode);
    const auto open = [&] {
        SheetOutcome outcome;
        if (!OpenSheetOnce(run, script, outcome))
            return false;
        if (outcome.stepFailed)
            return Fail("soak", L"the sheet's pages did not all come up");
        script.actions.clear();
        return true;
    };
    for (int i = 0; i < 2; ++i) {
        if (!open())
            return false;
    }
    const uint64_t heapBefore = HeapBytesInUse();
    const int handlesBefore = OpenHandles(), gdiBefore = GdiObjects();
    for (int i = 0; i < openings; ++i) {
        if (!open())
            return false;
    }
    const uint64_t heapAfter = HeapBytesInUse();
    const int handlesAfter = OpenHandles(), gdiAfter = GdiObjects();
    const double heapPerOpening =
        (static_cast<double>(heapAfter) - static_cast<double>(heapBefore)) / openings;
    const int handles = handlesAfter - handlesBefore, gdi = gdiAfter - gdiBefore;
    Out("soak: %d openings of the full sheet, growth per opening: heap %.0f bytes, handles "
        "%+d, GDI objects %+d in all (limits %u bytes, 0, 0)\n",
        openings, heapPerOpening, handles, gdi, kSoakHeapLimit);
    Out("soak: heap %llu -> %llu bytes, handles %d -> %d, GDI objects %d -> %d\n",
        static_cast<unsigned long long>(heapBefore), static_cast<unsigned long long>(heapAfter),
        handlesBefore, handlesAfter, gdiBefore, gdiAfter);
    grew = heapPerOpening > kSoakHeapLimit || handles > 0 || gdi > 0;
    return true;
}

// The model data text of the GPD ("*OEMCustomData:"), split at "|", as the plug-in reads it.
std::vector<std::string> ModelPieces(const PackageModel& model) {
    std::vector<std::string> pieces(4);
    FILE* file = _wfopen(model.gpdFile.c_str(), L"rb");
    if (file == nullptr)
        return pieces;
    std::string text(1 << 20, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file));
    std::fclose(file);
    const std::string key = "*OEMCustomData: \"";
    const size_t start = text.find(key);
    if (start == std::string::npos)
        return pieces;
    const size_t from = start + key.size();
    const std::string data = text.substr(from, text.find('"', from) - from);
    size_t piece = 0;
    for (char c : data) {
        if (c == '|' && piece + 1 < pieces.size())
            ++piece;
        else if (c != '|')
            pieces[piece] += c;
    }
    return pieces;
}

// Why a saved record is not one the model accepts as it stands: loading it into the model's
// capability object and saving it again must give the same bytes. Empty when it does.
std::string RecordViolation(const std::vector<uint8_t>& record,
                            const std::vector<std::string>& pieces) {
    OEMDEV saved{};
    std::memcpy(&saved, record.data(), record.size() < sizeof saved ? record.size() : sizeof saved);
    std::unique_ptr<UiDeviceCommon> device =
        CreateUiDevice(pieces[0], pieces[1], pieces[2], pieces[3]);
    std::string name = pieces[0];
    device->FillUIDeviceValuesWithOEMDEV(name, saved.payload);
    OEMDEV again = saved;
    device->FillOEMDEVWithDeviceValues(again.payload, 0);
    if (std::memcmp(&again, &saved, sizeof saved) == 0)
        return {};
    const std::string before = DescribeOemDev(saved), after = DescribeOemDev(again);
    std::string changed;
    size_t a = 0, b = 0;
    while (a < before.size() && b < after.size()) {
        const size_t endA = before.find('\n', a), endB = after.find('\n', b);
        const std::string lineA = before.substr(a, endA - a), lineB = after.substr(b, endB - b);
        if (lineA != lineB)
            changed += " [" + lineA + " -> " + lineB + "]";
        if (endA == std::string::npos || endB == std::string::npos)
            break;
        a = endA + 1;
        b = endB + 1;
    }
    return "loading and saving the saved record changes it:" + changed;
}

// Whether a refusal's message box names a page of the sheet: "\"<page>\" Panel ".
bool NamesAPage(const std::wstring& title, const std::vector<std::wstring>& pages) {
    for (const std::wstring& page : pages) {
        if (title == L"\"" + page + L"\" Panel ")
            return true;
    }
    return false;
}

// Seeded sequences of random user steps on every page, in this process, several per opening of
// the sheet, each ended with Apply. An apply is either refused with a message that names a page
// (the opening is then cancelled) or saves a record that loads and saves to the same bytes; the
// OK that ends an opening saves what the last Apply saved, and the next opening shows the
// choices of the last accepted sequence. Every violation prints its seed and how to replay it.
bool PropertySheetTest(SheetRun& run, const PackageModel& model, const std::wstring& port,
                       int sequences, unsigned seed, int& violations) {
    constexpr int kMostSteps = 6;
    constexpr int kSequencesPerOpening = 8;
    const std::vector<std::string> pieces = ModelPieces(model);
    const std::wstring image = Expand(L"%LOCALAPPDATA%\\KivHost\\property.png");
    int refused = 0;
    std::string expectedChoices;  // what the last accepted apply left on the pages
    for (int first = 0; first < sequences;) {
        SheetScript script;
        script.activateAll = true;
        script.quiet = true;
        script.press = SheetPress::kOk;
        // A path the page questions stays until a step changes it, so a No would refuse every
        // opening after it: one opening in four answers No.
        script.answerYes = (seed + static_cast<unsigned>(first)) % 4 != 0;
        script.imageFile = image;
        for (int i = first; i < sequences && i < first + kSequencesPerOpening; ++i) {
            const unsigned sequenceSeed = seed + static_cast<unsigned>(i);
            script.sequences.push_back({.seed = sequenceSeed * 2654435761u + 1,
                                        .steps = 1 + static_cast<int>(sequenceSeed % kMostSteps)});
        }
        SheetOutcome outcome;
        if (!OpenSheetOnce(run, script, outcome))
            return false;
        const auto report = [&](int index, const std::string& violation) {
            ++violations;
            // Each sequence starts from the record the earlier ones left, so the replay runs
            // them all again, the same way, up to this one (with a printer's record as fresh).
            Out("property violation: model %s, port %s, seed %u (sequence %d): %s\n  replay: "
                "kivhost --model \"%s\" --port %s --printer \"%s REPLAY\" --property %d --seed "
                "%u --verbose\n",
                Utf8(model.model).c_str(), Utf8(port).c_str(), seed + static_cast<unsigned>(index),
                index + 1, violation.c_str(), Utf8(model.model).c_str(), Utf8(port).c_str(),
                Utf8(run.printerName).c_str(), index + 1, seed);
            expectedChoices.clear();
        };
        if (!expectedChoices.empty() && !outcome.choicesAtOpen.empty() &&
            outcome.choicesAtOpen != expectedChoices)
            // Seen at the opening that starts with sequence `first`.
            report(first,
                   "the reopened sheet shows other choices than were applied:\n  "
                   "before: " +
                       expectedChoices + "  after: " + outcome.choicesAtOpen);
        const std::vector<uint8_t>* lastRecord = nullptr;
        for (size_t k = 0; k < outcome.sequences.size(); ++k) {
            const SequenceOutcome& done = outcome.sequences[k];
            const int index = first + static_cast<int>(k);
            std::string violation;
            if (done.refused) {
                ++refused;
                if (!NamesAPage(done.boxTitle, outcome.titles))
                    violation = "a refused apply's message names no page: " + Utf8(done.boxTitle);
            } else if (done.applied) {
                violation = RecordViolation(done.record, pieces);
                expectedChoices = done.choices;
                lastRecord = &done.record;
            } else {
                violation = "Apply neither applied nor was refused";
            }
            if (!violation.empty())
                report(index, violation);
        }
        const int ran = static_cast<int>(outcome.sequences.size());
        const bool allApplied = ran > 0 && outcome.sequences.back().applied;
        if (outcome.stepFailed || outcome.closedByPlugin) {
            report(first + (ran > 0 ? ran - 1 : 0), outcome.stepFailed
                                                        ? "a step could not be carried out"
                                                        : "a step closed the sheet");
        } else if (allApplied && outcome.applyRefused) {
            report(first + ran - 1, "OK after an accepted Apply was refused");
        } else if (allApplied && lastRecord != nullptr && outcome.recordAtOk != *lastRecord) {
            report(first + ran - 1, "OK after an accepted Apply saved another record");
        }
        first += ran > 0 ? ran : 1;
    }
    Out("property test: %d sequences, %d refused, %d violations\n", sequences, refused, violations);
    return true;
}

void PrintRecord(const std::vector<uint8_t>& record, size_t recordSize) {
    OEMDEV rec;
    std::memset(&rec, 0, sizeof rec);
    std::memcpy(&rec, record.data(), recordSize < sizeof rec ? recordSize : sizeof rec);
    Out("---- working record (%zu bytes) ----\n", recordSize);
    Out("%s", DescribeOemDev(rec).c_str());
    Out("---- end of record ----\n");
}

// The model's features as a saved record's support bytes tell them, in words.
std::string CapabilityWords(const std::vector<uint8_t>& record) {
    struct Feature {
        size_t offset;
        const char* words;
    };
    static constexpr Feature kFeatures[] = {
        {offsetof(OemDevPayload, supCashDrawer), "cash drawer"},
        {offsetof(OemDevPayload, supBuzzer), "buzzer"},
        {offsetof(OemDevPayload, supDensity), "density"},
        {offsetof(OemDevPayload, supQuality), "quality"},
        {offsetof(OemDevPayload, supCutter), "cutter"},
        {offsetof(OemDevPayload, supRecovery), "recovery"},
        {offsetof(OemDevPayload, supBlackMark), "black mark"},
        {offsetof(OemDevPayload, supContinuousMode), "continuous mode"},
        {offsetof(OemDevPayload, supFeeder), "feeder"},
        {offsetof(OemDevPayload, supSelector), "selector"},
        {offsetof(OemDevPayload, supPresentation), "presenter"},
        {offsetof(OemDevPayload, supHeadLed), "head LED"},
        {offsetof(OemDevPayload, supPage2Page), "page to page"},
    };
    std::string words;
    for (const Feature& feature : kFeatures) {
        const size_t at = OEMDEV_HEADER_SIZE + feature.offset;
        if (at < record.size() && record[at] != 0)
            words += (words.empty() ? "" : ", ") + std::string(feature.words);
    }
    return words.empty() ? "none" : words;
}

// "9 pages (Paper/Quality, Print, ...)".
std::string PageList(const std::vector<std::wstring>& titles) {
    std::string list;
    for (const std::wstring& title : titles)
        list += (list.empty() ? "" : ", ") + Utf8(title);
    return std::to_string(titles.size()) + " pages (" + list + ")";
}

// The package's model of that name (any letter case); null, after telling which models there
// are, when it has none.
const PackageModel* FindModel(const std::vector<PackageModel>& models, const std::wstring& name) {
    for (const PackageModel& model : models) {
        if (CompareStringOrdinal(model.model.c_str(), -1, name.c_str(), -1, TRUE) == CSTR_EQUAL)
            return &model;
    }
    return nullptr;
}

void PrintModels(const std::vector<PackageModel>& models) {
    for (const PackageModel& model : models)
        Out("%s\n", Utf8(model.model).c_str());
}

// Common controls 6 for the rest of the process, from the manifest kivhost carries, as an
// application's own manifest gives them to every module it loads. The context stays active
// until the process ends; false when it could not be made.
bool ActivateCommonControls6() {
    wchar_t exe[MAX_PATH] = {};
    if (GetModuleFileNameW(nullptr, exe, MAX_PATH) == 0)
        return false;
    ACTCTXW manifest{.cbSize = sizeof(ACTCTXW),
                     .dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID,
                     .lpSource = exe,
                     .wProcessorArchitecture = 0,
                     .wLangId = 0,
                     .lpAssemblyDirectory = nullptr,
                     .lpResourceName = MAKEINTRESOURCEW(IDR_HOST_COMCTL6_MANIFEST),
                     .lpApplicationName = nullptr,
                     .hModule = GetModuleHandleW(nullptr)};
    HANDLE context = CreateActCtxW(&manifest);
    ULONG_PTR cookie = 0;
    return context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie);
}

// 6 when the active context sends comctl32 to its version 6 assembly, as a manifest does (the
// windows of every module then get the version 6 classes); else 5.
int CommonControlsVersion() {
    ACTCTX_SECTION_KEYED_DATA found{};
    found.cbSize = sizeof found;
    return FindActCtxSectionStringW(0, nullptr, ACTIVATION_CONTEXT_SECTION_DLL_REDIRECTION,
                                    L"comctl32.dll", &found)
               ? 6
               : 5;
}

int Run(HostOptions opts) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    const std::vector<std::string> pathProblems = CheckOptionPaths(opts);
    for (const std::string& problem : pathProblems)
        Out("kivhost: %s\n", problem.c_str());
    if (!pathProblems.empty())
        return 1;
    const std::wstring exeDir = ModuleFolder();
    const std::wstring packageDir =
        opts.packageDir.empty() ? exeDir + L"\\driver" : opts.packageDir;
    const std::vector<PackageModel> models = ListPackageModels(packageDir);
    if (opts.listModels) {
        PrintModels(models);
        // The package was checked when it was named, so an empty one is the installation's.
        return models.empty() ? 2 : 0;
    }
    const PackageModel* found = FindModel(models, opts.model);
    if (found == nullptr) {
        std::printf("kivhost: the driver package (%s) has no model \"%s\"; its models:\n",
                    Utf8(packageDir).c_str(), Utf8(opts.model).c_str());
        PrintModels(models);
        return 1;
    }
    const PackageModel& model = *found;
    // The model as the package spells it names the default printer, whatever case was typed.
    if (opts.printer == L"KIV " + opts.model)
        opts.printer = L"KIV " + model.model;
    std::wstring printerName = opts.printer;

    WinePrinterSetup setup;
    setup.printerName = opts.printer;
    setup.model = model.model;
    setup.binaryDir = exeDir;
    setup.packageDir = packageDir;
    WinePrinterInfo info;
    std::wstring error;
    if (!InstallWinePrinter(setup, info, error))
        return FailExit("install printer", error);
    Detail("printer     : %s (%s, driver \"%s\" %s)\n", Utf8(opts.printer).c_str(),
           info.printerReused ? "existing" : "added", Utf8(info.driverName).c_str(),
           info.driverReused ? "refreshed" : "installed");
    const WinePortState port = opts.port == L"bidi"      ? WinePortState::kBidi
                               : opts.port == L"no-bidi" ? WinePortState::kNotBidi
                                                         : WinePortState::kNoMonitor;
    if (!SetWinePortState(opts.printer, info.driverName, port, error))
        return FailExit("set the port state", error);
    Detail("data file   : %s\n", Utf8(info.dataFile).c_str());
    Detail("port        : %s -> %s\n", Utf8(info.portName).c_str(), info.outputUnixPath.c_str());

    if (opts.verbosity >= 0) {
        if (!WriteVerbosity(opts.printer, static_cast<DWORD>(opts.verbosity), error))
            return FailExit("write LogVerbosity_UiUni", error);
        Detail("log level   : LogVerbosity_UiUni = %d\n", opts.verbosity);
    }
    const ULONGLONG logStart = FileSize(LogFilePath(opts.printer));
    if (opts.lastDocument) {
        std::wstring lastDocument;
        // The folder is the printer's configuration, not the host's: say what gets past it.
        if (!WriteLastDocument(opts.printer, model.model, lastDocument))
            return FailExit("write the last document",
                            lastDocument + L": " + Win32ErrorText(GetLastError()) +
                                L" (the print folder is PrnFolder under HKCU\\" + kConfigRoot +
                                opts.printer + L"; --no-last-document runs without it)");
        Detail("last doc    : %s\n", Utf8(lastDocument).c_str());
    }

    SheetRun run;
    run.printerName = printerName;
    run.driverDir = info.driverDir;
    PRINTER_DEFAULTSW defaults = {nullptr, nullptr, PRINTER_ACCESS_USE};
    if (!OpenPrinterW(printerName.data(), &run.printer, &defaults))
        return FailExit("OpenPrinterW", Win32ErrorText(GetLastError()));
    // The spooler's size: public part and the driver's private part.
    const LONG size =
        DocumentPropertiesW(nullptr, run.printer, printerName.data(), nullptr, nullptr, 0);
    if (size < static_cast<LONG>(sizeof(DEVMODEW)))
        return FailExit("DocumentPropertiesW (size)", Win32ErrorText(GetLastError()));
    run.devmodeBytes = static_cast<size_t>(size);
    Detail("devmode     : %ld bytes (public %zu + private %zu)\n", static_cast<long>(size),
           sizeof(DEVMODEW), run.devmodeBytes - sizeof(DEVMODEW));

    // Where the settings come from: a given devmode file, else the printer's per-user default,
    // else the spooler's default; the spooler merges each into a devmode of this driver.
    std::vector<uint8_t> start;
    StoredDevmode given;
    std::wstring why;
    if (opts.reset) {
        Detail("devmode     : the spooler's default (--reset)\n");
    } else if (!opts.devmodeFile.empty()) {
        switch (LoadDevmodeFile(opts.devmodeFile, given, why)) {
            case DevmodeFileStatus::kLoaded: {
                const auto* pub = reinterpret_cast<const uint8_t*>(&given.publicDM);
                start.assign(pub, pub + sizeof given.publicDM);
                start.insert(start.end(), given.privateDM.begin(), given.privateDM.end());
                Detail("devmode     : %s (%zu private bytes read)\n",
                       Utf8(opts.devmodeFile).c_str(), given.privateDM.size());
                break;
            }
            case DevmodeFileStatus::kAbsent:
                return FailExit("--devmode", opts.devmodeFile + L": no such file");
            case DevmodeFileStatus::kDamaged:
                Out("settings    : %s is damaged (%s); started from the spooler's default\n",
                    Utf8(opts.devmodeFile).c_str(), Utf8(why).c_str());
                break;
        }
    } else {
        start = StoredDefault(run.printer);
        Detail("devmode     : %s\n", start.empty()
                                         ? "no per-user default yet, the spooler's default"
                                         : "the per-user default (GetPrinterW level 9)");
    }
    // Whether the plug-in is handed settings kept from before, or only its defaults.
    const bool settingsKept = HoldsChosenSettings(start);
    const std::string keptIn = !opts.devmodeFile.empty() ? UnixPathOf(opts.devmodeFile)
                                                         : std::string("the per-user default");
    if (!SpoolerDevmode(run, start, run.devmode))
        return 2;
    const auto* publicDM = reinterpret_cast<const DEVMODEW*>(run.devmode.data());
    Out("printer     : %s (model %s, paper %d.%d mm wide, %d dpi)\n", Utf8(opts.printer).c_str(),
        Utf8(model.model).c_str(), publicDM->dmPaperWidth / 10, publicDM->dmPaperWidth % 10,
        publicDM->dmYResolution);
    Out("controls    : common controls %d\n", CommonControlsVersion());

    int exitCode = 0;
    // Without a sheet the spooler's merge is what is stored: a reset or a given devmode is kept
    // as the driver repaired it.
    bool save = opts.headless || opts.reset;
    // Only the pages write the model into the record; before they save it is blank.
    bool pagesSaved = false;
    if (!opts.headless) {
        double ratio = 0;
        if (opts.time) {
            if (!TimeSheet(run, opts.timeRuns, ratio))
                return 2;
            if (ratio > kSheetTimeTarget)
                exitCode = 4;
        }
        bool grew = false;
        if (opts.soak > 0 && !SoakSheet(run, opts.soak, grew))
            return 2;
        if (grew)
            exitCode = 5;
        int violations = 0;
        if (opts.property > 0 &&
            !PropertySheetTest(run, model, opts.port, opts.property, opts.seed, violations))
            return 2;
        if (violations > 0)
            exitCode = 7;
        if (opts.property > 0)
            opts.openings = 0;  // the sequences were the openings
        for (int opening = 0; opening < opts.openings; ++opening) {
            const bool last = opening + 1 == opts.openings;
            if (opts.openings > 1)
                Detail("OPENING %d\n", opening + 1);
            SheetScript script;
            script.press = opts.press;
            // The earlier openings are the way to the state the last one shows.
            script.screenshotDir = last ? opts.screenshotDir : std::wstring();
            script.screenshotBeforeDir = last ? opts.screenshotBeforeDir : std::wstring();
            script.waitSeconds = opts.waitSeconds;
            script.answerYes = opts.answerYes;
            script.fileAnswer = opts.fileAnswer;
            for (const PageAction& action : opts.actions) {
                if (action.opening == opening)
                    script.actions.push_back(action);
            }
            script.activateAll = opts.press != SheetPress::kNone || !script.screenshotDir.empty() ||
                                 !script.screenshotBeforeDir.empty() || !script.actions.empty();
            SheetOutcome outcome;
            if (!OpenSheetOnce(run, script, outcome))
                return 2;
            Detail("sheet       : closed (DocumentPropertiesW %ld)\n",
                   static_cast<long>(outcome.returned));
            Out("sheet       : %s; %s\n", PageList(outcome.titles).c_str(),
                outcome.applied        ? "applied"
                : outcome.applyRefused ? "the plug-in refused the apply, nothing applied"
                                       : "nothing applied");
            if (outcome.screenshots > 0)
                Out("screenshots : %d pages in %s\n", outcome.screenshots,
                    UnixPathOf(script.screenshotDir).c_str());
            if (outcome.timedOut)
                exitCode = 6;
            save = save || outcome.applied;
            pagesSaved = pagesSaved || outcome.applied;
            const bool pressFailed =
                (opts.press == SheetPress::kOk || opts.press == SheetPress::kApply) &&
                !outcome.applied && !outcome.closedByPlugin;
            if (exitCode == 0 && (outcome.stepFailed || pressFailed))
                exitCode = 3;
        }
    }

    std::vector<uint8_t> record;
    if (save) {
        record = run.Record();
        // The model writes its support bytes when the pages save, not before; a blank model name
        // is a record no page has saved yet.
        constexpr size_t kModelName = offsetof(OEMDEV, payload);
        if (pagesSaved || (record.size() > kModelName && record[kModelName] != 0))
            Out("capabilities: %s\n", CapabilityWords(record).c_str());
        else
            Out("capabilities: not in the record yet (the pages write them when they first "
                "save)\n");
        if (opts.showRecord || opts.verbose)
            PrintRecord(record, record.size());
        if (!StoreDefault(run))
            return 2;
        Out("settings    : stored as the printer's per-user default (SetPrinterW level 9)\n");
    } else {
        Out("settings    : not stored (nothing was applied)\n");
    }

    const std::wstring logPath = LogFilePath(opts.printer);
    const std::vector<std::string> lines = LinesAfter(logPath, logStart);
    // What the plug-in reports of the settings it was handed and of the model, which the
    // summary's other lines would not show.
    const std::string resetReason = settingsKept ? RecordResetReason(lines) : std::string();
    if (!resetReason.empty())
        Out("settings    : the plug-in reset the kept settings (%s) to the model's defaults: %s\n",
            keptIn.c_str(), resetReason.c_str());
    if (UsesGenericDevice(lines, pagesSaved ? &record : nullptr))
        Out("model       : the plug-in does not recognise \"%s\" and gives the printer its generic "
            "device, which offers none of the model's features\n",
            Utf8(model.model).c_str());
    if (lines.empty()) {
        // A folder the plug-in cannot write in silences it whatever the verbosity says.
        const std::wstring folder = ConfiguredFolder(opts.printer, L"LogFolder", kDefaultLogFolder);
        const std::wstring unwritable = FolderUnwritable(folder);
        if (!unwritable.empty()) {
            Out("log         : none; the plug-in's log folder %s %s; the printer's LogFolder "
                "under HKCU\\%s%s chooses it\n",
                Utf8(folder).c_str(), Utf8(unwritable).c_str(), Utf8(kConfigRoot).c_str(),
                Utf8(opts.printer).c_str());
            return exitCode;
        }
        const std::string unixPath = UnixPathOf(logPath);
        Out("log         : %s (nothing new; the plug-in logs when LogVerbosity_UiUni is set, "
            "e.g. --verbosity 7)\n",
            unixPath.empty() ? Utf8(logPath).c_str() : unixPath.c_str());
        return exitCode;
    }
    Out("log         : %s (%zu new lines)\n", UnixPathOf(logPath).c_str(), lines.size());
    const size_t wanted = static_cast<size_t>(opts.logLines >= 0 ? opts.logLines
                                              : opts.verbose     ? 40
                                                                 : 0);
    const size_t shown = lines.size() < wanted ? lines.size() : wanted;
    for (size_t i = 0; i < shown; ++i)
        Out("  | %s\n", lines[i].c_str());
    if (shown > 0 && shown < lines.size())
        Out("  | ... %zu more\n", lines.size() - shown);
    return exitCode;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    // Lines end in "\n" alone, as the Linux terminal and the scripts that read them expect.
    _setmode(_fileno(stdout), _O_BINARY);
    HostOptions opts;
    std::wstring error;
    if (!ParseHostOptions(argc, argv, opts, error)) {
        // The whole usage would push the one line that matters off the screen.
        std::printf("kivhost: %s; see --help\n", Utf8(error).c_str());
        return 1;
    }
    if (opts.help) {
        std::printf("%s", Utf8(HostUsage()).c_str());
        return 0;
    }
    gVerbose = opts.verbose;
    if (opts.comctl == 6 && !ActivateCommonControls6()) {
        std::printf("kivhost: the common controls 6 manifest could not be activated (%s)\n",
                    Utf8(Win32ErrorText(GetLastError())).c_str());
        return 2;
    }
    return Run(opts);
}
