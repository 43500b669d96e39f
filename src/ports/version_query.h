// VersionQuery: the version resource of a file (a driver file, the language monitor's module).
#pragma once

#include <cstdint>
#include <string>

struct FileVersion {
    uint16_t major = 0, minor = 0, build = 0, revision = 0;
};

class VersionQuery {
  public:
    virtual ~VersionQuery() = default;
    // The fixed file version; false when the file has none.
    virtual bool FixedVersion(const std::string& path, FileVersion* version) = 0;
    // A string value ("ProductName", "FileDescription") of the block of the file's first
    // translation, as 8-bit text; false when absent.
    virtual bool StringValue(const std::string& path, const std::string& name,
                             std::string* value) = 0;
};

// "%u.%u.%u.%u", the form the log head and the version report print.
std::string FileVersionText(const FileVersion& version);
