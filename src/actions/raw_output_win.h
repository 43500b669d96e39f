// Token privileges for the raw-output utilities.
#pragma once

#include "win/windows_headers_win.h"

// Enables (or disables) one privilege of `token`; true when it is now in the requested state.
bool SetPrivilege(HANDLE token, const wchar_t* privilege, bool enable);
