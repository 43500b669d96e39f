// FileReaderWin: files read through CreateFileA and ReadFile.
#pragma once

#include "ports/file_reader.h"

class FileReaderWin : public FileReader {
  public:
    bool Read(const std::string& path, const Sink& sink) override;
};
