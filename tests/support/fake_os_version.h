// FakeOsVersion: a version record that either query size may refuse; records the sizes asked.
#pragma once

#include <vector>

#include "ports/os_version.h"

class FakeOsVersion : public OsVersion {
  public:
    OsVersionRecord record;
    bool extendedFails = false;
    bool shortFails = false;
    std::vector<bool> asked;  // true for each extended query, false for each short one

    bool Query(bool extended, OsVersionRecord* out) override {
        asked.push_back(extended);
        if (extended ? extendedFails : shortFails)
            return false;
        *out = record;
        return true;
    }
};
