// Checks the shipped driver package: every model GPD yields its model text, the INF and the
// plug-in .ini name the files the driver needs.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "entry/common_ui.h"
#include "entry/gpd_reader.h"
#include "settings/device_factory.h"
#include "support/memory_files.h"
#include "support/package_models.h"
#include "support/text_lines.h"

namespace {

namespace fs = std::filesystem;

// The package's files by their bare names, as the driver folder serves them on Windows.
MemoryFiles PackageFiles() {
    MemoryFiles package;
    // The data folder need not exist, so the path is normalised as text, not by the file system.
    const fs::path folder = fs::path(KIV_TEST_DATA_DIR "/../../driver").lexically_normal();
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::ifstream in(entry.path(), std::ios::binary);
        package.files[entry.path().filename().string()].assign(std::istreambuf_iterator<char>(in),
                                                               {});
    }
    return package;
}

// Each model has KIV_<name>.GPD with blanks as underscores.
std::string GpdOf(std::string model) {
    std::replace(model.begin(), model.end(), ' ', '_');
    return "KIV_" + model + ".GPD";
}

// Each GPD yields "MODEL|second|third|fourth" through its includes, and carries the root
// entries Unidrv wants: *GPDSpecVersion first (before any comment), its names, the standard
// features (paper sizes per model, the rest from the shared file).
TEST(DriverPackage, EveryModelGpdYieldsItsModelTextAndTheRootEntries) {
    MemoryFiles package = PackageFiles();
    const std::vector<std::string> common = Lines(package.files["KIV_COMMON.GPD"]);
    for (const char* model : kPackageModels) {
        const std::string gpd = GpdOf(model);
        SCOPED_TRACE(gpd);
        const GpdReadResult r = ReadGpdOEMCustomData(package, gpd);
        ASSERT_TRUE(r.found);
        EXPECT_EQ(0u, r.unreadFiles + r.badEntries)
            << "an *Include the package lacks, or a bad entry";
        EXPECT_FALSE(r.limitReached);
        const std::vector<std::string> pieces = SplitModelText(r.text);
        ASSERT_EQ(4u, pieces.size()) << r.text;
        EXPECT_EQ(model, pieces[0]);
        EXPECT_EQ(0, std::count(pieces.begin(), pieces.end(), "")) << r.text;

        const std::vector<std::string> lines = Lines(package.files[gpd]);
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ("*GPDSpecVersion: \"1.0\"", lines[0]);
        std::set<std::string> present(lines.begin(), lines.end());
        present.insert(common.begin(), common.end());
        for (const std::string& entry :
             {std::string("*ModelName: \"KIV ") + model + "\"", "*GPDFileName: \"" + gpd + "\"",
              std::string("*Include: \"KIV_COMMON.GPD\""), std::string("*Feature: PaperSize"),
              std::string("*Feature: Resolution"), std::string("*Feature: InputBin")}) {
            EXPECT_TRUE(present.count(entry)) << entry;
        }
        std::vector<uint16_t> binIds;  // what a device mode's paper source can hold
        for (const std::string& line : lines)
            if (line.starts_with("        *OptionID: "))
                binIds.push_back(std::stoi(line.substr(19)));
        EXPECT_EQ(CreateUiDevice(model, "", "", "")->GetFeederList(), binIds);
    }
}

// The INF's lines by section, parsed loosely.
std::map<std::string, std::vector<std::string>> InfSections(const std::string& text) {
    std::map<std::string, std::vector<std::string>> sections;
    std::string section;
    for (const std::string& line : Lines(text)) {
        if (!line.empty() && line[0] == '[')
            section = line.substr(1, line.find(']') - 1);
        else if (!line.empty() && line[0] != ';')
            sections[section].push_back(line);
    }
    return sections;
}

TEST(DriverPackage, InfAndPluginIniNameEveryGpdAndThePlugin) {
    MemoryFiles package = PackageFiles();
    const std::string& text = package.files["KivUI.inf"];
    auto sections = InfSections(text);
    std::set<std::string> sourceFiles, gpds;
    for (const std::string& line : sections["SourceDisksFiles"])
        sourceFiles.insert(line.substr(0, line.find('=')));
    std::vector<std::string> dataFiles;
    for (const auto& [name, lines] : sections) {
        for (const std::string& line : lines) {
            if (line.rfind("DataFile=", 0) == 0)
                dataFiles.push_back(line.substr(9));
        }
    }
    for (const auto& [name, contents] : package.files) {
        if (fs::path(name).extension() == ".GPD")
            gpds.insert(name);
    }
    EXPECT_EQ(std::size(kPackageModels) + 1, gpds.size())
        << "one GPD per model plus the shared one";
    for (const std::string& gpd : gpds)
        EXPECT_TRUE(sourceFiles.count(gpd)) << gpd;
    const std::vector<std::string>& shared = sections["KIV_FILES"];
    for (const char* file : {"KIV_COMMON.GPD", "KivUI.dll", "KivUI.ini", "kivsettings.exe"}) {
        EXPECT_TRUE(std::count(shared.begin(), shared.end(), file) && sourceFiles.count(file))
            << file;
    }

    const std::vector<std::string>& models = sections["Orvane.NTamd64"];
    ASSERT_EQ(std::size(kPackageModels), models.size());
    std::sort(dataFiles.begin(), dataFiles.end());
    for (size_t i = 0; i < std::size(kPackageModels); ++i) {
        SCOPED_TRACE(kPackageModels[i]);
        // The INF's model name is the GPD's *ModelName, which the spooler matches.
        EXPECT_EQ(0u, models[i].find(std::string("\"KIV ") + kPackageModels[i] + "\" = "))
            << models[i];
        EXPECT_TRUE(
            std::binary_search(dataFiles.begin(), dataFiles.end(), GpdOf(kPackageModels[i])));
    }
    EXPECT_EQ(std::size(kPackageModels), dataFiles.size());
    EXPECT_NE(std::string::npos, text.find("\r\nDriverVer=")) << "the version report reads it";

    const std::vector<std::string> ini = Lines(package.files["KivUI.ini"]);
    const auto section = std::find(ini.begin(), ini.end(), "[OEMFiles]");
    ASSERT_NE(ini.end(), section);
    ASSERT_NE(ini.end(), section + 1);
    EXPECT_EQ("OEMConfigFile1=KivUI.dll", *(section + 1)) << "no blanks around '=' allowed";
}

}  // namespace
