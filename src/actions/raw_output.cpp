// Raw jobs straight onto a printer's queue, and whether the printer can take one.
#include "actions/raw_output.h"

#include <fstream>
#include <iterator>

#include "infra/windows_path.h"

namespace {

// The job's steps after StartDocument, each failure undoing what came before it.
enum class JobStep { kStartPage, kWrite, kEndPage, kEndDocument, kDone };

// One raw job; false when a step failed, and the handle is closed then, whoever opened it.
bool RunRawJob(Spooler& spooler, const std::vector<uint8_t>& buffer, PrinterHandle printer,
               const char16_t* docName, uint32_t* written) {
    if (!spooler.StartDocument(printer, docName, u"RAW")) {
        spooler.ClosePrinter(printer);
        return false;
    }
    JobStep failed = JobStep::kDone;
    if (!spooler.StartPage(printer)) {
        failed = JobStep::kStartPage;
    } else if (!spooler.Write(printer, buffer.data(), static_cast<uint32_t>(buffer.size()),
                              written)) {
        failed = JobStep::kWrite;
    } else if (!spooler.EndPage(printer)) {
        failed = JobStep::kEndPage;
    } else if (!spooler.EndDocument(printer)) {
        failed = JobStep::kEndDocument;
    }
    if (failed == JobStep::kDone) {
        return true;
    }
    if (failed == JobStep::kWrite) {
        spooler.EndPage(printer);
    }
    if (failed != JobStep::kEndDocument) {
        spooler.EndDocument(printer);
    }
    // kept-behaviour: Failed send closes the handle
    spooler.ClosePrinter(printer);
    return false;
}

}  // namespace

std::vector<uint8_t> ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return {};
    }
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(file), {});
}

std::string LastDocumentPath(const std::string& printFolder, const std::u16string& printerName,
                             TextCodec& text) {
    return printFolder + "\\last" + PrinterNameForFiles(printerName, text) + "_UiUni.prn";
}

bool IsPrinterDataFile(const std::string& path) {
    const size_t nameStart = path.find_last_of("\\/");
    const size_t dot = path.rfind('.');
    if (dot == std::string::npos || (nameStart != std::string::npos && dot < nameStart)) {
        return false;
    }
    std::string extension = path.substr(dot);
    for (char& c : extension) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return extension == ".PRN";
}

int SendRawBuffer(Spooler& spooler, std::vector<uint8_t> buffer, PrinterHandle printer,
                  uint32_t printerData) {
    if (buffer.empty()) {
        return 0;
    }
    uint32_t written = 0;
    if (!RunRawJob(spooler, buffer, printer, printerData != 0 ? u"prn" : u"data", &written)) {
        return 0;
    }
    return written == buffer.size() ? 1 : 0;
}

int SendFileToPrinter(Spooler& spooler, std::vector<uint8_t> contents, bool printerData,
                      PrinterHandle printer, const std::u16string& printerName) {
    if (contents.empty()) {
        return 0;
    }
    const bool opened = printer == kNoPrinterHandle;
    if (opened && !spooler.OpenPrinterByName(printerName, &printer)) {
        return 0;
    }
    const int result = SendRawBuffer(spooler, std::move(contents), printer, printerData ? 1 : 0);
    if (opened) {
        // kept-behaviour: Failed send closes the handle
        spooler.ClosePrinter(printer);
    }
    return result;
}

PreviewSend SendPreviewData(Spooler& spooler, PrinterHandle printer,
                            const std::u16string& printerName,
                            const std::function<std::vector<uint8_t>()>& render) {
    if (!IsPrinterOnline(spooler, printer)) {
        return PreviewSend::kOffline;
    }
    std::vector<uint8_t> data = render();
    if (data.empty()) {
        return PreviewSend::kNoData;
    }
    PrinterHandle own = kNoPrinterHandle;
    if (!spooler.OpenPrinterByName(printerName, &own)) {
        return PreviewSend::kNotSent;
    }
    // A failed job has closed the handle already.
    if (!SendRawBuffer(spooler, std::move(data), own, 0)) {
        return PreviewSend::kNotSent;
    }
    spooler.ClosePrinter(own);
    return PreviewSend::kSent;
}

int PrintLastDocument(Spooler& spooler, TextCodec& text, const std::u16string& printerName,
                      const std::string& printFolder, PrinterHandle printer) {
    std::vector<uint8_t> buffer = ReadWholeFile(LastDocumentPath(printFolder, printerName, text));
    if (buffer.empty()) {
        return 0;
    }
    const bool opened = printer == kNoPrinterHandle;
    if (opened && !spooler.OpenPrinterByName(printerName, &printer)) {
        return 0;
    }
    // A failed step has closed the handle already; a job that ended leaves it to its opener.
    uint32_t written = 0;
    if (!RunRawJob(spooler, buffer, printer, u"prn", &written)) {
        return 0;
    }
    if (opened) {
        spooler.ClosePrinter(printer);
    }
    return written == buffer.size() ? 1 : 0;
}

int IsPrinterOnline(Spooler& spooler, PrinterHandle printer) {
    if (printer == kNoPrinterHandle) {
        return 0;
    }
    uint32_t status = 0;
    if (!spooler.PrinterStatus(printer, &status) || (status & kPrinterStatusOffline) != 0) {
        return 0;
    }
    uint32_t attributes = 0;
    if (!spooler.PrinterAttributes(printer, &attributes)) {
        return 0;
    }
    return (attributes & kPrinterAttributeWorkOffline) == 0 ? 1 : 0;
}
