// What every page's rules share: combo and trackbar views, the validation failure, text helpers.
#include "pages/page_view.h"

#include <cstdlib>
#include <utility>

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

ValidationFindings Findings(std::optional<ValidationFailure> failure) {
    ValidationFindings findings;
    if (failure) {
        findings.push_back(std::move(*failure));
    }
    return findings;
}

std::optional<ValidationFailure> CheckImagePath(const std::string& path, const FileExists& exists,
                                                PageId page, const ImagePathCheck& check) {
    if (path.empty()) {
        return ValidationFailure{check.emptyMessage, page, check.emptyLog};
    }
    if (!exists(path)) {
        return ValidationFailure{check.missingQuestion, page, check.missingLog, true};
    }
    return std::nullopt;
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

std::optional<PreviewPlacement> FitPreview(int boxWidth, int boxHeight, uint32_t imageWidth,
                                           uint32_t imageHeight) {
    if (imageWidth == 0 || imageHeight == 0) {
        return std::nullopt;
    }
    const double ratioW = static_cast<double>(boxWidth) / imageWidth;
    const double ratioH = static_cast<double>(boxHeight) / imageHeight;
    const double scale = ratioH > ratioW ? ratioW : ratioH;
    PreviewPlacement placement{};
    placement.width = static_cast<int>(imageWidth * scale);
    placement.height = static_cast<int>(imageHeight * scale);
    placement.x = (boxWidth - placement.width) >> 1;
    placement.y = (boxHeight - placement.height) >> 1;
    return placement;
}
