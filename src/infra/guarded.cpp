// The log line of an exception stopped at the DLL boundary.
#include "infra/guarded.h"

#include "infra/log.h"

void LogCaughtException(const char* functionName, const char* what) noexcept {
    try {
        TheLog().Write(kLogError, functionName, "exception caught: %s",
                       what != nullptr ? what : "");
    } catch (...) {
        // Formatting the line needs memory too; when even that fails the line is lost, not the
        // process.
    }
}
