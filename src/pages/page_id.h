// The twelve document pages, in the order the sheet registers them.
#pragma once

enum class PageId : int {
    kPrint,
    kPrintAdjust,
    kCutMove,
    kAccessories,
    kPeripherals,
    kPresentation,
    kWatermark,
    kCoupon,
    kLogo,
    kConsole,
    kAdmin,
    kVersion,
};
