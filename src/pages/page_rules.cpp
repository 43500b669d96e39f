// Page rules of the Print and Print adjust pages: what they show, how they react, what they accept.
#include "pages/page_rules.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "pages/free_buffer.h"
#include "settings/ui_device_common.h"

namespace {

#if defined(__GNUC__)
std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
#endif

std::string Format(const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    int needed = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::string text;
    if (needed > 0) {
        text.resize(static_cast<size_t>(needed) + 1);
        std::vsnprintf(text.data(), text.size(), format, again);
        text.resize(static_cast<size_t>(needed));
    }
    va_end(again);
    return text;
}

ValidationFailure Failure(const char* pageName, std::string message, std::string logLine) {
    return ValidationFailure{std::move(message), pageName, std::move(logLine)};
}

// A combo selection as an index into a list; a negative selection (no item) is past the end.
size_t SelectionIndex(int selection) {
    return selection < 0 ? SIZE_MAX : static_cast<size_t>(selection);
}

uint8_t TrackbarByte(int position) {
    if (position < 0) {
        return 0;
    }
    return position > 255 ? 255 : static_cast<uint8_t>(position);
}

TrackbarView MakeTrackbar(int min, int max, int position) {
    return TrackbarView{min, max, position, TrackbarLabel(position)};
}

std::optional<ValidationFailure> CheckOffset(std::string_view rawText, char axis) {
    std::string text(LimitText(rawText, kOffsetTextLimit));
    long value = 0;
    if (!ParseIntegerText(text, &value)) {
        return Failure(kPrintAdjustPageName, "The Offset value is not a integer",
                       Format("Offset %c: the number isn't a integer <%s>", axis, text.c_str()));
    }
    // One unsigned comparison covers both ends of the range.
    if (static_cast<uint32_t>(static_cast<int32_t>(value) + 1000) > 2000u) {
        return Failure(kPrintAdjustPageName, "The Offset must be a value between -1000 and 1000",
                       Format("Offset %c : value out of range (%d  %d/%d)", axis,
                              static_cast<int>(value), kOffsetMin, kOffsetMax));
    }
    return std::nullopt;
}

}  // namespace

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

std::optional<PreviewPlacement> FitPreview(int boxWidth, int boxHeight, uint32_t imageWidth,
                                           uint32_t imageHeight) {
    if (imageWidth == 0 || imageHeight == 0) {
        return std::nullopt;
    }
    double ratioW = static_cast<double>(boxWidth) / imageWidth;
    double ratioH = static_cast<double>(boxHeight) / imageHeight;
    double scale = ratioH > ratioW ? ratioW : ratioH;
    PreviewPlacement placement{};
    placement.width = static_cast<int>(imageWidth * scale);
    placement.height = static_cast<int>(imageHeight * scale);
    placement.x = (boxWidth - placement.width) >> 1;
    placement.y = (boxHeight - placement.height) >> 1;
    return placement;
}

std::string PanelTitle(std::string_view pageName) {
    std::string title = "\"";
    title.append(pageName);
    title += "\" Panel ";
    return title;
}

PrintPageView MakePrintPageView(const PrintSettings& settings, std::span<const uint8_t> qualityList,
                                std::span<const uint8_t> densityList) {
    const bool none = settings.ditherMode == kDitherNone;
    const int low = none ? kFilterMin : settings.lowFilter;
    const int high = none ? kFilterMax : settings.highFilter;
    return PrintPageView{
        ComboView{CapabilityLabels(Capability::Quality, qualityList),
                  ValueToIndex(qualityList, settings.quality)},
        ComboView{CapabilityLabels(Capability::Density, densityList),
                  ValueToIndex(densityList, settings.density)},
        ComboView{DitheringLabels(), settings.ditherMode},
        MakeTrackbar(kThresholdMin, kThresholdMax, settings.threshold),
        MakeTrackbar(kFilterMin, kFilterMax, low),
        MakeTrackbar(kFilterMin, kFilterMax, high),
        !none,
    };
}

int DitherModeFromSelection(int selection) {
    return selection >= 0 && selection < 3 ? selection : kDitherAuto;
}

DitherTypeChange OnDitherTypeChanged(int selection) {
    if (DitherModeFromSelection(selection) == kDitherNone) {
        return DitherTypeChange{false, true, kFilterMin, kFilterMax};
    }
    return DitherTypeChange{true, false, 0, 0};
}

PrintSettings ReadPrintControls(const PrintControls& controls, std::span<const uint8_t> qualityList,
                                std::span<const uint8_t> densityList) {
    std::vector<uint8_t> qualities(qualityList.begin(), qualityList.end());
    std::vector<uint8_t> densities(densityList.begin(), densityList.end());
    PrintSettings settings;
    settings.quality =
        UiDeviceCommon::ListValueAt(qualities, SelectionIndex(controls.qualitySelection));
    settings.density =
        UiDeviceCommon::ListValueAt(densities, SelectionIndex(controls.densitySelection));
    settings.ditherMode = static_cast<uint8_t>(DitherModeFromSelection(controls.typeSelection));
    settings.threshold = TrackbarByte(controls.threshold);
    settings.lowFilter = TrackbarByte(controls.lowFilter);
    settings.highFilter = TrackbarByte(controls.highFilter);
    return settings;
}

std::optional<ValidationFailure> ValidatePrintValues(int threshold, int lowFilter, int highFilter) {
    if (lowFilter < 0 || lowFilter > threshold) {
        return Failure(
            kPrintPageName, "The LOW Filter must be a value between 0 and the Threshold",
            Format("Dithering Filter DOWN : value out of range (%d  %d)", lowFilter, threshold));
    }
    if (highFilter < threshold || highFilter > 255) {
        return Failure(
            kPrintPageName, "The HIGH Filter must be a value between the Threshold and 255",
            Format("Dithering Filter UP : value out of range (%d  %d)", highFilter, threshold));
    }
    if (highFilter <= lowFilter) {
        return Failure(kPrintPageName, "The HIGH Filter must be a value > of the LOW Filter",
                       "Dithering Filters are wrong : UP filter must be > of DOWN Filter");
    }
    return std::nullopt;
}

PrintAdjustView MakePrintAdjustView(const PrintAdjustSettings& settings) {
    const bool reduction = settings.reductionEnable != 0;
    return PrintAdjustView{
        Format("%d", settings.offsetX),
        Format("%d", settings.offsetY),
        settings.whiteTopCrop != 0,
        settings.whiteBottomCrop != 0,
        settings.skipWhitePages != 0,
        settings.rotate180 != 0,
        reduction,
        reduction,
        ComboView{ScaleLabels(), UiDeviceCommon::PositionFromPercent(settings.reductionValue)},
    };
}

PrintAdjustSettings ReadPrintAdjustControls(const PrintAdjustControls& controls,
                                            const PrintAdjustSettings& stored) {
    PrintAdjustSettings settings = stored;
    settings.offsetX = OffsetFromText(LimitText(controls.offsetXText, kOffsetTextLimit));
    settings.offsetY = OffsetFromText(LimitText(controls.offsetYText, kOffsetTextLimit));
    settings.whiteTopCrop = controls.whiteTopCrop ? 1 : 0;
    settings.whiteBottomCrop = controls.whiteBottomCrop ? 1 : 0;
    settings.skipWhitePages = controls.skipWhitePages ? 1 : 0;
    settings.rotate180 = controls.rotate180 ? 1 : 0;
    settings.reductionEnable = controls.reductionChecked ? 1 : 0;
    if (controls.reductionChecked) {
        settings.reductionValue =
            static_cast<uint16_t>(UiDeviceCommon::PercentFromPosition(controls.scaleSelection));
    }
    return settings;
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

int16_t OffsetFromText(std::string_view text) {
    std::string terminated(text);
    return static_cast<int16_t>(std::strtol(terminated.c_str(), nullptr, 10));
}

std::optional<ValidationFailure> ValidatePrintAdjustOffsets(std::string_view xText,
                                                            std::string_view yText) {
    if (auto failure = CheckOffset(xText, 'X')) {
        return failure;
    }
    return CheckOffset(yText, 'Y');
}

std::optional<ValidationFailure> ValidateFreeBufferText(std::string_view rawText,
                                                        FreeBufferSide side) {
    const bool start = side == FreeBufferSide::kStart;
    std::string text(LimitText(rawText, kFreeBufferTextLimit));
    FreeBufferParse parsed = ParseFreeBuffer(text);
    const char* formatMessage = "The ASCII format of a free buffer file is wrong or empty";
    // The log texts of the first two causes look swapped, and "Empty"/"empty" differ between
    // start and end; both are kept as the log has always shown them.
    if (!parsed.error.empty()) {
        return Failure(
            kConsolePageName, formatMessage,
            start ? "Free Buffers Start : Buffer Empty" : "Free Buffers End : Buffer empty");
    }
    if (parsed.bytes.empty()) {
        return Failure(kConsolePageName, formatMessage,
                       Format(start ? "Free Buffers Start : Buffer convertion error <%s>"
                                    : "Free Buffers End : Buffer convertion error <%s>",
                              text.c_str()));
    }
    if (parsed.bytes.size() > kFreeBufferMaxBytes) {
        return Failure(
            kConsolePageName,
            Format("The free buffer size is over the max (%d)",
                   static_cast<int>(kFreeBufferMaxBytes)),
            Format(start ? "Free Buffers Start : Buffer size error (%d %d)"
                         : "Free Buffers End : Buffer size error (%d %d)",
                   static_cast<int>(parsed.bytes.size()), static_cast<int>(kFreeBufferMaxBytes)));
    }
    return std::nullopt;
}
