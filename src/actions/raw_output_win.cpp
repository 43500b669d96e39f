// Token privileges for the raw-output utilities.
#include "actions/raw_output_win.h"

bool SetPrivilege(HANDLE token, const wchar_t* privilege, bool enable) {
    LUID luid;
    if (!LookupPrivilegeValueW(nullptr, privilege, &luid)) {
        return false;
    }
    TOKEN_PRIVILEGES wanted = {};
    wanted.PrivilegeCount = 1;
    wanted.Privileges[0].Luid = luid;
    wanted.Privileges[0].Attributes = enable ? SE_PRIVILEGE_ENABLED : 0;
    if (!AdjustTokenPrivileges(token, FALSE, &wanted, sizeof wanted, nullptr, nullptr)) {
        return false;
    }
    // The call succeeds when the token lacks the privilege; only the last error tells.
    return GetLastError() != ERROR_NOT_ALL_ASSIGNED;
}
