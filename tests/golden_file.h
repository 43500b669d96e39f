// Comparison of a test's text output with a checked-in file under tests/data.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

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

// A "|"-separated field of a case line; one that starts with '=' is built from "+"-joined
// parts, each "text*count" repeated, with "\\0" for a NUL.
inline std::string CaseField(const std::string& field) {
    if (!field.starts_with("="))
        return field;
    std::string out, part;
    for (std::istringstream parts(field.substr(1)); std::getline(parts, part, '+');) {
        const size_t star = part.rfind('*');
        const size_t count = star == std::string::npos ? 1 : std::stoul(part.substr(star + 1));
        // The NULs are put in after the count is cut off, so "\\0*3" is three NULs.
        std::string text;
        for (const char* c = part.c_str(); c < part.c_str() + std::min(star, part.size()); ++c) {
            const bool nul = c[0] == '\\' && c[1] == '0';
            text += nul ? '\0' : *c;
            c += nul;
        }
        for (size_t i = 0; i < count; ++i)
            out += text;
    }
    return out;
}

// The fields of a case line after its "<kind>: ".
inline std::vector<std::string> CaseFields(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream in(line.substr(line.find(": ") + 2) + '|');
    for (std::string field; std::getline(in, field, '|');)
        fields.push_back(CaseField(field));
    return fields;
}
