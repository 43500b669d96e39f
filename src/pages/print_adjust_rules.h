// The Print adjust page's rules: print offset, white cropping and skipping, rotation, reduction.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "pages/page_view.h"
#include "settings/setting_ranges.h"

class UiDeviceCommon;

// An offset edit is read with room for 8 characters and the terminator.
inline constexpr size_t kOffsetTextLimit = 8;

// What the page's controls hold; the page is filled with it and read back into it.
struct PrintAdjustControls {
    std::string offsetXText;
    std::string offsetYText;
    bool whiteTopCrop;
    bool whiteBottomCrop;
    bool skipWhitePages;
    bool rotate180;
    bool reductionChecked;  // the reduction Value combo is enabled exactly when checked
    int scaleSelection;
};

struct PrintAdjustView {
    PrintAdjustControls controls;
    LabelList scaleLabels;
};
PrintAdjustView MakePrintAdjustView(const UiDeviceCommon& device);

// X completely (integer, then range) before Y; texts are cut to what the edit hands back.
std::optional<ValidationFailure> ValidatePrintAdjustControls(const PrintAdjustControls& controls);
// The values the controls stand for, into the device. The reduction value is taken only when
// reduction is checked; otherwise the stored one stays.
void StorePrintAdjustControls(UiDeviceCommon& device, const PrintAdjustControls& controls);
