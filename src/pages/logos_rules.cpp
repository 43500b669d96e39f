// The Logos page's rules: four logo slots, one shown at a time, each from the printer's memory
// or from an image file.
#include "pages/logos_rules.h"

#include <cstdlib>
#include <iterator>

#include "infra/text_format.h"
#include "pages/label_tables.h"

namespace {

constexpr const char* kSlotNames[] = {"Begin Doc Logo", "Begin Page Logo", "End Page Logo",
                                      "End Doc Logo"};
static_assert(std::size(kSlotNames) == kLogoCount);

int BelowOr0(int value, size_t count) {
    return value >= 0 && static_cast<size_t>(value) < count ? value : 0;
}

}  // namespace

const char* LogoSlotName(size_t slot) {
    return slot < kLogoCount ? kSlotNames[slot] : "";
}

LogoSlotView MakeLogoSlotView(const LogoSettings& logo) {
    const bool file = logo.source == kLogoFromFile;
    const int number = file ? 0 : std::atoi(logo.path.c_str()) - 1;
    return LogoSlotView{
        logo.enable != 0,
        {LogoSourceLabels(), file ? 1 : 0},
        {LogoNumberLabels(), BelowOr0(number, LogoNumberLabels().size())},
        file ? logo.path : std::string(),
        {LogoSizeLabels(), BelowOr0(logo.drawType, LogoSizeLabels().size())},
        {LogoAlignLabels(), BelowOr0(logo.drawPosition, LogoAlignLabels().size())},
    };
}

LogoSlotStates LogoControlStates(bool enabled, int source) {
    return LogoSlotStates{enabled, enabled && source != kLogoFromFile,
                          enabled && source == kLogoFromFile};
}

LogoSettings ReadLogoSlot(const LogoSlotControls& controls) {
    LogoSettings logo;
    logo.enable = controls.enabled ? 1 : 0;
    logo.source = controls.source == kLogoFromFile ? kLogoFromFile : kLogoFromMemory;
    logo.drawType = static_cast<uint8_t>(BelowOr0(controls.size, LogoSizeLabels().size()));
    logo.drawPosition = static_cast<uint8_t>(BelowOr0(controls.align, LogoAlignLabels().size()));
    logo.path = logo.source == kLogoFromFile
                    ? controls.path
                    : std::to_string(BelowOr0(controls.number, LogoNumberLabels().size()) + 1);
    return logo;
}

ValidationFindings ValidateLogoSlots(const UiDeviceCommon& device, const FileExists& exists) {
    ValidationFindings findings;
    for (size_t slot = 0; slot < kLogoCount; ++slot) {
        const LogoSettings& logo = device.GetLogo(slot);
        if (logo.enable == 0 || logo.source != kLogoFromFile) {
            continue;
        }
        const char* name = kSlotNames[slot];
        std::optional<ValidationFailure> finding = CheckImagePath(
            logo.path, exists, PageId::kLogo,
            {"The path of the logo image file is wrong or empty", Format("%s : text empty", name),
             "The field of the logo file is wrong or the file doesn't exist. Do you want to "
             "continue to save this value?",
             Format("%s : path doesn't exists <%s>", name, logo.path.c_str())});
        if (finding) {
            const bool ends = !finding->question;
            findings.push_back(std::move(*finding));
            if (ends) {
                break;
            }
        }
    }
    return findings;
}

LogoPreview LogoPreviewRequest(const LogoSlotControls& controls, const PreviewPaper& paper) {
    const LogoSettings logo = ReadLogoSlot(controls);
    LogoPreview preview{
        logo.source == kLogoFromMemory,
        static_cast<uint32_t>(BelowOr0(controls.number, LogoNumberLabels().size()) + 1),
        {}};
    preview.file.path = logo.path;
    preview.file.paperWidthDots = paper.widthDots;
    preview.file.modelNumber = paper.modelNumber;
    preview.file.drawType = logo.drawType;
    preview.file.position = logo.drawPosition;
    return preview;
}
