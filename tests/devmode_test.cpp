// Tests of the settings record's bytes and of the devmode services on it.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "entry/devmode.h"

namespace {

const uint8_t* Bytes(const OEMDEV& rec) {
    return reinterpret_cast<const uint8_t*>(&rec);
}

bool PayloadIsZero(const OEMDEV& rec) {
    const uint8_t* p = Bytes(rec) + OEMDEV_HEADER_SIZE;
    for (size_t i = 0; i < OEMDEV_PAYLOAD_SIZE; ++i) {
        if (p[i] != 0)
            return false;
    }
    return true;
}

OEMDEV Filled(uint8_t value) {
    OEMDEV rec;
    std::memset(&rec, value, sizeof rec);
    return rec;
}

TEST(OemDevRecord, DefaultRecordBytes) {
    OEMDEV rec = Filled(0x5A);
    SetOEMDevDefault(rec);
    const uint8_t* b = Bytes(rec);
    const uint8_t head[24] = {0x01, 0x0D, 0x00, 0x00, 'C',  'V',  'I',  'K',
                              0x01, 0x00, 0x00, 0x00, 0xDD, 0xCC, 0xBB, 0xAA,
                              0xDD, 0xCC, 0xBB, 0xAA, 0x02, 0x00, 0x00, 0x00};
    EXPECT_EQ(0, std::memcmp(b, head, sizeof head));
    EXPECT_TRUE(PayloadIsZero(rec));
    const uint8_t tail[8] = {0xDD, 0xFF, 0xBB, 0xFF, 0xDD, 0xFF, 0xBB, 0xFF};
    EXPECT_EQ(0, std::memcmp(b + 3321, tail, sizeof tail));
}

// Multi-byte fields sit unaligned and little-endian at their record offsets.
TEST(OemDevRecord, WideFieldsAreLittleEndianAtTheirOffsets) {
    struct Case {
        const char* name;
        void (*set)(OemDevPayload&);
        size_t payloadOffset;
        uint8_t lo, hi;
    };
    const Case cases[] = {
        {"time on", [](OemDevPayload& p) { p.cashDrawerTimeOn = 0x0102; }, 643, 0x02, 0x01},
        {"time off", [](OemDevPayload& p) { p.cashDrawerTimeOff = 0x0304; }, 645, 0x04, 0x03},
        {"feeder", [](OemDevPayload& p) { p.feeder = 1003; }, 670, 0xEB, 0x03},
        {"p2p timeout", [](OemDevPayload& p) { p.page2PageTimeout = 0xBEEF; }, 678, 0xEF, 0xBE},
        {"p2p extra", [](OemDevPayload& p) { p.page2PageExtra = 2; }, 680, 0x02, 0x00},
        {"start length", [](OemDevPayload& p) { p.startJobBufferLength = 513; }, 2253, 0x01, 0x02},
        {"end length", [](OemDevPayload& p) { p.endJobBufferLength = 0x0A0B; }, 2768, 0x0B, 0x0A},
        {"offset x", [](OemDevPayload& p) { p.offsetX = -2; }, 3283, 0xFE, 0xFF},
        {"offset y", [](OemDevPayload& p) { p.offsetY = 1000; }, 3285, 0xE8, 0x03},
        {"min value", [](OemDevPayload& p) { p.reductionMinValue = 0x1234; }, 3289, 0x34, 0x12},
        {"value", [](OemDevPayload& p) { p.reductionValue = 0x5678; }, 3291, 0x78, 0x56},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        OEMDEV rec = Filled(0);
        c.set(rec.payload);
        const uint8_t* b = Bytes(rec) + OEMDEV_HEADER_SIZE + c.payloadOffset;
        EXPECT_EQ(c.lo, b[0]);
        EXPECT_EQ(c.hi, b[1]);
    }
    OEMDEV rec = Filled(0);
    rec.payload.logos[3].path[0] = 'Z';
    EXPECT_EQ('Z', Bytes(rec)[OEMDEV_HEADER_SIZE + 950 + 3 * 260 + 4]);
}

TEST(OemDevRecord, BodyResetKeepsTheExtraHeader) {
    OEMDEV rec = Filled(0x77);
    ResetOEMDevBody(rec);
    EXPECT_EQ(0x77777777u, +rec.dmExtraHeader.dwSize);
    EXPECT_EQ(0x77777777u, +rec.dmExtraHeader.dwSignature);
    EXPECT_EQ(KIVITEM_SIGN_H, +rec.dwSignHead1);
    EXPECT_EQ(KIVITEM_VERCURRENT, +rec.dwVerCurrent);
    EXPECT_TRUE(PayloadIsZero(rec));
    EXPECT_EQ(KIVITEM_SIGN_T, +rec.dwSignTail2);
}

TEST(OemDevConvert, ShortRecordKeepsItsLeadingBytes) {
    std::vector<uint8_t> in(1000);
    for (size_t i = 0; i < in.size(); ++i)
        in[i] = static_cast<uint8_t>(i * 7 + 1);
    const uint32_t size = 1000, signature = KIVITEM_SIGNATURE;
    std::memcpy(in.data(), &size, 4);
    std::memcpy(in.data() + 4, &signature, 4);

    OEMDEV out = Filled(0x33);
    SetOEMDevDefault(out);
    std::memset(&out.payload, 0x44, sizeof out.payload);
    ASSERT_TRUE(ConvertOEMDevmode(in.data(), in.size(), &out));

    const uint8_t* b = Bytes(out);
    EXPECT_EQ(0, std::memcmp(b + 12, in.data() + 12, 1000 - 12));
    EXPECT_EQ(OEMDEV_SIZE, +out.dmExtraHeader.dwSize);
    EXPECT_EQ(KIVITEM_VERSION, +out.dmExtraHeader.dwVersion);
    for (size_t i = 1000; i < 3321; ++i)
        ASSERT_EQ(0, b[i]) << "byte " << i;
    EXPECT_EQ(KIVITEM_SIGN_T, +out.dwSignTail1);
    EXPECT_EQ(KIVITEM_SIGN_T, +out.dwSignTail2);
}

TEST(OemDevConvert, ForeignSignatureGivesTheFullDefault) {
    OEMDEV in = Filled(0x11);
    SetOEMDevDefault(in);
    in.dmExtraHeader.dwSignature = 0x12345678;
    std::memset(&in.payload, 0x99, sizeof in.payload);
    OEMDEV out = Filled(0x22);
    SetOEMDevDefault(out);
    std::memset(&out.payload, 0x55, sizeof out.payload);

    ASSERT_TRUE(ConvertOEMDevmode(Bytes(in), sizeof in, &out));
    OEMDEV expected = Filled(0);
    SetOEMDevDefault(expected);
    EXPECT_EQ(0, std::memcmp(&out, &expected, sizeof out));
}

TEST(OemDevConvert, NeverReadsPastTheIncomingBlockOrWritesPastTheRecord) {
    // A record claiming 5000 bytes is cut at 3329; one claiming more than it holds is read
    // only as far as it goes.
    std::vector<uint8_t> big(5000, 0xAB);
    const uint32_t bigSize = 5000, signature = KIVITEM_SIGNATURE;
    std::memcpy(big.data(), &bigSize, 4);
    std::memcpy(big.data() + 4, &signature, 4);
    OEMDEV out;
    SetOEMDevDefault(out);
    ASSERT_TRUE(ConvertOEMDevmode(big.data(), big.size(), &out));
    EXPECT_EQ(0xAB, Bytes(out)[3320]);
    EXPECT_EQ(KIVITEM_SIGN_T, +out.dwSignTail1);

    std::vector<uint8_t> liar(big.begin(), big.begin() + 40);  // says 5000, holds 40
    SetOEMDevDefault(out);
    ASSERT_TRUE(ConvertOEMDevmode(liar.data(), liar.size(), &out));
    EXPECT_EQ(0xAB, Bytes(out)[39]);
    EXPECT_EQ(0, Bytes(out)[40]);
}

TEST(OemDevConvert, NullRecordsFail) {
    OEMDEV rec;
    SetOEMDevDefault(rec);
    EXPECT_FALSE(ConvertOEMDevmode(nullptr, 0, &rec));
    EXPECT_FALSE(ConvertOEMDevmode(Bytes(rec), sizeof rec, nullptr));
    EXPECT_FALSE(ValidateOEMDevmode(nullptr));
}

TEST(OemDevMerge, IntactGuardsKeepTheBodyEvenAtAnOldLayoutVersion) {
    OEMDEV in;
    SetOEMDevDefault(in);
    in.dwVerCurrent = 1;
    std::strcpy(in.payload.modelName, "TRX418A CUT");
    in.payload.density = 0x50;
    OEMDEV out;
    SetOEMDevDefault(out);
    uint32_t cb = sizeof out;
    DevModeCall call{true, Bytes(in), sizeof in, &out, &cb};

    const DevModeResult r = hrOEMDevMode(OEMDM_MERGE, call);
    EXPECT_EQ(kHrOk, r.hr);
    EXPECT_EQ(0, std::memcmp(&in.payload, &out.payload, sizeof in.payload));
    EXPECT_EQ(1u, +out.dwVerCurrent);
}

TEST(OemDevMerge, DamagedGuardsResetTheBody) {
    for (int which = 0; which < 2; ++which) {
        SCOPED_TRACE(which);
        OEMDEV in;
        SetOEMDevDefault(in);
        (which == 0 ? in.dwSignHead1 : in.dwSignHead2) = 0;
        std::memset(&in.payload, 0x42, sizeof in.payload);
        in.dwSignTail1 = 0;
        OEMDEV out;
        SetOEMDevDefault(out);
        DevModeCall call{true, Bytes(in), sizeof in, &out, nullptr};
        ASSERT_EQ(kHrOk, hrOEMDevMode(OEMDM_MERGE, call).hr);
        OEMDEV expected;
        SetOEMDevDefault(expected);
        EXPECT_EQ(0, std::memcmp(&out, &expected, sizeof out));
    }
}

TEST(OemDevServices, ModesAndFailures) {
    OEMDEV rec = Filled(0x66);
    const OEMDEV untouched = rec;
    uint32_t cb = 0;

    DevModeCall sizeCall{true, nullptr, 0, &rec, &cb};
    EXPECT_EQ(kHrOk, hrOEMDevMode(OEMDM_SIZE, sizeCall).hr);
    EXPECT_EQ(OEMDEV_SIZE, cb);
    EXPECT_EQ(0, std::memcmp(&rec, &untouched, sizeof rec)) << "SIZE touched the record";

    for (uint32_t mode : {0u, 5u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(mode);
        const DevModeResult r = hrOEMDevMode(mode, sizeCall);
        EXPECT_EQ(kHrFail, r.hr);
        EXPECT_EQ(kErrorInvalidParameter, r.lastError);
    }
    const DevModeResult noParam = hrOEMDevMode(OEMDM_DEFAULT, DevModeCall{});
    EXPECT_EQ(kHrFail, noParam.hr);
    EXPECT_EQ(kErrorInvalidParameter, noParam.lastError);
    EXPECT_EQ(0, std::memcmp(&rec, &untouched, sizeof rec));

    DevModeCall defaultCall{true, nullptr, 0, &rec, &cb};
    EXPECT_EQ(kHrOk, hrOEMDevMode(OEMDM_DEFAULT, defaultCall).hr);
    OEMDEV expected;
    SetOEMDevDefault(expected);
    EXPECT_EQ(0, std::memcmp(&rec, &expected, sizeof rec));

    // A conversion whose records are missing still answers S_OK.
    DevModeCall nullConvert{true, nullptr, 0, &rec, &cb};
    EXPECT_EQ(kHrOk, hrOEMDevMode(OEMDM_CONVERT, nullConvert).hr);
}

}  // namespace
