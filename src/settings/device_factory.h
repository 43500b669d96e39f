// The model factory: the capability object for the model name that the driver reports.
#pragma once

#include <memory>
#include <string>

#include "settings/ui_device_common.h"

// `modelName` is matched exactly (case included); any other name builds a plain UiDeviceCommon
// that supports nothing. The three further strings go to the constructor unchanged.
std::unique_ptr<UiDeviceCommon> CreateUiDevice(const std::string& modelName,
                                               const std::string& second, const std::string& third,
                                               const std::string& fourth);
