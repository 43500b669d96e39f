// Guarded: runs the body of a framework-facing call so that nothing it throws leaves the DLL.
#pragma once

#include <exception>

// Writes the one level-2 line of a caught exception; never throws itself.
void LogCaughtException(const char* functionName, const char* what) noexcept;

// Runs `body` and returns its result. Anything it throws (an allocation failure included) is
// logged under `functionName` and turned into `failure`, the value by which the caller (the
// framework, the dialog manager) recognises a failed call.
template <typename R, typename Body>
R Guarded(const char* functionName, R failure, Body&& body) noexcept {
    try {
        return body();
    } catch (const std::exception& e) {
        LogCaughtException(functionName, e.what());
    } catch (...) {
        LogCaughtException(functionName, "unknown exception");
    }
    return failure;
}
