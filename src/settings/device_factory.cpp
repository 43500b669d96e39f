// The model factory: exact model-name matches in their fixed order, else the generic device.
#include "settings/device_factory.h"

#include <iterator>

#include "settings/models/ui_device_models.h"

namespace {

using Maker = std::unique_ptr<UiDeviceCommon> (*)(const std::string&, const std::string&,
                                                  const std::string&);

template <typename Device>
std::unique_ptr<UiDeviceCommon> Make(const std::string& second, const std::string& third,
                                     const std::string& fourth) {
    return std::make_unique<Device>(second, third, fourth);
}

struct FactoryEntry {
    const char* modelName;
    Maker make;
};

// The order of comparison is fixed. "WR35VIIEJ" has no entry although UiDeviceWR35EJ exists
// (kept-behaviour: Factory without WR35VIIEJ).
constexpr FactoryEntry kFactory[] = {
    {"VORTA5X", &Make<UiDeviceVorta5XCA>},
    {"J7", &Make<UiDeviceJ7>},
    {"ZLD90VII", &Make<UiDeviceZLD90VII>},
    {"N5", &Make<UiDeviceN5>},
    {"TRX415A", &Make<UiDeviceTRX415A>},
    {"TRX418A CUT", &Make<UiDeviceTRX418A_CUT>},
    {"TRX418A NOCUT", &Make<UiDeviceTRX418A_NOCUT>},
    {"HB5840A", &Make<UiDeviceHB5840A>},
    {"HB5820A", &Make<UiDeviceHB5820A>},
    {"HB5820A-EJ", &Make<UiDeviceHB5820AEJ>},
    {"WR35VII", &Make<UiDeviceWR35>},
    {"WR55VII", &Make<UiDeviceWR55>},
    {"TRX430A", &Make<UiDeviceTRX430A>},
    {"ZLD40", &Make<UiDeviceZLD40>},
    {"ZLD40PRESENTER", &Make<UiDeviceZLD40P>},
    {"TRX430ATF", &Make<UiDeviceTRX430ATF>},
};

}  // namespace

std::unique_ptr<UiDeviceCommon> CreateUiDevice(const std::string& modelName,
                                               const std::string& second, const std::string& third,
                                               const std::string& fourth) {
    for (const FactoryEntry& entry : kFactory) {
        if (modelName == entry.modelName) {
            return entry.make(second, third, fourth);
        }
    }
    return std::make_unique<UiDeviceCommon>(modelName, second, third, fourth);
}
