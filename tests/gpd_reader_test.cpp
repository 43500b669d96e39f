// Tests of the "*OEMCustomData:" reader over in-memory GPD files.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "entry/gpd_reader.h"
#include "golden_file.h"
#include "support/memory_files.h"

namespace {

GpdReadResult ReadMain(const std::string& text, const GpdReadLimits& limits = {}) {
    MemoryFiles files;
    files.files["main.gpd"] = text;
    return ReadGpdOEMCustomData(files, "main.gpd", limits);
}

// The text of a case of gpd_values.txt, with "\n", "\r", "\t" and "\xHH" for those bytes.
std::string Unescaped(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (text[i] != '\\' || !std::strchr("nrtx", next) || next == '\0')
            out += text[i];
        else if (next == 'x')
            out += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16)), i += 3;
        else
            out += next == 'n' ? '\n' : next == 'r' ? '\r' : '\t', ++i;
    }
    return out;
}

// Each "GPD: <text>" case of gpd_values.txt, alone and after a good entry: the value read and
// how many entries were bad. A bad later entry leaves the earlier good one in place.
TEST(GpdReader, ValueFormsAndMalformedValuesAsTheGoldenFileSays) {
    ExpectGoldenCases("gpd_values.txt", [](const std::string& line) -> std::optional<std::string> {
        if (!line.starts_with("GPD: "))
            return std::nullopt;
        const GpdReadResult alone = ReadMain(Unescaped(line.substr(5)));
        const GpdReadResult after =
            ReadMain("*OEMCustomData: \"GOOD\"\n" + Unescaped(line.substr(5)));
        return (alone.found ? "<" + alone.text + ">" : std::string("none")) + ", " +
               std::to_string(alone.badEntries) + " bad; after a good one <" + after.text + ">";
    });
}

TEST(GpdReader, NoEntryOtherKeywordsAndAMissingFile) {
    const GpdReadResult r = ReadMain(
        "*GPDSpecVersion: \"1.0\"\n"
        "*% *OEMCustomData: \"COMMENTED\"\n"
        "*OEMCustomDataX: \"OTHER\"\n"
        "*oemcustomdata: \"CASE\"\n"
        "*ModelName: \"*OEMCustomData: X\"\n");
    EXPECT_FALSE(r.found);
    EXPECT_EQ("", r.text);
    EXPECT_EQ(0u, r.unreadFiles);

    MemoryFiles files;
    const GpdReadResult missing = ReadGpdOEMCustomData(files, "absent.gpd");
    EXPECT_FALSE(missing.found);
    EXPECT_EQ(1u, missing.unreadFiles);
}

// Included files form one stream: a later entry wins wherever it sits, a missing include is
// skipped, and path parts of an include name are dropped since all files sit in one folder.
TEST(GpdReader, IncludedFilesFormOneStream) {
    MemoryFiles files;
    files.files["main.gpd"] =
        "*Include: \"StdNames.gpd\"\n"
        "*Include: \"C:\\other\\path\\model.gpd\"\n"
        "*Include: gone.gpd\n";
    files.files["StdNames.gpd"] = "*OEMCustomData: \"FROM_STDNAMES\"\n";
    files.files["model.gpd"] = "*Include: \"deeper.gpd\"\n";
    files.files["deeper.gpd"] = "*OEMCustomData: \"TRX418A|S\"\n";
    GpdReadResult r = ReadGpdOEMCustomData(files, "main.gpd");
    EXPECT_EQ("TRX418A|S", r.text);
    EXPECT_EQ(1u, r.unreadFiles);
    EXPECT_EQ((std::vector<std::string>{"main.gpd", "StdNames.gpd", "model.gpd", "deeper.gpd",
                                        "gone.gpd"}),
              files.reads);

    files.files["main.gpd"] += "*OEMCustomData: \"MAIN\"\n";
    EXPECT_EQ("MAIN", ReadGpdOEMCustomData(files, "main.gpd").text);
}

// A file that includes itself stops at the depth bound; one that includes itself twice would
// walk exponentially without the file bound; a file past the byte budget is not read.
TEST(GpdReader, LimitsBoundTheWalk) {
    MemoryFiles files;
    files.files["loop.gpd"] = "*OEMCustomData: \"L\"\n*Include: \"loop.gpd\"\n";
    files.files["fan.gpd"] = "*Include: fan.gpd\n*Include: fan.gpd\n";
    files.files["main.gpd"] = "*Include: \"a.gpd\"\n*OEMCustomData: \"MAIN\"\n";
    files.files["a.gpd"] = std::string(100, ' ') + "\n*OEMCustomData: \"A\"\n";
    GpdReadLimits limits;
    limits.maxIncludeDepth = 3;
    GpdReadResult r = ReadGpdOEMCustomData(files, "loop.gpd", limits);
    EXPECT_EQ("L", r.text);
    EXPECT_TRUE(r.limitReached);
    EXPECT_EQ(4u, files.reads.size());  // depth 0..3

    files.reads.clear();
    limits.maxFiles = 10;
    limits.maxIncludeDepth = 30;
    EXPECT_TRUE(ReadGpdOEMCustomData(files, "fan.gpd", limits).limitReached);
    EXPECT_EQ(10u, files.reads.size());

    limits.maxTotalBytes = 80;
    r = ReadGpdOEMCustomData(files, "main.gpd", limits);
    EXPECT_TRUE(r.limitReached);
    EXPECT_EQ("MAIN", r.text);
}

TEST(GpdReader, OverLongTextIsSkipped) {
    GpdReadLimits limits;
    limits.maxValueBytes = 8;
    EXPECT_EQ("12345678", ReadMain("*OEMCustomData: \"12345678\"\n", limits).text);
    for (const char* over : {"\"123456789\"", "\"12345\" \"6789\"", "<41424344 45464748 49>"}) {
        SCOPED_TRACE(over);
        const GpdReadResult r = ReadMain(std::string("*OEMCustomData: ") + over + "\n", limits);
        EXPECT_FALSE(r.found);
        EXPECT_EQ(1u, r.badEntries);
    }
}

}  // namespace
