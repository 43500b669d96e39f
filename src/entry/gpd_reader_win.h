// The model data text of a printer: its GPD named by the spooler, read through the core GPD reader.
#pragma once

#include <string>

#include "entry/gpd_reader.h"
#include "win/windows_headers_win.h"

// Reads GPD files from one folder (the driver's), each whole and bounded.
class GpdFolderSource : public GpdFileSource {
  public:
    explicit GpdFolderSource(std::wstring folder) : folder_(std::move(folder)) {}
    Status Read(const std::string& name, size_t maxBytes, std::string& contents) override;

  private:
    std::wstring folder_;
};

// The "*OEMCustomData:" value of the GPD at `gpdPath` (a full path); empty when the file or the
// entry is missing.
GpdReadResult ReadModelDataTextFromFile(const std::wstring& gpdPath);

// The driver data file of the printer (DRIVER_INFO_2 pDataFile); empty when the handle is null
// or the spooler does not answer.
std::wstring PrinterDataFile(HANDLE hPrinter);
