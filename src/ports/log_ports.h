// LogPorts: the ports the log writes through, gathered.
#pragma once

#include "ports/clock.h"
#include "ports/debug_output.h"
#include "ports/folders.h"
#include "ports/log_file.h"
#include "ports/module_identity.h"
#include "ports/process_ids.h"
#include "ports/text_codec.h"

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
