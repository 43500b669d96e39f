// Tests of the rendering bridge: the module lookup, the size-then-fill calls, the module's life.
#include "actions/uni_bridge.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <stdexcept>

#include "actions/uni_exports.h"
#include "fake_log_ports.h"
#include "fake_module_loader.h"
#include "fake_spooler.h"
#include "fake_version_query.h"

namespace {

using Lines = std::vector<std::string>;
const std::string kUni = "C:\\d\\Uni.Dll";

// What the test module answers, and every call it received with its arguments.
struct TestModule {
    int32_t sizeAnswer = 3, fillAnswer = 3;
    bool throws = false;
    Lines calls;
} module;

std::string Arg(KivUniText text) {
    return std::string(text.text, text.length) + "|";
}
template <typename N>
std::string Arg(N number) {
    return std::to_string(+number) + "|";
}
template <typename... A>
int32_t Record(uint8_t* out, A... args) {
    module.calls.push_back((Arg(args) + ...) + (out == nullptr ? "size" : "fill"));
    if (module.throws)
        throw std::runtime_error("module fault");
    if (out != nullptr)
        std::memcpy(out, "KIV", 3);
    return out == nullptr ? module.sizeAnswer : module.fillAnswer;
}
int32_t Nvram(KivUniText p, uint32_t n, uint8_t pos, uint8_t* out) {
    return Record(out, p, n, pos);
}
int32_t Image(KivUniText p, KivUniText f, uint32_t w, uint32_t m, uint8_t d, uint8_t pos,
              uint8_t* out) {
    return Record(out, p, f, w, m, d, pos);
}
int32_t Mark(KivUniText p, KivUniText f, uint32_t w, uint32_t l, uint32_t m, uint8_t a, uint8_t b,
             uint8_t c, uint32_t n, uint8_t* out) {
    return Record(out, p, f, w, l, m, a, b, c, n);
}

// A driver whose dependent files end with the test module, which has all four exports.
struct Bridge {
    FakeSpooler spooler;
    FakeModuleLoader modules;
    FakeVersionQuery versions;
    Bridge() {
        module = TestModule{};
        spooler.driver.dependentFiles = {"C:\\d\\uni.drv", "C:\\d\\bare.dll", "C:\\d\\KivUI.dll",
                                         kUni};
        versions.strings = {{{"C:\\d\\uni.drv", "ProductName"}, "DRIVER UNI"},
                            {{"C:\\d\\KivUI.dll", "ProductName"}, "KivUI"},
                            {{kUni, "ProductName"}, "kiv driver uni x64"}};
        const auto Export = [](auto function) {
            return reinterpret_cast<ExportedFunction>(function);
        };
        modules.modules[kUni] = {{KIV_UNI_EXPORT_LOGO_NVRAM, Export(&Nvram)},
                                 {KIV_UNI_EXPORT_LOGO_FILE, Export(&Image)},
                                 {KIV_UNI_EXPORT_COUPON_FILE, Export(&Image)},
                                 {KIV_UNI_EXPORT_WATERMARK_FILE, Export(&Mark)}};
    }
    UniExportedFunctions Functions() { return {{spooler, modules, versions}, 5, "KIV P"}; }
};

TEST(UniBridge, TheModuleIsFoundThenEachExportCalledForSizeAndFillAndTheModuleFreedOnce) {
    // Draw type 1, position 2: the position code goes first.
    const UniImageRequest image{"C:\\Logo.png", 576, 418, 1, 2};
    struct Case {
        std::function<std::vector<uint8_t>(UniExportedFunctions&)> request;
        std::string exportName, arguments;
    };
    const Case cases[] = {
        {[](auto& f) { return f.GetBuffer_PrintLogoNVRAM(7, 2); }, KIV_UNI_EXPORT_LOGO_NVRAM,
         "KIV P|7|2|"},
        {[&](auto& f) { return f.GetBuffer_PrintLogoFILE(image); }, KIV_UNI_EXPORT_LOGO_FILE,
         "KIV P|C:\\Logo.png|576|418|2|1|"},
        {[&](auto& f) { return f.GetBuffer_PrintCouponFILE(image); }, KIV_UNI_EXPORT_COUPON_FILE,
         "KIV P|C:\\Logo.png|576|418|2|1|"},
        {[](auto& f) {
             return f.GetBuffer_PrintWatermarkFILE({"C:\\w.bmp", 576, 1200, 418, 1, 3, 33, 150});
         },
         KIV_UNI_EXPORT_WATERMARK_FILE, "KIV P|C:\\w.bmp|576|1200|418|1|3|33|150|"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.exportName);
        ScopedTestLog log;
        Bridge bridge;
        UniExportedFunctions functions = bridge.Functions();
        EXPECT_EQ(std::vector<uint8_t>({'K', 'I', 'V'}), c.request(functions));
        EXPECT_EQ(Lines({c.arguments + "size", c.arguments + "fill"}), module.calls);
        EXPECT_EQ(Lines({"Load " + kUni, "Find " + c.exportName, "Free"}), bridge.modules.calls);
        EXPECT_EQ(Lines{"UNI file path: " + kUni}, log.Messages());
        // Only .DLL files are asked for their product name; the match is kept in its own case.
        EXPECT_EQ(Lines({"C:\\d\\bare.dll", "C:\\d\\KivUI.dll", kUni}), bridge.versions.asked);
    }
}

TEST(UniBridge, EveryFailureGivesAnEmptyBufferOneErrorLineAndFreesALoadedModule) {
    const Lines size = {"KIV P|1|0|size"}, both = {size[0], "KIV P|1|0|fill"};
    const Lines freed = {"Load " + kUni, "Find GetBufferPrintLogoNVRAM", "Free"};
    struct Case {
        std::function<void(Bridge&)> arrange;
        std::string error;  // the line after "UNI file path: ..."
        Lines loaderCalls = {}, exportCalls = {};
    };
    const Case cases[] = {
        {[](Bridge&) { module.sizeAnswer = 0; }, "Error. Buffer of the function is 0", freed, size},
        {[](Bridge&) { module.sizeAnswer = -4; }, "Error. Buffer of the function is 0", freed,
         size},
        {[](Bridge&) { module.fillAnswer = 0; }, "Error. Buffer of the function is 0", freed, both},
        {[](Bridge&) { module.throws = true; }, "exception caught: module fault", freed, size},
        {[](Bridge& b) { b.modules.modules[kUni].clear(); }, "Error. Pointer to a function is NULL",
         freed},
        {[](Bridge& b) { b.modules.modules.clear(); }, "Error. LoadLibrary failed", {freed[0]}},
        {[](Bridge& b) { b.spooler.failing = {"DriverInfo"}; }, "Error. DLL Path empty"},
        {[](Bridge& b) { b.spooler.driver.dependentFiles.pop_back(); }, "Error. DLL Path empty"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.error);
        ScopedTestLog log;
        Bridge bridge;
        c.arrange(bridge);
        EXPECT_TRUE(bridge.Functions().GetBuffer_PrintLogoNVRAM(1, 0).empty());
        EXPECT_EQ(2u, log.Messages().size());
        EXPECT_EQ(c.error, log.Messages().back());
        EXPECT_EQ(c.loaderCalls, bridge.modules.calls);
        EXPECT_EQ(0, bridge.modules.loaded);
        EXPECT_EQ(c.exportCalls, module.calls);
    }
    // A module that reports more than it was given room for yields only what fits.
    Bridge bridge;
    module.fillAnswer = 9;
    EXPECT_EQ(3u, bridge.Functions().GetBuffer_PrintLogoNVRAM(1, 0).size());
}

}  // namespace
