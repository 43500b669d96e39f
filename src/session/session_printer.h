// The printer handle a page action works on, and what a failed send does to the framework's.
#pragma once

#include "ports/spooler.h"
#include "session/oem_ui_state.h"

// The framework's handle while the session holds a live one; kNoPrinterHandle when the framework
// gave none or a failed send has closed it (the senders then open the printer by name).
PrinterHandle LiveFrameworkPrinter(const OemUiState& state);

// Forwards every call to `inner`. A failed raw job closes the handle it was given (kept-behaviour:
// Failed send closes the handle); a close of the framework's handle is recorded in `state`, so
// nothing after it uses that handle again.
class SessionSpooler : public Spooler {
  public:
    SessionSpooler(Spooler& inner, OemUiState& state) : inner_(inner), state_(state) {}
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

  private:
    Spooler& inner_;
    OemUiState& state_;
};

// A printer for one request that needs an open handle (online test, driver questions): the
// framework's live handle, else the printer opened by name for as long as this object lives.
// Handle() is kNoPrinterHandle when neither is there.
class RequestPrinter {
  public:
    RequestPrinter(Spooler& spooler, const OemUiState& state);
    ~RequestPrinter();
    RequestPrinter(const RequestPrinter&) = delete;
    RequestPrinter& operator=(const RequestPrinter&) = delete;
    PrinterHandle Handle() const { return handle_; }

  private:
    Spooler& spooler_;
    PrinterHandle handle_ = kNoPrinterHandle;
    bool opened_ = false;
};
