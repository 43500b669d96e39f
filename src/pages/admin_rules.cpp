// The Admin page's three actions, decided on ports so that the page only moves their results.
#include "pages/admin_rules.h"

#include "infra/config.h"

namespace {

// The longest folder the file explorer is handed, terminator included (MAX_PATH).
constexpr size_t kFolderChars = 260;

}  // namespace

std::string AdminRegistryPath(const std::string& printerName) {
    return "HKCU\\SOFTWARE\\Orvane\\Kiv\\" + printerName;
}

std::optional<RegistryNotice> OpenRegistryEditor(bool windows7, const std::string& path,
                                                 RegistryHive& currentUser, TextCodec& text,
                                                 ProgramLauncher& launcher) {
    if (windows7)
        return RegistryNotice{path, "Run regedit.exe and open the path " + path};
    if (currentUser.SetString(kRegeditAppletKey, u"LastKey", text.Widen(path)))
        launcher.Start("regedit.exe", "", kSystemFolder);
    return std::nullopt;
}

const char* LogButtonText(uint32_t logVerbosity) {
    return logVerbosity != 0 ? "DISABLE Log" : "ENABLE Log";
}

uint32_t SwitchLogging(RegistryHive& currentUser, TextCodec& text,
                       const std::u16string& printerName) {
    Configuration config;
    ReadConfiguration(currentUser, text, printerName, config);
    config.logVerbosity = config.logVerbosity != 0 ? 0 : kLogOnVerbosity;
    WriteConfiguration(currentUser, text, printerName, config, 0);
    return config.logVerbosity;
}

bool OpenLogFolder(const std::string& logFolder, Folders& folders, ProgramLauncher& launcher) {
    std::string folder;
    if (!folders.Expand(logFolder, kFolderChars, &folder) || !folders.Exists(folder))
        return false;
    return launcher.Start("explorer.exe", folder, kSystemFolder);
}
