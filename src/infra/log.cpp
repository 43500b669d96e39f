// CLog: the per-printer diagnostic log.
#include "infra/log.h"

// Placeholder bodies until the log lands; they write nothing.
void CLog::Write(int, const char*, const char*, ...) {}
CLog& TheLog() {
    static CLog log;
    return log;
}
