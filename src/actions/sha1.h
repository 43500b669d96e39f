// Sha1: the SHA-1 digest (FIPS 180-4), fed in pieces, for the version report's file digests.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

using Sha1Digest = std::array<uint8_t, 20>;

// The block function: the portable one runs everywhere, the other needs the processor's SHA
// extensions (with SSSE3 and SSE4.1).
enum class Sha1Path { kPortable, kShaExtensions };

// True when this processor can run `path`.
bool Sha1PathAvailable(Sha1Path path);
// The fastest path this processor can run, found once.
Sha1Path Sha1BestPath();

class Sha1 {
  public:
    explicit Sha1(Sha1Path path = Sha1BestPath());
    void Update(const void* data, size_t size);
    // The digest of everything fed so far; the object starts afresh afterwards.
    Sha1Digest Final();

  private:
    void Reset();
    void Blocks(const uint8_t* data, size_t count);

    Sha1Path path_;
    uint32_t state_[5];
    uint64_t length_ = 0;  // bytes fed
    uint8_t buffer_[64];
    size_t buffered_ = 0;
};

// Lower-case hexadecimal, 40 characters.
std::string Sha1Hex(const Sha1Digest& digest);
