// The private settings block's lifecycle: size, defaults, conversion, merge and validation.
#include "entry/devmode.h"

#include <algorithm>
#include <cstring>

#include "infra/log.h"

void ResetOEMDevBody(OEMDEV& rec) {
    std::memset(&rec.payload, 0, sizeof(rec.payload));
    rec.dwVerCurrent = KIVITEM_VERCURRENT;
    rec.dwSignHead1 = KIVITEM_SIGN_H;
    rec.dwSignHead2 = KIVITEM_SIGN_H;
    rec.dwSignTail1 = KIVITEM_SIGN_T;
    rec.dwSignTail2 = KIVITEM_SIGN_T;
}

void StampOEMDevHeader(OEMDEV& rec) {
    rec.dmExtraHeader.dwSize = OEMDEV_SIZE;
    rec.dmExtraHeader.dwSignature = KIVITEM_SIGNATURE;
    rec.dmExtraHeader.dwVersion = KIVITEM_VERSION;
}

void SetOEMDevDefault(OEMDEV& rec) {
    StampOEMDevHeader(rec);
    ResetOEMDevBody(rec);
}

namespace {

uint32_t ReadU32(const uint8_t* p) {
    uint32_t v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

}  // namespace

size_t IncomingRecordExtent(const uint8_t* block, const uint8_t* publicDevmode,
                            size_t publicExtent) {
    if (block == nullptr)
        return 0;
    const auto at = reinterpret_cast<uintptr_t>(block);
    const auto from = reinterpret_cast<uintptr_t>(publicDevmode);
    if (publicDevmode != nullptr && at >= from && at - from < publicExtent)
        return std::min<size_t>(publicExtent - (at - from), OEMDEV_SIZE);
    return std::min<size_t>(ReadU32(block + offsetof(OemDmExtraHeader, dwSize)), OEMDEV_SIZE);
}

bool ConvertOEMDevmode(const uint8_t* in, size_t inAvailable, OEMDEV* out) {
    static const char* const kFn = "ConvertOEMDevmode";
    if (in == nullptr || out == nullptr) {
        TheLog().Write(kLogError, kFn, "invalid parameters.");
        return false;
    }
    // A block too short to carry a signature cannot be ours.
    const bool hasHeader = inAvailable >= sizeof(OemDmExtraHeader);
    if (!hasHeader ||
        ReadU32(in + offsetof(OemDmExtraHeader, dwSignature)) != out->dmExtraHeader.dwSignature) {
        TheLog().Write(kLogWarning, kFn, "Unknown DEVMODE signature, pOEMDMIn ignored.");
        SetOEMDevDefault(*out);
    } else {
        TheLog().Write(kLogInfo, kFn, "Converting private OEM Devmode.");
        const size_t inSize = ReadU32(in + offsetof(OemDmExtraHeader, dwSize));
        const size_t count =
            std::min({inSize, size_t{out->dmExtraHeader.dwSize}, inAvailable, size_t{OEMDEV_SIZE}});
        ResetOEMDevBody(*out);
        // memmove: the framework may hand the same block in and out.
        std::memmove(reinterpret_cast<uint8_t*>(out), in, count);
        out->dmExtraHeader.dwSize = OEMDEV_SIZE;
        out->dmExtraHeader.dwVersion = KIVITEM_VERSION;
    }
    out->dwSignTail1 = KIVITEM_SIGN_T;
    out->dwSignTail2 = KIVITEM_SIGN_T;
    return true;
}

bool ValidateOEMDevmode(OEMDEV* rec) {
    if (rec == nullptr)
        return false;
    StampOEMDevHeader(*rec);
    if (rec->dwSignHead1 == KIVITEM_SIGN_H && rec->dwSignHead2 == KIVITEM_SIGN_H) {
        rec->dwSignTail1 = KIVITEM_SIGN_T;
        rec->dwSignTail2 = KIVITEM_SIGN_T;
    } else {
        ResetOEMDevBody(*rec);
    }
    return true;
}

DevModeResult hrOEMDevMode(uint32_t dwMode, const DevModeCall& call) {
    if (!call.paramPresent || dwMode < OEMDM_SIZE || dwMode > OEMDM_MERGE) {
        TheLog().Write(kLogError, "hrOEMDevMode", "ERROR_INVALID_PARAMETER.");
        return {kHrFail, kErrorInvalidParameter};
    }
    switch (dwMode) {
        case OEMDM_SIZE:
            if (call.cbBufSize != nullptr)
                *call.cbBufSize = OEMDEV_SIZE;
            break;
        case OEMDM_DEFAULT:
            // Deliberately a zero body: the model's defaults arrive at the first opening of
            // the pages, when the empty model name fails the repair's model test.
            if (call.oemOut != nullptr)
                SetOEMDevDefault(*call.oemOut);
            break;
        case OEMDM_CONVERT:
            ConvertOEMDevmode(call.oemIn, call.oemInAvailable, call.oemOut);
            break;
        case OEMDM_MERGE:
            ConvertOEMDevmode(call.oemIn, call.oemInAvailable, call.oemOut);
            ValidateOEMDevmode(call.oemOut);
            // The incoming record, not the merged one, is what the pages start from at the next
            // opening (kept-behaviour: Merge keeps the incoming record).
            if (call.mergeCopy != nullptr && call.oemIn != nullptr) {
                std::memset(call.mergeCopy, 0, sizeof *call.mergeCopy);
                std::memcpy(call.mergeCopy, call.oemIn,
                            std::min<size_t>(call.oemInAvailable, OEMDEV_SIZE));
            }
            break;
    }
    return {kHrOk, kErrorSuccess};
}
