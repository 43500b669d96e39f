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

std::vector<std::string> SplitBar(const std::string& text) {
    std::vector<std::string> pieces;
    size_t start = 0;
    for (;;) {
        const size_t bar = text.find('|', start);
        pieces.push_back(text.substr(start, bar - start));
        if (bar == std::string::npos)
            return pieces;
        start = bar + 1;
    }
}

struct ModelFile {
    const char* model;
    const char* gpd;
};

// The factory's sixteen names and the model it has a class for but never builds.
constexpr ModelFile kModels[] = {
    {"VORTA5X", "KIV_VORTA5X.GPD"},
    {"J7", "KIV_J7.GPD"},
    {"ZLD90VII", "KIV_ZLD90VII.GPD"},
    {"N5", "KIV_N5.GPD"},
    {"TRX415A", "KIV_TRX415A.GPD"},
    {"TRX418A CUT", "KIV_TRX418A_CUT.GPD"},
    {"TRX418A NOCUT", "KIV_TRX418A_NOCUT.GPD"},
    {"HB5840A", "KIV_HB5840A.GPD"},
    {"HB5820A", "KIV_HB5820A.GPD"},
    {"HB5820A-EJ", "KIV_HB5820A-EJ.GPD"},
    {"WR35VII", "KIV_WR35VII.GPD"},
    {"WR55VII", "KIV_WR55VII.GPD"},
    {"TRX430A", "KIV_TRX430A.GPD"},
    {"ZLD40", "KIV_ZLD40.GPD"},
    {"ZLD40PRESENTER", "KIV_ZLD40PRESENTER.GPD"},
    {"TRX430ATF", "KIV_TRX430ATF.GPD"},
    {"WR35VIIEJ", "KIV_WR35VIIEJ.GPD"},
};

TEST(DriverPackage, EveryModelGpdYieldsItsModelText) {
    DriverFolder folder;
    for (const ModelFile& m : kModels) {
        SCOPED_TRACE(m.gpd);
        const GpdReadResult r = ReadGpdOEMCustomData(folder, m.gpd);
        ASSERT_TRUE(r.found);
        EXPECT_EQ(0u, r.unreadFiles) << "an *Include names a file the package lacks";
        EXPECT_EQ(0u, r.badEntries);
        EXPECT_FALSE(r.limitReached);
        const std::vector<std::string> pieces = SplitBar(r.text);
        ASSERT_EQ(4u, pieces.size()) << r.text;
        EXPECT_EQ(m.model, pieces[0]);
        for (size_t i = 1; i < pieces.size(); ++i)
            EXPECT_FALSE(pieces[i].empty()) << i;
    }
}

TEST(DriverPackage, GpdRootEntriesAreWhereUnidrvWantsThem) {
    for (const ModelFile& m : kModels) {
        SCOPED_TRACE(m.gpd);
        std::string text;
        ASSERT_TRUE(ReadWhole(DriverDir() / m.gpd, text));
        const std::vector<std::string> lines = Lines(text);
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ("*GPDSpecVersion: \"1.0\"", lines[0]) << "must come before any comment";
        const std::string modelName = std::string("*ModelName: \"KIV ") + m.model + "\"";
        const std::string fileName = std::string("*GPDFileName: \"") + m.gpd + "\"";
        std::set<std::string> present(lines.begin(), lines.end());
        EXPECT_TRUE(present.count(modelName));
        EXPECT_TRUE(present.count(fileName));
        EXPECT_TRUE(present.count("*Include: \"KIV_COMMON.GPD\""));
        // The standard features Unidrv requires: paper sizes per model, the rest shared.
        std::string common;
        ASSERT_TRUE(ReadWhole(DriverDir() / "KIV_COMMON.GPD", common));
        for (const std::string& line : Lines(common))
            present.insert(line);
        for (const char* feature :
             {"*Feature: PaperSize", "*Feature: Resolution", "*Feature: InputBin"}) {
            EXPECT_TRUE(present.count(feature)) << feature;
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
    EXPECT_TRUE(inf.sharedFiles.count("KIV_COMMON.GPD"));
    EXPECT_TRUE(inf.sharedFiles.count("KivUI.dll"));
    EXPECT_TRUE(inf.sharedFiles.count("KivUI.ini"));
    EXPECT_TRUE(inf.sourceFiles.count("KivUI.dll"));
    EXPECT_TRUE(inf.sourceFiles.count("KivUI.ini"));

    ASSERT_EQ(std::size(kModels), inf.modelLines.size());
    ASSERT_EQ(std::size(kModels), inf.dataFiles.size());
    for (size_t i = 0; i < std::size(kModels); ++i) {
        SCOPED_TRACE(kModels[i].model);
        // The INF's model name is the GPD's *ModelName, which the spooler matches.
        EXPECT_EQ(0u, inf.modelLines[i].find(std::string("\"KIV ") + kModels[i].model + "\" = "))
            << inf.modelLines[i];
        EXPECT_EQ(kModels[i].gpd, inf.dataFiles[i]);
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
