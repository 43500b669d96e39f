// The repair of the working settings record before the document pages open.
#include "entry/record_repair.h"

#include <cstring>

#include "entry/devmode.h"
#include "infra/log.h"

namespace {

// The repair runs inside the common UI entry and logs under its name.
constexpr char kFunction[] = "IOemUI::CommonUIProp";

}  // namespace

void RepairWorkingRecord(const OEMDEV& saved, OEMDEV& work, UiDeviceCommon& device,
                         const std::string& printerName) {
    std::memmove(&work, &saved, sizeof(OEMDEV));
    const RecordFault fault = KeptRecordFault(work, device.GetModelName());
    if (fault == RecordFault::kHeadGuards) {
        TheLog().Write(kLogError, kFunction, "KIVITEM_SIGN_H is different, reset STRUCT");
        TheLog().Write(kLogInfo, kFunction, "reset OEMDEV STRUCT");
    } else if (fault == RecordFault::kModel) {
        TheLog().Write(kLogError, kFunction, "Model is different, reset STRUCT");
        TheLog().Write(kLogInfo, kFunction, "reset OEMDEV STRUCT");
    } else if (fault == RecordFault::kLayoutVersion) {
        // Called a fix, but nothing of the old body is kept: the same full reset as above
        // (kept-behaviour: Layout-version reset).
        TheLog().Write(kLogInfo, kFunction, "KIVITEM_VERCURRENT is different, fix the struct");
    }
    if (fault != RecordFault::kNone) {
        ResetOEMDevBody(work);
        device.FillOEMDEVWithDeviceValues(work.payload, 1);
    }
    std::string name = printerName;
    device.FillUIDeviceValuesWithOEMDEV(name, work.payload);
}

void CopyRepairedFrame(const OEMDEV& work, OEMDEV& target) {
    target.dwSignHead1 = work.dwSignHead1;
    target.dwSignHead2 = work.dwSignHead2;
    target.dwVerCurrent = work.dwVerCurrent;
    target.dwSignTail1 = work.dwSignTail1;
    target.dwSignTail2 = work.dwSignTail2;
}
