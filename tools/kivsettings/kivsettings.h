// kivsettings' portable side: its command line, help and exit codes, the bounded file reads and
// the decode command, so everything but the spooler's part also builds and runs on Linux.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "settings/oemdev.h"
#include "settings/settings_file.h"

// The exit codes --help lists.
enum KivSettingsExit : int {
    kExitOk = 0,
    kExitBadArgument = 1,  // a bad argument, a file that cannot be read or written
    kExitRefused = 2,      // the file's content refused: a settings file's problems, bad bytes
    kExitSpooler = 3,      // the printer or the spooler failed, or refused access
};

struct KivSettingsCommand {
    enum class Kind { kHelp, kShow, kExport, kImport, kDecode };
    Kind kind = Kind::kHelp;
    std::string printer;  // UTF-8
    std::string file;     // UTF-8; export without one writes to standard output
    bool printerDefault = false;
    bool dryRun = false;
};

// `args` without the program name, each in UTF-8. False with a one-line reason on bad input.
bool ParseKivSettingsArgs(const std::vector<std::string>& args, KivSettingsCommand& command,
                          std::string& error);

const char* KivSettingsUsage();

// A settings file is a few kilobytes and a devmode at most 64 KiB past its public part; anything
// much larger is not one of them and is not read at all.
inline constexpr size_t kMaxInputFileBytes = 1u << 20;

enum class FileRead { kOk, kMissing, kTooLarge, kUnreadable };
FileRead ReadWholeFile(const std::string& utf8Path, size_t maxBytes, std::vector<uint8_t>& bytes);
// "cannot read FILE: no such file" and the like, for a read that was not kOk.
std::string FileReadError(const std::string& utf8Path, FileRead status);
bool WriteWholeFile(const std::string& utf8Path, const std::string& text);

// Each problem as "FILE:LINE: message" ("FILE: message" for the file as a whole), one a line.
std::string ProblemLines(const std::string& file, const std::vector<SettingsFileProblem>& problems);

// Why the pages would not take `saved` (the record found in a printer's devmode) as it is and
// start from the model's defaults instead, tested in the pages' order; empty when they keep it.
// `found` tells whether the devmode held the plug-in's block at all.
std::string StoredSettingsNote(const FoundRecord& found, const OEMDEV& saved,
                               const std::string& deviceModel);

// The spooler's part (show, export, import); null where there is no spooler.
using SpoolerCommand = int (*)(const KivSettingsCommand& command);

// The whole program: parses, prints help or errors, runs decode here and hands the rest to
// `spooler`. Returns the exit code.
int RunKivSettings(const std::vector<std::string>& args, SpoolerCommand spooler);

// Standard output and error, flushed at once so a parent reading a pipe sees every line.
void Print(const std::string& text);
void PrintError(const std::string& text);
