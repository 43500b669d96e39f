// The Version page's report: the driver's files and versions, the GPD and INF version lines and
// the operating system, one line each.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "ports/file_reader.h"
#include "ports/registry_hive.h"
#include "ports/spooler.h"
#include "ports/version_query.h"

struct VersionReportOptions {
    bool fullPath = false;  // name files by their whole path
    bool hash = false;      // end each file's line with its SHA-1
};

// The options from the printer's configuration key: DWORD values "VersionReport_FullPath" and
// "VersionReport_Hash", on when present and non-zero.
VersionReportOptions ReadVersionReportOptions(RegistryHive& currentUser,
                                              const std::u16string& printerName);

// What the report shows about the operating system.
struct OsReportValues {
    std::string productName, displayVersion;
    std::map<std::string, uint32_t> versionMap;  // "MajorVersion", "MinorVersion", "Build"
};

struct VersionReportInputs {
    PrinterDriverInfo driver;
    std::string monitorModule;  // the language monitor's module name; empty when none
    OsReportValues os;
    VersionReportOptions options;
};

// The report's lines, in order.
std::vector<std::string> VersionReportLines(const VersionReportInputs& in, VersionQuery& versions,
                                            FileReader& files);

// The lines joined with "\r\n", as the report box and the clipboard take them.
std::string JoinReportLines(const std::vector<std::string>& lines);

// The file's SHA-1 in lower-case hexadecimal; empty when it cannot be read.
std::string FileSha1Hex(FileReader& files, const std::string& path);
