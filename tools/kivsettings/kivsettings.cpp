// kivsettings' portable side: command line, help, bounded file reads and the decode command.
#include "kivsettings.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <span>

namespace {

std::filesystem::path PathFromUtf8(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

int Decode(const std::string& file) {
    std::vector<uint8_t> bytes;
    const FileRead read = ReadWholeFile(file, kMaxInputFileBytes, bytes);
    if (read != FileRead::kOk) {
        PrintError("kivsettings: " + FileReadError(file, read) + "\n");
        return kExitBadArgument;
    }
    const DecodedSettings decoded = DecodeSettings(std::span<const uint8_t>(bytes));
    if (!decoded.ok) {
        std::string why = decoded.text;
        while (!why.empty() && why.back() == '\n')
            why.pop_back();
        PrintError("kivsettings: " + file + ": " + why + "\n");
        return kExitRefused;
    }
    Print(decoded.text);
    return kExitOk;
}

}  // namespace

bool ParseKivSettingsArgs(const std::vector<std::string>& args, KivSettingsCommand& command,
                          std::string& error) {
    command = KivSettingsCommand{};
    std::vector<std::string> words;
    for (const std::string& arg : args) {
        if (arg == "--help" || arg == "-h" || arg == "/?") {
            command.kind = KivSettingsCommand::Kind::kHelp;
            return true;
        }
        if (arg == "--printer-default") {
            command.printerDefault = true;
        } else if (arg == "--dry-run") {
            command.dryRun = true;
        } else if (arg.size() > 1 && arg[0] == '-' && arg != "-") {
            error = "unknown option " + arg;
            return false;
        } else {
            words.push_back(arg);
        }
    }
    if (words.empty()) {
        error = "no command";
        return false;
    }
    struct Shape {
        const char* name;
        KivSettingsCommand::Kind kind;
        size_t fewest, most;  // arguments after the command
        bool printerDefault, dryRun;
        const char* usage;
    };
    static constexpr Shape kShapes[] = {
        {.name = "show",
         .kind = KivSettingsCommand::Kind::kShow,
         .fewest = 1,
         .most = 1,
         .printerDefault = true,
         .dryRun = false,
         .usage = "show PRINTER [--printer-default]"},
        {.name = "export",
         .kind = KivSettingsCommand::Kind::kExport,
         .fewest = 1,
         .most = 2,
         .printerDefault = true,
         .dryRun = false,
         .usage = "export PRINTER [FILE] [--printer-default]"},
        {.name = "import",
         .kind = KivSettingsCommand::Kind::kImport,
         .fewest = 2,
         .most = 2,
         .printerDefault = true,
         .dryRun = true,
         .usage = "import PRINTER FILE [--printer-default] [--dry-run]"},
        {.name = "decode",
         .kind = KivSettingsCommand::Kind::kDecode,
         .fewest = 1,
         .most = 1,
         .printerDefault = false,
         .dryRun = false,
         .usage = "decode FILE"},
    };
    for (const Shape& shape : kShapes) {
        if (words[0] != shape.name)
            continue;
        const size_t given = words.size() - 1;
        if (given < shape.fewest || given > shape.most ||
            (command.printerDefault && !shape.printerDefault) ||
            (command.dryRun && !shape.dryRun)) {
            error = std::string("usage: kivsettings ") + shape.usage;
            return false;
        }
        command.kind = shape.kind;
        if (shape.kind == KivSettingsCommand::Kind::kDecode) {
            command.file = words[1];
        } else {
            command.printer = words[1];
            command.file = given > 1 ? words[2] : std::string();
        }
        if (command.printer.empty() && shape.kind != KivSettingsCommand::Kind::kDecode) {
            error = "the printer's name is empty";
            return false;
        }
        return true;
    }
    error = "unknown command " + words[0];
    return false;
}

const char* KivSettingsUsage() {
    return "kivsettings: reads, exports, imports and decodes the private settings of a KIV "
           "printer.\n"
           "\n"
           "  kivsettings show PRINTER [--printer-default]\n"
           "      The settings the printer's pages start from, setting by setting: the value by\n"
           "      name and label, what the model offers, and a note on each value it does not.\n"
           "      Without the option the user's printing preferences (GetPrinter level 9), with\n"
           "      it the printer-wide default (level 2); the spooler's default when none is kept.\n"
           "  kivsettings export PRINTER [FILE] [--printer-default]\n"
           "      The same settings as a settings file (to standard output without FILE): a\n"
           "      header naming the model and the format, one \"setting = VALUE\" line each.\n"
           "  kivsettings import PRINTER FILE [--printer-default] [--dry-run]\n"
           "      Checks the whole file against the printer's model first; any problem is\n"
           "      printed as FILE:LINE: message and nothing is written. Settings the file leaves\n"
           "      out keep their values. The result goes through the driver and is stored as the\n"
           "      user's printing preferences, or with --printer-default as the printer-wide\n"
           "      default (this needs the right to administer the printer). Prints what changed;\n"
           "      --dry-run prints it and stores nothing.\n"
           "  kivsettings decode FILE\n"
           "      A settings record or a whole devmode saved from a support case, shown as show\n"
           "      shows it. Also runs on Linux.\n"
           "\n"
           "Exit codes: 0 done, 1 a bad argument or a file that cannot be read or written,\n"
           "2 the file's content refused (its problems are printed), 3 the printer or the\n"
           "spooler failed or refused access.\n";
}

FileRead ReadWholeFile(const std::string& utf8Path, size_t maxBytes, std::vector<uint8_t>& bytes) {
    bytes.clear();
    std::error_code error;
    const std::filesystem::path path = PathFromUtf8(utf8Path);
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found)
        return FileRead::kMissing;
    if (error || !std::filesystem::is_regular_file(status))
        return FileRead::kUnreadable;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return FileRead::kUnreadable;
    // One byte past the limit tells a file that is too long from one that is exactly as long,
    // without trusting a size read before the file was opened.
    bytes.resize(maxBytes + 1);
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (in.bad())
        return FileRead::kUnreadable;
    bytes.resize(static_cast<size_t>(in.gcount()));
    if (bytes.size() > maxBytes) {
        bytes.clear();
        return FileRead::kTooLarge;
    }
    return FileRead::kOk;
}

std::string FileReadError(const std::string& utf8Path, FileRead status) {
    switch (status) {
        case FileRead::kMissing:
            return "cannot read " + utf8Path + ": no such file";
        case FileRead::kTooLarge:
            return "cannot read " + utf8Path + ": longer than " +
                   std::to_string(kMaxInputFileBytes) +
                   " bytes, which no settings file or devmode is";
        case FileRead::kUnreadable:
            return "cannot read " + utf8Path + ": not a readable file";
        case FileRead::kOk:
            break;
    }
    return {};
}

bool WriteWholeFile(const std::string& utf8Path, const std::string& text) {
    std::ofstream out(PathFromUtf8(utf8Path), std::ios::binary | std::ios::trunc);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    return static_cast<bool>(out);
}

std::string ProblemLines(const std::string& file,
                         const std::vector<SettingsFileProblem>& problems) {
    std::string lines;
    for (const SettingsFileProblem& problem : problems) {
        lines += file;
        if (problem.line > 0)
            lines.append(":").append(std::to_string(problem.line));
        lines.append(": ").append(problem.message).append("\n");
    }
    return lines;
}

std::string StoredSettingsNote(const FoundRecord& found, const OEMDEV& saved,
                               const std::string& deviceModel) {
    if (!found.found)
        return "the kept devmode holds no KIV settings (" + found.problem + ")";
    const std::string model = RecordModelName(saved);
    switch (KeptRecordFault(saved, deviceModel)) {
        case RecordFault::kHeadGuards:
            return "the kept settings are damaged (their head guards are wrong)";
        case RecordFault::kModel:
            return model.empty() ? "no settings have been saved for this printer yet"
                                 : "the kept settings are for the model \"" + model + "\", not \"" +
                                       deviceModel + "\"";
        case RecordFault::kLayoutVersion:
            return "the kept settings have another layout version (" +
                   std::to_string(saved.dwVerCurrent) + ")";
        case RecordFault::kNone:
            break;
    }
    return {};
}

namespace {

int Run(const std::vector<std::string>& args, SpoolerCommand spooler) {
    KivSettingsCommand command;
    std::string error;
    if (!ParseKivSettingsArgs(args, command, error)) {
        PrintError("kivsettings: " + error + "; see --help\n");
        return kExitBadArgument;
    }
    switch (command.kind) {
        case KivSettingsCommand::Kind::kHelp:
            Print(KivSettingsUsage());
            return kExitOk;
        case KivSettingsCommand::Kind::kDecode:
            return Decode(command.file);
        default:
            break;
    }
    if (spooler == nullptr) {
        PrintError(
            "kivsettings: show, export and import talk to the Windows print spooler; "
            "here only decode and --help run\n");
        return kExitBadArgument;
    }
    return spooler(command);
}

}  // namespace

int RunKivSettings(const std::vector<std::string>& args, SpoolerCommand spooler) {
    try {
        return Run(args, spooler);
    } catch (const std::exception& e) {
        // Only memory running out gets here; the printer is left as it was.
        PrintError(std::string("kivsettings: stopped: ") + e.what() + "\n");
        return kExitSpooler;
    }
}

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

void PrintError(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}
