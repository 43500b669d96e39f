// The language monitor's module and status: driver description, monitor key, version block and
// the driver's "BidiSupport" setting.
#include "actions/language_monitor.h"

#include <vector>

#include "infra/config.h"
#include "infra/text_format.h"

namespace {

constexpr size_t kModuleNameChars = 260;

struct LmRow {
    uint8_t status;
    const char* name;
    LmFlags flags;
};

// "LM_DISABLED" reports the bidirectional flag while "LM_BIDI_NOT_ENABLE" does not
// (kept-behaviour: Language-monitor flags).
constexpr LmRow kLmTable[] = {
    {.status = LM_NOT_AVAILABLE,
     .name = "LM_NOT_AVAILABLE",
     .flags = {.available = 0, .bidi = 0, .enable = 0}},
    {.status = LM_DISABLED,
     .name = "LM_DISABLED",
     .flags = {.available = 1, .bidi = 1, .enable = 0}},
    {.status = LM_SETT_NOT_AVAILABLE,
     .name = "LM_SETT_NOT_AVAILABLE",
     .flags = {.available = 0, .bidi = 0, .enable = 0}},
    {.status = LM_BIDI_NOT_ENABLE,
     .name = "LM_BIDI_NOT_ENABLE",
     .flags = {.available = 1, .bidi = 0, .enable = 0}},
    {.status = LM_ENABLED, .name = "LM_ENABLED", .flags = {.available = 1, .bidi = 1, .enable = 1}},
};

const LmRow* FindLmRow(uint8_t status) {
    for (const LmRow& row : kLmTable) {
        if (row.status == status)
            return &row;
    }
    return nullptr;
}

}  // namespace

const char* GetLMStatusName(uint8_t status) {
    const LmRow* row = FindLmRow(status);
    return row != nullptr ? row->name : "NOID";
}

LmFlags LmFlagsFromStatus(uint8_t status) {
    const LmRow* row = FindLmRow(status);
    return row != nullptr ? row->flags : LmFlags{};
}

std::string GetDriverMonitorName(Spooler& spooler, PrinterHandle printer) {
    PrinterDriverInfo info;
    return spooler.DriverInfo(printer, &info) ? info.monitorName : std::string();
}

std::string GetLanguageMonitorDll(Spooler& spooler, RegistryHive& localMachine, TextCodec& text,
                                  PrinterHandle printer, const std::string& monitorName) {
    const std::string name =
        monitorName.empty() ? GetDriverMonitorName(spooler, printer) : monitorName;
    if (name.empty())
        return {};
    const std::u16string key = std::u16string(kMonitorsKey) + u"\\" + text.Widen(name);
    if (!localMachine.KeyExists(key))
        return {};
    std::u16string module;
    if (!ReadRegistryString(localMachine, key, u"Driver", &module, kModuleNameChars))
        return {};
    return text.Narrow(module);
}

uint8_t QueryLanguageMonitorStatus(const LanguageMonitorPorts& ports, DriverSettingSource& driver,
                                   PrinterHandle printer) {
    const std::string module =
        GetLanguageMonitorDll(ports.spooler, ports.localMachine, ports.text, printer, "");
    if (module.empty())
        return LM_NOT_AVAILABLE;
    // Only this driver's own monitor module is trusted by its description; a monitor under
    // another naming scheme is judged by the driver setting alone.
    if (UpperAscii(module).find("_LM.DLL") != std::string::npos) {
        std::string description;
        if (!ports.versions.StringValue(module, "FileDescription", &description) ||
            description.find("ORVANE Driver LM") == std::string::npos) {
            return LM_NOT_AVAILABLE;
        }
    }
    uint32_t attributes = 0;
    if (!ports.spooler.PrinterAttributes(printer, &attributes) ||
        (attributes & kPrinterAttributeEnableBidi) == 0) {
        return LM_BIDI_NOT_ENABLE;
    }
    uint32_t needed = 0;
    const int32_t sizeResult = driver.GetDriverSetting("BidiSupport", nullptr, 0, &needed);
    // The setting is a few keywords; the size comes from another module and is not trusted.
    constexpr uint32_t kSettingLimit = 64 * 1024;
    if ((sizeResult != kResultOk && sizeResult != kResultFail) || needed > kSettingLimit)
        return LM_SETT_NOT_AVAILABLE;
    std::vector<char> value(size_t{needed} + 1, '\0');
    driver.GetDriverSetting("BidiSupport", value.data(), needed, &needed);
    value.back() = '\0';
    return std::string(value.data()).find("ENABLE_WAITJOB") != std::string::npos ? LM_ENABLED
                                                                                 : LM_DISABLED;
}
