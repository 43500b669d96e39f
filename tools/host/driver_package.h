// What the host reads from the driver package itself: its models and each model's paper.
#pragma once

#include <string>
#include <vector>

struct PackageModel {
    std::wstring model;    // as --model takes it: the GPD's model name without "KIV "
    std::wstring gpdFile;  // full path
    int dpi = 0;           // the GPD's master units
    int widthDots = 0;     // the default paper size's page dimensions
    int lengthDots = 0;
};

// Every model GPD of the package folder, by model name; empty when the folder holds none.
std::vector<PackageModel> ListPackageModels(const std::wstring& packageDir);
