// FakeTextCodec: Latin-1 both ways, with '?' for what 8-bit text cannot hold.
#pragma once

#include <string>

#include "ports/text_codec.h"

class FakeTextCodec : public TextCodec {
  public:
    std::string Narrow(const std::u16string& wide) override {
        std::string out;
        for (char16_t c : wide)
            out += c < 0x100 ? static_cast<char>(c) : '?';
        return out;
    }
    std::u16string Widen(const std::string& narrow) override {
        std::u16string out;
        for (char c : narrow)
            out += static_cast<char16_t>(static_cast<unsigned char>(c));
        return out;
    }
};
