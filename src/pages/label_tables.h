// Label tables of the settings pages: fixed combo-box label lists and value-to-label lookups.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

using LabelList = std::vector<std::string>;

// Fixed lists; a combo box filled from one has item index = position in the list.
const LabelList& BuzzerPhaseLabels();
const LabelList& CashDrawerPhaseLabels();
const LabelList& CashDrawerPinLabels();
const LabelList& ConsoleCommandSourceLabels();
const LabelList& DocumentEndLabels();
const LabelList& CouponAlignLabels();
const LabelList& CouponSizeLabels();
const LabelList& CouponCopiesLabels();
const LabelList& DitheringLabels();
const LabelList& CutMoveCountLabels();
const LabelList& LogoPhaseLabels();
const LabelList& LogoAlignLabels();
const LabelList& LogoSizeLabels();
const LabelList& LogoNumberLabels();
const LabelList& LogoSourceLabels();
const LabelList& AfterTimeoutLabels();
const LabelList& PageToPageTimeoutModeLabels();
const LabelList& ScaleLabels();
const LabelList& WatermarkLayerLabels();
const LabelList& WatermarkFitLabels();
const LabelList& WatermarkPositionLabels();

// The settings whose offered values a model lists; each has its own value-to-label table.
enum class Capability {
    BlackMark,
    ContinuousMode,
    Cutter,
    Recovery,
    Density,
    Quality,
    Presenter,
    PageToPageAction,
    PresenterLed,
    CouponCut,
    Feeder,  // the one table of 16-bit values
    Selector,
};

// The label of one value, or null when the table does not know it.
const char* CapabilityLabel(Capability capability, uint16_t value);

// One label per known value of the model's list, in list order. Unknown values are skipped, so
// the result is then shorter than the list.
LabelList CapabilityLabels(Capability capability, std::span<const uint8_t> values);
LabelList CapabilityLabels(Capability capability, std::span<const uint16_t> values);

// The combo item to select for a stored value: the first position of the list holding it, or 0
// when it is missing or the list is empty.
int ValueToIndex(std::span<const uint8_t> values, uint8_t value);
int ValueToIndex(std::span<const uint16_t> values, uint16_t value);
// The presenter list leaves the combo without selection (-1) instead.
int PresenterValueToIndex(std::span<const uint8_t> values, uint8_t value);

// A watermark position code (high nibble horizontal, low nibble vertical; 1, 2, 4 each) as an
// index into WatermarkPositionLabels; unknown codes give 0 (Top-Left).
int PositionCodeToIndex(int code);
// 0..3 stay, anything else is 0.
int ClampToFour(int value);
