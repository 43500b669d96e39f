// OemUiState: what one IOemUI object keeps for a property-sheet opening, shared with the pages.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "infra/config.h"
#include "settings/oemdev.h"

class UiDeviceCommon;

// Plain state: the interface object owns one, the common UI entry rebuilds it at every full
// document pass, the pages reach it through the shared page block. Handles are kept as void*
// so that core code can hold the struct.
struct OemUiState {
    OemUiState();
    ~OemUiState();  // out of line: UiDeviceCommon is complete only there
    OemUiState(const OemUiState&) = delete;
    OemUiState& operator=(const OemUiState&) = delete;

    std::string printerName;         // 8-bit, as the log and the file names use it
    std::u16string printerNameWide;  // as the framework gave it (registry key, log mutex)
    std::string oemCustomData;       // the model data text, "MODEL|second|third|fourth"
    std::vector<std::string> oemCustomDataList;  // its pieces split at every "|"
    Configuration config;
    std::unique_ptr<UiDeviceCommon> device;  // the model capability object
    void* hPrinter = nullptr;                // the framework's printer handle
    void* closedPrinter = nullptr;           // a framework handle a failed send has closed
    OEMDEV workOEMDev{};                     // what the pages edit
    OEMDEV savedOEMDev{};                    // the incoming record of the last merge
    int32_t paperWidth = 0;                  // tenths of a millimetre (public devmode)
    int32_t paperLength = 0;
    int32_t yResolution = 0;  // dots per inch
    int32_t paperWidthDots = 0;
    int32_t paperLengthDots = 0;
    uint32_t lmAvailable = 0;  // language-monitor flags
    uint32_t lmBidi = 0;
    uint32_t lmEnable = 0;

    void* driverHelper = nullptr;  // IPrintOemDriverUI*, not owned: the object holds the reference
    void* pageBlock = nullptr;     // the shared page block while a sheet is up
};
