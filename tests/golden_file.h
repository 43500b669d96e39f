// Comparison of a test's text output with a checked-in file under tests/data.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <optional>
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

// For a golden file that holds its cases: each line that `outcome` answers is followed by
// "  = <answer>"; those lines are the expected part, rewritten like the rest.
inline void ExpectGoldenCases(
    const std::string& fileName,
    const std::function<std::optional<std::string>(const std::string& line)>& outcome) {
    std::ifstream file(std::string(KIV_TEST_DATA_DIR) + "/" + fileName, std::ios::binary);
    std::string all;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("  = "))
            continue;
        all += line + '\n';
        SCOPED_TRACE(line);
        if (const std::optional<std::string> answer = outcome(line))
            all += "  = " + *answer + '\n';
    }
    ASSERT_NE(all.find("\n  = "), std::string::npos) << fileName << " holds no case";
    ExpectGoldenFile(fileName, all);
}
