// The Console page's rules: the start-job and end-job commands, their modes, checks and storage.
#include "pages/console_rules.h"

#include "infra/config.h"
#include "infra/text_format.h"
#include "pages/free_buffer.h"
#include "settings/setting_enums.h"
#include "settings/setting_ranges.h"
#include "settings/ui_device_common.h"

namespace {

constexpr int kSourceNone = 0;
constexpr int kSourceFile = 1;
constexpr int kSourceText = 2;

ValidationFailure Failure(std::string message, std::string logLine) {
    return ValidationFailure{std::move(message), PageId::kConsole, std::move(logLine)};
}

std::optional<ValidationFailure> CheckCommand(int selection, std::string_view rawText,
                                              FreeBufferSide side, const FileExists& fileExists) {
    const uint8_t mode = CommandModeFromSelection(selection);
    if (mode == FREE_CMD_MODE_NONE) {
        return std::nullopt;
    }
    if (mode != FREE_CMD_MODE_FILENAME) {
        return ValidateFreeBufferText(rawText, side);
    }
    const char* sideName = side == FreeBufferSide::kStart ? "Start" : "End";
    const std::string path(LimitText(rawText, kFreeBufferPathLimit));
    const char* message = "The path of a free buffer file is wrong or empty";
    if (path.empty()) {
        return Failure(message, Format("Free Buffers %s : Filename Empty", sideName));
    }
    if (!fileExists(path)) {
        return Failure(
            message, Format("Free Buffers %s : path doesn't exists <%s>", sideName, path.c_str()));
    }
    return std::nullopt;
}

std::vector<uint8_t> CommandBytes(uint8_t mode, std::string_view rawText) {
    if (mode == FREE_CMD_MODE_FILENAME) {
        const std::string_view path = LimitText(rawText, kFreeBufferPathLimit);
        return std::vector<uint8_t>(path.begin(), path.end());
    }
    if (mode == FREE_CMD_MODE_NONE) {
        return {};
    }
    std::vector<uint8_t> bytes = ParseFreeBuffer(LimitText(rawText, kFreeBufferTextLimit)).bytes;
    if (bytes.size() > kFreeBufferMaxBytes) {
        bytes.resize(kFreeBufferMaxBytes);
    }
    return bytes;
}

}  // namespace

uint8_t CommandModeFromSelection(int selection) {
    switch (selection) {
        case kSourceFile:
            return FREE_CMD_MODE_FILENAME;
        case kSourceText:
            return FREE_CMD_MODE_ASCII;
        default:
            return FREE_CMD_MODE_NONE;
    }
}

int SelectionFromCommandMode(uint8_t mode) {
    if (mode == FREE_CMD_MODE_FILENAME) {
        return kSourceFile;
    }
    return IsTextMode(mode) ? kSourceText : kSourceNone;
}

std::string CommandText(uint8_t mode, std::span<const uint8_t> bytes) {
    std::string text;
    if (mode == FREE_CMD_MODE_FILENAME) {
        return std::string(bytes.begin(), bytes.end());
    }
    if (!IsTextMode(mode)) {
        return text;
    }
    for (size_t i = 0; i < bytes.size(); ++i) {
        const uint8_t byte = bytes[i];
        // A backslash reads back as itself unless an "x" follows it, so only then is it escaped:
        // a typed path comes back as the user typed it.
        const bool escapes = byte == '\\' && i + 1 < bytes.size() && bytes[i + 1] == 'x';
        if (byte >= 0x20 && byte < 0x7F && !escapes) {
            text += static_cast<char>(byte);
        } else {
            AppendHexEscape(text, byte);
        }
    }
    return text;
}

CommandView CommandViewFor(uint8_t mode, std::string text) {
    const int selection = SelectionFromCommandMode(mode);
    return CommandView{ComboView{ConsoleCommandSourceLabels(), selection}, std::move(text),
                       selection != kSourceNone, selection == kSourceFile};
}

ConsolePageView MakeConsolePageView(const UiDeviceCommon& device) {
    const uint8_t start = device.GetStartJobBufferMode();
    const uint8_t end = device.GetEndJobBufferMode();
    return ConsolePageView{
        CommandViewFor(start, CommandText(start, device.GetStartJobBuffer())),
        CommandViewFor(end, CommandText(end, device.GetEndJobBuffer())),
    };
}

std::optional<ValidationFailure> ValidateFreeBufferText(std::string_view rawText,
                                                        FreeBufferSide side) {
    const bool start = side == FreeBufferSide::kStart;
    const std::string text(LimitText(rawText, kFreeBufferTextLimit));
    const FreeBufferParse parsed = ParseFreeBuffer(text);
    const char* formatMessage = "The ASCII format of a free buffer file is wrong or empty";
    // kept-behaviour: Free-buffer log texts
    if (!parsed.error.empty()) {
        return Failure(formatMessage, start ? "Free Buffers Start : Buffer Empty"
                                            : "Free Buffers End : Buffer empty");
    }
    if (parsed.bytes.empty()) {
        return Failure(formatMessage, Format(start ? "Free Buffers Start : Buffer convertion "
                                                     "error <%s>"
                                                   : "Free Buffers End : Buffer convertion error "
                                                     "<%s>",
                                             text.c_str()));
    }
    if (parsed.bytes.size() > kFreeBufferMaxBytes) {
        const int max = static_cast<int>(kFreeBufferMaxBytes);
        return Failure(Format("The free buffer size is over the max (%d)", max),
                       Format(start ? "Free Buffers Start : Buffer size error (%d %d)"
                                    : "Free Buffers End : Buffer size error (%d %d)",
                              static_cast<int>(parsed.bytes.size()), max));
    }
    return std::nullopt;
}

std::optional<ValidationFailure> ValidateConsoleControls(const ConsoleControls& controls,
                                                         const FileExists& fileExists) {
    if (auto failure = CheckCommand(controls.startSelection, controls.startText,
                                    FreeBufferSide::kStart, fileExists)) {
        return failure;
    }
    return CheckCommand(controls.endSelection, controls.endText, FreeBufferSide::kEnd, fileExists);
}

void StoreConsoleControls(UiDeviceCommon& device, const ConsoleControls& controls) {
    const uint8_t start = CommandModeFromSelection(controls.startSelection);
    const uint8_t end = CommandModeFromSelection(controls.endSelection);
    device.SetStartJobBufferMode(start);
    device.SetStartJobBuffer(CommandBytes(start, controls.startText));
    device.SetEndJobBufferMode(end);
    device.SetEndJobBuffer(CommandBytes(end, controls.endText));
}

std::string RigsetProgramPath(RegistryHive& localMachine, TextCodec& text, Folders& folders) {
    RegistryValue raw;
    if (localMachine.Query(kRigsetUninstallKey, u"InstallLocation",
                           kRegistryStringChars * sizeof(char16_t), raw) != RegistryStatus::kOk ||
        (raw.type != kRegSz && raw.type != kRegExpandSz)) {
        return {};
    }
    std::string location = text.Narrow(WideTextFromBytes(raw.data));
    if (raw.type == kRegExpandSz) {
        std::string expanded;
        if (!folders.Expand(location, kRegistryStringChars, &expanded)) {
            return {};
        }
        location = std::move(expanded);
    }
    while (!location.empty() && (location.back() == '\\' || location.back() == '/')) {
        location.pop_back();
    }
    return location.empty() ? std::string() : location + "\\OvRigset.exe";
}

std::string WorkingFolderOf(const std::string& program) {
    const size_t separator = program.find_last_of("/\\");
    return separator == std::string::npos ? std::string() : program.substr(0, separator);
}

const char* RigsetParameters(bool ctrlHeld) {
    return ctrlHeld ? "/SWLOGMENU" : "";
}
