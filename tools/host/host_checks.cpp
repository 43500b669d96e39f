// What the host checks before it opens anything, and what it reads out of the plug-in's reports.
#include "host_checks.h"

#include <algorithm>
#include <cstring>
#include <cwctype>

#include "driver_package.h"
#include "host_output.h"
#include "png_capture.h"
#include "settings/oemdev.h"
#include "wine_printer.h"

namespace {

bool IsFolder(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The folder part of a path; "." for a bare name, which lives in the current folder.
std::wstring ParentOf(const std::wstring& path) {
    const size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring::npos ? std::wstring(L".") : path.substr(0, slash + 1);
}

void Problem(std::vector<std::string>& out, const char* option, const std::wstring& path,
             const std::wstring& why) {
    // As typed: a Windows path's backslashes stay single.
    out.push_back(std::string(option) + " \"" + Utf8(path) + "\": " + Utf8(why));
}

// A file the host reads (--devmode: it must be there), or one the plug-in's file dialogs open or
// save (--file): not a folder, and the folder it is in must exist.
std::wstring FileProblem(const std::wstring& path, bool mustExist) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (IsFolder(attributes))
        return L"is a folder, not a file";
    const std::wstring parent = ParentOf(path);
    if (!IsFolder(GetFileAttributesW(parent.c_str())))
        return L"its folder does not exist";
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return mustExist ? L"no such file" : std::wstring();
    HANDLE f = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (f == INVALID_HANDLE_VALUE)
        return L"cannot be read (" + Win32ErrorText(GetLastError()) + L")";
    CloseHandle(f);
    return {};
}

bool Contains(const std::string& line, const char* text) {
    return line.find(text) != std::string::npos;
}

}  // namespace

std::wstring FolderUnwritable(const std::wstring& folder) {
    std::wstring error;
    if (!MakeDirectories(folder, error))
        return L"cannot be created (" + error + L")";
    // GetTempFileNameW writes at most MAX_PATH characters: the folder, a backslash and 12 more.
    wchar_t probe[MAX_PATH] = {};
    if (folder.size() >= MAX_PATH - 14)
        return L"too long a path for a file in it";
    if (GetTempFileNameW(folder.c_str(), L"kiv", 0, probe) == 0)
        return L"no file can be written in it (" + Win32ErrorText(GetLastError()) + L")";
    DeleteFileW(probe);
    return {};
}

std::vector<std::string> CheckOptionPaths(const HostOptions& opts) {
    std::vector<std::string> problems;
    if (!opts.devmodeFile.empty()) {
        const std::wstring why = FileProblem(opts.devmodeFile, true);
        if (!why.empty())
            Problem(problems, "--devmode", opts.devmodeFile, why);
    }
    if (!opts.packageDir.empty()) {
        if (!IsFolder(GetFileAttributesW(opts.packageDir.c_str())))
            Problem(problems, "--package", opts.packageDir, L"no such folder");
        else if (ListPackageModels(opts.packageDir).empty())
            Problem(problems, "--package", opts.packageDir, L"holds no model's GPD");
    }
    const struct {
        const char* option;
        const std::wstring& dir;
    } folders[] = {{.option = "--screenshots", .dir = opts.screenshotDir},
                   {.option = "--screenshots-before", .dir = opts.screenshotBeforeDir}};
    for (const auto& folder : folders) {
        const std::wstring why = folder.dir.empty() ? std::wstring() : FolderUnwritable(folder.dir);
        if (!why.empty())
            Problem(problems, folder.option, folder.dir, why);
    }
    if (!opts.fileAnswer.empty()) {
        const std::wstring why = FileProblem(opts.fileAnswer, false);
        if (!why.empty())
            Problem(problems, "--file", opts.fileAnswer, why);
    }
    return problems;
}

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

std::string RecordResetReason(const std::vector<std::string>& logLines) {
    // The plug-in's own words for the repair at the opening, which starts the pages from the
    // model's defaults. (A record its merge did not recognise is not among them: the pages start
    // from the incoming record all the same.)
    static constexpr struct {
        const char* logged;
        const char* reason;
    } kResets[] = {
        {.logged = "KIVITEM_SIGN_H is different", .reason = "the record's guard words are damaged"},
        // Also the defaults the host hands in for a devmode it could not read.
        {.logged = "Model is different, reset STRUCT",
         .reason = "the record names another model, or none"},
        {.logged = "KIVITEM_VERCURRENT is different",
         .reason = "the record has another layout version"},
    };
    for (const auto& reset : kResets) {
        for (const std::string& line : logLines) {
            if (Contains(line, reset.logged))
                return reset.reason;
        }
    }
    return {};
}

bool UsesGenericDevice(const std::vector<std::string>& logLines,
                       const std::vector<uint8_t>* saved) {
    if (saved != nullptr) {
        OEMDEV record{};
        std::memcpy(&record, saved->data(), std::min(saved->size(), sizeof record));
        return record.payload.modelName[0] == '\0';
    }
    for (const std::string& line : logLines) {
        if (Contains(line, "PrinterDevice <>"))
            return true;
    }
    return false;
}
