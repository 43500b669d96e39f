// GPD files served from memory by name, for the GPD reader's tests and fuzzer.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "entry/gpd_reader.h"

class MemoryGpdFiles : public GpdFileSource {
  public:
    std::map<std::string, std::string> files;
    std::vector<std::string> reads;  // every name asked for, in order

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
};
