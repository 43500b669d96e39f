// The rendering module's lookup among the driver's files, and the size-then-fill export calls.
#include "actions/uni_bridge.h"

#include <algorithm>
#include <utility>

#include "actions/uni_exports.h"
#include "infra/guarded.h"
#include "infra/log.h"
#include "infra/text_format.h"

namespace {

// Frees the module on every way out of a request, an exception from this side included.
class LoadedModule {
  public:
    LoadedModule(ModuleLoader& loader, ModuleHandle module) : loader_(loader), module_(module) {}
    ~LoadedModule() { loader_.Free(module_); }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

  private:
    ModuleLoader& loader_;
    ModuleHandle module_;
};

// The text as the contract passes it; valid while `text` lives.
KivUniText UniText(const std::string& text) {
    return KivUniText{text.data(), text.size()};
}

// One request: `call(export, out)` calls the export with fresh copies of the arguments.
template <typename Export, typename Call>
std::vector<uint8_t> RunExport(const UniBridgePorts& ports, PrinterHandle printer,
                               const char* context, const char* exportName, Call&& call) {
    const std::string path = GetUniDriverPath(ports.spooler, ports.versions, printer);
    TheLog().Write(kLogDetail, context, "UNI file path: %s", path.c_str());
    if (path.empty()) {
        TheLog().Write(kLogError, context, "Error. DLL Path empty");
        return {};
    }
    const ModuleHandle handle = ports.modules.Load(path);
    if (handle == 0) {
        TheLog().Write(kLogError, context, "Error. LoadLibrary failed");
        return {};
    }
    LoadedModule module(ports.modules, handle);
    const auto function = reinterpret_cast<Export>(ports.modules.Find(handle, exportName));
    if (function == nullptr) {
        TheLog().Write(kLogError, context, "Error. Pointer to a function is NULL");
        return {};
    }
    // A C++ exception thrown inside the module stops here, so the module is still freed and
    // nothing of it reaches the dialog manager.
    const auto Invoke = [&](uint8_t* out, int32_t* count) {
        return Guarded(context, false, [&] {
            *count = call(function, out);
            return true;
        });
    };
    int32_t size = 0, filled = 0;
    std::vector<uint8_t> buffer;
    if (!Invoke(nullptr, &size)) {
        return {};
    }
    if (size > 0) {
        buffer.resize(static_cast<size_t>(size));
        if (!Invoke(buffer.data(), &filled)) {
            return {};
        }
    }
    if (size <= 0 || filled <= 0) {
        TheLog().Write(kLogError, context, "Error. Buffer of the function is 0");
        return {};
    }
    // A module that claims more than it was given room for gets no read past the allocation.
    buffer.resize(static_cast<size_t>(std::min(filled, size)));
    return buffer;
}

}  // namespace

std::string GetUniDriverPath(Spooler& spooler, VersionQuery& versions, PrinterHandle printer) {
    PrinterDriverInfo driver;
    if (!spooler.DriverInfo(printer, &driver)) {
        return {};
    }
    for (const std::string& path : driver.dependentFiles) {
        if (UpperAscii(path).find(".DLL") == std::string::npos) {
            continue;
        }
        std::string product;
        if (versions.StringValue(path, "ProductName", &product) &&
            UpperAscii(product).find("DRIVER UNI") != std::string::npos) {
            return path;
        }
    }
    return {};
}

UniExportedFunctions::UniExportedFunctions(const UniBridgePorts& ports, PrinterHandle printer,
                                           std::string printerName)
    : ports_(ports), printer_(printer), printerName_(std::move(printerName)) {}

std::vector<uint8_t> UniExportedFunctions::GetBuffer_PrintLogoNVRAM(uint32_t logoNumber,
                                                                    uint8_t position) {
    return RunExport<KivGetBufferPrintLogoNVRAM>(
        ports_, printer_, "UniExportedFunctions::GetBuffer_PrintLogoNVRAM",
        KIV_UNI_EXPORT_LOGO_NVRAM, [&](KivGetBufferPrintLogoNVRAM function, uint8_t* out) {
            const std::string printer = printerName_;
            return function(UniText(printer), logoNumber, position, out);
        });
}

namespace {

std::vector<uint8_t> RunImageExport(const UniBridgePorts& ports, PrinterHandle printer,
                                    const std::string& printerName, const char* context,
                                    const char* exportName, const UniImageRequest& request) {
    return RunExport<KivGetBufferPrintImageFILE>(
        ports, printer, context, exportName,
        [&](KivGetBufferPrintImageFILE function, uint8_t* out) {
            const std::string name = printerName;
            const std::string path = request.path;
            return function(UniText(name), UniText(path), request.paperWidthDots,
                            request.modelNumber, request.position, request.drawType, out);
        });
}

}  // namespace

std::vector<uint8_t> UniExportedFunctions::GetBuffer_PrintLogoFILE(const UniImageRequest& request) {
    return RunImageExport(ports_, printer_, printerName_,
                          "UniExportedFunctions::GetBuffer_PrintLogoFILE", KIV_UNI_EXPORT_LOGO_FILE,
                          request);
}

std::vector<uint8_t> UniExportedFunctions::GetBuffer_PrintCouponFILE(
    const UniImageRequest& request) {
    return RunImageExport(ports_, printer_, printerName_,
                          "UniExportedFunctions::GetBuffer_PrintCouponFILE",
                          KIV_UNI_EXPORT_COUPON_FILE, request);
}

std::vector<uint8_t> UniExportedFunctions::GetBuffer_PrintWatermarkFILE(
    const UniWatermarkRequest& request) {
    return RunExport<KivGetBufferPrintWatermarkFILE>(
        ports_, printer_, "UniExportedFunctions::GetBuffer_PrintWatermarkFILE",
        KIV_UNI_EXPORT_WATERMARK_FILE, [&](KivGetBufferPrintWatermarkFILE function, uint8_t* out) {
            const std::string name = printerName_;
            const std::string path = request.path;
            return function(UniText(name), UniText(path), request.paperWidthDots,
                            request.paperLengthDots, request.modelNumber, request.layer,
                            request.fit, request.place, request.brightness, out);
        });
}
