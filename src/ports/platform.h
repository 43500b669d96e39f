// Platform: the bundle of ports the plug-in runs on; the DLL builds one of the real ports
// (platform_win.h), tests build theirs from the fakes.
#pragma once

#include "ports/clock.h"
#include "ports/debug_output.h"
#include "ports/folders.h"
#include "ports/log_file.h"
#include "ports/module_identity.h"
#include "ports/module_loader.h"
#include "ports/process_ids.h"
#include "ports/registry_hive.h"
#include "ports/spooler.h"
#include "ports/text_codec.h"
#include "ports/version_query.h"

// What the log asks of the operating system; every member is set.
struct LogPorts {
    Clock* clock = nullptr;
    ProcessIds* ids = nullptr;
    ModuleIdentity* module = nullptr;
    LogFile* file = nullptr;
    Folders* folders = nullptr;
    DebugOutput* debug = nullptr;
    TextCodec* text = nullptr;
};

struct Platform {
    LogPorts log;
    RegistryHive* currentUser = nullptr;
    RegistryHive* localMachine = nullptr;
    Spooler* spooler = nullptr;
    ModuleLoader* modules = nullptr;
    VersionQuery* versions = nullptr;
};
