// Tests of the field-by-field description of a settings record.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "entry/devmode.h"
#include "golden_file.h"
#include "settings/record_dump.h"
#include "settings/setting_enums.h"
#include "text_lines.h"

namespace {

OEMDEV DefaultRecord() {
    OEMDEV rec;
    std::memset(&rec, 0x5A, sizeof rec);
    SetOEMDevDefault(rec);
    return rec;
}

// Every field once, in record order, with names, units, signs, text and hex forms; the host
// prints this after OK, so a support reader depends on each line.
TEST(RecordDump, DescriptionMatchesTheExpectedFile) {
    OEMDEV rec = DefaultRecord();
    OemDevPayload& p = rec.payload;
    std::strcpy(p.modelName, "TRX418A CUT");
    p.supCutter = 1;
    p.cutMode = PRN_PROP_NO_CUT;
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
    ExpectGoldenFile("record_dump.txt", DescribeOemDev(rec));
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

    const std::string model = Field(text, "modelName");
    EXPECT_EQ(std::string::npos, model.find("NEXT"));
    EXPECT_NE(std::string::npos, model.find("MMMMM\\x01MM"));
    EXPECT_NE(std::string::npos, model.find("no terminator"));

    const std::string start = Field(text, "startJobBuffer");
    EXPECT_EQ(0u, start.find("[600 bytes, cut to the field]"));
    EXPECT_EQ(512u * 3, start.size() - std::strlen("[600 bytes, cut to the field]"));
    const std::string end = Field(text, "endJobBuffer");
    EXPECT_EQ(512u * 3, end.size() - std::strlen("[6939 bytes, cut to the field]"));
}

}  // namespace
