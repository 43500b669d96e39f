// Fuzzes conversion and merge of arbitrary incoming blocks, bounded as the framework's public
// devmode bounds them, into arbitrary output records.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "entry/devmode.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 4)
        return 0;
    // Byte 0 picks the service, bytes 1-2 how much of the rest is the incoming block, byte 3 how
    // many bytes of public devmode precede it. The devmode ends with the block, at the end of its
    // own allocation, so ASan sees any read past it; what follows is what the framework left in
    // the output buffer, zero-padded to a whole record.
    const uint32_t mode = (data[0] & 1) ? OEMDM_MERGE : OEMDM_CONVERT;
    size_t inSize = static_cast<size_t>(data[1] | (data[2] << 8));
    const size_t prefix = data[3];
    data += 4;
    size -= 4;
    if (inSize > size)
        inSize = size;
    if (inSize == 0)  // the framework's block always lies inside the public devmode
        return 0;
    std::vector<uint8_t> publicDevmode(prefix + inSize);
    std::memcpy(publicDevmode.data() + prefix, data, inSize);
    const uint8_t* in = publicDevmode.data() + prefix;
    const size_t available = IncomingRecordExtent(in, publicDevmode.data(), publicDevmode.size());
    if (available > inSize)
        std::abort();

    OEMDEV out, kept;
    std::memset(&out, 0, sizeof out);
    const size_t outBytes = size - inSize < OEMDEV_SIZE ? size - inSize : OEMDEV_SIZE;
    std::memcpy(&out, data + inSize, outBytes);

    uint32_t cb = sizeof out;
    const DevModeCall call{true, in, available, &out, &cb, &kept};
    if (hrOEMDevMode(mode, call).hr != kHrOk)
        std::abort();

    // Size, version and tail guards always come out right; a conversion keeps the output's
    // own signature when the incoming block carried the same one, the merge stamps ours and
    // keeps the incoming block as far as it goes, zero beyond.
    if (out.dmExtraHeader.dwSize != OEMDEV_SIZE || out.dmExtraHeader.dwVersion != KIVITEM_VERSION ||
        out.dwSignTail1 != KIVITEM_SIGN_T || out.dwSignTail2 != KIVITEM_SIGN_T) {
        std::abort();
    }
    if (mode == OEMDM_MERGE) {
        const auto* keptBytes = reinterpret_cast<const uint8_t*>(&kept);
        if (out.dmExtraHeader.dwSignature != KIVITEM_SIGNATURE ||
            std::memcmp(keptBytes, in, available) != 0 ||
            (available < OEMDEV_SIZE && keptBytes[OEMDEV_SIZE - 1] != 0)) {
            std::abort();
        }
    }
    return 0;
}
