// FakeProgramLauncher: records every start as "program|parameters|folder".
#pragma once

#include <string>
#include <vector>

#include "ports/program_launcher.h"

class FakeProgramLauncher : public ProgramLauncher {
  public:
    std::vector<std::string> started;
    bool Start(const std::string& program, const std::string& parameters,
               const std::string& workingFolder) override {
        started.push_back(program + "|" + parameters + "|" + workingFolder);
        return true;
    }
};
