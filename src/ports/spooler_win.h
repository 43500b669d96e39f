// SpoolerWin: the spooler port on winspool.
#pragma once

#include "ports/spooler.h"

class SpoolerWin : public Spooler {
  public:
    bool OpenPrinterByName(const std::u16string& name, PrinterHandle* printer) override;
    bool ClosePrinter(PrinterHandle printer) override;
    bool StartDocument(PrinterHandle printer, const std::u16string& docName,
                       const std::u16string& datatype) override;
    bool StartPage(PrinterHandle printer) override;
    bool Write(PrinterHandle printer, const uint8_t* data, uint32_t size,
               uint32_t* written) override;
    bool EndPage(PrinterHandle printer) override;
    bool EndDocument(PrinterHandle printer) override;
    bool PrinterStatus(PrinterHandle printer, uint32_t* status) override;
    bool PrinterAttributes(PrinterHandle printer, uint32_t* attributes) override;
    bool DriverInfo(PrinterHandle printer, PrinterDriverInfo* info) override;
};
