// Spooler: the print spooler calls that raw jobs and the printer and driver questions need.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// An open printer as the spooler hands it out; the value with all bits set means "none opened".
using PrinterHandle = uintptr_t;
inline constexpr PrinterHandle kNoPrinterHandle = UINTPTR_MAX;

inline constexpr uint32_t kPrinterStatusOffline = 0x80;
inline constexpr uint32_t kPrinterAttributeWorkOffline = 0x400;
inline constexpr uint32_t kPrinterAttributeEnableBidi = 0x800;

// What the driver description (level 8, 8-bit text) holds for the plug-in's questions.
struct PrinterDriverInfo {
    std::string driverPath, dataFile, configFile, helpFile, monitorName;
    std::vector<std::string> dependentFiles;
    std::string infPath;  // the setup information file the driver was installed from
};

class Spooler {
  public:
    virtual ~Spooler() = default;
    virtual bool OpenPrinterByName(const std::u16string& name, PrinterHandle* printer) = 0;
    virtual bool ClosePrinter(PrinterHandle printer) = 0;
    // Level-1 document information without an output file.
    virtual bool StartDocument(PrinterHandle printer, const std::u16string& docName,
                               const std::u16string& datatype) = 0;
    virtual bool StartPage(PrinterHandle printer) = 0;
    virtual bool Write(PrinterHandle printer, const uint8_t* data, uint32_t size,
                       uint32_t* written) = 0;
    virtual bool EndPage(PrinterHandle printer) = 0;
    virtual bool EndDocument(PrinterHandle printer) = 0;
    // The level-6 status word.
    virtual bool PrinterStatus(PrinterHandle printer, uint32_t* status) = 0;
    // The level-2 attributes.
    virtual bool PrinterAttributes(PrinterHandle printer, uint32_t* attributes) = 0;
    virtual bool DriverInfo(PrinterHandle printer, PrinterDriverInfo* info) = 0;
};
