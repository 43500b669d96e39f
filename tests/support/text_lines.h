// Reading text the code under test wrote: its lines, and the value of a "field = value" line.
#pragma once

#include <sstream>
#include <string>
#include <vector>

// The text's lines, without carriage returns.
inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line.substr(0, line.find_last_not_of('\r') + 1));
    return lines;
}

// The value of the first "name = value" line (a decoded record), or "<absent>".
inline std::string Field(const std::string& text, const std::string& name) {
    for (const std::string& line : Lines(text)) {
        if (line.rfind(name + " = ", 0) == 0)
            return line.substr(name.size() + 3);
    }
    return "<absent>";
}
