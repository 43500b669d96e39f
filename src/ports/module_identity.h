// ModuleIdentity: the plug-in module's full path and file version, for the head of a new log.
#pragma once

#include <string>

class ModuleIdentity {
  public:
    virtual ~ModuleIdentity() = default;
    // 8-bit text; empty when unknown.
    virtual std::string Path() = 0;
    // "major.minor.build.revision" from the module's own version resource; empty without one.
    virtual std::string Version() = 0;
};
