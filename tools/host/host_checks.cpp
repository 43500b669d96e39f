// What the host checks before it opens anything, and what it reads out of the plug-in's reports.
#include "host_checks.h"

#include <cwctype>

bool IsPagePicture(const std::wstring& fileName, const std::vector<std::wstring>& titles,
                   std::wstring (*fileNamePart)(const std::wstring&)) {
    const std::wstring suffix = L".png";
    if (fileName.size() < 3 + suffix.size() || !iswdigit(fileName[0]) || !iswdigit(fileName[1]) ||
        fileName[2] != L'_' ||
        fileName.compare(fileName.size() - suffix.size(), suffix.size(), suffix) != 0)
        return false;
    const std::wstring title = fileName.substr(3, fileName.size() - 3 - suffix.size());
    for (const std::wstring& candidate : titles) {
        if (fileNamePart(candidate) == title)
            return true;
    }
    return false;
}
