// FakeVersionQuery: version resources by file path; records the paths asked about.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ports/version_query.h"

class FakeVersionQuery : public VersionQuery {
  public:
    std::map<std::string, FileVersion> versions;                         // by path
    std::map<std::pair<std::string, std::string>, std::string> strings;  // by (path, name)
    std::vector<std::string> asked;

    bool FixedVersion(const std::string& path, FileVersion* version) override {
        asked.push_back(path);
        auto it = versions.find(path);
        if (it != versions.end())
            *version = it->second;
        return it != versions.end();
    }
    bool StringValue(const std::string& path, const std::string& name,
                     std::string* value) override {
        asked.push_back(path);
        auto it = strings.find({path, name});
        if (it != strings.end())
            *value = it->second;
        return it != strings.end();
    }
};
