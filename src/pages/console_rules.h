// The Console page's rules: the start-job and end-job commands, their modes, checks and storage.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "pages/page_view.h"
#include "ports/folders.h"
#include "ports/registry_hive.h"
#include "ports/text_codec.h"

class UiDeviceCommon;

// What the command text boxes hand back, terminator excluded.
inline constexpr size_t kFreeBufferTextLimit = 1535;
inline constexpr size_t kFreeBufferPathLimit = 259;

enum class FreeBufferSide { kStart, kEnd };

// The command source list ("None", "File", "Text(ABC) or Hex(\x0A)") against the record's modes:
// every text mode shows as the text entry, and the text entry stores FREE_CMD_MODE_ASCII.
uint8_t CommandModeFromSelection(int selection);
int SelectionFromCommandMode(uint8_t mode);

// The text a stored command shows: a file path as it is, command bytes in the notation that
// reads back into the same bytes (printable characters as themselves, the rest and the
// backslash as "\xHH").
std::string CommandText(uint8_t mode, std::span<const uint8_t> bytes);

struct CommandView {
    ComboView source;
    std::string text;
    bool textEnabled;
    bool browseShown;
};
// A command's controls for a mode: no text box without a source, Browse only for a file.
CommandView CommandViewFor(uint8_t mode, std::string text);

struct ConsolePageView {
    CommandView start;
    CommandView end;
};
ConsolePageView MakeConsolePageView(const UiDeviceCommon& device);

// The Console controls as Apply reads them.
struct ConsoleControls {
    int startSelection;
    std::string startText;
    int endSelection;
    std::string endText;
};
// A text-source command: it must convert, hold at least one byte and no more than 512.
std::optional<ValidationFailure> ValidateFreeBufferText(std::string_view text, FreeBufferSide side);
// The start command, then the end command, by the mode each list selects.
std::optional<ValidationFailure> ValidateConsoleControls(const ConsoleControls& controls,
                                                         const FileExists& fileExists);
// Each command's mode and its bytes (the path of a file, the converted text) into the device.
void StoreConsoleControls(UiDeviceCommon& device, const ConsoleControls& controls);

// The set-up application's uninstall entry, in the 32-bit view of the local machine: its
// installer registers it under this product key.
inline constexpr const char16_t* kRigsetUninstallKey =
    u"SOFTWARE\\WOW6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
    u"{25B428D7-4F2B-4914-B60C-5AC456B1C1E2}";
// The set-up program ("InstallLocation" + "\OvRigset.exe"); empty when it is not installed or
// its location is empty. Installers may store the location with environment variables
// (REG_EXPAND_SZ); it is expanded then.
std::string RigsetProgramPath(RegistryHive& localMachine, TextCodec& text, Folders& folders);
// The folder part of a program path (up to its last "/" or "\"); empty without one.
std::string WorkingFolderOf(const std::string& program);
// Ctrl held at the click opens the set-up program on its log menu.
const char* RigsetParameters(bool ctrlHeld);
