// What the host checks before it opens anything, and what it reads out of the plug-in's own
// reports for the summary: kept apart from the run so each check has one home.
#pragma once

#include <string>
#include <vector>

// Whether `fileName` is a page picture as the host names it, "NN_<title>.png", for one of
// `titles` (each turned into a file name by `fileNamePart`).
bool IsPagePicture(const std::wstring& fileName, const std::vector<std::wstring>& titles,
                   std::wstring (*fileNamePart)(const std::wstring&));
