// FakeModuleLoader: modules by path with their exports; records loads, look-ups and frees.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "ports/module_loader.h"

class FakeModuleLoader : public ModuleLoader {
  public:
    std::map<std::string, std::map<std::string, ExportedFunction>> modules;  // by path
    std::vector<std::string> calls;  // "Load <path>", "Find <name>", "Free"
    int loaded = 0;                  // modules loaded and not yet freed

    ModuleHandle Load(const std::string& path) override {
        calls.push_back("Load " + path);
        auto it = modules.find(path);
        if (it == modules.end())
            return 0;
        ++loaded;
        return reinterpret_cast<ModuleHandle>(&it->second);
    }
    ExportedFunction Find(ModuleHandle module, const char* name) override {
        calls.push_back(std::string("Find ") + name);
        const auto& exports = *reinterpret_cast<std::map<std::string, ExportedFunction>*>(module);
        auto it = exports.find(name);
        return it != exports.end() ? it->second : nullptr;
    }
    void Free(ModuleHandle) override {
        calls.push_back("Free");
        --loaded;
    }
};
