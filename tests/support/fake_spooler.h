// FakeSpooler: records every spooler call; a call named in `failing` fails, jobs land in `output`.
#pragma once

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "fake_text_codec.h"
#include "ports/spooler.h"

class FakeSpooler : public Spooler {
  public:
    static constexpr PrinterHandle kOpenedHandle = 81;  // what OpenPrinterByName hands out
    std::set<std::string> failing;  // "OpenPrinterByName", "StartDocument", "Write", ...
    uint32_t shortWriteBy = 0;      // Write reports this many bytes fewer than it was given
    uint32_t status = 0;            // level 6
    uint32_t attributes = 0;        // level 2
    PrinterDriverInfo driver;

    std::vector<std::string>
        calls;  // "OpenPrinterByName <name>", "ClosePrinter <handle>", "Write <n>"
    std::vector<PrinterHandle> handles;  // the handle of each call (the one opened, for an open)
    std::string output;                  // the bytes written

    bool OpenPrinterByName(const std::u16string& name, PrinterHandle* printer) override {
        *printer = kOpenedHandle;
        return Call("OpenPrinterByName " + FakeTextCodec().Narrow(name), kOpenedHandle);
    }
    bool ClosePrinter(PrinterHandle printer) override {
        return Call("ClosePrinter " + std::to_string(printer), printer);
    }
    bool StartDocument(PrinterHandle printer, const std::u16string& doc,
                       const std::u16string& type) override {
        return Call(
            "StartDocument " + FakeTextCodec().Narrow(doc) + " " + FakeTextCodec().Narrow(type),
            printer);
    }
    bool StartPage(PrinterHandle printer) override { return Call("StartPage", printer); }
    bool Write(PrinterHandle printer, const uint8_t* data, uint32_t size,
               uint32_t* written) override {
        output.append(reinterpret_cast<const char*>(data), size);
        *written = size - std::min(size, shortWriteBy);
        return Call("Write " + std::to_string(size), printer);
    }
    bool EndPage(PrinterHandle printer) override { return Call("EndPage", printer); }
    bool EndDocument(PrinterHandle printer) override { return Call("EndDocument", printer); }
    bool PrinterStatus(PrinterHandle printer, uint32_t* value) override {
        *value = status;
        return Call("PrinterStatus", printer);
    }
    bool PrinterAttributes(PrinterHandle printer, uint32_t* value) override {
        *value = attributes;
        return Call("PrinterAttributes", printer);
    }
    bool DriverInfo(PrinterHandle printer, PrinterDriverInfo* info) override {
        *info = driver;
        return Call("DriverInfo", printer);
    }

  private:
    bool Call(const std::string& call, PrinterHandle printer) {
        calls.push_back(call);
        handles.push_back(printer);
        return failing.count(call.substr(0, call.find(' '))) == 0;
    }
};
