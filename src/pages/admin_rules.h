// The Admin page's rules: the registry editor at the printer's key, the log switch, the log
// folder in the file explorer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "ports/folders.h"
#include "ports/program_launcher.h"
#include "ports/registry_hive.h"
#include "ports/text_codec.h"

// The working folder both programs start in.
inline constexpr const char* kSystemFolder = "c:\\windows\\system32";
// The registry editor opens at the key this value names.
inline constexpr const char16_t* kRegeditAppletKey =
    u"Software\\Microsoft\\Windows\\CurrentVersion\\Applets\\Regedit";
// The verbosity the log button switches on: everything the log writes.
inline constexpr uint32_t kLogOnVerbosity = 7;

// "HKCU\SOFTWARE\Orvane\Kiv\<printer name>", as the registry editor names the printer's key.
std::string AdminRegistryPath(const std::string& printerName);

// Windows 7's editor is not pointed at a key this way, so the user gets the path on the
// clipboard and a message saying where to go.
struct RegistryNotice {
    std::string clipboardText;
    std::string message;
};
// The Registry button: on Windows 7 the notice to show; elsewhere "LastKey" is written and the
// editor started (nothing at all when the write fails), and no notice.
std::optional<RegistryNotice> OpenRegistryEditor(bool windows7, const std::string& path,
                                                 RegistryHive& currentUser, TextCodec& text,
                                                 ProgramLauncher& launcher);

// The log button's text for the verbosity the sheet was opened with.
const char* LogButtonText(uint32_t logVerbosity);
// The log button: the printer's configuration read afresh, logging switched off when it was on
// and fully on when it was off, written back. Returns the verbosity written.
uint32_t SwitchLogging(RegistryHive& currentUser, TextCodec& text,
                       const std::u16string& printerName);

// Open Log Folder: the file explorer on the expanded folder when it exists; false when nothing
// was started.
bool OpenLogFolder(const std::string& logFolder, Folders& folders, ProgramLauncher& launcher);
