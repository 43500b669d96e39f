// Tests of ParseFreeBuffer on wide text and high bytes (the escapes: page_checks.txt).
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pages/free_buffer.h"

namespace {

using Bytes = std::vector<uint8_t>;

TEST(FreeBuffer, WideTextRejectsCharactersBeyondOneByte) {
    EXPECT_EQ(ParseFreeBuffer(std::u16string(u"A\\x41\u00E9")).bytes, (Bytes{'A', 0x41, 0xE9}));
    EXPECT_EQ(ParseFreeBuffer(std::string("\xE9\xFF")).bytes, (Bytes{0xE9, 0xFF}));

    FreeBufferParse bad = ParseFreeBuffer(std::u16string(u"AB\u0141C"));
    EXPECT_EQ(bad.error, "Char not ok");
    EXPECT_TRUE(bad.bytes.empty());

    // Inside an escape a wide character is simply not a digit.
    EXPECT_EQ(ParseFreeBuffer(std::u16string(u"\\x4\u0141")).bytes, (Bytes{0x04}));
    EXPECT_EQ(ParseFreeBuffer(std::u16string(u"\\x\u0141\u0141")).error, "invalid stol argument");
}

}  // namespace
