// FileReader: a file's bytes, handed over in pieces so that large files need no whole copy.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

class FileReader {
  public:
    using Sink = std::function<void(const uint8_t* data, size_t size)>;
    virtual ~FileReader() = default;
    // Feeds the whole file to `sink` in order; false when it cannot be opened or read (the sink
    // may have seen part of it then).
    virtual bool Read(const std::string& path, const Sink& sink) = 0;
};
