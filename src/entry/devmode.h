// The private settings block's lifecycle: size, defaults, conversion, merge and validation.
#pragma once

#include <cstddef>
#include <cstdint>

#include "infra/hresult.h"
#include "settings/oemdev.h"

// The framework's devmode service modes.
inline constexpr uint32_t OEMDM_SIZE = 1;
inline constexpr uint32_t OEMDM_DEFAULT = 2;
inline constexpr uint32_t OEMDM_CONVERT = 3;
inline constexpr uint32_t OEMDM_MERGE = 4;

// Zero body, layout version 2, guards in place; the extra header is left alone.
void ResetOEMDevBody(OEMDEV& rec);
// A whole default record: stamped header plus a body reset.
void SetOEMDevDefault(OEMDEV& rec);
// Size, signature and version, body untouched.
void StampOEMDevHeader(OEMDEV& rec);

// Converts a record of any earlier size into `out`. `in` points at `inAvailable` readable
// bytes; nothing past them, nor past the incoming record's own dwSize, is read. Null pointers
// give false (and a log line); otherwise `out` always ends up a well-formed record.
bool ConvertOEMDevmode(const uint8_t* in, size_t inAvailable, OEMDEV* out);
bool ValidateOEMDevmode(OEMDEV* rec);

// How many bytes of the incoming private block may be read. The framework hands the block inside
// the public devmode it came with, whose extent (dmSize + dmDriverExtra, `publicExtent` bytes from
// `publicDevmode`) bounds it; for a block outside any public devmode nothing but its own header's
// dwSize tells its length. Never more than a whole record.
size_t IncomingRecordExtent(const uint8_t* block, const uint8_t* publicDevmode,
                            size_t publicExtent);

// The framework's view of one DevMode call, as the Win32 entry maps it from OEMDMPARAM.
struct DevModeCall {
    bool paramPresent = false;
    const uint8_t* oemIn = nullptr;
    size_t oemInAvailable = 0;
    OEMDEV* oemOut = nullptr;
    uint32_t* cbBufSize = nullptr;
    // Receives the incoming record at a merge (bytes the block lacks count as zero).
    OEMDEV* mergeCopy = nullptr;
};

struct DevModeResult {
    HResult hr;
    uint32_t lastError;  // kErrorSuccess: leave the thread's last error alone
};

DevModeResult hrOEMDevMode(uint32_t dwMode, const DevModeCall& call);
