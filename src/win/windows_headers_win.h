// The one way platform files include Win32: lean headers, no min/max macros, Windows 10 API level.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#endif

#include <windows.h>
#include <objbase.h>
#include <commctrl.h>
#include <winspool.h>
// The common property sheet UI and the driver UI declarations that mingw-w64 does carry.
#include <compstui.h>
#include <winddiui.h>
