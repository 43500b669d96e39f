// VersionQueryWin: file version resources through the version library.
#pragma once

#include "ports/version_query.h"

class VersionQueryWin : public VersionQuery {
  public:
    bool FixedVersion(const std::string& path, FileVersion* version) override;
    bool StringValue(const std::string& path, const std::string& name, std::string* value) override;
};
