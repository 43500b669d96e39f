// OsVersionWin: GetVersionExW with the record sized for the extended or the short form.
#include "ports/os_version_win.h"

#include "win/windows_headers_win.h"

bool OsVersionWin::Query(bool extended, OsVersionRecord* record) {
    OSVERSIONINFOEXW info = {};
    info.dwOSVersionInfoSize = extended ? sizeof(OSVERSIONINFOEXW) : sizeof(OSVERSIONINFOW);
    if (!GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&info)))
        return false;
    *record = {info.dwMajorVersion, info.dwMinorVersion, info.dwBuildNumber, info.dwPlatformId};
    return true;
}
