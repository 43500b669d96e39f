// Tests of Sha1: published vectors on every path this processor runs, streaming, OpenSSL agreement.
#include <gtest/gtest.h>
#include <openssl/sha.h>

#include <random>
#include <string>
#include <vector>

#include "actions/sha1.h"

namespace {

std::vector<Sha1Path> PathsHere() {
    std::vector<Sha1Path> paths{Sha1Path::kPortable};
    if (Sha1PathAvailable(Sha1Path::kShaExtensions))
        paths.push_back(Sha1Path::kShaExtensions);
    return paths;
}

std::string HexOf(Sha1Path path, const std::string& text, size_t repeat = 1) {
    Sha1 sha(path);
    for (size_t i = 0; i < repeat; ++i)
        sha.Update(text.data(), text.size());
    return Sha1Hex(sha.Final());
}

TEST(Sha1, PublishedVectorsOnEveryPath) {
    struct Case {
        std::string text;
        size_t repeat;
        const char* hex;
    };
    const Case cases[] = {
        {"", 1, "da39a3ee5e6b4b0d3255bfef95601890afd80709"},
        {"abc", 1, "a9993e364706816aba3e25717850c26c9cd0d89d"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", 1,
         "84983e441c3bd26ebaae4aa1f95129e5e54670f1"},
        {"a", 1000000, "34aa973cd4c4daa4f61eeb2bdbad27316534016f"},
    };
    for (Sha1Path path : PathsHere()) {
        for (const Case& c : cases) {
            SCOPED_TRACE(testing::Message() << "path " << static_cast<int>(path) << ", "
                                            << c.text.substr(0, 8) << " x" << c.repeat);
            EXPECT_EQ(HexOf(path, c.text, c.repeat), c.hex);
        }
    }
}

// Random lengths around the block and padding edges, fed in random pieces, against libcrypto;
// the object is reused after Final, so each case also checks that Final starts afresh.
TEST(Sha1, PiecesAgreeWithOpenSslOnRandomLengths) {
    std::mt19937 random(12);
    for (Sha1Path path : PathsHere()) {
        Sha1 sha(path);
        for (int round = 0; round < 300; ++round) {
            const size_t size = round < 140 ? static_cast<size_t>(round) : random() % 5000;
            std::vector<uint8_t> data(size);
            for (uint8_t& byte : data)
                byte = static_cast<uint8_t>(random());
            Sha1Digest expected;
            SHA1(data.data(), data.size(), expected.data());
            SCOPED_TRACE(testing::Message()
                         << "path " << static_cast<int>(path) << ", size " << size);
            for (size_t at = 0; at < size;) {
                const size_t piece = std::min<size_t>(size - at, random() % 150);
                sha.Update(data.data() + at, piece);
                at += piece;
            }
            EXPECT_EQ(sha.Final(), expected);
        }
    }
}

}  // namespace
