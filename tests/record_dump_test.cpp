// Tests of the field-by-field description of a settings record.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "entry/devmode.h"
#include "settings/record_dump.h"
#include "settings/setting_enums.h"

namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line))
        lines.push_back(line);
    return lines;
}

// The value of "field = value", or "<absent>".
std::string ValueOf(const std::string& text, const std::string& field) {
    for (const std::string& line : Lines(text)) {
        if (line.rfind(field + " = ", 0) == 0)
            return line.substr(field.size() + 3);
    }
    return "<absent>";
}

OEMDEV DefaultRecord() {
    OEMDEV rec;
    std::memset(&rec, 0x5A, sizeof rec);
    SetOEMDevDefault(rec);
    return rec;
}

TEST(RecordDump, EveryLineIsOneDistinctFieldInRecordOrder) {
    const std::string text = DescribeOemDev(DefaultRecord());
    const std::vector<std::string> lines = Lines(text);
    std::set<std::string> fields;
    for (const std::string& line : lines) {
        const size_t eq = line.find(" = ");
        ASSERT_NE(std::string::npos, eq) << line;
        EXPECT_TRUE(fields.insert(line.substr(0, eq)).second) << "twice: " << line;
    }
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ("dwSize = 3329", lines.front());
    EXPECT_EQ("dwSignTail2 = 0xFFBBFFDD", lines.back());
    // Four logos of five fields each are all there.
    EXPECT_TRUE(fields.count("logos[3].path"));
    EXPECT_FALSE(fields.count("logos[4].enable"));
}

TEST(RecordDump, ValuesAndNames) {
    OEMDEV rec = DefaultRecord();
    OemDevPayload& p = rec.payload;
    std::strcpy(p.modelName, "TRX418A CUT");
    p.supCutter = 1;
    p.cutMode = PRN_PROP_NO_CUT;
    p.supDensity = 1;
    p.density = PRN_PROP_DENS_NORMAL;
    p.quality = 0x21;  // no such quality
    p.page2PageExtra = PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_DOC;
    p.offsetX = -12;
    p.cashDrawerTimeOn = 256;
    p.startJobBufferMode = FREE_CMD_MODE_ASCII;
    p.startJobBufferLength = 3;
    std::memcpy(p.startJobBuffer, "\x1B\x40\x0A", 3);
    p.endJobBufferMode = FREE_CMD_MODE_FILENAME;
    std::strcpy(reinterpret_cast<char*>(p.endJobBuffer), "C:\\cmd\\end.bin");
    const std::string text = DescribeOemDev(rec);

    struct Case {
        const char* field;
        const char* value;
    };
    const Case cases[] = {
        {"dwSignature", "0x4B495643 'KIVC'"},
        {"dwSignHead1", "0xAABBCCDD"},
        {"dwVerCurrent", "2"},
        {"modelName", "\"TRX418A CUT\""},
        {"secondaryName", "\"\""},
        {"supCutter", "1"},
        {"cutMode", "PRN_PROP_NO_CUT (0x80)"},
        {"density", "PRN_PROP_DENS_NORMAL (0x50)"},
        {"quality", "NOID (0x21)"},
        {"page2PageExtra", "PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_DOC (0x0001)"},
        {"offsetX", "-12"},
        {"cashDrawerTimeOn", "256 ms"},
        {"startJobBuffer", "[3 bytes] 1B 40 0A"},
        {"endJobBuffer", "\"C:\\\\cmd\\\\end.bin\""},
        {"endJobBufferMode", "FREE_CMD_MODE_FILENAME (0x01)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.field);
        EXPECT_EQ(c.value, ValueOf(text, c.field));
    }
}

TEST(RecordDump, FullFieldsAndOverlongLengthsStayInsideTheirField) {
    OEMDEV rec = DefaultRecord();
    OemDevPayload& p = rec.payload;
    std::memset(p.modelName, 'M', sizeof p.modelName);  // no terminator
    std::strcpy(p.secondaryName, "NEXT");
    p.modelName[5] = '\x01';
    p.startJobBufferMode = FREE_CMD_MODE_ASCII;
    p.startJobBufferLength = 600;  // more than the 512-byte field
    std::memset(p.startJobBuffer, 0xAB, sizeof p.startJobBuffer);
    p.endJobBufferLength = 0x1B1B;  // would reach the offsets after it
    const std::string text = DescribeOemDev(rec);

    const std::string model = ValueOf(text, "modelName");
    EXPECT_EQ(std::string::npos, model.find("NEXT"));
    EXPECT_NE(std::string::npos, model.find("MMMMM\\x01MM"));
    EXPECT_NE(std::string::npos, model.find("no terminator"));

    const std::string start = ValueOf(text, "startJobBuffer");
    EXPECT_EQ(0u, start.find("[600 bytes, cut to the field]"));
    EXPECT_EQ(512u * 3, start.size() - std::strlen("[600 bytes, cut to the field]"));
    const std::string end = ValueOf(text, "endJobBuffer");
    EXPECT_EQ(512u * 3, end.size() - std::strlen("[6939 bytes, cut to the field]"));
}

}  // namespace
