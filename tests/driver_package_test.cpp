// Checks the shipped GPDs against the code that reads them: the generator's own check compares
// the package with its model table, but only this test reads it as the plug-in does.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "entry/common_ui.h"
#include "entry/gpd_reader.h"
#include "support/memory_files.h"
#include "support/package_models.h"
#include "support/text_lines.h"

namespace {

// Each model's KIV_<name>.GPD (blanks as underscores) yields "MODEL|second|third|fourth" through
// its includes, and its input bins are the model's feeder values: the universal driver keeps a
// device mode's paper source only when the GPD offers that id.
TEST(DriverPackage, EveryModelGpdYieldsItsModelTextAndItsFeederIds) {
    MemoryFiles package;  // the files by their bare names, as the driver folder serves them
    const std::filesystem::path folder = KIV_TEST_DATA_DIR "/../../driver";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream in(entry.path(), std::ios::binary);
        package.files[entry.path().filename().string()].assign(std::istreambuf_iterator<char>(in),
                                                               {});
    }
    for (const char* model : kPackageModels) {
        std::string gpd = "KIV_" + std::string(model) + ".GPD";
        std::replace(gpd.begin(), gpd.end(), ' ', '_');
        SCOPED_TRACE(gpd);
        const GpdReadResult r = ReadGpdOEMCustomData(package, gpd);
        EXPECT_EQ(0u, r.unreadFiles + r.badEntries) << "an *Include the package lacks";
        const std::vector<std::string> pieces = SplitModelText(r.text);
        ASSERT_EQ(4u, pieces.size()) << r.text;
        EXPECT_EQ(model, pieces[0]);
        EXPECT_EQ(0, std::count(pieces.begin(), pieces.end(), "")) << r.text;
        std::vector<uint16_t> binIds;
        for (const std::string& line : Lines(package.files[gpd]))
            if (line.starts_with("        *OptionID: "))
                binIds.push_back(std::stoi(line.substr(19)));
        EXPECT_EQ(MakePackageModel(model)->GetFeederList(), binIds);
    }
}

}  // namespace
