// The setting enumerations of the settings record; their numbers are part of the record format.
#pragma once

#include <cstdint>

// Most printer-behaviour values step by 16 and keep 0 for "not set by driver": the driver then
// sends nothing and the printer keeps its own setting.

// Cash drawer pins.
inline constexpr uint8_t PRN_PROP_CDPINS_NO = 0;
inline constexpr uint8_t PRN_PROP_CDPINS_PIN1 = 1;
inline constexpr uint8_t PRN_PROP_CDPINS_PIN2 = 2;
inline constexpr uint8_t PRN_PROP_CDPINS_PIN1AND2 = 3;

// Cash drawer phase.
inline constexpr uint8_t PRN_PROP_CDPHASE_NO = 0;
inline constexpr uint8_t PRN_PROP_CDPHASE_START_DOC = 16;
inline constexpr uint8_t PRN_PROP_CDPHASE_END_DOC = 32;
inline constexpr uint8_t PRN_PROP_CDPHASE_END_PAGE = 48;

// Buzzer.
inline constexpr uint8_t PRN_PROP_BUZZER_NO = 0;
inline constexpr uint8_t PRN_PROP_BUZZER_START_DOC = 16;
inline constexpr uint8_t PRN_PROP_BUZZER_END_DOC = 32;

// Density.
inline constexpr uint8_t PRN_PROP_DENS_NOTSETBYDRIVER = 0;
inline constexpr uint8_t PRN_PROP_DENS_M50 = 16;
inline constexpr uint8_t PRN_PROP_DENS_M37 = 32;
inline constexpr uint8_t PRN_PROP_DENS_M25 = 48;
inline constexpr uint8_t PRN_PROP_DENS_M12 = 64;
inline constexpr uint8_t PRN_PROP_DENS_NORMAL = 80;
inline constexpr uint8_t PRN_PROP_DENS_P12 = 96;
inline constexpr uint8_t PRN_PROP_DENS_P25 = 112;
inline constexpr uint8_t PRN_PROP_DENS_P37 = 128;
inline constexpr uint8_t PRN_PROP_DENS_P50 = 144;

// Quality.
inline constexpr uint8_t PRN_PROP_QUAL_NOTSETBYDRIVER = 0;
inline constexpr uint8_t PRN_PROP_QUAL_HQUALITY = 16;
inline constexpr uint8_t PRN_PROP_QUAL_NORMAL = 32;
inline constexpr uint8_t PRN_PROP_QUAL_HSPEED = 48;
inline constexpr uint8_t PRN_PROP_QUAL_VHSPEED = 64;

// Cut mode (TC total cut, PC partial cut, tear-off means no cut at all).
inline constexpr uint8_t PRN_PROP_CUTTER_NOTSETBYDRIVER = 0;
inline constexpr uint8_t PRN_PROP_CUTTER_TEAROFF_END_PAGE = 16;
inline constexpr uint8_t PRN_PROP_CUTTER_TEAROFF_END_JOB = 17;
inline constexpr uint8_t PRN_PROP_CUTTER_TC_END_PAGE = 32;
inline constexpr uint8_t PRN_PROP_CUTTER_PC_END_PAGE = 48;
inline constexpr uint8_t PRN_PROP_CUTTER_TC_END_DOC = 64;
inline constexpr uint8_t PRN_PROP_CUTTER_PC_END_DOC = 80;
inline constexpr uint8_t PRN_PROP_CUTTER_TC_END_JOB = 96;
inline constexpr uint8_t PRN_PROP_CUTTER_PC_END_JOB = 112;
inline constexpr uint8_t PRN_PROP_NO_CUT = 128;

// Recovery.
inline constexpr uint8_t PRN_PROP_RECOVERY_NOTSETBYDRIVER = 0;
inline constexpr uint8_t PRN_PROP_RECOVERY_NO = 16;
inline constexpr uint8_t PRN_PROP_RECOVERY_NORMAL_AT_CUT = 32;
inline constexpr uint8_t PRN_PROP_RECOVERY_TOTAL_AT_CUT = 48;
inline constexpr uint8_t PRN_PROP_RECOVERY_START_PAGE = 64;

// Black mark.
inline constexpr uint8_t PRN_PROP_BMARK_NOTSETBYDRIVER = 0;
inline constexpr uint8_t PRN_PROP_BMARK_OFF = 16;
inline constexpr uint8_t PRN_PROP_BMARK_BPAGE = 32;
inline constexpr uint8_t PRN_PROP_BMARK_EPAGE = 48;
inline constexpr uint8_t PRN_PROP_BMARK_BEPAGE = 64;

// Continuous mode: the one enumeration whose "not set by driver" is 1, because 0 is automatic.
inline constexpr uint8_t PRN_PROP_CONTINUOUSMODE_AUTO = 0;
inline constexpr uint8_t PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER = 1;
inline constexpr uint8_t PRN_PROP_CONTINUOUSMODE_OFF_LOOPAWAY = 16;
inline constexpr uint8_t PRN_PROP_CONTINUOUSMODE_ON_FEEDWAY = 32;

// Feeder: 16 bits wide because its values start at 1000.
inline constexpr uint16_t PRN_PROP_FEEDER_NOTSETBYDRIVER = 0;
inline constexpr uint16_t PRN_PROP_FEEDER_AUTO = 1000;
inline constexpr uint16_t PRN_PROP_FEEDER_1 = 1001;
inline constexpr uint16_t PRN_PROP_FEEDER_2 = 1002;
inline constexpr uint16_t PRN_PROP_FEEDER_3 = 1003;

// Ticket selector.
inline constexpr uint8_t PRN_PROP_SELECTOR_NOTSETBYDRIVER = 0;
inline constexpr uint8_t PRN_PROP_SELECTOR_TOUT = 16;
inline constexpr uint8_t PRN_PROP_SELECTOR_TSTORE = 32;

// Presentation mode.
inline constexpr uint8_t PRN_PROP_PRESENT_NOTSETBYDRIVER = 0;
inline constexpr uint8_t PRN_PROP_PRESENT_HOLD_FIXED = 16;
inline constexpr uint8_t PRN_PROP_PRESENT_HOLD_VALUE = 32;
inline constexpr uint8_t PRN_PROP_PRESENT_HOLD_MAX = 48;
inline constexpr uint8_t PRN_PROP_PRESENT_EJECT = 64;
inline constexpr uint8_t PRN_PROP_PRESENT_RETRACT = 80;
inline constexpr uint8_t PRN_PROP_PRESENT_PEJECT_TO = 96;
inline constexpr uint8_t PRN_PROP_PRESENT_PRETRACT_TO = 112;

// Head (bezel) LED.
inline constexpr uint8_t PRN_HLED_OFF = 0;
inline constexpr uint8_t PRN_HLED_BLINK = 16;
inline constexpr uint8_t PRN_HLED_BLINK_SLOW = 32;
inline constexpr uint8_t PRN_HLED_BLINK_FAST = 48;
inline constexpr uint8_t PRN_HLED_BLINK_ALWAYSON = 64;

// Page-to-page action after the time-out (0 has no name).
inline constexpr uint8_t PRN_PROP_PAGE2PAGE_EJECT = 16;
inline constexpr uint8_t PRN_PROP_PAGE2PAGE_RETRACT = 32;
inline constexpr uint8_t PRN_PROP_PAGE2PAGE_HOLD = 48;

// Page-to-page extra action after the time-out.
inline constexpr uint8_t PRN_PROP_PAGE2PAGE_AFTERTO_DONOTHING = 0;
inline constexpr uint8_t PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_DOC = 1;
inline constexpr uint8_t PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_QUEUE = 2;

// Page-to-page time-out check point.
inline constexpr uint8_t PRN_PROP_PAGE2PAGE_CHECKTO_BEGINPAGE = 16;
inline constexpr uint8_t PRN_PROP_PAGE2PAGE_CHECKTO_ENDPAGE = 32;

// Watermark layer.
inline constexpr uint8_t WK_OVER = 0;
inline constexpr uint8_t WK_UNDER = 1;

// Watermark fit.
inline constexpr uint8_t WK_DKEEP = 0;
inline constexpr uint8_t WK_DSTRETCH = 1;
inline constexpr uint8_t WK_TILE = 2;
inline constexpr uint8_t WK_COLUMN_TILE = 3;

// Watermark place: low nibble vertical (1 top, 2 centre, 4 bottom), high nibble horizontal
// (1 left, 2 centre, 4 right).
inline constexpr uint8_t WK_TOPLEFT = 0x11;
inline constexpr uint8_t WK_CENTERLEFT = 0x12;
inline constexpr uint8_t WK_BOTTOMLEFT = 0x14;
inline constexpr uint8_t WK_TOPCENTER = 0x21;
inline constexpr uint8_t WK_CENTERCENTER = 0x22;
inline constexpr uint8_t WK_BOTTOMCENTER = 0x24;
inline constexpr uint8_t WK_TOPRIGHT = 0x41;
inline constexpr uint8_t WK_CENTERRIGHT = 0x42;
inline constexpr uint8_t WK_BOTTOMRIGHT = 0x44;

// Image (logo, coupon) size and alignment.
inline constexpr uint8_t IM_DKEEP = 0;
inline constexpr uint8_t IM_DZOOM = 1;
inline constexpr uint8_t IM_DALIGN_LEFT = 0;
inline constexpr uint8_t IM_DALIGN_CENTER = 1;
inline constexpr uint8_t IM_DALIGN_RIGHT = 2;

// Logo source: printer memory (the path field then holds the logo number) or a file.
inline constexpr uint8_t LOGO_TYPE_PRINTFROMFLASH = 0;
inline constexpr uint8_t LOGO_TYPE_PRINTFROMFILE = 1;

// Coupon cut between copies and after the last copy.
inline constexpr uint8_t PRN_COP_CUTTER_NONE = 0;
inline constexpr uint8_t PRN_COP_CUTTER_TC = 16;
inline constexpr uint8_t PRN_COP_CUTTER_PC = 32;
inline constexpr uint8_t PRN_COP_CUTTER_TEAROFF = 48;

// Coupon position (no field in the record).
inline constexpr uint8_t COUPONPOS_NONE = 0;
inline constexpr uint8_t COUPONPOS_BOTTOM_JOB = 16;

// Paper reduction mode.
inline constexpr uint8_t REDW_ABSOLUTEVAL = 0;
inline constexpr uint8_t REDW_PERCENT = 1;

// 1-bit conversion.
inline constexpr uint8_t CMODE_AUTO = 0;
inline constexpr uint8_t CMODE_NONE_THRESHOLD = 1;
inline constexpr uint8_t CMODE_ERRDIFF_FLOYD_STEINBERG = 2;

// Free command buffers: none, a file path, or raw bytes remembered with the notation they were
// entered in.
inline constexpr uint8_t FREE_CMD_MODE_NONE = 0;
inline constexpr uint8_t FREE_CMD_MODE_FILENAME = 1;
inline constexpr uint8_t FREE_CMD_MODE_ASCII = 17;
inline constexpr uint8_t FREE_CMD_MODE_ZAP = 18;
inline constexpr uint8_t FREE_CMD_MODE_SPACE = 19;
