// Tests of the working-record repair before the document pages: the three tests in their order.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "entry/devmode.h"
#include "entry/record_repair.h"
#include "fake_log_ports.h"
#include "pages/print_rules.h"
#include "settings/device_factory.h"
#include "settings/setting_enums.h"

namespace {

std::string Bytes(const OEMDEV& rec) {
    return std::string(reinterpret_cast<const char*>(&rec), sizeof(rec));
}

// A record this model could have saved: defaults, then one value changed.
OEMDEV GoodRecord(UiDeviceCommon& device) {
    OEMDEV rec{};
    SetOEMDevDefault(rec);
    device.FillOEMDEVWithDeviceValues(rec.payload, 1);
    rec.payload.density = PRN_PROP_DENS_P37;
    return rec;
}

// What a reset from the model yields for a record whose header is `saved`'s.
OEMDEV ResetRecord(const OEMDEV& saved, const std::string& model) {
    OEMDEV rec = saved;
    ResetOEMDevBody(rec);
    CreateUiDevice(model, "", "", "")->FillOEMDEVWithDeviceValues(rec.payload, 1);
    return rec;
}

std::vector<std::string> RepairLines(const ScopedTestLog& log) {
    std::vector<std::string> lines;
    for (const std::string& body : log.Bodies()) {
        if (body.rfind("[CommonUIProp] ", 0) == 0) {
            lines.push_back(body);
        }
    }
    return lines;
}

// A damaged record is reset from the model, with its log lines, and the object holds the model's
// defaults; a good one is kept byte for byte, even bytes the transfers never read, and loaded.
TEST(RecordRepairTest, DamagedRecordsAreResetFromTheModelAndGoodOnesKept) {
    struct Case {
        const char* what;
        void (*damage)(OEMDEV&);
        std::vector<std::string> lines;  // none: kept
    };
    const std::vector<std::string> guardLines = {
        "[CommonUIProp] KIVITEM_SIGN_H is different, reset STRUCT",
        "[CommonUIProp] reset OEMDEV STRUCT"};
    const std::vector<std::string> modelLines = {"[CommonUIProp] Model is different, reset STRUCT",
                                                 "[CommonUIProp] reset OEMDEV STRUCT"};
    const Case cases[] = {
        {"second head guard", [](OEMDEV& r) { r.dwSignHead2 = KIVITEM_SIGN_T; }, guardLines},
        // The guard test comes first and alone decides the text (the first guard is broken here).
        {"guard and model and version",
         [](OEMDEV& r) {
             r.dwSignHead1 = 1;
             r.payload.modelName[0] = 'X';
             r.dwVerCurrent = 1;
         },
         guardLines},
        {"model name longer", [](OEMDEV& r) { std::memcpy(r.payload.modelName, "ZLD90VIIX", 9); },
         modelLines},
        {"model in another case and version",
         [](OEMDEV& r) {
             r.payload.modelName[0] = 'z';
             r.dwVerCurrent = 3;
         },
         modelLines},
        {"old layout version",
         [](OEMDEV& r) { r.dwVerCurrent = 1; },
         {"[CommonUIProp] KIVITEM_VERCURRENT is different, fix the struct"}},
        {"good", [](OEMDEV& r) { r.payload.reserved943 = 42; }, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ScopedTestLog log(kLogInfo);
        std::unique_ptr<UiDeviceCommon> device = CreateUiDevice("ZLD90VII", "", "", "");
        OEMDEV saved = GoodRecord(*device);
        saved.dmExtraHeader.dwVersion = 7;  // the header is carried over, not re-stamped
        c.damage(saved);
        const OEMDEV savedBefore = saved;
        OEMDEV work;
        std::memset(&work, 0xCC, sizeof(work));
        RepairWorkingRecord(saved, work, *device, "Printer");

        EXPECT_EQ(RepairLines(log), c.lines);
        EXPECT_EQ(Bytes(work),
                  Bytes(c.lines.empty() ? savedBefore : ResetRecord(savedBefore, "ZLD90VII")));
        EXPECT_EQ(Bytes(saved), Bytes(savedBefore));
        EXPECT_EQ(device->GetDensity(), c.lines.empty() ? PRN_PROP_DENS_P37 : PRN_PROP_DENS_NORMAL);
    }
}

// What the Print page makes of the loaded 1-bit values: its threshold trackbar runs 1..254.
bool PrintPageAccepts(const UiDeviceCommon& d) {
    const int threshold = std::clamp<int>(d.GetConvThreshold(), kThresholdMin, kThresholdMax);
    return !ValidatePrintControls(
        PrintControls{0, 0, 0, threshold, d.GetConvFilterDown(), d.GetConvFilterUp()});
}

// The generic device reports an empty model name, so the cleared body of a new record passes
// the model test and is kept; its zero threshold and filters, which the Print page would
// refuse, load as the starting 128 / 0 / 255, and what is saved then opens unchanged.
TEST(RecordRepairTest, TheGenericDeviceKeepsANewRecordAndOpensItUsable) {
    ScopedTestLog log(kLogInfo);
    std::unique_ptr<UiDeviceCommon> device = CreateUiDevice("SOMETHING", "", "", "");
    OEMDEV saved{};
    SetOEMDevDefault(saved);
    saved.payload.density = PRN_PROP_DENS_P50;
    OEMDEV work{};
    RepairWorkingRecord(saved, work, *device, "Printer");
    EXPECT_EQ(Bytes(work), Bytes(saved));
    EXPECT_TRUE(RepairLines(log).empty());
    EXPECT_EQ(device->GetDensity(), 0);  // nothing is supported
    EXPECT_EQ(device->GetConvThreshold(), 128);
    EXPECT_TRUE(PrintPageAccepts(*device));

    device->FillOEMDEVWithDeviceValues(work.payload, 0);
    const OEMDEV applied = work;
    std::unique_ptr<UiDeviceCommon> next = CreateUiDevice("SOMETHING", "", "", "");
    RepairWorkingRecord(applied, work, *next, "Printer");
    EXPECT_EQ(Bytes(work), Bytes(applied));
    EXPECT_EQ(next->GetConvFilterUp(), 255);
}

}  // namespace
