// Label tables of the settings pages: the fixed lists and the per-capability value tables.
#include "pages/label_tables.h"

#include <algorithm>

#include "settings/setting_enums.h"
#include "settings/setting_ranges.h"

namespace {

LabelList Numbered(int first, int last) {
    LabelList labels;
    for (int n = first; n <= last; ++n) {
        labels.push_back(std::to_string(n));
    }
    return labels;
}

struct ValueLabel {
    uint16_t value;
    const char* label;
};

struct CapabilityTable {
    Capability capability;
    std::span<const ValueLabel> entries;
};

constexpr ValueLabel kBlackMark[] = {
    {PRN_PROP_BMARK_NOTSETBYDRIVER, "Not set by Driver"},
    {PRN_PROP_BMARK_OFF, "Disable"},
    {PRN_PROP_BMARK_BPAGE, "Begin Page"},
    {PRN_PROP_BMARK_EPAGE, "End Page"},
    {PRN_PROP_BMARK_BEPAGE, "Begin Page and End Page"},
};
constexpr ValueLabel kContinuousMode[] = {
    {PRN_PROP_CONTINUOUSMODE_AUTO, "Automatic"},
    {PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER, "Not set by Driver"},
    {PRN_PROP_CONTINUOUSMODE_OFF_LOOPAWAY, "Loopaway"},
    {PRN_PROP_CONTINUOUSMODE_ON_FEEDWAY, "Feedaway"},
};
constexpr ValueLabel kCutter[] = {
    {PRN_PROP_CUTTER_NOTSETBYDRIVER, "Not set by Driver"},
    {PRN_PROP_CUTTER_TEAROFF_END_PAGE, "Tear Off end Page"},
    {PRN_PROP_CUTTER_TEAROFF_END_JOB, "Tear Off end Job"},
    {PRN_PROP_CUTTER_TC_END_PAGE, "Total Cut end Page"},
    {PRN_PROP_CUTTER_PC_END_PAGE, "Partial Cut end Page"},
    {PRN_PROP_CUTTER_TC_END_DOC, "Total Cut end Document"},
    {PRN_PROP_CUTTER_PC_END_DOC, "Partial Cut end Document"},
    {PRN_PROP_CUTTER_TC_END_JOB, "Total Cut end Job"},
    {PRN_PROP_CUTTER_PC_END_JOB, "Partial Cut end Job"},
    {PRN_PROP_NO_CUT, "No Cut"},
};
constexpr ValueLabel kRecovery[] = {
    {PRN_PROP_RECOVERY_NOTSETBYDRIVER, "Not set by Driver"},
    {PRN_PROP_RECOVERY_NO, "No recovery"},
    {PRN_PROP_RECOVERY_NORMAL_AT_CUT, "Normal recovery at cut"},
    {PRN_PROP_RECOVERY_TOTAL_AT_CUT, "Total recovery at cut"},
    {PRN_PROP_RECOVERY_START_PAGE, "Recovery start page"},
};
constexpr ValueLabel kDensity[] = {
    {PRN_PROP_DENS_NOTSETBYDRIVER, "Not set by Driver"},
    {PRN_PROP_DENS_M50, "-50%"},
    {PRN_PROP_DENS_M37, "-37%"},
    {PRN_PROP_DENS_M25, "-25%"},
    {PRN_PROP_DENS_M12, "-12%"},
    {PRN_PROP_DENS_NORMAL, "0%"},
    {PRN_PROP_DENS_P12, "+12%"},
    {PRN_PROP_DENS_P25, "+25%"},
    {PRN_PROP_DENS_P37, "+37%"},
    {PRN_PROP_DENS_P50, "+50%"},
};
constexpr ValueLabel kQuality[] = {
    {PRN_PROP_QUAL_NOTSETBYDRIVER, "Not set by Driver"},
    {PRN_PROP_QUAL_HQUALITY, "High Quality"},
    {PRN_PROP_QUAL_NORMAL, "Normal"},
    {PRN_PROP_QUAL_HSPEED, "High Speed"},
    {PRN_PROP_QUAL_VHSPEED, "Very High Speed"},
};
// HOLD_FIXED and HOLD_VALUE share one text and stay two combo items (kept-behaviour: Texts kept
// as written).
constexpr ValueLabel kPresenter[] = {
    {PRN_PROP_PRESENT_NOTSETBYDRIVER, "Not set by Driver"},
    {PRN_PROP_PRESENT_HOLD_FIXED, "Hold"},
    {PRN_PROP_PRESENT_HOLD_VALUE, "Hold"},
    {PRN_PROP_PRESENT_HOLD_MAX, "Hold (max length)"},
    {PRN_PROP_PRESENT_EJECT, "Eject"},
    {PRN_PROP_PRESENT_RETRACT, "Retract"},
    {PRN_PROP_PRESENT_PEJECT_TO, "Eject with Timeout"},
    {PRN_PROP_PRESENT_PRETRACT_TO, "Retract with Timeout"},
};
constexpr ValueLabel kPageToPageAction[] = {
    {PRN_PROP_PAGE2PAGE_EJECT, "Eject"},
    {PRN_PROP_PAGE2PAGE_RETRACT, "Retract"},
    {PRN_PROP_PAGE2PAGE_HOLD, "Hold"},
};
constexpr ValueLabel kPresenterLed[] = {
    {PRN_HLED_OFF, "Off"},
    {PRN_HLED_BLINK, "Blink"},
    {PRN_HLED_BLINK_SLOW, "Slow Blink"},
    {PRN_HLED_BLINK_FAST, "Fast Blink"},
    {PRN_HLED_BLINK_ALWAYSON, "Always On"},
};
// "Tear off" here and "Tear Off end Page" for the cutter differ in case (kept-behaviour: Texts
// kept as written).
constexpr ValueLabel kCouponCut[] = {
    {PRN_COP_CUTTER_NONE, "No Cut"},
    {PRN_COP_CUTTER_TC, "Total Cut"},
    {PRN_COP_CUTTER_PC, "Partial Cut"},
    {PRN_COP_CUTTER_TEAROFF, "Tear off"},
};
constexpr ValueLabel kFeeder[] = {
    {PRN_PROP_FEEDER_NOTSETBYDRIVER, "Not set by Driver"},
    {PRN_PROP_FEEDER_AUTO, "Autoselected feeder"},
    {PRN_PROP_FEEDER_1, "Feeder 1"},
    {PRN_PROP_FEEDER_2, "Feeder 2"},
    {PRN_PROP_FEEDER_3, "Feeder 3"},
};
constexpr ValueLabel kSelector[] = {
    {PRN_PROP_SELECTOR_NOTSETBYDRIVER, "Not set by Driver"},
    {PRN_PROP_SELECTOR_TOUT, "Ticket Out"},
    {PRN_PROP_SELECTOR_TSTORE, "Ticket Stored"},
};

constexpr CapabilityTable kCapabilityTables[] = {
    {Capability::BlackMark, kBlackMark},
    {Capability::ContinuousMode, kContinuousMode},
    {Capability::Cutter, kCutter},
    {Capability::Recovery, kRecovery},
    {Capability::Density, kDensity},
    {Capability::Quality, kQuality},
    {Capability::Presenter, kPresenter},
    {Capability::PageToPageAction, kPageToPageAction},
    {Capability::PresenterLed, kPresenterLed},
    {Capability::CouponCut, kCouponCut},
    {Capability::Feeder, kFeeder},
    {Capability::Selector, kSelector},
};

template <typename T>
LabelList LabelsOf(Capability capability, std::span<const T> values) {
    LabelList labels;
    labels.reserve(values.size());
    for (T value : values) {
        if (const char* label = CapabilityLabel(capability, value)) {
            labels.emplace_back(label);
        }
    }
    return labels;
}

template <typename T>
int FirstIndexOf(std::span<const T> values, T value, int missing) {
    auto it = std::find(values.begin(), values.end(), value);
    return it == values.end() ? missing : static_cast<int>(it - values.begin());
}

// Position-code nibble (1, 2, 4) to its row or column; -1 for anything else.
int NibblePlace(int nibble) {
    switch (nibble) {
        case 1:
            return 0;
        case 2:
            return 1;
        case 4:
            return 2;
        default:
            return -1;
    }
}

}  // namespace

const LabelList& BuzzerPhaseLabels() {
    static const LabelList labels{"Begin Document", "End Document"};
    return labels;
}
const LabelList& CashDrawerPhaseLabels() {
    static const LabelList labels{"Begin Document", "End Document", "End Page"};
    return labels;
}
const LabelList& CashDrawerPinLabels() {
    static const LabelList labels{"Cash Drawer 1", "Cash Drawer 2", "Cash Drawer 1 and 2"};
    return labels;
}
const LabelList& ConsoleCommandSourceLabels() {
    static const LabelList labels{"None", "File", "Text(ABC) or Hex(\\x0A)"};
    return labels;
}
const LabelList& DocumentEndLabels() {
    static const LabelList labels{"End Page", "End Document"};
    return labels;
}
const LabelList& CouponAlignLabels() {
    static const LabelList labels{"Left", "Center", "Right"};
    return labels;
}
const LabelList& CouponSizeLabels() {
    static const LabelList labels{"Keep", "Zoom"};
    return labels;
}
const LabelList& CouponCopiesLabels() {
    static const LabelList labels = Numbered(1, kCouponCopiesMax);
    return labels;
}
const LabelList& DitheringLabels() {
    static const LabelList labels{"Auto", "None", "Error Diffusion"};
    return labels;
}
const LabelList& CutMoveCountLabels() {
    static const LabelList labels = Numbered(0, 15);
    return labels;
}
const LabelList& LogoPhaseLabels() {
    static const LabelList labels{"Begin Document", "Begin Page", "End Page", "End Document"};
    return labels;
}
const LabelList& LogoAlignLabels() {
    static const LabelList labels{"Left", "Center", "Right"};
    return labels;
}
const LabelList& LogoSizeLabels() {
    static const LabelList labels{"Keep", "Zoom"};
    return labels;
}
const LabelList& LogoNumberLabels() {
    static const LabelList labels = Numbered(1, 15);
    return labels;
}
const LabelList& LogoSourceLabels() {
    static const LabelList labels{"Internal NVRAM", "File"};
    return labels;
}
const LabelList& AfterTimeoutLabels() {
    static const LabelList labels{"Keep Printing", "Clean current document", "Clean entire queue"};
    return labels;
}
const LabelList& PageToPageTimeoutModeLabels() {
    static const LabelList labels{"Presentation timeout", "Unlimited"};
    return labels;
}
const LabelList& ScaleLabels() {
    static const LabelList labels{"12%", "25%", "37%", "50%", "62%", "75%", "87%", "100%"};
    return labels;
}
const LabelList& WatermarkLayerLabels() {
    static const LabelList labels{"Over", "Under"};
    return labels;
}
const LabelList& WatermarkFitLabels() {
    // kept-behaviour: Texts kept as written ("Strech").
    static const LabelList labels{"Keep", "Strech", "Tile", "Tile Column"};
    return labels;
}
const LabelList& WatermarkPositionLabels() {
    static const LabelList labels{"Top-Left",    "Top-Center",    "Top-Right",
                                  "Center-Left", "Center-Center", "Center-Right",
                                  "Bottom-Left", "Bottom-Center", "Bottom-Right"};
    return labels;
}

const char* CapabilityLabel(Capability capability, uint16_t value) {
    for (const CapabilityTable& table : kCapabilityTables) {
        if (table.capability != capability) {
            continue;
        }
        for (const ValueLabel& entry : table.entries) {
            if (entry.value == value) {
                return entry.label;
            }
        }
        return nullptr;
    }
    return nullptr;
}

LabelList CapabilityLabels(Capability capability, std::span<const uint8_t> values) {
    return LabelsOf(capability, values);
}

LabelList CapabilityLabels(Capability capability, std::span<const uint16_t> values) {
    return LabelsOf(capability, values);
}

int ValueToIndex(std::span<const uint8_t> values, uint8_t value) {
    return FirstIndexOf(values, value, 0);
}

int ValueToIndex(std::span<const uint16_t> values, uint16_t value) {
    return FirstIndexOf(values, value, 0);
}

int PresenterValueToIndex(std::span<const uint8_t> values, uint8_t value) {
    return FirstIndexOf(values, value, -1);
}

int PositionCodeToIndex(int code) {
    if (code < 0 || code > 0xFF) {
        return 0;
    }
    int column = NibblePlace(code >> 4);
    int row = NibblePlace(code & 0x0F);
    if (column < 0 || row < 0) {
        return 0;
    }
    return row * 3 + column;
}

int ClampToFour(int value) {
    return value >= 0 && value <= 3 ? value : 0;
}
