// ModuleLoaderWin: LoadLibraryA, GetProcAddress and FreeLibrary behind the module loader port.
#pragma once

#include "ports/module_loader.h"

class ModuleLoaderWin : public ModuleLoader {
  public:
    ModuleHandle Load(const std::string& path) override;
    ExportedFunction Find(ModuleHandle module, const char* name) override;
    void Free(ModuleHandle module) override;
};
