// Tests of the "*OEMCustomData:" reader over in-memory GPD files.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "entry/gpd_reader.h"
#include "support/memory_files.h"

namespace {

GpdReadResult ReadMain(const std::string& text, const GpdReadLimits& limits = {}) {
    MemoryFiles files;
    files.files["main.gpd"] = text;
    return ReadGpdOEMCustomData(files, "main.gpd", limits);
}

TEST(GpdReader, ValueForms) {
    struct Case {
        const char* what;
        std::string gpd;
        std::string expected;
    };
    const Case cases[] = {
        {"blanks before the colon", "*OEMCustomData  :\t\"A\"\n", "A"},
        {"indented entry", "   *OEMCustomData: \"A\"\r\n", "A"},
        {"hex inside quotes", "*OEMCustomData: \"A<42 43>D\"\n", "ABCD"},
        {"hex pairs with blanks", "*OEMCustomData: \"<5 4 58>\"\n", "TX"},
        {"hex outside quotes", "*OEMCustomData: <41> \"B\"\n", "AB"},
        {"escaped quote", "*OEMCustomData: \"A%\"B\"\n", "A\"B"},
        {"other percent is literal", "*OEMCustomData: \"50%%x\"\n", "50%%x"},
        {"adjacent pieces join", "*OEMCustomData: \"TRX\" \"418A\"\n", "TRX418A"},
        {"comment after value", "*OEMCustomData: \"A\" *% the model\n", "A"},
        {"comment mark inside quotes", "*OEMCustomData: \"A*%B\"\n", "A*%B"},
        {"continuation line", "*OEMCustomData: \"TRX\"\n+ \"418A\"\n", "TRX418A"},
        {"continuation inside a string", "*OEMCustomData: \"TRX\n   +418A\"\n", "TRX418A"},
        {"comment before continuation", "*OEMCustomData: \"TRX\" *% c \"no\"\n+\"418A\"\n",
         "TRX418A"},
        {"empty string", "*OEMCustomData: \"\"\n", ""},
        {"text ends at NUL", "*OEMCustomData: \"AB<00>CD\"\n", "AB"},
        {"no newline at end", "*OEMCustomData: \"A\"", "A"},
        {"ends at DOS eof", "*OEMCustomData: \"A\"\n\x1A*OEMCustomData: \"B\"\n", "A"},
        {"UTF-8 BOM", "\xEF\xBB\xBF*OEMCustomData: \"A\"\n", "A"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const GpdReadResult r = ReadMain(c.gpd);
        EXPECT_TRUE(r.found);
        EXPECT_EQ(c.expected, r.text);
        EXPECT_EQ(0u, r.badEntries);
    }
}

TEST(GpdReader, MalformedValuesAreSkipped) {
    const char* const bad[] = {
        "*OEMCustomData: TRX418A\n",     // not quoted
        "*OEMCustomData: \"TRX418A\n",   // not closed
        "*OEMCustomData: \"TRX%\"\n",    // the % escapes the closing quote
        "*OEMCustomData: \"<4>\"\n",     // odd digit count
        "*OEMCustomData: \"<4G>\"\n",    // not hex
        "*OEMCustomData: \"<41\"\n",     // hex not closed
        "*OEMCustomData:\n",             // no value
        "*OEMCustomData: \"A\" junk\n",  // trailing bare text
    };
    for (const char* line : bad) {
        SCOPED_TRACE(line);
        const GpdReadResult alone = ReadMain(line);
        EXPECT_FALSE(alone.found);
        EXPECT_EQ("", alone.text);
        EXPECT_EQ(1u, alone.badEntries);
        // A bad later entry leaves the earlier good one in place.
        const GpdReadResult after = ReadMain(std::string("*OEMCustomData: \"GOOD\"\n") + line);
        EXPECT_TRUE(after.found);
        EXPECT_EQ("GOOD", after.text);
    }
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
