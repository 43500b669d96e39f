// The language monitor: its module through the driver and the registry, and the status the
// common UI entry turns into the pages' monitor flags.
#pragma once

#include <cstdint>
#include <string>

#include "ports/registry_hive.h"
#include "ports/spooler.h"
#include "ports/text_codec.h"
#include "ports/version_query.h"

// The driver's answer to a setting request, as the driver helper interface gives it.
class DriverSettingSource {
  public:
    virtual ~DriverSettingSource() = default;
    // The HRESULT of the request; with no buffer (`size` 0) the driver reports the size needed.
    virtual int32_t GetDriverSetting(const char* feature, char* output, uint32_t size,
                                     uint32_t* needed) = 0;
};

inline constexpr int32_t kResultOk = 0;
inline constexpr int32_t kResultFail = static_cast<int32_t>(0x80004005u);  // E_FAIL

inline constexpr const char16_t* kMonitorsKey =
    u"SYSTEM\\CurrentControlSet\\Control\\Print\\Monitors";

// The driver's monitor name; empty when unknown.
std::string GetDriverMonitorName(Spooler& spooler, PrinterHandle printer);

// The monitor's module file name ("Driver" under the monitor's key); an empty `monitorName`
// asks the driver for its own. Empty when unknown.
std::string GetLanguageMonitorDll(Spooler& spooler, RegistryHive& localMachine, TextCodec& text,
                                  PrinterHandle printer, const std::string& monitorName);

// What QueryLanguageMonitorStatus asks of the platform.
struct LanguageMonitorPorts {
    Spooler& spooler;
    RegistryHive& localMachine;
    TextCodec& text;
    VersionQuery& versions;
};

// Language-monitor status values, as the language monitor query reports them.
enum LmStatus : uint8_t {
    LM_NOT_AVAILABLE = 0,
    LM_DISABLED = 1,
    LM_SETT_NOT_AVAILABLE = 2,
    LM_BIDI_NOT_ENABLE = 3,
    LM_ENABLED = 10,
};

struct LmFlags {
    uint32_t available = 0;
    uint32_t bidi = 0;
    uint32_t enable = 0;
};

// The status's symbol ("LM_ENABLED"), "NOID" for any other value.
const char* GetLMStatusName(uint8_t status);
// The three flags for a status; an unknown status sets none.
LmFlags LmFlagsFromStatus(uint8_t status);

// One of the LmStatus codes; never fails.
uint8_t QueryLanguageMonitorStatus(const LanguageMonitorPorts& ports, DriverSettingSource& driver,
                                   PrinterHandle printer);
