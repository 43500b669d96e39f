// The values the pages accept for the settings that are numbers, flags or modes; the pages check
// what the user enters against them and loading a record holds stored values to the same.
#pragma once

#include <cstdint>

#include "settings/setting_enums.h"

// Cash-drawer pulse times, in milliseconds.
inline constexpr long kPulseMin = 2;
inline constexpr long kPulseMax = 512;
// What a drawer that was never enabled shows: the record's own default, a time drawers accept.
inline constexpr uint16_t kDefaultPulse = 256;

// The presenter's length and duration; a duration is at least 1.
inline constexpr long kPresentationMax = 255;
inline constexpr long kDurationMin = 1;

// The presenter modes each setting means something for. The mode values step by 16; one mask
// per class keeps the tests that a record reader applies.
inline bool LengthApplies(uint8_t mode) {  // HOLD_VALUE, PEJECT_TO, PRETRACT_TO
    return ((mode - 32) & 0xAF) == 0 && mode != PRN_PROP_PRESENT_HOLD_MAX;
}
inline bool DurationApplies(uint8_t mode) {  // PEJECT_TO, PRETRACT_TO
    return ((mode - 96) & 0xEF) == 0;
}
inline bool PageToPageApplies(uint8_t mode) {  // HOLD_FIXED, HOLD_VALUE, HOLD_MAX
    return ((mode - 16) & 0xCF) == 0 && mode != PRN_PROP_PRESENT_EJECT;
}

// The record has no field for the page-to-page timeout mode: "Unlimited" is the one time-out the
// typed value can never reach (the check stops at 65534), so it is stored as 0xFFFF.
inline constexpr uint16_t kUnlimitedTimeout = 0xFFFF;
inline constexpr long kTimeoutMax = 65534;

// Print offsets, in dots.
inline constexpr int kOffsetMin = -1000;
inline constexpr int kOffsetMax = 1000;

// The watermark brightness as the page shows it; 100 leaves the image as it is.
inline constexpr int kBrightnessMax = 200;
inline constexpr int kDefaultBrightness = 100;

// Coupon copies, from 1.
inline constexpr int kCouponCopiesMax = 15;

// The free-command modes that show as the Console page's text entry; every other mode but none
// and a file name is none there.
inline bool IsTextMode(uint8_t mode) {
    return mode == FREE_CMD_MODE_ASCII || mode == FREE_CMD_MODE_ZAP || mode == FREE_CMD_MODE_SPACE;
}
