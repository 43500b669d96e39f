// ModuleLoader: loading a module by path for one request, its exports, and freeing it again.
#pragma once

#include <cstdint>
#include <string>

using ModuleHandle = uintptr_t;  // 0: not loaded
// An export as found; the caller casts it to the export's own signature.
using ExportedFunction = void (*)();

class ModuleLoader {
  public:
    virtual ~ModuleLoader() = default;
    virtual ModuleHandle Load(const std::string& path) = 0;
    // Null when the module has no export of that name.
    virtual ExportedFunction Find(ModuleHandle module, const char* name) = 0;
    virtual void Free(ModuleHandle module) = 0;
};
