// kivsettings' spooler side: the settings the printer's pages start from, read from the devmode
// the spooler keeps, and an imported file merged through the driver and stored back as an
// application stores printing preferences.
#include "kivsettings_win.h"

#include <cstring>
#include <memory>
#include <vector>

#include "entry/common_ui.h"
#include "entry/gpd_reader_win.h"
#include "entry/record_repair.h"
#include "settings/device_factory.h"
#include "settings/settings_file.h"
#include "win/text_win.h"
#include "win/windows_headers_win.h"

namespace {

constexpr char kDefaultsShown[] =
    "; the model's defaults are shown, as the pages would start from them";

// No answer of the spooler about one printer comes near this; a larger one is not trusted.
constexpr DWORD kMaxSpoolerAnswer = 1u << 20;

std::wstring WideFromUtf8(std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int needed =
        length > 0 ? MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0) : 0;
    std::wstring wide(static_cast<size_t>(needed > 0 ? needed : 0), L'\0');
    if (needed > 0)
        MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), needed);
    return wide;
}

std::string ErrorText(DWORD code) {
    wchar_t* text = nullptr;
    const DWORD n = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring words = n > 0 && text != nullptr ? std::wstring(text, n) : std::wstring();
    LocalFree(text);
    while (!words.empty() &&
           (words.back() == L'\n' || words.back() == L'\r' || words.back() == L'.'))
        words.pop_back();
    return "Win32 error " + std::to_string(code) +
           (words.empty() ? "" : ": " + Utf8FromWide(words));
}

int Fail(int code, const std::string& message) {
    PrintError("kivsettings: " + message + "\n");
    return code;
}

class PrinterHandle {
  public:
    PrinterHandle() = default;
    PrinterHandle(const PrinterHandle&) = delete;
    PrinterHandle& operator=(const PrinterHandle&) = delete;
    ~PrinterHandle() {
        if (h_ != nullptr)
            ClosePrinter(h_);
    }
    HANDLE* out() { return &h_; }
    HANDLE get() const { return h_; }

  private:
    HANDLE h_ = nullptr;
};

// Where the settings are kept: the user's printing preferences or the printer-wide default.
DWORD KeptLevel(const KivSettingsCommand& command) {
    return command.printerDefault ? 2 : 9;
}

std::string KeptWhere(DWORD level) {
    return level == 2 ? "the printer-wide default" : "the user's printing preferences";
}

// The devmode the spooler keeps at `level`; empty when it keeps none.
std::vector<uint8_t> KeptDevmode(HANDLE printer, DWORD level) {
    DWORD needed = 0;
    GetPrinterW(printer, level, nullptr, 0, &needed);
    if (needed == 0 || needed > kMaxSpoolerAnswer)
        return {};
    std::vector<BYTE> buf(needed);
    if (!GetPrinterW(printer, level, buf.data(), needed, &needed))
        return {};
    const DEVMODEW* dm = level == 2
                             ? (buf.size() >= sizeof(PRINTER_INFO_2W)
                                    ? reinterpret_cast<const PRINTER_INFO_2W*>(buf.data())->pDevMode
                                    : nullptr)
                             : (buf.size() >= sizeof(PRINTER_INFO_9W)
                                    ? reinterpret_cast<const PRINTER_INFO_9W*>(buf.data())->pDevMode
                                    : nullptr);
    const auto* bytes = reinterpret_cast<const uint8_t*>(dm);
    // The devmode lies inside the buffer the spooler filled; never read past it.
    if (bytes < buf.data() || bytes >= buf.data() + buf.size())
        return {};
    const size_t room = static_cast<size_t>(buf.data() + buf.size() - bytes);
    if (room < offsetof(DEVMODEW, dmFields))
        return {};
    return std::vector<uint8_t>(bytes,
                                bytes + std::min(room, size_t{dm->dmSize} + dm->dmDriverExtra));
}

// The driver's answer to DocumentPropertiesW without a prompt: `in` merged into a devmode of the
// driver, or its default when `in` is empty.
bool DriverDevmode(HANDLE printer, std::wstring name, const std::vector<uint8_t>& in,
                   std::vector<uint8_t>& out, std::string& error) {
    const LONG size = DocumentPropertiesW(nullptr, printer, name.data(), nullptr, nullptr, 0);
    if (size < static_cast<LONG>(sizeof(DEVMODEW)) || size > static_cast<LONG>(kMaxSpoolerAnswer)) {
        error = "the driver gave no devmode size (DocumentPropertiesW returned " +
                std::to_string(size) + ", " + ErrorText(GetLastError()) + ")";
        return false;
    }
    out.assign(static_cast<size_t>(size), 0);
    std::vector<uint8_t> input = in;
    const LONG rc =
        DocumentPropertiesW(nullptr, printer, name.data(), reinterpret_cast<DEVMODEW*>(out.data()),
                            input.empty() ? nullptr : reinterpret_cast<DEVMODEW*>(input.data()),
                            DM_OUT_BUFFER | (input.empty() ? 0 : DM_IN_BUFFER));
    if (rc != IDOK) {
        error = "the driver refused the devmode (DocumentPropertiesW returned " +
                std::to_string(rc) + ", " + ErrorText(GetLastError()) + ")";
        return false;
    }
    return true;
}

// The plug-in's block in a devmode the driver composed: right after the public part.
OEMDEV* RecordInDriverDevmode(std::vector<uint8_t>& devmode) {
    if (devmode.size() < sizeof(DEVMODEW))
        return nullptr;
    const size_t at = reinterpret_cast<const DEVMODEW*>(devmode.data())->dmSize;
    if (at + sizeof(OEMDEV) > devmode.size())
        return nullptr;
    auto* rec = reinterpret_cast<OEMDEV*>(devmode.data() + at);
    return rec->dmExtraHeader.dwSignature == KIVITEM_SIGNATURE &&
                   rec->dmExtraHeader.dwSize == OEMDEV_SIZE
               ? rec
               : nullptr;
}

// A printer as the command sees it: its model and the settings its pages would start from.
struct PrinterSettings {
    std::wstring name;
    PrinterHandle printer;
    DWORD level = 9;
    std::unique_ptr<UiDeviceCommon> device;
    std::vector<uint8_t> kept;  // as the spooler keeps it; empty when it keeps none
    OEMDEV effective{};
    std::string note;  // why the model's defaults stand in for what is kept
};

int OpenPrinterSettings(const KivSettingsCommand& command, DWORD access, PrinterSettings& s) {
    s.name = WideFromUtf8(command.printer);
    s.level = KeptLevel(command);
    PRINTER_DEFAULTSW defaults{.pDatatype = nullptr, .pDevMode = nullptr, .DesiredAccess = access};
    if (!OpenPrinterW(s.name.data(), s.printer.out(), &defaults)) {
        const DWORD code = GetLastError();
        if (code == ERROR_ACCESS_DENIED && access == PRINTER_ALL_ACCESS)
            return Fail(kExitSpooler, "administering the printer \"" + command.printer +
                                          "\" is needed for --printer-default (" + ErrorText(code) +
                                          ")");
        return Fail(kExitSpooler, "cannot open the printer \"" + command.printer + "\" (" +
                                      ErrorText(code) + ")");
    }
    // The model comes from the driver's data file, as the plug-in reads it.
    const std::wstring dataFile = PrinterDataFile(s.printer.get());
    if (dataFile.empty())
        return Fail(kExitSpooler, "the spooler names no driver data file for \"" + command.printer +
                                      "\" (" + ErrorText(GetLastError()) + ")");
    const GpdReadResult modelText = ReadModelDataTextFromFile(dataFile);
    if (!modelText.found)
        return Fail(kExitSpooler,
                    "\"" + command.printer + "\" is not a KIV printer: its driver data file " +
                        Utf8FromWide(dataFile) + " has no model data text (*OEMCustomData)");
    const std::vector<std::string> pieces = SplitModelText(modelText.text);
    s.device = CreateUiDevice(ModelTextPiece(pieces, 0), ModelTextPiece(pieces, 1),
                              ModelTextPiece(pieces, 2), ModelTextPiece(pieces, 3));
    if (s.device->GetModelName().empty())
        return Fail(kExitSpooler, "the model \"" + ModelTextPiece(pieces, 0) + "\" of \"" +
                                      command.printer + "\" is not one this kivsettings knows");

    s.kept = KeptDevmode(s.printer.get(), s.level);
    std::vector<uint8_t> source = s.kept;
    std::string error;
    if (source.empty() && !DriverDevmode(s.printer.get(), s.name, {}, source, error))
        return Fail(kExitSpooler, "\"" + command.printer + "\": " + error);
    const FoundRecord found = FindSettingsRecord(source);
    const OEMDEV saved = found.found ? found.record : OEMDEV{};
    RepairWorkingRecord(saved, s.effective, *s.device, NarrowAnsi(s.name));
    s.note = StoredSettingsNote(found, saved, s.device->GetModelName());
    if (!s.note.empty() && s.kept.empty())
        s.note = "nothing is kept as " + KeptWhere(s.level) + " yet";
    return kExitOk;
}

int Show(const KivSettingsCommand& command) {
    PrinterSettings s;
    if (const int rc = OpenPrinterSettings(command, PRINTER_ACCESS_USE, s); rc != kExitOk)
        return rc;
    std::string text = "printer : " + command.printer + "\n";
    text +=
        "kept as : " + KeptWhere(s.level) + " (GetPrinter level " + std::to_string(s.level) + ")\n";
    if (!s.note.empty())
        text += "note    : " + s.note + kDefaultsShown + "\n";
    Print(text + ShowSettings(s.effective, *s.device));
    return kExitOk;
}

int Export(const KivSettingsCommand& command) {
    PrinterSettings s;
    if (const int rc = OpenPrinterSettings(command, PRINTER_ACCESS_USE, s); rc != kExitOk)
        return rc;
    const std::string text = WriteSettingsFile(s.effective);
    // Standard output carries the file itself, so what is said about it goes to standard error.
    if (!s.note.empty())
        PrintError("kivsettings: " + s.note + kDefaultsShown + "\n");
    if (command.file.empty()) {
        Print(text);
        return kExitOk;
    }
    if (!WriteWholeFile(command.file, text))
        return Fail(kExitBadArgument, "cannot write " + command.file);
    Print("exported the settings of \"" + command.printer + "\" (" + KeptWhere(s.level) + ") to " +
          command.file + "\n");
    return kExitOk;
}

// Stores `devmode` where `s.level` keeps it. Level 2 rewrites the printer's whole information,
// so it is read first and only its devmode replaced; its security stays untouched.
bool StoreDevmode(PrinterSettings& s, std::vector<uint8_t>& devmode, std::string& error) {
    BOOL stored = FALSE;
    if (s.level == 9) {
        PRINTER_INFO_9W info{.pDevMode = reinterpret_cast<DEVMODEW*>(devmode.data())};
        stored = SetPrinterW(s.printer.get(), 9, reinterpret_cast<BYTE*>(&info), 0);
    } else {
        DWORD needed = 0;
        GetPrinterW(s.printer.get(), 2, nullptr, 0, &needed);
        std::vector<BYTE> buf(
            needed >= sizeof(PRINTER_INFO_2W) && needed <= kMaxSpoolerAnswer ? needed : 0);
        if (!buf.empty() && GetPrinterW(s.printer.get(), 2, buf.data(), needed, &needed)) {
            auto* info = reinterpret_cast<PRINTER_INFO_2W*>(buf.data());
            info->pDevMode = reinterpret_cast<DEVMODEW*>(devmode.data());
            info->pSecurityDescriptor = nullptr;
            stored = SetPrinterW(s.printer.get(), 2, buf.data(), 0);
        }
    }
    if (stored)
        return true;
    const DWORD code = GetLastError();
    error =
        code == ERROR_ACCESS_DENIED && s.level == 2
            ? "administering this printer is needed for --printer-default (" + ErrorText(code) + ")"
            : "the spooler did not store the settings (SetPrinterW level " +
                  std::to_string(s.level) + ", " + ErrorText(code) + ")";
    return false;
}

int Import(const KivSettingsCommand& command) {
    std::vector<uint8_t> bytes;
    const FileRead read = ReadWholeFile(command.file, kMaxInputFileBytes, bytes);
    if (read != FileRead::kOk)
        return Fail(kExitBadArgument, FileReadError(command.file, read));
    // Storing the printer-wide default needs the right to administer the printer; a dry run
    // stores nothing and asks for no more than reading.
    const DWORD access =
        command.printerDefault && !command.dryRun ? PRINTER_ALL_ACCESS : PRINTER_ACCESS_USE;
    PrinterSettings s;
    if (const int rc = OpenPrinterSettings(command, access, s); rc != kExitOk)
        return rc;
    const SettingsFileResult result = ReadSettingsFile(
        std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()), s.effective,
        *s.device);
    if (!result.problems.empty()) {
        PrintError(ProblemLines(command.file, result.problems));
        return Fail(kExitRefused, "nothing imported into \"" + command.printer + "\"");
    }
    if (!s.note.empty())
        Print("note    : " + s.note + "; the file's settings go on top of the model's defaults\n");

    // The current devmode as the driver composes it, the file's record put into it, and the
    // driver's merge once more, so the plug-in's own checks of an incoming record run on it.
    std::vector<uint8_t> current, merged;
    std::string error;
    if (!DriverDevmode(s.printer.get(), s.name, s.kept, current, error))
        return Fail(kExitSpooler, "\"" + command.printer + "\": " + error);
    OEMDEV* slot = RecordInDriverDevmode(current);
    if (slot == nullptr)
        return Fail(kExitSpooler, "the driver of \"" + command.printer +
                                      "\" composes no KIV settings block into its devmode");
    // The header stays the driver's; everything after it is the file's.
    std::memcpy(reinterpret_cast<uint8_t*>(slot) + sizeof(OemDmExtraHeader),
                reinterpret_cast<const uint8_t*>(&result.record) + sizeof(OemDmExtraHeader),
                sizeof(OEMDEV) - sizeof(OemDmExtraHeader));
    if (!DriverDevmode(s.printer.get(), s.name, current, merged, error))
        return Fail(kExitSpooler, "\"" + command.printer + "\": " + error);
    const OEMDEV* after = RecordInDriverDevmode(merged);
    if (after == nullptr)
        return Fail(kExitSpooler, "the driver of \"" + command.printer +
                                      "\" dropped the KIV settings block in its merge");

    const std::vector<std::string> changes = ChangedSettings(s.effective, *after);
    std::string text;
    for (const std::string& change : changes)
        text += "  " + change + "\n";
    const std::string count =
        std::to_string(changes.size()) + (changes.size() == 1 ? " setting" : " settings");
    text = (changes.empty()  ? std::string("nothing changed")
            : command.dryRun ? count + " would change (--dry-run: nothing stored)"
                             : count + " changed") +
           "\n" + text;
    if (command.dryRun) {
        Print(text);
        return kExitOk;
    }
    if (!StoreDevmode(s, merged, error))
        return Fail(kExitSpooler, "\"" + command.printer + "\": " + error);
    // What the spooler hands back is what every application and the pages start from next.
    const std::vector<uint8_t> kept = KeptDevmode(s.printer.get(), s.level);
    const FoundRecord keptRecord = FindSettingsRecord(kept);
    if (!keptRecord.found || std::memcmp(&keptRecord.record, after, sizeof(OEMDEV)) != 0)
        return Fail(kExitSpooler, "\"" + command.printer +
                                      "\": the spooler keeps other settings than were stored");
    Print(text + "stored as " + KeptWhere(s.level) + " of \"" + command.printer + "\"\n");
    return kExitOk;
}

}  // namespace

std::string Utf8FromWide(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int needed = length > 0 ? WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0,
                                                        nullptr, nullptr)
                                  : 0;
    std::string narrow(static_cast<size_t>(needed > 0 ? needed : 0), '\0');
    if (needed > 0)
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), needed, nullptr,
                            nullptr);
    return narrow;
}

int RunSpoolerCommand(const KivSettingsCommand& command) {
    switch (command.kind) {
        case KivSettingsCommand::Kind::kShow:
            return Show(command);
        case KivSettingsCommand::Kind::kExport:
            return Export(command);
        case KivSettingsCommand::Kind::kImport:
            return Import(command);
        default:
            return Fail(kExitBadArgument, "not a spooler command");
    }
}
