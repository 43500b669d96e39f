// ProgramLauncherWin: ShellExecuteA with the default verb, shown normally.
#include "ports/program_launcher_win.h"

#include "win/windows_headers_win.h"

#include <shellapi.h>

bool ProgramLauncherWin::Start(const std::string& program, const std::string& parameters,
                               const std::string& workingFolder) {
    const HINSTANCE result = ShellExecuteA(nullptr, nullptr, program.c_str(),
                                           parameters.empty() ? nullptr : parameters.c_str(),
                                           workingFolder.c_str(), SW_SHOWNORMAL);
    // The shell's convention: a value above 32 is success.
    return reinterpret_cast<INT_PTR>(result) > 32;
}
