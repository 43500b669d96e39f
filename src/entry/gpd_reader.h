// Reads the "*OEMCustomData:" entry (the model data text) from a model's GPD files.
#pragma once

#include <cstddef>
#include <string>

// Where the GPD files come from. Names carry no path: the main file and every file it pulls in
// with *Include sit in the driver's folder.
class GpdFileSource {
  public:
    enum class Status { kOk, kMissing, kTooLarge };
    virtual ~GpdFileSource() = default;
    // The whole file when it is at most `maxBytes` long.
    virtual Status Read(const std::string& name, size_t maxBytes, std::string& contents) = 0;
};

struct GpdReadLimits {
    size_t maxFileBytes = 4u << 20;   // one file
    size_t maxTotalBytes = 8u << 20;  // all files together
    size_t maxIncludeDepth = 8;       // main file = depth 0
    size_t maxFiles = 64;
    size_t maxValueBytes = 1024;  // the decoded text
};

struct GpdReadResult {
    std::string text;           // empty when no usable entry was found
    bool found = false;         // a well-formed entry was found
    size_t badEntries = 0;      // entries skipped: malformed value or over-long text
    size_t unreadFiles = 0;     // files that could not be read (main or included)
    bool limitReached = false;  // include depth, file count or total size stopped the walk
};

// Walks the files as one stream (an *Include pulls the named file in at that point) and takes
// the last well-formed "*OEMCustomData:" value: quoted pieces and <hex> byte pairs, joined;
// "%" escapes '"' and '<'; "+" continuation lines; "*%" comments. The text ends at its first
// NUL byte.
GpdReadResult ReadGpdOEMCustomData(GpdFileSource& files, const std::string& mainFile,
                                   const GpdReadLimits& limits = {});

// The value of one entry after its colon (the rest of its logical line); false when malformed
// or longer than `maxBytes`.
bool DecodeGpdStringValue(const std::string& value, size_t maxBytes, std::string& out);
