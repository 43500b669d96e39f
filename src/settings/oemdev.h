// OEMDEV: the plug-in's private devmode record, a persisted byte format shared with the
// rendering plug-in and the language monitor.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

static_assert(std::endian::native == std::endian::little,
              "the record is little-endian and is read in place");

inline constexpr uint32_t OEMDEV_SIZE = 3329;
inline constexpr uint32_t OEMDEV_PAYLOAD_SIZE = 3297;
inline constexpr uint32_t OEMDEV_HEADER_SIZE = 24;         // extra header, guards, layout version
inline constexpr uint32_t KIVITEM_SIGNATURE = 0x4B495643;  // 'KIVC', stored as "CVIK"
inline constexpr uint32_t KIVITEM_VERSION = 1;
inline constexpr uint32_t KIVITEM_SIGN_H = 0xAABBCCDD;
inline constexpr uint32_t KIVITEM_SIGN_T = 0xFFBBFFDD;
inline constexpr uint32_t KIVITEM_VERCURRENT = 2;

inline constexpr size_t kModelNameSize = 128;
inline constexpr size_t kSecondaryNameSize = 512;
inline constexpr size_t kPathSize = 256;
inline constexpr size_t kFreeBufferSize = 512;
inline constexpr size_t kLogoCount = 4;

#pragma pack(push, 1)

// The driver core's standard header in front of every plug-in devmode block.
struct OemDmExtraHeader {
    uint32_t dwSize;
    uint32_t dwSignature;
    uint32_t dwVersion;
};

struct OemLogo {
    uint8_t enable;
    uint8_t source;
    uint8_t drawType;
    uint8_t drawPosition;
    char path[kPathSize];  // file path, or the printer-memory logo number as text
};

struct OemDevPayload {
    char modelName[kModelNameSize];
    char secondaryName[kSecondaryNameSize];
    uint8_t supCashDrawer;
    uint8_t cashDrawerEnable;
    uint8_t cashDrawerPins;
    uint16_t cashDrawerTimeOn;
    uint16_t cashDrawerTimeOff;
    uint8_t cashDrawerPhase;
    uint8_t supDensity;
    uint8_t density;
    uint8_t supQuality;
    uint8_t quality;
    uint8_t supCutter;
    uint8_t cutMode;
    uint8_t lfBeforeCut;
    uint8_t supRecovery;
    uint8_t recovery;
    uint8_t supBlackMark;
    uint8_t blackMark;
    uint8_t supPresentation;
    uint8_t presentationMode;
    uint8_t presentationValue;
    uint8_t presentationTimeout;
    uint8_t supHeadLed;
    uint8_t headLed;
    uint8_t supBuzzer;
    uint8_t buzzer;
    uint8_t supContinuousMode;
    uint8_t continuousMode;
    uint8_t supFeeder;
    uint16_t feeder;
    uint8_t supSelector;
    uint8_t selector;
    uint8_t supPage2Page;
    uint8_t page2PageEnable;
    uint8_t page2PageAction;
    uint8_t page2PageCheckPoint;
    uint16_t page2PageTimeout;
    uint16_t page2PageExtra;
    uint8_t watermarkEnable;
    uint8_t watermarkDrawPosition;
    uint8_t watermarkDrawType;
    uint8_t watermarkVHPosition;
    char watermarkPath[kPathSize];
    uint8_t reserved942;  // written 0, never read back
    uint8_t reserved943;  // written 100, never read back
    uint8_t watermarkBrightnessEnable;
    uint8_t watermarkBrightness;  // 200 minus the page's value, modulo 256
    uint8_t convMode;
    uint8_t convThreshold;
    uint8_t convFilterUp;
    uint8_t convFilterDown;
    OemLogo logos[kLogoCount];  // begin doc, begin page, end page, end doc
    uint8_t couponEnable;
    uint8_t couponCopies;
    uint8_t couponDrawType;
    uint8_t couponDrawPosition;
    uint8_t couponCutInter;
    uint8_t couponCutFinal;
    uint8_t couponScale;
    char couponPath[kPathSize];
    uint16_t startJobBufferLength;
    uint8_t startJobBufferMode;
    uint8_t startJobBuffer[kFreeBufferSize];
    uint16_t endJobBufferLength;
    uint8_t endJobBufferMode;
    uint8_t endJobBuffer[kFreeBufferSize];
    int16_t offsetX;
    int16_t offsetY;
    uint8_t reductionEnable;
    uint8_t reductionMode;
    uint16_t reductionMinValue;
    uint16_t reductionValue;
    uint8_t skipWhitePages;
    uint8_t whiteTopCrop;
    uint8_t whiteBottomCrop;
    uint8_t rotate180;
};

struct OEMDEV {
    OemDmExtraHeader dmExtraHeader;
    uint32_t dwSignHead1;
    uint32_t dwSignHead2;
    uint32_t dwVerCurrent;
    OemDevPayload payload;
    uint32_t dwSignTail1;
    uint32_t dwSignTail2;
};

#pragma pack(pop)

// The offsets below are the format; a change to any of them breaks every reader of the record.
static_assert(sizeof(OemDmExtraHeader) == 12);
static_assert(sizeof(OEMDEV) == OEMDEV_SIZE);
static_assert(sizeof(OemDevPayload) == OEMDEV_PAYLOAD_SIZE);
static_assert(sizeof(OemLogo) == 260);
static_assert(offsetof(OemLogo, enable) == 0);
static_assert(offsetof(OemLogo, source) == 1);
static_assert(offsetof(OemLogo, drawType) == 2);
static_assert(offsetof(OemLogo, drawPosition) == 3);
static_assert(offsetof(OemLogo, path) == 4);

static_assert(offsetof(OEMDEV, dmExtraHeader) == 0);
static_assert(offsetof(OEMDEV, dmExtraHeader) + offsetof(OemDmExtraHeader, dwSignature) == 4);
static_assert(offsetof(OEMDEV, dmExtraHeader) + offsetof(OemDmExtraHeader, dwVersion) == 8);
static_assert(offsetof(OEMDEV, dwSignHead1) == 12);
static_assert(offsetof(OEMDEV, dwSignHead2) == 16);
static_assert(offsetof(OEMDEV, dwVerCurrent) == 20);
static_assert(offsetof(OEMDEV, payload) == OEMDEV_HEADER_SIZE);
static_assert(offsetof(OEMDEV, dwSignTail1) == 3321);
static_assert(offsetof(OEMDEV, dwSignTail2) == 3325);

#define KIV_PAYLOAD_AT(field, off) static_assert(offsetof(OemDevPayload, field) == (off))
KIV_PAYLOAD_AT(modelName, 0);
KIV_PAYLOAD_AT(secondaryName, 128);
KIV_PAYLOAD_AT(supCashDrawer, 640);
KIV_PAYLOAD_AT(cashDrawerEnable, 641);
KIV_PAYLOAD_AT(cashDrawerPins, 642);
KIV_PAYLOAD_AT(cashDrawerTimeOn, 643);
KIV_PAYLOAD_AT(cashDrawerTimeOff, 645);
KIV_PAYLOAD_AT(cashDrawerPhase, 647);
KIV_PAYLOAD_AT(supDensity, 648);
KIV_PAYLOAD_AT(density, 649);
KIV_PAYLOAD_AT(supQuality, 650);
KIV_PAYLOAD_AT(quality, 651);
KIV_PAYLOAD_AT(supCutter, 652);
KIV_PAYLOAD_AT(cutMode, 653);
KIV_PAYLOAD_AT(lfBeforeCut, 654);
KIV_PAYLOAD_AT(supRecovery, 655);
KIV_PAYLOAD_AT(recovery, 656);
KIV_PAYLOAD_AT(supBlackMark, 657);
KIV_PAYLOAD_AT(blackMark, 658);
KIV_PAYLOAD_AT(supPresentation, 659);
KIV_PAYLOAD_AT(presentationMode, 660);
KIV_PAYLOAD_AT(presentationValue, 661);
KIV_PAYLOAD_AT(presentationTimeout, 662);
KIV_PAYLOAD_AT(supHeadLed, 663);
KIV_PAYLOAD_AT(headLed, 664);
KIV_PAYLOAD_AT(supBuzzer, 665);
KIV_PAYLOAD_AT(buzzer, 666);
KIV_PAYLOAD_AT(supContinuousMode, 667);
KIV_PAYLOAD_AT(continuousMode, 668);
KIV_PAYLOAD_AT(supFeeder, 669);
KIV_PAYLOAD_AT(feeder, 670);
KIV_PAYLOAD_AT(supSelector, 672);
KIV_PAYLOAD_AT(selector, 673);
KIV_PAYLOAD_AT(supPage2Page, 674);
KIV_PAYLOAD_AT(page2PageEnable, 675);
KIV_PAYLOAD_AT(page2PageAction, 676);
KIV_PAYLOAD_AT(page2PageCheckPoint, 677);
KIV_PAYLOAD_AT(page2PageTimeout, 678);
KIV_PAYLOAD_AT(page2PageExtra, 680);
KIV_PAYLOAD_AT(watermarkEnable, 682);
KIV_PAYLOAD_AT(watermarkDrawPosition, 683);
KIV_PAYLOAD_AT(watermarkDrawType, 684);
KIV_PAYLOAD_AT(watermarkVHPosition, 685);
KIV_PAYLOAD_AT(watermarkPath, 686);
KIV_PAYLOAD_AT(reserved942, 942);
KIV_PAYLOAD_AT(reserved943, 943);
KIV_PAYLOAD_AT(watermarkBrightnessEnable, 944);
KIV_PAYLOAD_AT(watermarkBrightness, 945);
KIV_PAYLOAD_AT(convMode, 946);
KIV_PAYLOAD_AT(convThreshold, 947);
KIV_PAYLOAD_AT(convFilterUp, 948);
KIV_PAYLOAD_AT(convFilterDown, 949);
KIV_PAYLOAD_AT(logos, 950);
KIV_PAYLOAD_AT(couponEnable, 1990);
KIV_PAYLOAD_AT(couponCopies, 1991);
KIV_PAYLOAD_AT(couponDrawType, 1992);
KIV_PAYLOAD_AT(couponDrawPosition, 1993);
KIV_PAYLOAD_AT(couponCutInter, 1994);
KIV_PAYLOAD_AT(couponCutFinal, 1995);
KIV_PAYLOAD_AT(couponScale, 1996);
KIV_PAYLOAD_AT(couponPath, 1997);
KIV_PAYLOAD_AT(startJobBufferLength, 2253);
KIV_PAYLOAD_AT(startJobBufferMode, 2255);
KIV_PAYLOAD_AT(startJobBuffer, 2256);
KIV_PAYLOAD_AT(endJobBufferLength, 2768);
KIV_PAYLOAD_AT(endJobBufferMode, 2770);
KIV_PAYLOAD_AT(endJobBuffer, 2771);
KIV_PAYLOAD_AT(offsetX, 3283);
KIV_PAYLOAD_AT(offsetY, 3285);
KIV_PAYLOAD_AT(reductionEnable, 3287);
KIV_PAYLOAD_AT(reductionMode, 3288);
KIV_PAYLOAD_AT(reductionMinValue, 3289);
KIV_PAYLOAD_AT(reductionValue, 3291);
KIV_PAYLOAD_AT(skipWhitePages, 3293);
KIV_PAYLOAD_AT(whiteTopCrop, 3294);
KIV_PAYLOAD_AT(whiteBottomCrop, 3295);
KIV_PAYLOAD_AT(rotate180, 3296);
#undef KIV_PAYLOAD_AT

// The model a record names: its text up to the first NUL, never past the field.
inline std::string RecordModelName(const OEMDEV& rec) {
    return std::string(rec.payload.modelName, strnlen(rec.payload.modelName, kModelNameSize));
}

// Why the repair before the pages would set a kept record aside for `modelName`'s defaults, in
// the order it tests: the head guards, the model, the layout version.
enum class RecordFault { kNone, kHeadGuards, kModel, kLayoutVersion };
inline RecordFault KeptRecordFault(const OEMDEV& rec, const std::string& modelName) {
    if (rec.dwSignHead1 != KIVITEM_SIGN_H || rec.dwSignHead2 != KIVITEM_SIGN_H)
        return RecordFault::kHeadGuards;
    if (RecordModelName(rec) != modelName)
        return RecordFault::kModel;
    if (rec.dwVerCurrent != KIVITEM_VERCURRENT)
        return RecordFault::kLayoutVersion;
    return RecordFault::kNone;
}
