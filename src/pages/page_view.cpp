// What every page's rules share: combo and trackbar views, the validation failure, text helpers.
#include "pages/page_view.h"

#include <cstdlib>

#include "infra/text_format.h"

TrackbarView MakeTrackbar(int min, int max, int position) {
    return TrackbarView{min, max, position, TrackbarLabel(position)};
}

int PercentOfRange(int value, int low, int high) {
    if (value <= low) {
        return 0;
    }
    if (value >= high) {
        return 100;
    }
    double share = (static_cast<double>(value) - low) * 100.0 / (static_cast<double>(high) - low);
    return static_cast<int>(share);
}

std::string TrackbarLabel(int position) {
    return Format("%d%% (%d/255)", PercentOfRange(position, 0, 255), position);
}

uint8_t TrackbarByte(int position) {
    if (position < 0) {
        return 0;
    }
    return position > 255 ? 255 : static_cast<uint8_t>(position);
}

namespace {

template <typename Value>
Value EntryAt(std::span<const Value> values, int selection) {
    if (selection < 0 || static_cast<size_t>(selection) >= values.size()) {
        return 0;
    }
    return values[static_cast<size_t>(selection)];
}

}  // namespace

uint8_t SelectedValue(std::span<const uint8_t> values, int selection) {
    return EntryAt(values, selection);
}

uint16_t SelectedValue(std::span<const uint16_t> values, int selection) {
    return EntryAt(values, selection);
}

std::string PanelTitle(PageId page) {
    return Format("\"%s\" Panel ", CatalogRow(page).title);
}

std::string_view LimitText(std::string_view text, size_t limit) {
    return text.substr(0, limit);
}

bool ParseIntegerText(std::string_view text, long* value) {
    if (text.empty()) {
        return false;
    }
    char first = text.front();
    if (!(first >= '0' && first <= '9') && first != '-' && first != '+') {
        return false;
    }
    // strtol needs a terminated text; an embedded NUL then stops it short of the end.
    std::string terminated(text);
    char* end = nullptr;
    long parsed = std::strtol(terminated.c_str(), &end, 10);
    if (end != terminated.c_str() + terminated.size()) {
        return false;
    }
    *value = parsed;
    return true;
}
