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
    static const OemDevPayload kZero{};
    return std::memcmp(&rec.payload, &kZero, sizeof kZero) == 0;
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

    // A body reset leaves the extra header as it found it.
    rec = Filled(0x77);
    ResetOEMDevBody(rec);
    EXPECT_EQ(0x77777777u, +rec.dmExtraHeader.dwSignature);
    EXPECT_EQ(0, std::memcmp(b + 12, head + 12, sizeof head - 12));
    EXPECT_TRUE(PayloadIsZero(rec));
}

// The body is copied as far as the incoming block holds and its header claims, never past the
// last body byte (3321); the rest of the body is zero and the header and guards are ours. A
// foreign signature gives the full default.
TEST(OemDevConvert, CopiesWhatTheBlockHoldsAndNoMore) {
    const struct {
        size_t held;
        uint32_t claimed, signature;
        size_t copied;
    } cases[] = {{1000, 1000, KIVITEM_SIGNATURE, 1000},
                 {5000, 5000, KIVITEM_SIGNATURE, 3321},
                 {40, 5000, KIVITEM_SIGNATURE, 40},
                 {OEMDEV_SIZE, OEMDEV_SIZE, 0x12345678, 12}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.held);
        std::vector<uint8_t> in(c.held);
        for (size_t i = 0; i < in.size(); ++i)
            in[i] = static_cast<uint8_t>(i * 7 + 1);
        std::memcpy(in.data(), &c.claimed, 4);
        std::memcpy(in.data() + 4, &c.signature, 4);
        OEMDEV out = Filled(0x22);
        SetOEMDevDefault(out);
        std::memset(&out.payload, 0x44, sizeof out.payload);
        ASSERT_TRUE(ConvertOEMDevmode(in.data(), in.size(), &out));

        OEMDEV expected = Filled(0);
        SetOEMDevDefault(expected);
        if (c.signature == KIVITEM_SIGNATURE)
            std::memcpy(reinterpret_cast<uint8_t*>(&expected) + 12, in.data() + 12, c.copied - 12);
        EXPECT_EQ(0, std::memcmp(&out, &expected, sizeof out));
    }
}

TEST(OemDevConvert, ExtentOfTheIncomingBlock) {
    // A public devmode of 220 bytes whose driver extra holds the private block.
    std::vector<uint8_t> pub(220 + OEMDEV_SIZE + 100, 0);
    const uint32_t claim = 1000;
    std::memcpy(&pub[220], &claim, 4);
    const struct {
        const char* what;
        size_t offset, publicExtent;
        bool withPublic;
        size_t expected;
    } cases[] = {
        {"8 bytes of driver extra", 220, 228, true, 8},
        {"a short tail, whatever the header claims", 220, 220 + 2000, true, 2000},
        {"more than a record", 220, pub.size(), true, OEMDEV_SIZE},
        {"no public devmode: the header's claim", 220, 0, false, 1000},
        {"outside the public devmode", 220, 220, true, 1000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(c.expected,
                  IncomingRecordExtent(&pub[c.offset], c.withPublic ? pub.data() : nullptr,
                                       c.publicExtent));
    }
    EXPECT_EQ(0u, IncomingRecordExtent(nullptr, pub.data(), pub.size()));
}

// Intact guards keep the body even at layout version 1 (the opening repairs it); a damaged
// guard resets the whole record. That the incoming record is kept for the next opening either
// way is devmode_fuzzer's check on every merge.
TEST(OemDevMerge, GuardsDecideWhetherTheBodyIsKept) {
    const struct {
        const char* what;
        void (*damage)(OEMDEV&);
        bool keepsBody;
    } cases[] = {
        {"layout version 1", [](OEMDEV& r) { r.dwVerCurrent = 1; }, true},
        {"head guard 1", [](OEMDEV& r) { r.dwSignHead1 = r.dwSignTail1 = 0; }, false},
        {"head guard 2", [](OEMDEV& r) { r.dwSignHead2 = r.dwSignTail1 = 0; }, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OEMDEV in, out, reset, kept;
        SetOEMDevDefault(in);
        std::memset(&in.payload, 0x42, sizeof in.payload);
        c.damage(in);
        SetOEMDevDefault(out);
        SetOEMDevDefault(reset);
        uint32_t cb = sizeof out;
        ASSERT_EQ(kHrOk,
                  hrOEMDevMode(OEMDM_MERGE, {true, Bytes(in), sizeof in, &out, &cb, &kept}).hr);
        if (c.keepsBody) {
            EXPECT_EQ(0, std::memcmp(&in.payload, &out.payload, sizeof in.payload));
            EXPECT_EQ(1u, +out.dwVerCurrent);
        } else {
            EXPECT_EQ(0, std::memcmp(&out, &reset, sizeof out));
        }
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

    // A conversion whose records are missing still answers S_OK; the conversion itself fails.
    DevModeCall nullConvert{true, nullptr, 0, &rec, &cb};
    EXPECT_EQ(kHrOk, hrOEMDevMode(OEMDM_CONVERT, nullConvert).hr);
    EXPECT_FALSE(ConvertOEMDevmode(Bytes(rec), sizeof rec, nullptr));
    EXPECT_FALSE(ValidateOEMDevmode(nullptr));
}

}  // namespace
