// The Logos page's rules: four logo slots (begin and end of the document and of each page), one
// shown at a time, each from the printer's memory or from an image file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "actions/uni_bridge.h"
#include "pages/page_view.h"
#include "settings/ui_device_common.h"

inline constexpr uint8_t kLogoFromMemory = 0;
inline constexpr uint8_t kLogoFromFile = 1;

// "Begin Doc Logo", "Begin Page Logo", "End Page Logo", "End Doc Logo".
const char* LogoSlotName(size_t slot);

struct LogoSlotView {
    bool enabled;
    ComboView source;
    ComboView number;  // the printer-memory logo, "1".."15"
    std::string path;  // empty for a printer-memory logo
    ComboView size;
    ComboView align;
};
LogoSlotView MakeLogoSlotView(const LogoSettings& logo);

// What the user can reach: the source follows Enable, then the number or the file follows the
// source.
struct LogoSlotStates {
    bool source;
    bool number;
    bool file;
};
LogoSlotStates LogoControlStates(bool enabled, int source);

// The shown slot's controls as the slot read, Apply and the print preview read them.
struct LogoSlotControls {
    bool enabled;
    int source;
    int number;
    std::string path;
    int size;
    int align;
};
// The slot read: a printer-memory logo keeps its number as text in the path field.
LogoSettings ReadLogoSlot(const LogoSlotControls& controls);

// Every enabled file slot, in slot order: an empty path fails, a missing file is a question.
ValidationFindings ValidateLogoSlots(const UiDeviceCommon& device, const FileExists& exists);

// A preview asks the rendering module for the memory logo or for the file.
struct LogoPreview {
    bool fromMemory;
    uint32_t number;  // 1..15
    UniImageRequest file;
};
LogoPreview LogoPreviewRequest(const LogoSlotControls& controls, const PreviewPaper& paper);
