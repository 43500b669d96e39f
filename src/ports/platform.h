// Platform: the bundle of ports the plug-in runs on; the DLL builds one of the real ports
// (platform_win.h), tests build theirs from the fakes.
#pragma once

#include "ports/log_ports.h"
#include "ports/module_loader.h"
#include "ports/os_version.h"
#include "ports/registry_hive.h"
#include "ports/spooler.h"
#include "ports/version_query.h"

struct Platform {
    LogPorts log;
    RegistryHive* currentUser = nullptr;
    RegistryHive* localMachine = nullptr;
    Spooler* spooler = nullptr;
    ModuleLoader* modules = nullptr;
    VersionQuery* versions = nullptr;
    OsVersion* os = nullptr;
};
