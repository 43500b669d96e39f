// TextCodec: conversions between UTF-16 and the plug-in's 8-bit text (the ANSI code page).
#pragma once

#include <string>

class TextCodec {
  public:
    virtual ~TextCodec() = default;
    virtual std::string Narrow(const std::u16string& wide) = 0;
    virtual std::u16string Widen(const std::string& narrow) = 0;
};
