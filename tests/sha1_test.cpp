// Tests of Sha1 on every path this processor runs: streaming in pieces, agreement with OpenSSL
// (the published "abc" digest is pinned by the version report's test).
#include <gtest/gtest.h>
#include <openssl/sha.h>

#include <random>
#include <vector>

#include "actions/sha1.h"

namespace {

std::vector<Sha1Path> PathsHere() {
    std::vector<Sha1Path> paths{Sha1Path::kPortable};
    if (Sha1PathAvailable(Sha1Path::kShaExtensions))
        paths.push_back(Sha1Path::kShaExtensions);
    return paths;
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
