// The value rules of the common UI entry: paper size in dots, the model text's pieces, the
// language-monitor table.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Paper size in dots from tenths of a millimetre and dots per inch, in double precision and
// truncated (800 at 203 dpi gives 639).
int32_t PaperDots(int32_t tenthsOfMillimetre, int32_t dotsPerInch);

// The model data text split at every "|"; a text without one (also an empty one) is one piece.
std::vector<std::string> SplitModelText(const std::string& text);

// The piece at `index`, empty when the text has fewer.
std::string ModelTextPiece(const std::vector<std::string>& pieces, size_t index);

// Language-monitor status values, as the language monitor query reports them.
enum LmStatus : uint8_t {
    LM_NOT_AVAILABLE = 0,
    LM_DISABLED = 1,
    LM_SETT_NOT_AVAILABLE = 2,
    LM_BIDI_NOT_ENABLE = 3,
    LM_ENABLED = 10,
};

struct LmFlags {
    uint32_t available = 0;
    uint32_t bidi = 0;
    uint32_t enable = 0;
};

// The status's symbol ("LM_ENABLED"), "NOID" for any other value.
const char* LmStatusName(uint8_t status);
// The three flags for a status; an unknown status sets none.
LmFlags LmFlagsFromStatus(uint8_t status);
