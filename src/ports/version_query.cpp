// The printed form of a file version.
#include "ports/version_query.h"

std::string FileVersionText(const FileVersion& version) {
    return std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
           std::to_string(version.build) + "." + std::to_string(version.revision);
}
