// ProcessIds: the ids of the calling process and thread, as the log's line head shows them.
#pragma once

#include <cstdint>

class ProcessIds {
  public:
    virtual ~ProcessIds() = default;
    virtual uint32_t ProcessId() = 0;
    virtual uint32_t ThreadId() = 0;
};
