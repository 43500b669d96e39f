// ProgramLauncherWin: programs started through the shell, as a double click would start them.
#pragma once

#include "ports/program_launcher.h"

class ProgramLauncherWin : public ProgramLauncher {
  public:
    bool Start(const std::string& program, const std::string& parameters,
               const std::string& workingFolder) override;
};
