// The driver package's models in its INF's order: the factory's sixteen names, then WR35VIIEJ,
// which has a class but no factory entry.
#pragma once

#include <memory>
#include <string>

#include "settings/device_factory.h"
#include "settings/models/ui_device_models.h"

inline const char* const kPackageModels[] = {
    "VORTA5X",       "J7",      "ZLD90VII",       "N5",         "TRX415A",   "TRX418A CUT",
    "TRX418A NOCUT", "HB5840A", "HB5820A",        "HB5820A-EJ", "WR35VII",   "WR55VII",
    "TRX430A",       "ZLD40",   "ZLD40PRESENTER", "TRX430ATF",  "WR35VIIEJ",
};

// The model's object with the names "second", "third" and "fourth"; WR35VIIEJ made directly.
inline std::unique_ptr<UiDeviceCommon> MakePackageModel(const std::string& name) {
    if (name == "WR35VIIEJ")
        return std::make_unique<UiDeviceWR35EJ>("second", "third", "fourth");
    return CreateUiDevice(name, "second", "third", "fourth");
}
