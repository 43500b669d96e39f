// Clock: the local time that stamps every log line.
#pragma once

#include <cstdint>

struct LocalTime {
    uint16_t year, month, day, hour, minute, second, milliseconds;
};

class Clock {
  public:
    virtual ~Clock() = default;
    virtual LocalTime Now() = 0;
};
