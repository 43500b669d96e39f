// Files served from memory by name, to the GPD reader whole and to the file reader in pieces of
// at most five bytes (so that a consumer's streaming shows); records the names the GPD reader
// asks for.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "entry/gpd_reader.h"
#include "ports/file_reader.h"

class MemoryFiles : public GpdFileSource, public FileReader {
  public:
    std::map<std::string, std::string> files;
    std::vector<std::string> reads;  // every name the GPD reader asked for, in order

    Status Read(const std::string& name, size_t maxBytes, std::string& contents) override {
        reads.push_back(name);
        auto it = files.find(name);
        if (it == files.end())
            return Status::kMissing;
        if (it->second.size() > maxBytes)
            return Status::kTooLarge;
        contents = it->second;
        return Status::kOk;
    }
    bool Read(const std::string& path, const Sink& sink) override {
        const auto it = files.find(path);
        if (it == files.end())
            return false;
        for (size_t at = 0; at < it->second.size(); at += 5)
            sink(reinterpret_cast<const uint8_t*>(it->second.data()) + at,
                 std::min<size_t>(5, it->second.size() - at));
        return true;
    }
};
