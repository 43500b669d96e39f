// The rendering module's printer data for the image previews of the Watermark, Coupon and Logos
// pages. The module is found through the printer's driver files, loaded for each request and
// unloaded after it; every failure is logged and gives an empty buffer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ports/module_loader.h"
#include "ports/spooler.h"
#include "ports/version_query.h"

struct UniBridgePorts {
    Spooler& spooler;
    ModuleLoader& modules;
    VersionQuery& versions;
};

// The full path of the first ".DLL" among the driver's dependent files whose product name,
// upper-cased, contains "DRIVER UNI"; empty when none does or the driver cannot be asked.
std::string GetUniDriverPath(Spooler& spooler, VersionQuery& versions, PrinterHandle printer);

// What an image-file request carries besides the printer name and the path (see uni_exports.h).
struct UniImageRequest {
    std::string path;
    uint32_t paperWidthDots = 0;
    uint32_t modelNumber = 0;
    uint8_t drawType = 0;
    uint8_t position = 0;
};
struct UniWatermarkRequest {
    std::string path;
    uint32_t paperWidthDots = 0;
    uint32_t paperLengthDots = 0;
    uint32_t modelNumber = 0;
    uint8_t layer = 0;
    uint8_t fit = 0;
    uint8_t place = 0;
    uint32_t brightness = 100;
};

class UniExportedFunctions {
  public:
    // `printerName` is the first text of every export.
    UniExportedFunctions(const UniBridgePorts& ports, PrinterHandle printer,
                         std::string printerName);

    std::vector<uint8_t> GetBuffer_PrintLogoNVRAM(uint32_t logoNumber, uint8_t position);
    std::vector<uint8_t> GetBuffer_PrintLogoFILE(const UniImageRequest& request);
    std::vector<uint8_t> GetBuffer_PrintCouponFILE(const UniImageRequest& request);
    std::vector<uint8_t> GetBuffer_PrintWatermarkFILE(const UniWatermarkRequest& request);

  private:
    UniBridgePorts ports_;
    PrinterHandle printer_;
    std::string printerName_;
};
