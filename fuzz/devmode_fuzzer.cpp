// Fuzzes conversion and merge of arbitrary incoming blocks into arbitrary output records.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "entry/devmode.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 3)
        return 0;
    // Byte 0 picks the service, bytes 1-2 how much of the rest is the incoming block (exactly
    // that long, so ASan sees any read past it); what follows is what the framework left in
    // the output buffer, zero-padded to a whole record.
    const uint32_t mode = (data[0] & 1) ? OEMDM_MERGE : OEMDM_CONVERT;
    size_t inSize = static_cast<size_t>(data[1] | (data[2] << 8));
    data += 3;
    size -= 3;
    if (inSize > size)
        inSize = size;
    std::vector<uint8_t> in(data, data + inSize);
    in.reserve(1);  // a real (never null) pointer even for an empty block
    OEMDEV out;
    std::memset(&out, 0, sizeof out);
    const size_t outBytes = size - inSize < OEMDEV_SIZE ? size - inSize : OEMDEV_SIZE;
    std::memcpy(&out, data + inSize, outBytes);

    uint32_t cb = sizeof out;
    const DevModeCall call{true, in.data(), in.size(), &out, &cb};
    if (hrOEMDevMode(mode, call).hr != kHrOk)
        std::abort();

    // Size, version and tail guards always come out right; a conversion keeps the output's
    // own signature when the incoming block carried the same one, the merge stamps ours.
    if (out.dmExtraHeader.dwSize != OEMDEV_SIZE || out.dmExtraHeader.dwVersion != KIVITEM_VERSION ||
        out.dwSignTail1 != KIVITEM_SIGN_T || out.dwSignTail2 != KIVITEM_SIGN_T) {
        std::abort();
    }
    if (mode == OEMDM_MERGE && out.dmExtraHeader.dwSignature != KIVITEM_SIGNATURE)
        std::abort();
    return 0;
}
