// The calling contract between this plug-in and the driver's rendering module ("UNI"): the four
// exports that turn a logo, coupon or watermark into ready-to-send printer data. Both modules
// compile this header; it holds nothing but plain C layout, so either side may be rebuilt with
// another compiler as long as the layout below holds.
#pragma once

#include <stddef.h>
#include <stdint.h>

// A text argument, passed by value: `length` 8-bit characters at `text`, not necessarily
// terminated, valid for the duration of the call only. The module copies what it keeps.
typedef struct KivUniText {
    const char* text;
    uint64_t length;
} KivUniText;

#ifdef __cplusplus
static_assert(sizeof(KivUniText) == 16, "two 8-byte fields, no padding");
static_assert(offsetof(KivUniText, text) == 0);
static_assert(offsetof(KivUniText, length) == 8);
#endif

// Every export writes into `out` when it is non-null and returns the byte count it would write
// (out null: the size call) or wrote (the fill call); 0 or less is a failure. `out` is allocated
// and freed by the caller, never by the module.
#ifdef __cplusplus
extern "C" {
#endif
// A logo kept in the printer's memory: its number (1..) and the position code (0 left,
// 1 centre, 2 right).
typedef int32_t (*KivGetBufferPrintLogoNVRAM)(KivUniText printer, uint32_t logoNumber,
                                              uint8_t position, uint8_t* out);
// A logo or coupon from an image file: the paper width in dots, the model number, then the
// position code (0 left, 1 centre, 2 right) and the scale, that is the draw type (0 keep,
// 1 zoom). The coupon's order is the rendering module's; the logo takes the same.
typedef int32_t (*KivGetBufferPrintImageFILE)(KivUniText printer, KivUniText path,
                                              uint32_t paperWidthDots, uint32_t modelNumber,
                                              uint8_t position, uint8_t drawType, uint8_t* out);
// A watermark from an image file: paper width and length in dots and the model number; layer
// (0 over, 1 under), fit (0 keep, 1 stretch, 2 tile, 3 tile column) and the place code (high
// nibble horizontal, low nibble vertical: 1, 2, 4); the brightness 0..200 (100 unchanged).
typedef int32_t (*KivGetBufferPrintWatermarkFILE)(KivUniText printer, KivUniText path,
                                                  uint32_t paperWidthDots, uint32_t paperLengthDots,
                                                  uint32_t modelNumber, uint8_t layer, uint8_t fit,
                                                  uint8_t place, uint32_t brightness, uint8_t* out);
#ifdef __cplusplus
}
#endif

// The names the module exports them under.
#define KIV_UNI_EXPORT_LOGO_NVRAM "GetBufferPrintLogoNVRAM"
#define KIV_UNI_EXPORT_LOGO_FILE "GetBufferPrintLogoFILE"
#define KIV_UNI_EXPORT_COUPON_FILE "GetBufferPrintCouponFILE"
#define KIV_UNI_EXPORT_WATERMARK_FILE "GetBufferPrintWatermarkFILE"
