// Reads the models and their default paper out of the driver package's GPD files.
#include "driver_package.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "win/windows_headers_win.h"

namespace {

std::string ReadText(const std::wstring& path) {
    std::ifstream file(path.c_str(), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// The text after `key` on its line, blanks trimmed; empty when the key is not found after `from`.
std::string ValueAfter(const std::string& text, const std::string& key, size_t from = 0,
                       size_t* at = nullptr) {
    const size_t start = text.find(key, from);
    if (start == std::string::npos)
        return {};
    size_t begin = start + key.size();
    size_t end = text.find_first_of("\r\n", begin);
    if (end == std::string::npos)
        end = text.size();
    while (begin < end && text[begin] == ' ')
        ++begin;
    while (end > begin && text[end - 1] == ' ')
        --end;
    if (at != nullptr)
        *at = end;
    return text.substr(begin, end - begin);
}

// "PAIR(a, b)" as two numbers; false when it is not one.
bool ParsePair(const std::string& value, int& a, int& b) {
    return std::sscanf(value.c_str(), "PAIR(%d, %d)", &a, &b) == 2 && a > 0 && b > 0;
}

std::wstring Widen(const std::string& text) {
    return std::wstring(text.begin(), text.end());
}

// A model GPD: its name, its master units and the default paper's page dimensions.
bool ReadModel(const std::wstring& path, PackageModel& model) {
    const std::string text = ReadText(path);
    const std::string name = ValueAfter(text, "*ModelName:");
    const std::string prefix = "\"KIV ";
    if (name.size() < prefix.size() + 2 || name.compare(0, prefix.size(), prefix) != 0 ||
        name.back() != '"')
        return false;
    int dpiY = 0;
    size_t at = 0;
    const size_t paper = text.find("*Feature: PaperSize");
    const std::string option = paper == std::string::npos
                                   ? std::string()
                                   : ValueAfter(text, "*DefaultOption:", paper, &at);
    const size_t block = option.empty() ? std::string::npos : text.find("*Option: " + option, at);
    if (!ParsePair(ValueAfter(text, "*MasterUnits:"), model.dpi, dpiY) ||
        block == std::string::npos ||
        !ParsePair(ValueAfter(text, "*PageDimensions:", block), model.widthDots, model.lengthDots))
        return false;
    model.model = Widen(name.substr(prefix.size(), name.size() - prefix.size() - 1));
    model.gpdFile = path;
    return true;
}

}  // namespace

std::vector<PackageModel> ListPackageModels(const std::wstring& packageDir) {
    std::vector<PackageModel> models;
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileW((packageDir + L"\\KIV_*.GPD").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return models;
    do {
        PackageModel model;
        if (ReadModel(packageDir + L"\\" + found.cFileName, model))
            models.push_back(model);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(models.begin(), models.end(),
              [](const PackageModel& a, const PackageModel& b) { return a.model < b.model; });
    return models;
}
