// A bounded reading of the few GPD entries the driver itself needs. The text rules of a value
// are the core GPD reader's; only the main file is read (the package's shared file holds no
// paper size or source).
#include "model_gpd.h"

#include <cstdio>

#include "entry/gpd_reader.h"
#include "win/windows_headers_win.h"

namespace {

constexpr size_t kMaxGpdBytes = 4u << 20;
constexpr size_t kMaxNameBytes = 256;

std::string Trim(const std::string& s) {
    size_t b = 0, e = s.size();
    while (b < e && (s[b] == ' ' || s[b] == '\t' || s[b] == '\r'))
        ++b;
    while (e > b && (s[e - 1] == ' ' || s[e - 1] == '\t' || s[e - 1] == '\r'))
        --e;
    return s.substr(b, e - b);
}

// The value after "*Key:" when `line` is that entry.
bool Entry(const std::string& line, const char* key, std::string& value) {
    const std::string k = std::string("*") + key + ":";
    if (line.compare(0, k.size(), k) != 0)
        return false;
    value = Trim(line.substr(k.size()));
    return true;
}

std::wstring FromAnsi(const std::string& text) {
    if (text.empty())
        return {};
    const int n =
        MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring w(static_cast<size_t>(n > 0 ? n : 0), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), w.data(), n);
    return w;
}

bool Pair(const std::string& value, int& a, int& b) {
    return std::sscanf(value.c_str(), "PAIR(%d, %d)", &a, &b) == 2 && a > 0 && b > 0 &&
           a < 1000000 && b < 1000000;
}

}  // namespace

bool ParseGpdModel(const std::string& text, GpdModel& model) {
    model = GpdModel{};
    enum class Feature { kNone, kPaper, kBin } feature = Feature::kNone;
    int depth = 0;
    std::string defaultPaper, option;
    std::vector<std::string> paperKeys;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        const std::string line = Trim(text.substr(start, end - start));
        start = end + 1;
        std::string value;
        if (line == "{") {
            ++depth;
        } else if (line == "}") {
            if (--depth <= 0) {
                depth = 0;
                feature = Feature::kNone;
            }
        } else if (depth == 0 && Entry(line, "Feature", value)) {
            feature = value == "PaperSize"  ? Feature::kPaper
                      : value == "InputBin" ? Feature::kBin
                                            : Feature::kNone;
        } else if (depth == 0 && Entry(line, "ModelName", value)) {
            std::string name;
            if (DecodeGpdStringValue(value, kMaxNameBytes, name))
                model.modelName = FromAnsi(name);
        } else if (depth == 0 && Entry(line, "MasterUnits", value)) {
            int y = 0;
            Pair(value, model.dpi, y);
        } else if (depth == 1 && feature == Feature::kPaper &&
                   Entry(line, "DefaultOption", value)) {
            defaultPaper = value;
        } else if (depth == 1 && feature != Feature::kNone && Entry(line, "Option", value)) {
            std::vector<GpdOption>& list = feature == Feature::kPaper ? model.papers : model.bins;
            if (list.size() < kMaxGpdOptions) {
                list.push_back(GpdOption{.name = FromAnsi(value)});
                if (feature == Feature::kPaper)
                    paperKeys.push_back(value);
            }
        } else if (depth == 2 && feature != Feature::kNone) {
            std::vector<GpdOption>& list = feature == Feature::kPaper ? model.papers : model.bins;
            if (list.empty())
                continue;
            std::string name;
            if (Entry(line, "Name", value) && DecodeGpdStringValue(value, kMaxNameBytes, name))
                list.back().name = FromAnsi(name);
            else if (Entry(line, "PageDimensions", value))
                Pair(value, list.back().widthDots, list.back().lengthDots);
        }
    }
    for (size_t i = 0; i < paperKeys.size(); ++i) {
        if (paperKeys[i] == defaultPaper)
            model.defaultPaper = i;
    }
    return !model.papers.empty() && model.dpi > 0;
}

bool ReadGpdModel(const std::wstring& path, GpdModel& model) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    LARGE_INTEGER size = {};
    std::string text;
    if (GetFileSizeEx(file, &size) && size.QuadPart > 0 &&
        static_cast<ULONGLONG>(size.QuadPart) <= kMaxGpdBytes) {
        text.resize(static_cast<size_t>(size.QuadPart));
        DWORD got = 0;
        if (!ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &got, nullptr))
            got = 0;
        text.resize(got);
    }
    CloseHandle(file);
    return ParseGpdModel(text, model);
}

int DotsToTenthsOfMm(int dots, int dpi) {
    return dpi > 0 ? (dots * 254 + dpi / 2) / dpi : 0;
}
