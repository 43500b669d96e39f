// The process's one bundle of real ports.
#include "ports/platform_win.h"

#include "actions/os_manager.h"
#include "infra/log.h"
#include "infra/registry_win.h"
#include "ports/log_ports_win.h"
#include "ports/module_loader_win.h"
#include "ports/os_version_win.h"
#include "ports/spooler_win.h"
#include "ports/version_query_win.h"

namespace {

struct WinPorts {
    LogPortsWin logPorts;
    RegistryWin currentUser{HKEY_CURRENT_USER};
    RegistryWin localMachine{HKEY_LOCAL_MACHINE};
    SpoolerWin spooler;
    ModuleLoaderWin modules;
    VersionQueryWin versions;
    OsVersionWin os;
    Platform platform{logPorts.Ports(), &currentUser, &localMachine, &spooler, &modules,
                      &versions,        &os};
};

WinPorts& Ports() {
    static WinPorts ports;
    return ports;
}

}  // namespace

const Platform& WinPlatform() {
    return Ports().platform;
}

void InstallWinPlatform(HMODULE module) {
    WinPorts& ports = Ports();
    ports.logPorts.module.SetModule(module);
    TheLog().SetPorts(&ports.platform.log);
    TheLog().SetHeadExtension(WriteOsReport);
}

void WriteOsReport(CLog& log) {
    const Platform& platform = WinPlatform();
    OSManager(*platform.os, *platform.localMachine, *platform.log.text).LogSystemVersion(log);
}
