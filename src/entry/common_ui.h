// The value rules of the common UI entry: paper size in dots and the model text's pieces.
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
