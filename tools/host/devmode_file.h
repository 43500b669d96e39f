// The devmode file the host keeps per printer, as the spooler keeps a printer's devmode.
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

// Writes the whole file through a temporary file and a replace, so a failed write never leaves
// a cut devmode behind.
bool SaveDevmodeFile(const std::wstring& path, const DEVMODEW& publicDM, const uint8_t* privateDM,
                     size_t privateSize, std::wstring& error);
