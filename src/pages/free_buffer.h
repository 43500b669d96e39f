// ParseFreeBuffer: the Console's "Text(ABC) or Hex(\x0A)" notation of raw command bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The most bytes a free command buffer may hold (the record's field).
inline constexpr size_t kFreeBufferMaxBytes = 512;

struct FreeBufferParse {
    std::vector<uint8_t> bytes;
    std::string error;  // empty when the text converted
};

// Every character stands for itself except "\xHH", which stands for the byte HH. An escape
// with no hexadecimal digit at all is a conversion error: no bytes and the error text.
FreeBufferParse ParseFreeBuffer(std::string_view text);
// The same for wide text; a character above 255 cannot be one byte, so it fails the whole text.
FreeBufferParse ParseFreeBuffer(std::u16string_view text);
