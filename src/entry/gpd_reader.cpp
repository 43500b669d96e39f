// Reads the "*OEMCustomData:" entry from a model's GPD files, following the GPD text rules.
#include "entry/gpd_reader.h"

#include <algorithm>
#include <string_view>

#include "infra/text_format.h"

namespace {

constexpr std::string_view kOEMCustomDataKeyword = "*OEMCustomData";
constexpr std::string_view kIncludeKeyword = "*Include";

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}

// Parses "<hex pairs>" starting at value[i] == '<'; blanks may stand between the digits.
bool ParseHex(const std::string& value, size_t& i, std::string& out) {
    ++i;
    int pending = -1;
    while (i < value.size()) {
        const char c = value[i++];
        if (c == '>')
            return pending < 0;
        if (IsBlank(c))
            continue;
        const int digit = HexDigitValue(c);
        if (digit < 0)
            return false;
        if (pending < 0) {
            pending = digit;
        } else {
            out.push_back(static_cast<char>(pending * 16 + digit));
            pending = -1;
        }
    }
    return false;  // no closing '>'
}

// Copies a physical line's text from `from` on, up to a "*%" comment outside quotes. The quote
// state carries over continuation lines, so a comment mark inside a string is kept.
void AppendUncommented(std::string_view line, size_t from, std::string& dst, bool& inQuote) {
    for (size_t i = from; i < line.size(); ++i) {
        const char c = line[i];
        if (inQuote) {
            if (c == '%' && i + 1 < line.size()) {
                dst.push_back(c);
                dst.push_back(line[++i]);
                continue;
            }
            if (c == '"')
                inQuote = false;
        } else {
            if (c == '*' && i + 1 < line.size() && line[i + 1] == '%')
                return;
            if (c == '"')
                inQuote = true;
        }
        dst.push_back(c);
    }
}

// When `line` (leading blanks skipped) is "<keyword> [blanks] : rest", sets `rest`.
bool MatchEntry(std::string_view line, std::string_view keyword, std::string_view& rest) {
    size_t i = 0;
    while (i < line.size() && IsBlank(line[i]))
        ++i;
    if (line.substr(i, keyword.size()) != keyword)
        return false;
    i += keyword.size();
    while (i < line.size() && IsBlank(line[i]))
        ++i;
    if (i >= line.size() || line[i] != ':')
        return false;
    rest = line.substr(i + 1);
    return true;
}

// The file name of an *Include, without any path it may carry (files sit in one folder).
std::string IncludeName(std::string_view rest) {
    size_t i = 0;
    while (i < rest.size() && IsBlank(rest[i]))
        ++i;
    std::string name;
    if (i < rest.size() && rest[i] == '"') {
        const size_t end = rest.find('"', i + 1);
        if (end == std::string_view::npos)
            return {};
        name = std::string(rest.substr(i + 1, end - i - 1));
    } else {
        size_t end = i;
        while (end < rest.size() && !IsBlank(rest[end]))
            ++end;
        name = std::string(rest.substr(i, end - i));
    }
    const size_t slash = name.find_last_of("\\/:");
    if (slash != std::string::npos)
        name.erase(0, slash + 1);
    return name;
}

class GpdWalker {
  public:
    GpdWalker(GpdFileSource& files, const GpdReadLimits& limits) : files_(files), limits_(limits) {}

    void ProcessFile(const std::string& name, size_t depth) {
        if (filesRead_ >= limits_.maxFiles || totalBytes_ >= limits_.maxTotalBytes) {
            result_.limitReached = true;
            return;
        }
        ++filesRead_;
        const size_t budget = std::min(limits_.maxFileBytes, limits_.maxTotalBytes - totalBytes_);
        std::string contents;
        const GpdFileSource::Status status = files_.Read(name, budget, contents);
        if (status == GpdFileSource::Status::kTooLarge) {
            result_.limitReached = true;
            return;
        }
        if (status != GpdFileSource::Status::kOk || contents.size() > budget) {
            ++result_.unreadFiles;
            return;
        }
        totalBytes_ += contents.size();
        ProcessText(contents, depth);
    }

    GpdReadResult Finish() { return std::move(result_); }

  private:
    void ProcessText(std::string_view text, size_t depth) {
        if (text.substr(0, 3) == "\xEF\xBB\xBF")
            text.remove_prefix(3);
        // A DOS end-of-file mark ends the text.
        const size_t eof = text.find('\x1A');
        if (eof != std::string_view::npos)
            text = text.substr(0, eof);

        std::string logical;
        bool pending = false;
        bool inQuote = false;
        size_t start = 0;
        while (start <= text.size()) {
            size_t end = text.find('\n', start);
            if (end == std::string_view::npos)
                end = text.size();
            std::string_view line = text.substr(start, end - start);
            if (!line.empty() && line.back() == '\r')
                line.remove_suffix(1);

            size_t first = 0;
            while (first < line.size() && IsBlank(line[first]))
                ++first;
            if (pending && first < line.size() && line[first] == '+') {
                AppendUncommented(line, first + 1, logical, inQuote);
            } else {
                if (pending)
                    ProcessLogicalLine(logical, depth);
                logical.clear();
                inQuote = false;
                AppendUncommented(line, 0, logical, inQuote);
                pending = true;
            }
            start = end + 1;
        }
        if (pending)
            ProcessLogicalLine(logical, depth);
    }

    void ProcessLogicalLine(const std::string& line, size_t depth) {
        std::string_view rest;
        if (MatchEntry(line, kOEMCustomDataKeyword, rest)) {
            std::string decoded;
            if (DecodeGpdStringValue(std::string(rest), limits_.maxValueBytes, decoded)) {
                // A later entry replaces an earlier one, as the driver's own parser does.
                result_.text = std::move(decoded);
                result_.found = true;
            } else {
                ++result_.badEntries;
            }
        } else if (MatchEntry(line, kIncludeKeyword, rest)) {
            const std::string name = IncludeName(rest);
            if (name.empty())
                return;
            if (depth + 1 > limits_.maxIncludeDepth) {
                result_.limitReached = true;
                return;
            }
            ProcessFile(name, depth + 1);
        }
    }

    GpdFileSource& files_;
    const GpdReadLimits& limits_;
    GpdReadResult result_;
    size_t filesRead_ = 0;
    size_t totalBytes_ = 0;
};

}  // namespace

bool DecodeGpdStringValue(const std::string& value, size_t maxBytes, std::string& out) {
    out.clear();
    bool anyPiece = false;
    size_t i = 0;
    while (i < value.size()) {
        const char c = value[i];
        if (IsBlank(c) || c == '\r' || c == '\n') {
            ++i;
        } else if (c == '<') {
            if (!ParseHex(value, i, out))
                return false;
            anyPiece = true;
        } else if (c == '"') {
            ++i;
            bool closed = false;
            while (i < value.size()) {
                const char s = value[i];
                if (s == '"') {
                    ++i;
                    closed = true;
                    break;
                }
                if (s == '%' && i + 1 < value.size() &&
                    (value[i + 1] == '"' || value[i + 1] == '<')) {
                    // Only these two are escapes; any other '%' is itself.
                    out.push_back(value[i + 1]);
                    i += 2;
                } else if (s == '<') {
                    if (!ParseHex(value, i, out))
                        return false;
                } else {
                    out.push_back(s);
                    ++i;
                }
                if (out.size() > maxBytes)
                    return false;
            }
            if (!closed)
                return false;
            anyPiece = true;
        } else {
            return false;  // bare text: the value must be quoted
        }
        if (out.size() > maxBytes)
            return false;
    }
    if (!anyPiece)
        return false;
    const size_t nul = out.find('\0');
    if (nul != std::string::npos)
        out.resize(nul);
    return true;
}

GpdReadResult ReadGpdOEMCustomData(GpdFileSource& files, const std::string& mainFile,
                                   const GpdReadLimits& limits) {
    GpdWalker walker(files, limits);
    walker.ProcessFile(mainFile, 0);
    return walker.Finish();
}
