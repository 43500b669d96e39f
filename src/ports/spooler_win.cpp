// SpoolerWin: open, raw job calls, printer levels 6 and 2, driver level 8.
#include "ports/spooler_win.h"

#include <cstring>
#include <vector>

#include "win/windows_headers_win.h"

namespace {

HANDLE AsHandle(PrinterHandle printer) {
    return reinterpret_cast<HANDLE>(printer);
}

// The spooler's two-call pattern: the size first, then the record in a buffer of that size.
bool QueryPrinter(HANDLE printer, DWORD level, std::vector<BYTE>* buffer) {
    DWORD needed = 0;
    GetPrinterW(printer, level, nullptr, 0, &needed);
    if (needed == 0) {
        return false;
    }
    buffer->assign(needed, 0);
    return GetPrinterW(printer, level, buffer->data(), needed, &needed) != FALSE;
}

std::string Text(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace

bool SpoolerWin::OpenPrinterByName(const std::u16string& name, PrinterHandle* printer) {
    std::u16string copy = name;  // OpenPrinterW takes a non-const name
    HANDLE handle = nullptr;
    if (!OpenPrinterW(reinterpret_cast<LPWSTR>(copy.data()), &handle, nullptr)) {
        return false;
    }
    *printer = reinterpret_cast<PrinterHandle>(handle);
    return true;
}

bool SpoolerWin::ClosePrinter(PrinterHandle printer) {
    return ::ClosePrinter(AsHandle(printer)) != FALSE;
}

bool SpoolerWin::StartDocument(PrinterHandle printer, const std::u16string& docName,
                               const std::u16string& datatype) {
    std::u16string name = docName;
    std::u16string type = datatype;
    DOC_INFO_1W doc = {reinterpret_cast<LPWSTR>(name.data()), nullptr,
                       reinterpret_cast<LPWSTR>(type.data())};
    return StartDocPrinterW(AsHandle(printer), 1, reinterpret_cast<LPBYTE>(&doc)) != 0;
}

bool SpoolerWin::StartPage(PrinterHandle printer) {
    return StartPagePrinter(AsHandle(printer)) != FALSE;
}

bool SpoolerWin::Write(PrinterHandle printer, const uint8_t* data, uint32_t size,
                       uint32_t* written) {
    DWORD count = 0;
    const BOOL ok = WritePrinter(AsHandle(printer), const_cast<uint8_t*>(data), size, &count);
    *written = count;
    return ok != FALSE;
}

bool SpoolerWin::EndPage(PrinterHandle printer) {
    return EndPagePrinter(AsHandle(printer)) != FALSE;
}

bool SpoolerWin::EndDocument(PrinterHandle printer) {
    return EndDocPrinter(AsHandle(printer)) != FALSE;
}

bool SpoolerWin::PrinterStatus(PrinterHandle printer, uint32_t* status) {
    std::vector<BYTE> buffer;
    if (!QueryPrinter(AsHandle(printer), 6, &buffer)) {
        return false;
    }
    *status = reinterpret_cast<const PRINTER_INFO_6*>(buffer.data())->dwStatus;
    return true;
}

bool SpoolerWin::PrinterAttributes(PrinterHandle printer, uint32_t* attributes) {
    std::vector<BYTE> buffer;
    if (!QueryPrinter(AsHandle(printer), 2, &buffer)) {
        return false;
    }
    *attributes = reinterpret_cast<const PRINTER_INFO_2W*>(buffer.data())->Attributes;
    return true;
}

bool SpoolerWin::DriverInfo(PrinterHandle printer, PrinterDriverInfo* info) {
    DWORD needed = 0;
    GetPrinterDriverA(AsHandle(printer), nullptr, 8, nullptr, 0, &needed);
    if (needed == 0) {
        return false;
    }
    std::vector<BYTE> buffer(needed, 0);
    if (!GetPrinterDriverA(AsHandle(printer), nullptr, 8, buffer.data(), needed, &needed)) {
        return false;
    }
    const auto* driver = reinterpret_cast<const DRIVER_INFO_8A*>(buffer.data());
    *info = PrinterDriverInfo{Text(driver->pDriverPath),  Text(driver->pDataFile),
                              Text(driver->pConfigFile),  Text(driver->pHelpFile),
                              Text(driver->pMonitorName), {},
                              Text(driver->pszInfPath)};
    // A sequence of NUL-terminated paths, ended by an empty one.
    for (const char* file = driver->pDependentFiles; file != nullptr && *file != '\0';
         file += std::strlen(file) + 1) {
        info->dependentFiles.emplace_back(file);
    }
    return true;
}
