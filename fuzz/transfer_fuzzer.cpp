// libFuzzer target: an arbitrary record payload loaded into one model's object and saved back.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "fake_log_ports.h"
#include "pages/peripherals_rules.h"
#include "pages/presentation_rules.h"
#include "pages/print_adjust_rules.h"
#include "package_models.h"

namespace {

void Require(bool condition, const char* what, const std::string& model) {
    if (!condition) {
        std::fprintf(stderr, "violated: %s (model <%s>)\n", what, model.c_str());
        std::abort();
    }
}

bool TailIsZero(const void* field, size_t used, size_t size) {
    const auto* bytes = static_cast<const uint8_t*>(field);
    return std::all_of(bytes + used, bytes + size, [](uint8_t b) { return b == 0; });
}

// What a saved record must obey, whatever the object held.
void CheckSaved(const UiDeviceCommon& device, const OemDevPayload& p) {
    const std::string model = device.GetModelName();
    OemDevPayload e{};
    device.ExportCapabilities(e);
    struct Gate {
        uint8_t saved;
        int value, notSet;
        const char* what;
    } gates[] = {
        {p.supCashDrawer, p.cashDrawerPhase, 0, "drawer phase"},
        {p.supBuzzer, p.buzzer, 0, "buzzer"},
        {p.supDensity, p.density, 0, "density"},
        {p.supQuality, p.quality, 0, "quality"},
        {p.supCutter, p.cutMode, 0, "cut"},
        {p.supRecovery, p.recovery, 0, "recovery"},
        {p.supBlackMark, p.blackMark, 0, "black mark"},
        {p.supPresentation, p.presentationMode, 0, "presentation"},
        {p.supHeadLed, p.headLed, 0, "head LED"},
        {p.supContinuousMode, p.continuousMode, 1, "continuous"},
        {p.supFeeder, p.feeder, 0, "feeder"},
        {p.supSelector, p.selector, 0, "selector"},
        {p.supPage2Page, p.page2PageEnable, 0, "page to page"},
    };
    for (const Gate& g : gates) {
        Require(g.saved != 0 || g.value == g.notSet, g.what, model);
    }
    if (p.supPresentation == 0) {
        Require(p.presentationValue == 0 && p.presentationTimeout == 0, "presentation", model);
    }
    if (p.supPage2Page == 0 || p.page2PageEnable == 0) {
        Require(p.page2PageAction == e.page2PageAction &&
                    p.page2PageTimeout == e.page2PageTimeout && p.page2PageExtra == 0,
                "disabled page to page", model);
    }
    Require(p.page2PageCheckPoint == e.page2PageCheckPoint, "check point", model);
    Require(p.couponScale == (p.couponEnable != 0 ? 16 : 0), "coupon scale", model);
    Require(p.startJobBufferLength <= kFreeBufferSize && p.endJobBufferLength <= kFreeBufferSize,
            "free buffer length", model);
    Require(TailIsZero(p.startJobBuffer, p.startJobBufferLength, kFreeBufferSize) &&
                TailIsZero(p.endJobBuffer, p.endJobBufferLength, kFreeBufferSize),
            "free buffer tail", model);
}

// What a loaded object must hold whatever the bytes: values its model offers (or the not-set
// value, the export's value, the starting value of a fresh object of the model), and 1-bit
// values and offsets that the Print and Print adjust pages accept. The values the Peripherals
// and Presentation pages show are held to their lists by the store-back check below.
void CheckLoaded(const UiDeviceCommon& d, const UiDeviceCommon& fresh) {
    const std::string model = d.GetModelName();
    OemDevPayload e{};
    d.ExportCapabilities(e);
    const auto offered = [&](const auto& list, auto value, int notSet, int exported, int start,
                             const char* what) {
        Require(value == notSet || value == exported || value == start ||
                    std::find(list.begin(), list.end(), value) != list.end(),
                what, model);
    };
    offered(d.GetDensityList(), d.GetDensity(), 0, e.density, fresh.GetDensity(), "density");
    offered(d.GetQualityList(), d.GetQuality(), 0, e.quality, fresh.GetQuality(), "quality");
    offered(d.GetRecoveryList(), d.GetRecovery(), 0, e.recovery, fresh.GetRecovery(), "recovery");
    offered(d.GetBlackMarkList(), d.GetBlackMark(), 0, e.blackMark, fresh.GetBlackMark(),
            "black mark");
    offered(d.GetContinuousModeList(), d.GetContinuousMode(), 1, e.continuousMode,
            fresh.GetContinuousMode(), "continuous");
    offered(d.GetFeederList(), d.GetFeeder(), 0, e.feeder, fresh.GetFeeder(), "feeder");
    // No model exports the buzzer or selector Sup byte, but a record that carries one loads
    // their values under the same rule.
    offered(d.GetBuzzerList(), d.GetBuzzer(), 0, e.buzzer, fresh.GetBuzzer(), "buzzer");
    offered(d.GetSelectorList(), d.GetSelector(), 0, e.selector, fresh.GetSelector(), "selector");
    Require(d.GetConvMode() <= 2, "conversion mode", model);
    const int t = d.GetConvThreshold(), up = d.GetConvFilterUp(), down = d.GetConvFilterDown();
    Require(t >= 1 && t <= 254 && down <= t && t <= up && down < up, "1-bit values", model);
    Require(!ValidatePrintAdjustControls(MakePrintAdjustView(d).controls), "offsets", model);
}

// The package's models, then the generic device (a name the factory does not know).
constexpr size_t kModelCount = std::size(kPackageModels) + 1;

std::unique_ptr<UiDeviceCommon> MakeDevice(size_t index) {
    if (index == std::size(kPackageModels))
        return CreateUiDevice("WR35VIIEJ", "second", "third", "fourth");
    return MakePackageModel(kPackageModels[index]);
}

}  // namespace

// Input: byte 0 picks the model, the rest is the payload, repeated to fill the whole record so
// that short inputs still reach its far fields (logos, coupon, free buffers, offsets). Objects
// are made afresh for each input, so that each run frees what it allocates (libFuzzer takes a
// run that ends with more blocks than it began with for a leak). Built as transfer_fuzzer with
// the log off, as the product mostly runs, and as transfer_log_fuzzer with it on.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) {
        return 0;
    }
    const size_t index = data[0] % kModelCount;
    const auto device = MakeDevice(index);
    const auto fresh = MakeDevice(index);
#if KIV_FUZZ_WITH_LOG
    const ScopedTestLog log(kLogDump, 1);
#endif
    // Records exactly as large as their type, on the heap, so that any read or write past them
    // is caught.
    auto input = std::make_unique<uint8_t[]>(sizeof(OemDevPayload));  // zero-filled
    if (size > 1) {
        for (size_t i = 0; i < sizeof(OemDevPayload); ++i)
            input[i] = data[1 + i % (size - 1)];
    }
    const auto* loaded = reinterpret_cast<const OemDevPayload*>(input.get());
    auto saved = std::make_unique<uint8_t[]>(sizeof(OemDevPayload));
    auto again = std::make_unique<uint8_t[]>(sizeof(OemDevPayload));
    auto* savedRecord = reinterpret_cast<OemDevPayload*>(saved.get());
    auto* againRecord = reinterpret_cast<OemDevPayload*>(again.get());

    std::string printer = "Printer";
    device->FillUIDeviceValuesWithOEMDEV(printer, *loaded);
    Require(printer.empty(), "model-name argument cleared", device->GetModelName());
    CheckLoaded(*device, *fresh);
    device->FillOEMDEVWithDeviceValues(*savedRecord, 0);
    CheckSaved(*device, *savedRecord);
    const auto savesTheSame = [&](bool afterThePages) {
        device->FillOEMDEVWithDeviceValues(*againRecord, 0);
        if (afterThePages && savedRecord->cashDrawerEnable != 0) {
            // The Peripherals page has no item for a drawer without pins or phase (the record's
            // "none"): it shows its first item, and OK without a change stores that.
            if (savedRecord->cashDrawerPins == 0)
                againRecord->cashDrawerPins = 0;
            if (savedRecord->cashDrawerPhase == 0)
                againRecord->cashDrawerPhase = 0;
        }
        if (afterThePages && savedRecord->page2PageEnable != 0 &&
            !PageToPageApplies(savedRecord->presentationMode)) {
            // The Presentation page shows page to page off outside the Hold modes and stores
            // it off, with the export's timeout and action.
            againRecord->page2PageEnable = savedRecord->page2PageEnable;
            againRecord->page2PageTimeout = savedRecord->page2PageTimeout;
            againRecord->page2PageAction = savedRecord->page2PageAction;
            againRecord->page2PageExtra = savedRecord->page2PageExtra;
        }
        return std::memcmp(saved.get(), again.get(), sizeof(OemDevPayload)) == 0;
    };
    // The pages whose checks could refuse a loaded value show it, pass it and store it back
    // unchanged: OK without a change saves the same record.
    const PortFlags port{.statusKnown = true, .bidirectional = true, .bidiEnabled = true};
    const auto drawer = MakePeripheralsView(*device).controls;
    const auto presenter = MakePresentationView(*device, port).controls;
    Require(!ValidatePeripheralsControls(*device, drawer) &&
                !ValidatePresentationControls(*device, port, presenter),
            "the pages accept what was loaded", device->GetModelName());
    StorePeripheralsControls(*device, drawer);
    StorePresentationControls(*device, presenter);
    StorePrintAdjustControls(*device, MakePrintAdjustView(*device).controls);
    Require(savesTheSame(true), "the pages store back what they show", device->GetModelName());
    // Once saved, a record travels through load and save unchanged.
    device->FillUIDeviceValuesWithOEMDEV(printer, *savedRecord);
    Require(savesTheSame(false), "save of a saved record is stable", device->GetModelName());
    return 0;
}
