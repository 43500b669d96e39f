// The value rules of the common UI entry: paper size in dots and the model text's pieces.
#include "entry/common_ui.h"

int32_t PaperDots(int32_t tenthsOfMillimetre, int32_t dotsPerInch) {
    return static_cast<int32_t>(static_cast<double>(tenthsOfMillimetre) * dotsPerInch / 254.0);
}

std::vector<std::string> SplitModelText(const std::string& text) {
    std::vector<std::string> pieces;
    size_t start = 0;
    for (;;) {
        const size_t bar = text.find('|', start);
        if (bar == std::string::npos) {
            pieces.push_back(text.substr(start));
            return pieces;
        }
        pieces.push_back(text.substr(start, bar - start));
        start = bar + 1;
    }
}

std::string ModelTextPiece(const std::vector<std::string>& pieces, size_t index) {
    return index < pieces.size() ? pieces[index] : std::string();
}
