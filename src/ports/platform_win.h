// The Win32 platform bundle: the real ports of this process, built once.
#pragma once

#include "infra/log.h"
#include "ports/platform.h"
#include "win/windows_headers_win.h"

// The process's one bundle, built on first use.
const Platform& WinPlatform();

// Sets the module whose identity the log head shows and points TheLog() at the bundle's log
// ports; calling it again only updates the module.
void InstallWinPlatform(HMODULE module);

// The operating-system lines that end the head of every new log file.
void WriteOsReport(CLog& log);
