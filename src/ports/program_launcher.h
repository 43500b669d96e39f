// ProgramLauncher: starts another program (the registry editor, the file explorer) for the user.
#pragma once

#include <string>

class ProgramLauncher {
  public:
    virtual ~ProgramLauncher() = default;
    // Starts `program` with `parameters` (may be empty) in `workingFolder`; false when it could
    // not be started.
    virtual bool Start(const std::string& program, const std::string& parameters,
                       const std::string& workingFolder) = 0;
};
