// The printer handle a page action works on, and what a failed send does to the framework's.
#include "session/session_printer.h"

namespace {

PrinterHandle FrameworkHandle(const OemUiState& state) {
    return reinterpret_cast<PrinterHandle>(state.hPrinter);
}

}  // namespace

PrinterHandle LiveFrameworkPrinter(const OemUiState& state) {
    if (state.hPrinter == nullptr || state.hPrinter == state.closedPrinter) {
        return kNoPrinterHandle;
    }
    return FrameworkHandle(state);
}

bool SessionSpooler::OpenPrinterByName(const std::u16string& name, PrinterHandle* printer) {
    return inner_.OpenPrinterByName(name, printer);
}

bool SessionSpooler::ClosePrinter(PrinterHandle printer) {
    if (state_.hPrinter != nullptr && printer == FrameworkHandle(state_)) {
        state_.closedPrinter = state_.hPrinter;
    }
    return inner_.ClosePrinter(printer);
}

bool SessionSpooler::StartDocument(PrinterHandle printer, const std::u16string& docName,
                                   const std::u16string& datatype) {
    return inner_.StartDocument(printer, docName, datatype);
}

bool SessionSpooler::StartPage(PrinterHandle printer) {
    return inner_.StartPage(printer);
}

bool SessionSpooler::Write(PrinterHandle printer, const uint8_t* data, uint32_t size,
                           uint32_t* written) {
    return inner_.Write(printer, data, size, written);
}

bool SessionSpooler::EndPage(PrinterHandle printer) {
    return inner_.EndPage(printer);
}

bool SessionSpooler::EndDocument(PrinterHandle printer) {
    return inner_.EndDocument(printer);
}

bool SessionSpooler::PrinterStatus(PrinterHandle printer, uint32_t* status) {
    return inner_.PrinterStatus(printer, status);
}

bool SessionSpooler::PrinterAttributes(PrinterHandle printer, uint32_t* attributes) {
    return inner_.PrinterAttributes(printer, attributes);
}

bool SessionSpooler::DriverInfo(PrinterHandle printer, PrinterDriverInfo* info) {
    return inner_.DriverInfo(printer, info);
}

RequestPrinter::RequestPrinter(Spooler& spooler, const OemUiState& state)
    : spooler_(spooler), handle_(LiveFrameworkPrinter(state)) {
    if (handle_ == kNoPrinterHandle && !state.printerNameWide.empty()) {
        PrinterHandle opened = kNoPrinterHandle;
        opened_ = spooler_.OpenPrinterByName(state.printerNameWide, &opened);
        handle_ = opened_ ? opened : kNoPrinterHandle;
    }
}

RequestPrinter::~RequestPrinter() {
    if (opened_) {
        spooler_.ClosePrinter(handle_);
    }
}
