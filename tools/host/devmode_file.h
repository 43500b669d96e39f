// A devmode file the host can be given to start from (a damaged devmode, a support case); the
// settings themselves are kept by the spooler.
//
// Layout: the public DEVMODEW (dmSize bytes) followed by dmDriverExtra bytes of the driver's
// private part, which here is the plug-in's record and nothing else.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "win/windows_headers_win.h"

struct StoredDevmode {
    DEVMODEW publicDM = {};
    std::vector<uint8_t> privateDM;
};

enum class DevmodeFileStatus { kAbsent, kLoaded, kDamaged };

// Reads and checks the file (size, dmSize, dmDriverExtra against the file's length). A damaged
// file is reported, never half used; `why` says what was wrong.
DevmodeFileStatus LoadDevmodeFile(const std::wstring& path, StoredDevmode& out, std::wstring& why);
