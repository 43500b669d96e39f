// Fuzzes the "*OEMCustomData:" reader with arbitrary GPD text spread over included files.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "../tests/support/memory_files.h"
#include "entry/gpd_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    // Cut at every "\n@@\n" into files 0.gpd, 1.gpd, ... that may include one another.
    MemoryFiles source;
    size_t start = 0;
    for (int index = 0; start <= input.size() && index < 16; ++index) {
        size_t end = input.find("\n@@\n", start);
        if (end == std::string::npos)
            end = input.size();
        source.files[std::to_string(index) + ".gpd"] = input.substr(start, end - start);
        start = end + 4;
    }

    GpdReadLimits limits;
    limits.maxValueBytes = 64;
    limits.maxTotalBytes = 64 * 1024;
    const GpdReadResult result = ReadGpdOEMCustomData(source, "0.gpd", limits);
    if (result.text.size() > limits.maxValueBytes)
        std::abort();
    if (result.text.find('\0') != std::string::npos)
        std::abort();
    if (!result.found && !result.text.empty())
        std::abort();

    std::string decoded;
    if (DecodeGpdStringValue(input, 256, decoded) &&
        (decoded.size() > 256 || decoded.find('\0') != std::string::npos)) {
        std::abort();
    }
    return 0;
}
