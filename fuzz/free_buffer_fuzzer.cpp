// Fuzzes the free-buffer parser, the Console's command text and the offset checks.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "pages/console_rules.h"
#include "pages/free_buffer.h"
#include "pages/print_adjust_rules.h"
#include "settings/setting_enums.h"
#include "settings/ui_device_common.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);

    FreeBufferParse parsed = ParseFreeBuffer(text);
    // An escape never produces more than one byte, so the result cannot outgrow the text.
    if (parsed.bytes.size() > size || (!parsed.error.empty() && !parsed.bytes.empty())) {
        std::abort();
    }
    std::u16string wide;
    for (char c : text) {
        wide.push_back(static_cast<char16_t>(static_cast<unsigned char>(c)));
    }
    FreeBufferParse parsedWide = ParseFreeBuffer(wide);
    if (parsedWide.bytes != parsed.bytes || parsedWide.error != parsed.error) {
        std::abort();
    }

    // The Console shows stored command bytes in a notation that reads back into the same bytes.
    const std::vector<uint8_t> bytes(data, data + size);
    if (ParseFreeBuffer(CommandText(FREE_CMD_MODE_ASCII, bytes)).bytes != bytes) {
        std::abort();
    }

    // The first half as X, the rest as Y: an accepted pair must read back within the range.
    std::string_view x = text.substr(0, size / 2);
    std::string_view y = text.substr(size / 2);
    const PrintAdjustControls controls{std::string(x), std::string(y), false, false,
                                       false,          false,          false, 0};
    if (!ValidatePrintAdjustControls(controls)) {
        UiDeviceCommon device("", "", "", "");
        StorePrintAdjustControls(device, controls);
        if (device.GetOffsetX() < kOffsetMin || device.GetOffsetX() > kOffsetMax ||
            device.GetOffsetY() < kOffsetMin || device.GetOffsetY() > kOffsetMax) {
            std::abort();
        }
    }
    return 0;
}
