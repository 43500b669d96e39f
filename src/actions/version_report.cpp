// The version report: file lines, the GPD and INF version lines, the operating-system lines.
#include "actions/version_report.h"

#include <algorithm>

#include "actions/sha1.h"
#include "infra/config.h"
#include "infra/text_format.h"

namespace {

constexpr size_t kMaxTextFileBytes = 4u << 20;  // a GPD or INF read for one line

bool IsCommonGpd(const std::string& path) {
    const std::string upper = UpperAscii(path);
    return upper.find(".GPD") != std::string::npos && upper.find("COMMON") != std::string::npos;
}

std::string FileName(const std::string& path) {
    const size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string HashSuffix(FileReader& files, const std::string& path, bool on) {
    return on ? " [SHA1: " + FileSha1Hex(files, path) + "]" : std::string();
}

// The first line of the file that starts with `prefix`, without its line end; empty when none.
std::string LineStartingWith(FileReader& files, const std::string& path,
                             const std::string& prefix) {
    std::string text;
    bool tooLarge = false;
    files.Read(path, [&](const uint8_t* data, size_t size) {
        if (text.size() + size > kMaxTextFileBytes)
            tooLarge = true;
        if (!tooLarge)
            text.append(reinterpret_cast<const char*>(data), size);
    });
    for (size_t start = 0; start < text.size();) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
            line.pop_back();
        const size_t first = line.find_first_not_of(" \t");
        if (first != std::string::npos && line.compare(first, prefix.size(), prefix) == 0)
            return line.substr(first);
        start = end + 1;
    }
    return {};
}

}  // namespace

VersionReportOptions ReadVersionReportOptions(RegistryHive& currentUser,
                                              const std::u16string& printerName) {
    const std::u16string key = ConfigurationKey(printerName);
    uint32_t fullPath = 0, hash = 0;
    ReadRegistryDword(currentUser, key, u"VersionReport_FullPath", &fullPath);
    ReadRegistryDword(currentUser, key, u"VersionReport_Hash", &hash);
    return {fullPath != 0, hash != 0};
}

std::string FileSha1Hex(FileReader& files, const std::string& path) {
    Sha1 sha;
    if (!files.Read(path, [&sha](const uint8_t* data, size_t size) { sha.Update(data, size); }))
        return {};
    return Sha1Hex(sha.Final());
}

std::vector<std::string> VersionReportLines(const VersionReportInputs& in, VersionQuery& versions,
                                            FileReader& files) {
    const PrinterDriverInfo& d = in.driver;
    std::vector<std::string> paths = {d.driverPath, d.dataFile, d.configFile, d.helpFile};
    paths.insert(paths.end(), d.dependentFiles.begin(), d.dependentFiles.end());
    // A driver names one file in several roles (the configuration module is often also the
    // driver module); it is reported once.
    std::vector<std::string> distinct;
    for (const std::string& path : paths)
        if (!path.empty() && std::find(distinct.begin(), distinct.end(), path) == distinct.end())
            distinct.push_back(path);
    if (!in.monitorModule.empty())
        distinct.push_back("c:\\windows\\system32\\" + in.monitorModule);

    std::vector<std::string> lines;
    std::string commonGpd;
    for (const std::string& path : distinct) {
        if (IsCommonGpd(path)) {
            commonGpd = path;
            continue;
        }
        FileVersion version;
        const std::string name = in.options.fullPath ? path : FileName(path);
        lines.push_back(name + " : " +
                        (versions.FixedVersion(path, &version) ? FileVersionText(version) : "N/A") +
                        HashSuffix(files, path, in.options.hash));
    }

    const std::pair<std::string, const char*> versionLines[] = {
        {d.dataFile, "*GPDFileVersion:"},
        {commonGpd, "*% GPDCOMMONFileVersion:"},
        {d.infPath, "DriverVer"},
    };
    for (const auto& [path, prefix] : versionLines) {
        const std::string line =
            path.empty() ? std::string() : LineStartingWith(files, path, prefix);
        if (!line.empty())
            lines.push_back(line + HashSuffix(files, path, in.options.hash));
    }

    const auto number = [&](const char* key) {
        const auto it = in.os.versionMap.find(key);
        return it == in.os.versionMap.end() ? std::string() : std::to_string(it->second);
    };
    lines.push_back("OS ProductName: " + in.os.productName);
    lines.push_back("OS DisplayVersion: " + in.os.displayVersion);
    lines.push_back("OS MajorVersion: " + number("MajorVersion"));
    lines.push_back("OS MinorVersion: " + number("MinorVersion"));
    lines.push_back("OS Build: " + number("Build"));
    return lines;
}

std::string JoinReportLines(const std::vector<std::string>& lines) {
    std::string text;
    for (size_t i = 0; i < lines.size(); ++i)
        text += (i == 0 ? "" : "\r\n") + lines[i];
    return text;
}
