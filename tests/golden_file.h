// Comparison of a test's text output with a checked-in file under tests/data.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

// Set KIV_WRITE_EXPECTED_LOGS=1 to rewrite the file from `actual` after a deliberate change
// (the transfer logs use the same switch); the diff of tests/data is then the review.
inline void ExpectGoldenFile(const std::string& fileName, const std::string& actual) {
    const std::string path = std::string(KIV_TEST_DATA_DIR) + "/" + fileName;
    if (std::getenv("KIV_WRITE_EXPECTED_LOGS") != nullptr) {
        std::ofstream(path, std::ios::binary) << actual;
    }
    std::ifstream file(path, std::ios::binary);
    ASSERT_TRUE(file.good()) << path << " is missing";
    std::stringstream expected;
    expected << file.rdbuf();
    std::istringstream a(actual), e(expected.str());
    std::string aLine, eLine;
    for (int line = 1;; ++line) {
        const bool aMore = static_cast<bool>(std::getline(a, aLine));
        const bool eMore = static_cast<bool>(std::getline(e, eLine));
        if (!aMore && !eMore) {
            return;
        }
        ASSERT_EQ(aMore ? aLine : "<end>", eMore ? eLine : "<end>") << fileName << ":" << line;
    }
}
