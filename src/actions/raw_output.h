// Raw jobs straight onto a printer's queue, and whether the printer can take one.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ports/spooler.h"
#include "ports/text_codec.h"

// The whole file in binary; empty when it is missing, unreadable or empty.
std::vector<uint8_t> ReadWholeFile(const std::string& path);

// The file the rendering side leaves after each job: folder + "\last" + printer + "_UiUni.prn",
// the printer's name as a file name carries it.
std::string LastDocumentPath(const std::string& printFolder, const std::u16string& printerName,
                             TextCodec& text);

// Whether a file goes out as printer data ("prn"): its extension, upper-cased, is exactly ".PRN".
bool IsPrinterDataFile(const std::string& path);

// One raw job with `buffer` (taken over) on an open printer: document "prn" when `printerData`
// is non-zero, else "data". 1 when the whole buffer was written and the job ended cleanly.
// An empty buffer makes no spooler call. Every failure after the handle is used closes it, the
// caller's own handle included; success leaves it open for the caller.
int SendRawBuffer(Spooler& spooler, std::vector<uint8_t> buffer, PrinterHandle printer,
                  uint32_t printerData);

// Sends a whole file's contents, as document "prn" when it is printer data (IsPrinterDataFile);
// the caller reads the file, so that it can open it by its wide path. `printer` may be
// kNoPrinterHandle, and the printer is then opened by name and closed afterwards.
int SendFileToPrinter(Spooler& spooler, std::vector<uint8_t> contents, bool printerData,
                      PrinterHandle printer, const std::u16string& printerName);

// What became of a preview's printer data.
enum class PreviewSend { kSent, kOffline, kNoData, kNotSent };
// A preview: the printer must be online (asked through `printer`, the framework's handle), then
// `render`'s data goes out as one "data" job on a handle of its own, opened by name and closed
// after, so a failed job never takes the framework's handle with it.
PreviewSend SendPreviewData(Spooler& spooler, PrinterHandle printer,
                            const std::u16string& printerName,
                            const std::function<std::vector<uint8_t>()>& render);

// Sends the last-document file of the printer again, as document "prn".
int PrintLastDocument(Spooler& spooler, TextCodec& text, const std::u16string& printerName,
                      const std::string& printFolder, PrinterHandle printer);

// 1 unless the printer reports itself offline or is set to work offline; paused counts as online.
// The sentinel is no printer: 0 without a call.
int IsPrinterOnline(Spooler& spooler, PrinterHandle printer);
