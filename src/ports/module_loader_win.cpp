// ModuleLoaderWin: modules loaded by path for one request.
#include "ports/module_loader_win.h"

#include "win/windows_headers_win.h"

ModuleHandle ModuleLoaderWin::Load(const std::string& path) {
    return reinterpret_cast<ModuleHandle>(LoadLibraryA(path.c_str()));
}

ExportedFunction ModuleLoaderWin::Find(ModuleHandle module, const char* name) {
    if (module == 0) {
        return nullptr;
    }
    return reinterpret_cast<ExportedFunction>(
        reinterpret_cast<void*>(GetProcAddress(reinterpret_cast<HMODULE>(module), name)));
}

void ModuleLoaderWin::Free(ModuleHandle module) {
    if (module != 0) {
        FreeLibrary(reinterpret_cast<HMODULE>(module));
    }
}
