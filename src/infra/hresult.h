// Result and last-error codes that core code hands to the framework-facing layer.
#pragma once

#include <cstdint>

// Win32 headers define these names as macros, so core code uses its own spelling.
using HResult = int32_t;
inline constexpr HResult kHrOk = 0;
inline constexpr HResult kHrFalse = 1;
inline constexpr HResult kHrNotImpl = static_cast<HResult>(0x80004001);
inline constexpr HResult kHrNoInterface = static_cast<HResult>(0x80004002);
inline constexpr HResult kHrPointer = static_cast<HResult>(0x80004003);
inline constexpr HResult kHrFail = static_cast<HResult>(0x80004005);
inline constexpr HResult kHrOutOfMemory = static_cast<HResult>(0x8007000E);
inline constexpr HResult kHrNoAggregation = static_cast<HResult>(0x80040110);
inline constexpr HResult kHrClassNotAvailable = static_cast<HResult>(0x80040111);

inline constexpr uint32_t kErrorSuccess = 0;
inline constexpr uint32_t kErrorNotSupported = 50;
inline constexpr uint32_t kErrorInvalidParameter = 87;
inline constexpr uint32_t kErrorInsufficientBuffer = 122;
