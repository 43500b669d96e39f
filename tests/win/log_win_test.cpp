// Tests of the log on the real Win32 ports: files, folders, mutexes, writers in other processes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <iterator>
#include <string>
#include <vector>

#include "fake_log_ports.h"
#include "infra/log.h"
#include "kivui_dll_win.h"
#include "ports/log_ports_win.h"
#include "ports/platform_win.h"
#include "win/windows_headers_win.h"

namespace {

using Lines = std::vector<std::string>;

const char kChildVariable[] = "KIV_LOG_WIN_CHILD";
// Long lines, so that the writers together pass the size limit twice during the run.
constexpr int kChildLines = 800;
constexpr int kChildren = 4;
constexpr size_t kPayload = 4000;

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
    const std::string payload(kPayload, static_cast<char>('a' + id));
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
    const std::string path = folder.path + "\\LogWin Shared_UI.log";
    uint64_t largest = 0;
    while (WaitForMultipleObjects(kChildren, children.data(), TRUE, 20) == WAIT_TIMEOUT) {
        WIN32_FILE_ATTRIBUTE_DATA data;
        if (GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data))
            largest = std::max(largest, (uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow);
    }
    for (HANDLE child : children) {
        DWORD code = 1;
        GetExitCodeProcess(child, &code);
        EXPECT_EQ(code, 0u);
        CloseHandle(child);
    }
    CloseHandle(start);

    // Each writer checks the size at every 20th of its own lines, so between two checks the
    // file may pass the limit by what all writers write in 20 lines each, never more.
    const Lines lines = ReadLines(path);
    const size_t lineBytes = lines.back().size() + 1;
    const uint64_t bound = kLogSizeLimit + kChildren * kLogSizeCheckEvery * lineBytes;
    EXPECT_LE(largest, bound);
    EXPECT_LE(std::filesystem::file_size(path), bound);

    // The log was begun anew during the run: it opens with one head and holds, for each
    // writer, an unbroken run of its lines up to its last, complete and in its own order.
    size_t head = 0;
    for (; head < lines.size() && lines[head].find("[Writer] child ") == std::string::npos; ++head)
        EXPECT_NE(std::string::npos, lines[head].find("][Log")) << lines[head].substr(0, 80);
    ASSERT_GE(head, 2u);
    ASSERT_LT(lines.size(), head + kChildren * kChildLines);
    std::map<int, int> next;
    int switches = 0, previous = -1;
    for (size_t i = head; i < lines.size(); ++i) {
        int id = -1, number = -1, payloadAt = 0;
        const size_t at = lines[i].find("[Writer] child ");
        ASSERT_NE(std::string::npos, at) << lines[i].substr(0, 80);
        ASSERT_EQ(2, std::sscanf(lines[i].c_str() + at, "[Writer] child %d line %d <%n", &id,
                                 &number, &payloadAt))
            << lines[i].substr(0, 80);
        EXPECT_EQ(lines[i].substr(at + payloadAt),
                  std::string(kPayload, static_cast<char>('a' + id)) + ">");
        switches += previous != -1 && previous != id;
        previous = id;
        if (next.count(id) != 0) {
            EXPECT_EQ(number, next[id]) << lines[i].substr(0, 80);
        }
        next[id] = number + 1;
    }
    // A writer that finished before the last reset has no line left; the others end complete.
    ASSERT_FALSE(next.empty());
    for (const auto& [id, after] : next)
        EXPECT_EQ(after, kChildLines) << "child " << id;
    // The children were released together; if they never alternated the test proved nothing.
    EXPECT_GT(switches, 0);
}

}  // namespace
