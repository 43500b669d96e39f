// What the driver reads from the model's GPD for itself: its name, resolution, paper sizes and
// paper sources.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct GpdOption {
    std::wstring name;  // the option's *Name, decoded
    int widthDots = 0;  // paper sizes: *PageDimensions
    int lengthDots = 0;
};

struct GpdModel {
    std::wstring modelName;  // *ModelName
    int dpi = 0;             // *MasterUnits
    std::vector<GpdOption> papers;
    size_t defaultPaper = 0;  // index into papers
    std::vector<GpdOption> bins;
};

// At most this many options per feature are kept; a GPD that has more is cut there.
inline constexpr size_t kMaxGpdOptions = 64;

// Reads the GPD file at `path` (bounded); false when it cannot be read or names no paper size.
bool ReadGpdModel(const std::wstring& path, GpdModel& model);
// The same from the text of a GPD.
bool ParseGpdModel(const std::string& text, GpdModel& model);

// Tenths of a millimetre for a length in dots at `dpi`, rounded.
int DotsToTenthsOfMm(int dots, int dpi);
