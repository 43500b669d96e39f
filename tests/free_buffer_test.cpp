// Tests of ParseFreeBuffer: plain text, "\xHH" escapes, kept literal tails and conversion errors.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "pages/free_buffer.h"

namespace {

using Bytes = std::vector<uint8_t>;

Bytes BytesOf(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

TEST(FreeBuffer, EscapesBecomeBytesAndEverythingElseStaysAsTyped) {
    struct Case {
        const char* name;
        std::string text;
        Bytes bytes;
    };
    const Case cases[] = {
        {"plain and escape", "ABC\\x0A", {0x41, 0x42, 0x43, 0x0A}},
        {"upper and lower hex", "\\xFf\\xa0", {0xFF, 0xA0}},
        {"one leading digit is enough", "\\x4G", {0x04}},
        {"escape then text", "\\x1BZ", {0x1B, 'Z'}},
        {"three-character tail kept", "\\x0", BytesOf("\\x0")},
        {"tail after text kept", "AB\\x0", BytesOf("AB\\x0")},
        {"two-character tail kept", "\\x", BytesOf("\\x")},
        {"backslash without x kept", "\\n\\X41", BytesOf("\\n\\X41")},
        {"escape exactly at the end", "A\\x41", {'A', 0x41}},
        {"leading blank skipped", "\\x 5", {0x05}},
        {"sign taken", "\\x-1", {0xFF}},
        {"plus sign", "\\x+F", {0x0F}},
        {"zero then x", "\\x0x", {0x00}},
        {"high bytes pass through", "\xE9\xFF", {0xE9, 0xFF}},
        {"empty", "", {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        FreeBufferParse parsed = ParseFreeBuffer(c.text);
        EXPECT_EQ(parsed.error, "");
        EXPECT_EQ(parsed.bytes, c.bytes);
    }
}

TEST(FreeBuffer, EscapeWithoutDigitIsAConversionError) {
    const std::string texts[] = {"\\xZZ", "ABC\\xZZ", "\\xG1",
                                 "\\x--", "\\x  ",    std::string("\\x\0A", 4)};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        FreeBufferParse parsed = ParseFreeBuffer(text);
        EXPECT_EQ(parsed.error, "invalid stol argument");
        EXPECT_TRUE(parsed.bytes.empty());
    }
}

TEST(FreeBuffer, ExactByteCountsFromMixedText) {
    std::string text;
    for (int i = 0; i < 256; ++i) {
        char escape[5];
        std::snprintf(escape, sizeof escape, "\\x%02X", i);
        text += escape;
    }
    text += std::string(256, '.');
    FreeBufferParse parsed = ParseFreeBuffer(text);
    ASSERT_EQ(parsed.bytes.size(), 512u);
    for (int i = 0; i < 256; ++i) {
        ASSERT_EQ(parsed.bytes[i], i);
    }
    EXPECT_EQ(ParseFreeBuffer(text + "\\x00").bytes.size(), 513u);
}

TEST(FreeBuffer, WideTextRejectsCharactersBeyondOneByte) {
    FreeBufferParse ok = ParseFreeBuffer(std::u16string(u"A\\x41\u00E9"));
    EXPECT_EQ(ok.error, "");
    EXPECT_EQ(ok.bytes, (Bytes{'A', 0x41, 0xE9}));

    FreeBufferParse bad = ParseFreeBuffer(std::u16string(u"AB\u0141C"));
    EXPECT_EQ(bad.error, "Char not ok");
    EXPECT_TRUE(bad.bytes.empty());

    // Inside an escape a wide character is simply not a digit.
    FreeBufferParse escaped = ParseFreeBuffer(std::u16string(u"\\x4\u0141"));
    EXPECT_EQ(escaped.error, "");
    EXPECT_EQ(escaped.bytes, (Bytes{0x04}));
    EXPECT_EQ(ParseFreeBuffer(std::u16string(u"\\x\u0141\u0141")).error, "invalid stol argument");
}

}  // namespace
