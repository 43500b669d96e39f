// SHA-1: a portable block function and one on the processor's SHA extensions, chosen at run time.
#include "actions/sha1.h"

#include <cstring>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#include <immintrin.h>
#define KIV_SHA1_X86 1
#endif

namespace {

constexpr uint32_t kInitial[5] = {0x67452301u, 0xEFCDAB89u, 0x98BADCFEu, 0x10325476u, 0xC3D2E1F0u};

inline uint32_t Rotl(uint32_t x, int n) {
    return (x << n) | (x >> (32 - n));
}

inline uint32_t LoadBigEndian(const uint8_t* p) {
    return (uint32_t{p[0]} << 24) | (uint32_t{p[1]} << 16) | (uint32_t{p[2]} << 8) | p[3];
}

// The rounds are written out by macros: the five working variables trade names from one round to
// the next instead of moving, so each round is a handful of register operations, and the sixteen
// schedule words live in a ring (x) that the compiler keeps in registers or the stack.
#define KIV_SHA1_W(t) (x[(t)&15])
#define KIV_SHA1_NEXT(t) \
    (x[(t)&15] = Rotl(x[((t) + 13) & 15] ^ x[((t) + 8) & 15] ^ x[((t) + 2) & 15] ^ x[(t)&15], 1))
#define KIV_SHA1_ROUND(a, b, c, d, e, f, k, w) \
    do {                                       \
        e += Rotl(a, 5) + (f) + (k) + (w);     \
        b = Rotl(b, 30);                       \
    } while (0)
#define KIV_SHA1_CH(b, c, d) ((((c) ^ (d)) & (b)) ^ (d))
#define KIV_SHA1_PAR(b, c, d) ((b) ^ (c) ^ (d))
// Majority as a sum: the two terms share no set bit, and the sum folds into the round's adds.
#define KIV_SHA1_MAJ(b, c, d) (((b) & (c)) + ((d) & ((b) ^ (c))))
#define KIV_SHA1_R0(a, b, c, d, e, t) \
    KIV_SHA1_ROUND(a, b, c, d, e, KIV_SHA1_CH(b, c, d), 0x5A827999u, KIV_SHA1_W(t))
#define KIV_SHA1_R1(a, b, c, d, e, t) \
    KIV_SHA1_ROUND(a, b, c, d, e, KIV_SHA1_CH(b, c, d), 0x5A827999u, KIV_SHA1_NEXT(t))
#define KIV_SHA1_R2(a, b, c, d, e, t) \
    KIV_SHA1_ROUND(a, b, c, d, e, KIV_SHA1_PAR(b, c, d), 0x6ED9EBA1u, KIV_SHA1_NEXT(t))
#define KIV_SHA1_R3(a, b, c, d, e, t) \
    KIV_SHA1_ROUND(a, b, c, d, e, KIV_SHA1_MAJ(b, c, d), 0x8F1BBCDCu, KIV_SHA1_NEXT(t))
#define KIV_SHA1_R4(a, b, c, d, e, t) \
    KIV_SHA1_ROUND(a, b, c, d, e, KIV_SHA1_PAR(b, c, d), 0xCA62C1D6u, KIV_SHA1_NEXT(t))
// Five rounds of one kind from round t; after five the names are back where they started.
#define KIV_SHA1_FIVE(R, t)    \
    R(a, b, c, d, e, (t));     \
    R(e, a, b, c, d, (t) + 1); \
    R(d, e, a, b, c, (t) + 2); \
    R(c, d, e, a, b, (t) + 3); \
    R(b, c, d, e, a, (t) + 4)

void PortableBlocks(uint32_t state[5], const uint8_t* data, size_t count) {
    for (; count != 0; --count, data += 64) {
        uint32_t x[16];
        for (int i = 0; i < 16; ++i)
            x[i] = LoadBigEndian(data + 4 * i);
        uint32_t a = state[0], b = state[1], c = state[2], d = state[3], e = state[4];
        KIV_SHA1_FIVE(KIV_SHA1_R0, 0);
        KIV_SHA1_FIVE(KIV_SHA1_R0, 5);
        KIV_SHA1_FIVE(KIV_SHA1_R0, 10);
        KIV_SHA1_R0(a, b, c, d, e, 15);
        KIV_SHA1_R1(e, a, b, c, d, 16);
        KIV_SHA1_R1(d, e, a, b, c, 17);
        KIV_SHA1_R1(c, d, e, a, b, 18);
        KIV_SHA1_R1(b, c, d, e, a, 19);
        KIV_SHA1_FIVE(KIV_SHA1_R2, 20);
        KIV_SHA1_FIVE(KIV_SHA1_R2, 25);
        KIV_SHA1_FIVE(KIV_SHA1_R2, 30);
        KIV_SHA1_FIVE(KIV_SHA1_R2, 35);
        KIV_SHA1_FIVE(KIV_SHA1_R3, 40);
        KIV_SHA1_FIVE(KIV_SHA1_R3, 45);
        KIV_SHA1_FIVE(KIV_SHA1_R3, 50);
        KIV_SHA1_FIVE(KIV_SHA1_R3, 55);
        KIV_SHA1_FIVE(KIV_SHA1_R4, 60);
        KIV_SHA1_FIVE(KIV_SHA1_R4, 65);
        KIV_SHA1_FIVE(KIV_SHA1_R4, 70);
        KIV_SHA1_FIVE(KIV_SHA1_R4, 75);
        state[0] += a;
        state[1] += b;
        state[2] += c;
        state[3] += d;
        state[4] += e;
    }
}

#if KIV_SHA1_X86

#define KIV_SHA_TARGET __attribute__((target("sha,sse4.1,ssse3")))

// One group of four rounds: `next` carries E into the group, `saved` keeps A for the next one.
template <int F>
KIV_SHA_TARGET inline void Rounds4(__m128i& abcd, __m128i& saved, __m128i message) {
    const __m128i e = _mm_sha1nexte_epu32(saved, message);
    saved = abcd;
    abcd = _mm_sha1rnds4_epu32(abcd, e, F);
}

// The next four schedule words from the previous sixteen, held in a, b, c, d; replaces a.
KIV_SHA_TARGET inline void Schedule(__m128i& a, __m128i b, __m128i c, __m128i d) {
    a = _mm_sha1msg2_epu32(_mm_xor_si128(_mm_sha1msg1_epu32(a, b), c), d);
}

KIV_SHA_TARGET void ShaExtensionBlocks(uint32_t state[5], const uint8_t* data, size_t count) {
    const __m128i byteSwap = _mm_set_epi64x(0x0001020304050607LL, 0x08090a0b0c0d0e0fLL);
    __m128i abcd =
        _mm_shuffle_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(state)), 0x1B);
    __m128i e0 = _mm_set_epi32(static_cast<int>(state[4]), 0, 0, 0);
    for (; count != 0; --count, data += 64) {
        const __m128i abcdStart = abcd;
        const __m128i eStart = e0;
        __m128i m0 =
            _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data)), byteSwap);
        __m128i m1 = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data + 16)),
                                      byteSwap);
        __m128i m2 = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data + 32)),
                                      byteSwap);
        __m128i m3 = _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(data + 48)),
                                      byteSwap);

        // The first group adds E directly; every later one derives it with sha1nexte.
        __m128i saved = abcd;
        abcd = _mm_sha1rnds4_epu32(abcd, _mm_add_epi32(e0, m0), 0);
        Rounds4<0>(abcd, saved, m1);
        Rounds4<0>(abcd, saved, m2);
        Rounds4<0>(abcd, saved, m3);
        Schedule(m0, m1, m2, m3);
        Rounds4<0>(abcd, saved, m0);
        Schedule(m1, m2, m3, m0);
        Rounds4<1>(abcd, saved, m1);
        Schedule(m2, m3, m0, m1);
        Rounds4<1>(abcd, saved, m2);
        Schedule(m3, m0, m1, m2);
        Rounds4<1>(abcd, saved, m3);
        Schedule(m0, m1, m2, m3);
        Rounds4<1>(abcd, saved, m0);
        Schedule(m1, m2, m3, m0);
        Rounds4<1>(abcd, saved, m1);
        Schedule(m2, m3, m0, m1);
        Rounds4<2>(abcd, saved, m2);
        Schedule(m3, m0, m1, m2);
        Rounds4<2>(abcd, saved, m3);
        Schedule(m0, m1, m2, m3);
        Rounds4<2>(abcd, saved, m0);
        Schedule(m1, m2, m3, m0);
        Rounds4<2>(abcd, saved, m1);
        Schedule(m2, m3, m0, m1);
        Rounds4<2>(abcd, saved, m2);
        Schedule(m3, m0, m1, m2);
        Rounds4<3>(abcd, saved, m3);
        Schedule(m0, m1, m2, m3);
        Rounds4<3>(abcd, saved, m0);
        Schedule(m1, m2, m3, m0);
        Rounds4<3>(abcd, saved, m1);
        Schedule(m2, m3, m0, m1);
        Rounds4<3>(abcd, saved, m2);
        Schedule(m3, m0, m1, m2);
        Rounds4<3>(abcd, saved, m3);

        e0 = _mm_sha1nexte_epu32(saved, eStart);
        abcd = _mm_add_epi32(abcd, abcdStart);
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(state), _mm_shuffle_epi32(abcd, 0x1B));
    state[4] = static_cast<uint32_t>(_mm_extract_epi32(e0, 3));
}

bool CpuHasShaExtensions() {
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (!__get_cpuid(1, &eax, &ebx, &ecx, &edx))
        return false;
    const bool ssse3 = (ecx & (1u << 9)) != 0;
    const bool sse41 = (ecx & (1u << 19)) != 0;
    if (!__get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx))
        return false;
    return ssse3 && sse41 && (ebx & (1u << 29)) != 0;
}

#else

bool CpuHasShaExtensions() {
    return false;
}

#endif

}  // namespace

bool Sha1PathAvailable(Sha1Path path) {
    static const bool hasSha = CpuHasShaExtensions();
    return path == Sha1Path::kPortable || hasSha;
}

Sha1Path Sha1BestPath() {
    return Sha1PathAvailable(Sha1Path::kShaExtensions) ? Sha1Path::kShaExtensions
                                                       : Sha1Path::kPortable;
}

Sha1::Sha1(Sha1Path path) : path_(Sha1PathAvailable(path) ? path : Sha1Path::kPortable) {
    Reset();
}

void Sha1::Reset() {
    std::memcpy(state_, kInitial, sizeof state_);
    length_ = 0;
    buffered_ = 0;
}

void Sha1::Blocks(const uint8_t* data, size_t count) {
#if KIV_SHA1_X86
    if (path_ == Sha1Path::kShaExtensions) {
        ShaExtensionBlocks(state_, data, count);
        return;
    }
#endif
    PortableBlocks(state_, data, count);
}

void Sha1::Update(const void* data, size_t size) {
    const uint8_t* in = static_cast<const uint8_t*>(data);
    length_ += size;
    if (buffered_ != 0) {
        const size_t take = size < 64 - buffered_ ? size : 64 - buffered_;
        std::memcpy(buffer_ + buffered_, in, take);
        buffered_ += take;
        in += take;
        size -= take;
        if (buffered_ < 64)
            return;
        Blocks(buffer_, 1);
        buffered_ = 0;
    }
    if (size >= 64) {
        Blocks(in, size / 64);
        in += size - size % 64;
        size %= 64;
    }
    if (size != 0)
        std::memcpy(buffer_, in, size);
    buffered_ = size;
}

Sha1Digest Sha1::Final() {
    const uint64_t bits = length_ * 8;
    uint8_t pad[72] = {0x80};
    const size_t padLength = (buffered_ < 56 ? 56 : 120) - buffered_;
    for (int i = 0; i < 8; ++i)
        pad[padLength + i] = static_cast<uint8_t>(bits >> (56 - 8 * i));
    Update(pad, padLength + 8);
    Sha1Digest digest;
    for (int i = 0; i < 20; ++i)
        digest[i] = static_cast<uint8_t>(state_[i / 4] >> (24 - 8 * (i % 4)));
    Reset();
    return digest;
}

std::string Sha1Hex(const Sha1Digest& digest) {
    static const char kDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(40);
    for (uint8_t byte : digest) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}
