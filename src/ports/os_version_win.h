// OsVersionWin: the version record through GetVersionExW.
#pragma once

#include "ports/os_version.h"

class OsVersionWin : public OsVersion {
  public:
    bool Query(bool extended, OsVersionRecord* record) override;
};
