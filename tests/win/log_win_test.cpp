// Tests of the log on the real Win32 ports: files, folders, mutexes, writers in other processes.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <iterator>
#include <string>
#include <vector>

#include "fake_log_ports.h"
#include "infra/log.h"
#include "ports/log_ports_win.h"
#include "ports/platform_win.h"
#include "ports/version_query_win.h"
#include "win/windows_headers_win.h"

namespace {

using Lines = std::vector<std::string>;

const char kChildVariable[] = "KIV_LOG_WIN_CHILD";
constexpr int kChildLines = 300;
constexpr int kChildren = 3;
const std::string kStamp =
    R"(\[P[0-9A-F]{4,}/T[0-9A-F]{4,}\]\[\d{4}/\d{2}/\d{2} \d{2}:\d{2}:\d{2}:\d{3}\])";

// A fresh folder under the temporary folder, removed with everything in it at the end.
struct TempFolder {
    inline static int serial = 0;
    const std::string path =
        (std::filesystem::temp_directory_path() /
         ("kivlog_" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(++serial)))
            .string();
    TempFolder() { std::filesystem::create_directories(path); }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

Lines ReadLines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return SplitLines(std::string(std::istreambuf_iterator<char>(in), {}));
}

// The event that releases the writers, named after their folder.
std::string StartEvent(const std::string& folder) {
    return "KivLogWinStart" + std::filesystem::path(folder).filename().string();
}

// A CLog on the real log ports of this program.
struct WinLog {
    LogPortsWin real;
    LogPorts ports = real.Ports();
    CLog log;
    WinLog() { log.SetPorts(&ports); }
};

TEST(LogWinFile, NewFileHeadLayoutAndModuleVersion) {
    TempFolder folder;
    WinLog w;
    w.log.Open(u"LogWin Printer", folder.path, kLogToFile, 6, 0);
    w.log.Write(kLogInfo, "IOemUI::CommonUIProp", "OEMCustomData <%s>", "TRX418A");
    w.log.Close();
    w.log.Open(u"LogWin Printer", folder.path, kLogToFile, 6, 0);
    w.log.Write(kLogDetail, "hrOEMDevMode", "Size <%u>", 3329u);
    w.log.Close();

    const Lines lines = ReadLines(folder.path + "\\LogWin Printer_UI.log");
    ASSERT_EQ(lines.size(), 4u);  // one head only, no carriage returns
    EXPECT_TRUE(
        std::regex_match(lines[0], std::regex(kStamp + R"(\[LogFileInfo\] .*Path: .*\.exe)")))
        << lines[0];
    EXPECT_TRUE(std::regex_match(lines[2], std::regex(kStamp + R"(\[CommonUIProp\] .*<TRX418A>)")));
    EXPECT_TRUE(std::regex_match(lines[3], std::regex(kStamp + R"(\[rOEMDevMode\] Size <3329>)")));

    // The module's own resource, read without the version library, agrees with the library.
    HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    FileVersion version;
    ASSERT_TRUE(VersionQueryWin().FixedVersion(ModuleIdentityWin(kernel).Path(), &version));
    EXPECT_EQ(ModuleIdentityWin(kernel).Version(), FileVersionText(version));
    EXPECT_EQ(ModuleIdentityWin(nullptr).Version(), "");  // the test program has no resource
}

TEST(LogWinFile, FilePastFiveMiBIsBegunAnewAtTheTwentiethLine) {
    TempFolder folder;
    const std::string path = folder.path + "\\Big_UI.log";
    std::ofstream(path, std::ios::binary) << std::string(kLogSizeLimit + 1, 'x');
    WinLog w;
    w.log.Open(u"Big", folder.path, kLogToFile, 6, 0);
    for (int i = 1; i <= 19; ++i)
        w.log.Write(kLogError, "C::F", "line %d", i);
    // Readers may look while the log is open: the old block, the first line behind it, 18 more.
    EXPECT_EQ(ReadLines(path).size(), 19u);
    w.log.Write(kLogError, "C::F", "line %d", 20);
    w.log.Close();
    const Lines lines = ReadLines(path);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_NE(lines[2].find("[F] line 20"), std::string::npos);
}

TEST(LogWinFolder, ExpandedAndMadeOrElseLoggingIsOff) {
    TempFolder folder;
    ASSERT_TRUE(SetEnvironmentVariableA("KIV_LOG_WIN_ROOT", folder.path.c_str()));
    std::ofstream(folder.path + "\\blocker") << "a file where a folder would be";
    struct Case {
        std::string folder;
        bool on;
    };
    const Case cases[] = {
        {"%KIV_LOG_WIN_ROOT%\\one\\two/three", true},
        {"%KIV_LOG_WIN_ROOT%\\blocker\\sub", false},
        {folder.path + "\\" + std::string(300, 'd'), false},
        {"", false},
        {"kivlog_relative", false},  // would land in the working folder
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.folder);
        WinLog w;
        w.log.Open(u"Env", c.folder, kLogToFile, 6, 1);
        w.log.Write(kLogError, "C::F", "here");
        w.log.Close();
        EXPECT_EQ(w.log.OutputMode(), c.on ? kLogToFile : kLogOff);
    }
    EXPECT_EQ(ReadLines(folder.path + "\\one\\two\\three\\Env_UI.log").size(), 3u);
    EXPECT_EQ(GetFileAttributesA("kivlog_relative"), INVALID_FILE_ATTRIBUTES);
    SetEnvironmentVariableA("KIV_LOG_WIN_ROOT", nullptr);
}

// Run only as a child of LogWinProcesses: writes numbered lines to the printer's log.
TEST(LogWinChild, WriteLines) {
    char value[1024];
    const DWORD length = GetEnvironmentVariableA(kChildVariable, value, sizeof value);
    if (length == 0 || length >= sizeof value)
        GTEST_SKIP() << "started by LogWinProcesses only";
    const int id = value[0] - '0';  // "<id><folder>"
    const std::string folder(value + 1);
    HANDLE start = OpenEventA(SYNCHRONIZE, FALSE, StartEvent(folder).c_str());
    ASSERT_NE(start, nullptr);

    InstallWinPlatform(nullptr);
    TheLog().Open(u"LogWin Shared", folder, kLogToFile, 6, 0);
    ASSERT_EQ(TheLog().OutputMode(), kLogToFile);
    EXPECT_EQ(WaitForSingleObject(start, 60000), WAIT_OBJECT_0);
    CloseHandle(start);
    const std::string payload(120, static_cast<char>('a' + id));
    for (int i = 0; i < kChildLines; ++i)
        TheLog().Write(kLogError, "Child::Writer", "child %d line %d <%s>", id, i, payload.c_str());
    TheLog().Disable();
}

TEST(LogWinProcesses, WritersInSeveralProcessesNeitherTearNorLoseLines) {
    TempFolder folder;
    HANDLE start = CreateEventA(nullptr, TRUE, FALSE, StartEvent(folder.path).c_str());
    ASSERT_NE(start, nullptr);
    wchar_t self[MAX_PATH];
    ASSERT_NE(GetModuleFileNameW(nullptr, self, MAX_PATH), 0u);
    std::vector<HANDLE> children;
    for (int id = 0; id < kChildren; ++id) {
        SetEnvironmentVariableA(kChildVariable, (std::to_string(id) + folder.path).c_str());
        std::wstring command =
            L"\"" + std::wstring(self) + L"\" --gtest_filter=LogWinChild.* --gtest_brief=1";
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;  // null handles: the children print nothing
        PROCESS_INFORMATION process{};
        ASSERT_TRUE(CreateProcessW(self, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                   nullptr, &startup, &process));
        CloseHandle(process.hThread);
        children.push_back(process.hProcess);
    }
    SetEnvironmentVariableA(kChildVariable, nullptr);
    // Let every child reach its loop before any begins, so the writers really overlap.
    Sleep(1500);
    SetEvent(start);
    for (HANDLE child : children) {
        EXPECT_EQ(WaitForSingleObject(child, 120000), WAIT_OBJECT_0);
        DWORD code = 1;
        GetExitCodeProcess(child, &code);
        EXPECT_EQ(code, 0u);
        CloseHandle(child);
    }
    CloseHandle(start);

    const Lines lines = ReadLines(folder.path + "\\LogWin Shared_UI.log");
    const std::regex written(kStamp + R"(\[Writer\] child (\d) line (\d+) <(.*)>)");
    ASSERT_EQ(lines.size(), 2u + kChildren * kChildLines);  // one head, by whichever came first
    std::map<int, int> next;
    int switches = 0;
    for (size_t i = 2; i < lines.size(); ++i) {
        std::smatch match;
        ASSERT_TRUE(std::regex_match(lines[i], match, written)) << lines[i];
        const int id = std::stoi(match[1].str());
        switches += i > 2 && lines[i - 1].find("child " + match[1].str()) == std::string::npos;
        EXPECT_EQ(match[3].str(), std::string(120, static_cast<char>('a' + id)));
        // Each child's lines arrive complete and in its own order.
        EXPECT_EQ(std::stoi(match[2].str()), next[id]++) << lines[i];
    }
    for (int id = 0; id < kChildren; ++id)
        EXPECT_EQ(next[id], kChildLines) << "child " << id;
    // The children were released together; if they never alternated the test proved nothing.
    EXPECT_GT(switches, 0);
}

}  // namespace
