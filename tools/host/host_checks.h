// What the host checks before it opens anything, and what it reads out of the plug-in's own
// reports for the summary: kept apart from the run so each check has one home.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host_options.h"

// The paths of the command line (--devmode, --package, --screenshots, --screenshots-before,
// --file), checked before a printer is installed or a sheet opened, so a typing mistake costs
// nothing. One line per failure, "--option PATH: why"; empty when every path is usable.
std::vector<std::string> CheckOptionPaths(const HostOptions& opts);

// Why nothing can be written in `folder` (it cannot be created, or a file cannot be made in
// it); empty when it can. A folder it had to create is left in place.
std::wstring FolderUnwritable(const std::wstring& folder);

// Whether `fileName` is a page picture as the host names it, "NN_<title>.png", for one of
// `titles` (each turned into a file name by `fileNamePart`).
bool IsPagePicture(const std::wstring& fileName, const std::vector<std::wstring>& titles,
                   std::wstring (*fileNamePart)(const std::wstring&));

// The plug-in's reason in words when, by its log lines, it threw away the settings record it was
// handed and started from the model's defaults; empty when it kept them.
std::string RecordResetReason(const std::vector<std::string>& logLines);

// Whether the plug-in found no model of its own for the printer's model text and took its
// generic device, which offers none of the model's features: a record it saved (`saved`, null
// when none was) carries no model name, and it logs that device under an empty name.
bool UsesGenericDevice(const std::vector<std::string>& logLines, const std::vector<uint8_t>* saved);
