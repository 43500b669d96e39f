// The repair of the working settings record before the document pages open.
#pragma once

#include <string>

#include "settings/oemdev.h"
#include "settings/ui_device_common.h"

// Copies `saved` into `work`; when the head guards, the model name or the layout version do not
// match (tested in that order, the first failure names the log line), rebuilds `work` from the
// model's defaults. Then loads `work` into `device`.
void RepairWorkingRecord(const OEMDEV& saved, OEMDEV& work, UiDeviceCommon& device,
                         const std::string& printerName);

// Copies what the repair guarantees of a record's frame (both head guards, the layout version,
// both tail guards) from the working record into `target`; the header and body stay as they are.
void CopyRepairedFrame(const OEMDEV& work, OEMDEV& target);
