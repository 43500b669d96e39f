// Folders: environment expansion and folder creation, for the configured folders.
#pragma once

#include <string>

class Folders {
  public:
    virtual ~Folders() = default;
    // Expands environment variables; false when the result does not fit `maxChars` (terminator
    // included) or the expansion fails.
    virtual bool Expand(const std::string& text, size_t maxChars, std::string* expanded) = 0;
    virtual bool Exists(const std::string& folder) = 0;
    // Creates every missing folder along the path; the result is only known by asking Exists.
    virtual void Create(const std::string& folder) = 0;
};
