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

// The schedule word for round t >= 16, kept in a ring of sixteen.
inline uint32_t NextWord(uint32_t w[16], int t) {
    const uint32_t wt = Rotl(w[(t + 13) & 15] ^ w[(t + 8) & 15] ^ w[(t + 2) & 15] ^ w[t & 15], 1);
    w[t & 15] = wt;
    return wt;
}

// Twenty rounds with one round function; the five words rotate through the variables instead of
// being moved, and the loops have fixed bounds so the compiler unrolls them.
template <typename RoundFunction>
inline void Rounds20(uint32_t v[5], uint32_t w[16], int first, uint32_t k, RoundFunction f) {
#pragma GCC unroll 20
    for (int t = first; t < first + 20; ++t) {
        const uint32_t wt = t < 16 ? w[t] : NextWord(w, t);
        const uint32_t temp = Rotl(v[0], 5) + f(v[1], v[2], v[3]) + v[4] + k + wt;
        v[4] = v[3];
        v[3] = v[2];
        v[2] = Rotl(v[1], 30);
        v[1] = v[0];
        v[0] = temp;
    }
}

void PortableBlocks(uint32_t state[5], const uint8_t* data, size_t count) {
    const auto choose = [](uint32_t b, uint32_t c, uint32_t d) { return ((c ^ d) & b) ^ d; };
    const auto parity = [](uint32_t b, uint32_t c, uint32_t d) { return b ^ c ^ d; };
    const auto majority = [](uint32_t b, uint32_t c, uint32_t d) {
        return (b & c) | ((b | c) & d);
    };
    for (; count != 0; --count, data += 64) {
        uint32_t w[16];
        for (int i = 0; i < 16; ++i)
            w[i] = LoadBigEndian(data + 4 * i);
        uint32_t v[5] = {state[0], state[1], state[2], state[3], state[4]};
        Rounds20(v, w, 0, 0x5A827999u, choose);
        Rounds20(v, w, 20, 0x6ED9EBA1u, parity);
        Rounds20(v, w, 40, 0x8F1BBCDCu, majority);
        Rounds20(v, w, 60, 0xCA62C1D6u, parity);
        for (int i = 0; i < 5; ++i)
            state[i] += v[i];
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
