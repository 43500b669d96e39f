// Fuzzes the settings file reader and the decoder of saved records and devmodes. A file the
// reader takes, written back, must read to the same record.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "package_models.h"
#include "settings/settings_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1)
        return 0;
    // Byte 0 picks the printer's model; the printer's record is that model's defaults.
    static std::unique_ptr<UiDeviceCommon> models[std::size(kPackageModels)];
    static OEMDEV records[std::size(kPackageModels)];
    const size_t which = data[0] % std::size(kPackageModels);
    if (!models[which]) {
        models[which] = MakePackageModel(kPackageModels[which]);
        OEMDEV& rec = records[which];
        rec.dmExtraHeader = {OEMDEV_SIZE, KIVITEM_SIGNATURE, KIVITEM_VERSION};
        rec.dwSignHead1 = rec.dwSignHead2 = KIVITEM_SIGN_H;
        rec.dwVerCurrent = KIVITEM_VERCURRENT;
        models[which]->Clone()->FillOEMDEVWithDeviceValues(rec.payload, 1);
    }
    const UiDeviceCommon& model = *models[which];
    const OEMDEV& current = records[which];

    const std::span<const uint8_t> rest(data + 1, size - 1);
    DecodeSettings(rest);
    const std::string_view text(reinterpret_cast<const char*>(rest.data()), rest.size());
    const SettingsFileResult read = ReadSettingsFile(text, current, model);
    if (!read.problems.empty())
        return 0;
    const std::string written = WriteSettingsFile(read.record);
    const SettingsFileResult again = ReadSettingsFile(written, current, model);
    if (!again.problems.empty() || std::memcmp(&again.record, &read.record, sizeof(OEMDEV)) != 0 ||
        WriteSettingsFile(again.record) != written) {
        std::abort();
    }
    return 0;
}
