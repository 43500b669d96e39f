// The stand-in rendering module's stream, rebuilt from its documented layout, and an image whose
// one-bit form is known, for the tests that meet the module through the bridge or the pages.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>

inline std::string Le32(uint32_t value) {
    return {char(value), char(value >> 8), char(value >> 16), char(value >> 24)};
}

// Header, export id (1 NVRAM logo, 2 file logo, 3 coupon, 4 watermark) and the printer text.
inline std::string StandInHead(char exportId, const std::string& printer) {
    return std::string("KIVUNI1") + exportId + Le32(uint32_t(printer.size())) + printer;
}

// The text argument as the stream carries it.
inline std::string StandInText(const std::string& text) {
    return Le32(uint32_t(text.size())) + text;
}

// Writes a 12x6 24-bit bottom-up BMP, dark where (x + 2y) % 5 == 0, and returns the tail the
// stand-in adds for it: width, height and the rows of bits from the top.
inline std::string WritePatternBmp(const std::string& path) {
    std::string bmp = "BM" + Le32(54 + 6 * 36) + Le32(0) + Le32(54) + Le32(40) + Le32(12) +
                      Le32(6) + Le32(1 | 24 << 16) + Le32(0) + Le32(6 * 36) + std::string(16, 0);
    std::string rows;
    for (int y = 0; y < 6; ++y) {
        uint32_t bits = 0;
        for (int x = 0; x < 12; ++x)
            bits |= (x + 2 * y) % 5 == 0 ? 0x8000u >> x : 0;
        rows += {char(bits >> 8), char(bits)};
    }
    for (int y = 5; y >= 0; --y)
        for (int x = 0; x < 12; ++x)
            bmp += std::string(3, (rows[2 * y + x / 8] << (x % 8)) & 0x80 ? '\x20' : '\xF0');
    std::ofstream(path, std::ios::binary) << bmp;
    return Le32(12) + Le32(6) + rows;
}
