// OsVersion: the operating system's version record (major, minor, build, platform id).
#pragma once

#include <cstdint>

struct OsVersionRecord {
    uint32_t major = 0, minor = 0, build = 0, platformId = 0;
};

class OsVersion {
  public:
    virtual ~OsVersion() = default;
    // One version query: `extended` sizes the record for the extended form, otherwise for the
    // short one. False when the system refuses that size.
    virtual bool Query(bool extended, OsVersionRecord* record) = 0;
};
