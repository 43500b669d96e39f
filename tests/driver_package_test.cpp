// Checks the shipped driver package: every model GPD yields its model text, the INF and the
// plug-in .ini name the files the driver needs.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "entry/common_ui.h"
#include "entry/gpd_reader.h"

namespace {

namespace fs = std::filesystem;

fs::path DriverDir() {
    // The data folder need not exist, so the path is normalised as text, not by the file system.
    return fs::path(KIV_TEST_DATA_DIR "/../../driver").lexically_normal();
}

bool ReadWhole(const fs::path& path, std::string& out) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    std::ostringstream s;
    s << in.rdbuf();
    out = s.str();
    return true;
}

// Serves the package's files by their bare names, as the driver folder does on Windows.
class DriverFolder : public GpdFileSource {
  public:
    Status Read(const std::string& name, size_t maxBytes, std::string& contents) override {
        std::error_code ec;
        const fs::path path = DriverDir() / name;
        const auto size = fs::file_size(path, ec);
        if (ec)
            return Status::kMissing;
        if (size > maxBytes)
            return Status::kTooLarge;
        return ReadWhole(path, contents) ? Status::kOk : Status::kMissing;
    }
};

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

// The factory's sixteen names and the model it has a class for but never builds, in the INF's
// order; each has KIV_<name>.GPD with blanks as underscores.
const char* const kModels[] = {
    "VORTA5X",       "J7",      "ZLD90VII",       "N5",         "TRX415A",   "TRX418A CUT",
    "TRX418A NOCUT", "HB5840A", "HB5820A",        "HB5820A-EJ", "WR35VII",   "WR55VII",
    "TRX430A",       "ZLD40",   "ZLD40PRESENTER", "TRX430ATF",  "WR35VIIEJ",
};

std::string GpdOf(std::string model) {
    std::replace(model.begin(), model.end(), ' ', '_');
    return "KIV_" + model + ".GPD";
}

// Each GPD yields "MODEL|second|third|fourth" through its includes, and carries the root
// entries Unidrv wants: the spec version first (before any comment), its names, the standard
// features (paper sizes per model, the rest from the shared file).
TEST(DriverPackage, EveryModelGpdYieldsItsModelTextAndTheRootEntries) {
    DriverFolder folder;
    std::string common;
    ASSERT_TRUE(ReadWhole(DriverDir() / "KIV_COMMON.GPD", common));
    for (const char* model : kModels) {
        const std::string gpd = GpdOf(model);
        SCOPED_TRACE(gpd);
        const GpdReadResult r = ReadGpdOEMCustomData(folder, gpd);
        ASSERT_TRUE(r.found);
        EXPECT_EQ(0u, r.unreadFiles + r.badEntries)
            << "an *Include the package lacks, or a bad entry";
        EXPECT_FALSE(r.limitReached);
        const std::vector<std::string> pieces = SplitModelText(r.text);
        ASSERT_EQ(4u, pieces.size()) << r.text;
        EXPECT_EQ(model, pieces[0]);
        EXPECT_EQ(0, std::count(pieces.begin(), pieces.end(), "")) << r.text;

        std::string text;
        ASSERT_TRUE(ReadWhole(DriverDir() / gpd, text));
        const std::vector<std::string> lines = Lines(text);
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ("*GPDSpecVersion: \"1.0\"", lines[0]);
        std::set<std::string> present(lines.begin(), lines.end());
        for (const std::string& line : Lines(common))
            present.insert(line);
        for (const std::string& entry :
             {std::string("*ModelName: \"KIV ") + model + "\"", "*GPDFileName: \"" + gpd + "\"",
              std::string("*Include: \"KIV_COMMON.GPD\""), std::string("*Feature: PaperSize"),
              std::string("*Feature: Resolution"), std::string("*Feature: InputBin")}) {
            EXPECT_TRUE(present.count(entry)) << entry;
        }
    }
}

// The INF's model lines, install sections and source file list, parsed loosely.
struct InfView {
    std::set<std::string> sourceFiles;    // [SourceDisksFiles] names
    std::vector<std::string> modelLines;  // lines of [Orvane.NTamd64]
    std::vector<std::string> dataFiles;   // every DataFile=
    std::set<std::string> sharedFiles;    // [KIV_FILES]
};

InfView ParseInf(const std::string& text) {
    InfView v;
    std::string section;
    for (const std::string& line : Lines(text)) {
        if (line.empty() || line[0] == ';')
            continue;
        if (line[0] == '[') {
            section = line.substr(1, line.find(']') - 1);
            continue;
        }
        if (section == "SourceDisksFiles")
            v.sourceFiles.insert(line.substr(0, line.find('=')));
        if (section == "Orvane.NTamd64")
            v.modelLines.push_back(line);
        if (section == "KIV_FILES")
            v.sharedFiles.insert(line);
        if (line.rfind("DataFile=", 0) == 0)
            v.dataFiles.push_back(line.substr(9));
    }
    return v;
}

TEST(DriverPackage, InfNamesEveryGpdAndThePlugin) {
    std::string text;
    ASSERT_TRUE(ReadWhole(DriverDir() / "KivUI.inf", text));
    const InfView inf = ParseInf(text);

    std::set<std::string> gpds;
    for (const auto& entry : fs::directory_iterator(DriverDir())) {
        if (entry.path().extension() == ".GPD")
            gpds.insert(entry.path().filename().string());
    }
    EXPECT_EQ(std::size(kModels) + 1, gpds.size()) << "one GPD per model plus the shared one";
    for (const std::string& gpd : gpds) {
        SCOPED_TRACE(gpd);
        EXPECT_TRUE(inf.sourceFiles.count(gpd));
    }
    for (const char* file : {"KIV_COMMON.GPD", "KivUI.dll", "KivUI.ini"}) {
        EXPECT_TRUE(inf.sharedFiles.count(file) && inf.sourceFiles.count(file)) << file;
    }

    ASSERT_EQ(std::size(kModels), inf.modelLines.size());
    ASSERT_EQ(std::size(kModels), inf.dataFiles.size());
    for (size_t i = 0; i < std::size(kModels); ++i) {
        SCOPED_TRACE(kModels[i]);
        // The INF's model name is the GPD's *ModelName, which the spooler matches.
        EXPECT_EQ(0u, inf.modelLines[i].find(std::string("\"KIV ") + kModels[i] + "\" = "))
            << inf.modelLines[i];
        EXPECT_EQ(GpdOf(kModels[i]), inf.dataFiles[i]);
        EXPECT_TRUE(gpds.count(inf.dataFiles[i]));
    }
    EXPECT_NE(std::string::npos, text.find("\r\nDriverVer=")) << "the version report reads it";
}

TEST(DriverPackage, PluginIniListsTheUiPlugin) {
    std::string text;
    ASSERT_TRUE(ReadWhole(DriverDir() / "KivUI.ini", text));
    const std::vector<std::string> lines = Lines(text);
    const auto section = std::find(lines.begin(), lines.end(), "[OEMFiles]");
    ASSERT_NE(lines.end(), section);
    ASSERT_NE(lines.end(), section + 1);
    EXPECT_EQ("OEMConfigFile1=KivUI.dll", *(section + 1)) << "no blanks around '=' allowed";
}

}  // namespace
