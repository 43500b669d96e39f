// Tests of ParseFreeBuffer: plain text, "\xHH" escapes, kept literal tails and conversion errors.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pages/free_buffer.h"

namespace {

using Bytes = std::vector<uint8_t>;

TEST(FreeBuffer, EscapesBecomeBytesAndEverythingElseStaysAsTyped) {
    const char* kNoDigit = "invalid stol argument";
    struct Case {
        std::string text;
        Bytes bytes;
        const char* error = "";  // set: a conversion error, and no bytes
    };
    const Case cases[] = {
        {"ABC\\x0A", {0x41, 0x42, 0x43, 0x0A}},
        {"\\xFf\\xa0", {0xFF, 0xA0}},                    // upper and lower hex
        {"\\x4G", {0x04}},                               // one leading digit is enough
        {"\\x1BZ", {0x1B, 'Z'}},                         // escape then text
        {"\\x0", {'\\', 'x', '0'}},                      // a three-character tail is kept
        {"\\x", {'\\', 'x'}},                            // and a two-character one
        {"\\n\\X41", {'\\', 'n', '\\', 'X', '4', '1'}},  // backslash without x
        {"\\x 5", {0x05}},                               // leading blank skipped
        {"\\x-1", {0xFF}},                               // sign taken
        {"\\x0x", {0x00}},
        {"\xE9\xFF", {0xE9, 0xFF}},  // high bytes pass through
        {"", {}},
        {"\\xZZ", {}, kNoDigit},
        {"ABC\\xZZ", {}, kNoDigit},
        {"\\x--", {}, kNoDigit},
        {std::string("\\x\0A", 4), {}, kNoDigit},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        FreeBufferParse parsed = ParseFreeBuffer(c.text);
        EXPECT_EQ(parsed.error, c.error);
        EXPECT_EQ(parsed.bytes, c.bytes);
    }
}

TEST(FreeBuffer, WideTextRejectsCharactersBeyondOneByte) {
    EXPECT_EQ(ParseFreeBuffer(std::u16string(u"A\\x41\u00E9")).bytes, (Bytes{'A', 0x41, 0xE9}));

    FreeBufferParse bad = ParseFreeBuffer(std::u16string(u"AB\u0141C"));
    EXPECT_EQ(bad.error, "Char not ok");
    EXPECT_TRUE(bad.bytes.empty());

    // Inside an escape a wide character is simply not a digit.
    EXPECT_EQ(ParseFreeBuffer(std::u16string(u"\\x4\u0141")).bytes, (Bytes{0x04}));
    EXPECT_EQ(ParseFreeBuffer(std::u16string(u"\\x\u0141\u0141")).error, "invalid stol argument");
}

}  // namespace
