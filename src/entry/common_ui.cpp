// The value rules of the common UI entry: paper size in dots, the model text's pieces, the
// language-monitor table.
#include "entry/common_ui.h"

namespace {

struct LmRow {
    uint8_t status;
    const char* name;
    LmFlags flags;
};

// "LM_DISABLED" reports the bidirectional flag while "LM_BIDI_NOT_ENABLE" does not
// (kept-behaviour: Language-monitor flags).
constexpr LmRow kLmTable[] = {
    {LM_NOT_AVAILABLE, "LM_NOT_AVAILABLE", {0, 0, 0}},
    {LM_DISABLED, "LM_DISABLED", {1, 1, 0}},
    {LM_SETT_NOT_AVAILABLE, "LM_SETT_NOT_AVAILABLE", {0, 0, 0}},
    {LM_BIDI_NOT_ENABLE, "LM_BIDI_NOT_ENABLE", {1, 0, 0}},
    {LM_ENABLED, "LM_ENABLED", {1, 1, 1}},
};

const LmRow* FindLmRow(uint8_t status) {
    for (const LmRow& row : kLmTable) {
        if (row.status == status)
            return &row;
    }
    return nullptr;
}

}  // namespace

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

const char* LmStatusName(uint8_t status) {
    const LmRow* row = FindLmRow(status);
    return row != nullptr ? row->name : "NOID";
}

LmFlags LmFlagsFromStatus(uint8_t status) {
    const LmRow* row = FindLmRow(status);
    return row != nullptr ? row->flags : LmFlags{};
}
