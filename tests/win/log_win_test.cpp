// Tests of the log on real Win32 files, folders and mutexes, including writers in other processes.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "infra/log.h"
#include "infra/log_platform_win.h"
#include "win/windows_headers_win.h"

namespace {

using Lines = std::vector<std::string>;

const char kChildVariable[] = "KIV_LOG_WIN_CHILD";
constexpr int kChildLines = 300;
constexpr int kChildren = 3;

// A fresh folder under the temporary folder, removed with everything in it at the end.
class TempFolder {
  public:
    TempFolder() {
        char base[MAX_PATH];
        GetTempPathA(MAX_PATH, base);
        static int serial = 0;
        char name[64];
        snprintf(name, sizeof name, "kivlog_%lu_%lu_%d", GetCurrentProcessId(), GetTickCount(),
                 ++serial);
        path_ = std::string(base) + name;
        CreateDirectoryA(path_.c_str(), nullptr);
    }
    ~TempFolder() { RemoveTree(path_); }
    const std::string& Path() const { return path_; }

    static void RemoveTree(const std::string& folder) {
        WIN32_FIND_DATAA found;
        HANDLE search = FindFirstFileA((folder + "\\*").c_str(), &found);
        if (search != INVALID_HANDLE_VALUE) {
            do {
                const std::string name = found.cFileName;
                if (name == "." || name == "..") {
                    continue;
                }
                const std::string full = folder + "\\" + name;
                if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                    RemoveTree(full);
                } else {
                    DeleteFileA(full.c_str());
                }
            } while (FindNextFileA(search, &found));
            FindClose(search);
        }
        RemoveDirectoryA(folder.c_str());
    }

  private:
    std::string path_;
};

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

Lines SplitLines(const std::string& text) {
    Lines lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            end = text.size();
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string Hex4(uint32_t value) {
    char text[16];
    snprintf(text, sizeof text, "%04X", static_cast<unsigned>(value));
    return text;
}

std::string OwnModulePath() {
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    char narrow[MAX_PATH * 2];
    const int size = WideCharToMultiByte(CP_ACP, 0, path, static_cast<int>(length), narrow,
                                         sizeof narrow, nullptr, nullptr);
    return std::string(narrow, size > 0 ? static_cast<size_t>(size) : 0);
}

bool FolderExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// The time stamp and the rest of the head, with the ids of this process and thread.
std::string HeadPattern(uint32_t pid, uint32_t tid) {
    return "\\[P" + Hex4(pid) + "/T" + Hex4(tid) +
           "\\]\\[\\d{4}/\\d{2}/\\d{2} \\d{2}:\\d{2}:\\d{2}:\\d{3}\\]";
}

TEST(LogWinFile, NewFileHasHeadThenLinesInTheLayout) {
    TempFolder folder;
    WinLogPlatform platform(nullptr);
    CLog log;
    log.SetPlatform(&platform);
    log.Open(u"LogWin Printer", folder.Path(), kLogToFile, 6, 0);
    log.Write(kLogInfo, "IOemUI::CommonUIProp", "OEMCustomData <%s>", "TRX418A");
    log.Write(kLogDetail, "hrOEMDevMode", "Size <%u>", 3329u);
    log.Close();

    const std::string path = folder.Path() + "\\LogWin Printer_UI.log";
    EXPECT_EQ(log.FilePath(), path);
    const std::string text = ReadFile(path);
    EXPECT_EQ(text.find('\r'), std::string::npos);
    const Lines lines = SplitLines(text);
    ASSERT_EQ(lines.size(), 4u) << text;
    const std::string head = HeadPattern(GetCurrentProcessId(), GetCurrentThreadId());
    const std::string escapedPath =
        std::regex_replace(OwnModulePath(), std::regex(R"([\\.()])"), R"(\$&)");
    EXPECT_TRUE(std::regex_match(
        lines[0],
        std::regex(head + R"(\[LogFileInfo\] LogFileInfo\(\.\.\): Dll File Path: )" + escapedPath)))
        << lines[0];
    // The test program carries no version resource.
    EXPECT_TRUE(std::regex_match(
        lines[1], std::regex(head + R"(\[LogFileInfo\] LogFileInfo\(\.\.\): Dll File Version: )")))
        << lines[1];
    EXPECT_TRUE(std::regex_match(lines[2],
                                 std::regex(head + R"(\[CommonUIProp\] OEMCustomData <TRX418A>)")))
        << lines[2];
    EXPECT_TRUE(std::regex_match(lines[3], std::regex(head + R"(\[rOEMDevMode\] Size <3329>)")))
        << lines[3];

    // Reopened, the file exists already: lines are appended without a second head.
    log.Open(u"LogWin Printer", folder.Path(), kLogToFile, 6, 0);
    log.Write(kLogError, "C::F", "again");
    log.Close();
    const Lines after = SplitLines(ReadFile(path));
    ASSERT_EQ(after.size(), 5u);
    EXPECT_TRUE(std::regex_match(after[4], std::regex(head + R"(\[F\] again)")));
}

TEST(LogWinFile, ModuleVersionComesFromTheVersionResource) {
    HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    ASSERT_NE(kernel, nullptr);
    wchar_t path[MAX_PATH];
    ASSERT_NE(GetModuleFileNameW(kernel, path, MAX_PATH), 0u);
    // The same number read the documented way, through the version library.
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path, &ignored);
    ASSERT_GT(size, 0u);
    std::vector<uint8_t> block(size);
    ASSERT_TRUE(GetFileVersionInfoW(path, 0, size, block.data()));
    VS_FIXEDFILEINFO* info = nullptr;
    UINT infoSize = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&info), &infoSize));
    char expected[64];
    snprintf(expected, sizeof expected, "%u.%u.%u.%u", HIWORD(info->dwFileVersionMS),
             LOWORD(info->dwFileVersionMS), HIWORD(info->dwFileVersionLS),
             LOWORD(info->dwFileVersionLS));

    WinLogPlatform platform(kernel);
    EXPECT_EQ(platform.ModuleVersion(), expected);
    WinLogPlatform own(nullptr);
    EXPECT_EQ(own.ModuleVersion(), "");
}

TEST(LogWinFile, FilePastFiveMiBIsBegunAnewAtTheTwentiethLine) {
    TempFolder folder;
    const std::string path = folder.Path() + "\\Big_UI.log";
    {
        HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        const std::string block(kLogSizeLimit + 1, 'x');
        DWORD written = 0;
        EXPECT_TRUE(
            WriteFile(file, block.data(), static_cast<DWORD>(block.size()), &written, nullptr));
        CloseHandle(file);
        ASSERT_EQ(written, kLogSizeLimit + 1);
    }
    WinLogPlatform platform(nullptr);
    CLog log;
    log.SetPlatform(&platform);
    log.Open(u"Big", folder.Path(), kLogToFile, 6, 0);
    for (int i = 1; i <= 19; ++i) {
        log.Write(kLogError, "C::F", "line %d", i);
    }
    // Readers may look while the log is open; nineteen lines on, nothing was reset.
    const std::string grown = ReadFile(path);
    EXPECT_GT(grown.size(), kLogSizeLimit + 19 * 40);
    EXPECT_EQ(grown.substr(0, 8), "xxxxxxxx");

    log.Write(kLogError, "C::F", "line %d", 20);
    log.Close();
    const Lines lines = SplitLines(ReadFile(path));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_NE(lines[0].find("LogFileInfo(..): Dll File Path: "), std::string::npos);
    EXPECT_NE(lines[1].find("LogFileInfo(..): Dll File Version: "), std::string::npos);
    EXPECT_NE(lines[2].find("[F] line 20"), std::string::npos);
}

TEST(LogWinFolder, EnvironmentIsExpandedAndMissingFoldersAreMade) {
    TempFolder folder;
    ASSERT_TRUE(SetEnvironmentVariableA("KIV_LOG_WIN_ROOT", folder.Path().c_str()));
    WinLogPlatform platform(nullptr);
    CLog log;
    log.SetPlatform(&platform);
    log.Open(u"Env", "%KIV_LOG_WIN_ROOT%\\one\\two/three", kLogToFile, 6, 0);
    const std::string made = folder.Path() + "\\one\\two/three";
    EXPECT_EQ(log.OutputMode(), kLogToFile);
    EXPECT_EQ(log.FilePath(), made + "\\Env_UI.log");
    EXPECT_TRUE(FolderExists(folder.Path() + "\\one\\two\\three"));
    log.Write(kLogError, "C::F", "here");
    log.Close();
    EXPECT_NE(ReadFile(made + "\\Env_UI.log").find("[F] here"), std::string::npos);
    SetEnvironmentVariableA("KIV_LOG_WIN_ROOT", nullptr);
}

TEST(LogWinFolder, UnusableFolderTurnsLoggingOff) {
    TempFolder folder;
    const std::string blocker = folder.Path() + "\\blocker";
    {
        std::ofstream file(blocker);
        file << "a file where a folder would be";
    }
    struct Case {
        const char* what;
        std::string folder;
    };
    const Case cases[] = {
        {"below a file", blocker + "\\sub"},
        {"longer than 260 after expansion", folder.Path() + "\\" + std::string(300, 'd')},
        {"empty", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        WinLogPlatform platform(nullptr);
        CLog log;
        log.SetPlatform(&platform);
        log.Open(u"Off", c.folder, kLogToFile, 6, 1);
        EXPECT_EQ(log.OutputMode(), kLogOff);
        EXPECT_EQ(log.Verbosity(), 0);
        log.Write(kLogError, "C::F", "lost");
        EXPECT_FALSE(platform.FileIsOpen());
    }
}

// Run only as a child of LogWinProcesses: writes numbered lines to the printer's log.
TEST(LogWinChild, WriteLines) {
    char value[1024];
    const DWORD length = GetEnvironmentVariableA(kChildVariable, value, sizeof value);
    if (length == 0 || length >= sizeof value) {
        GTEST_SKIP() << "started by LogWinProcesses only";
    }
    // "<folder>|<printer>|<id>|<start event>"
    std::vector<std::string> parts;
    std::stringstream fields(value);
    for (std::string part; std::getline(fields, part, '|');) {
        parts.push_back(part);
    }
    ASSERT_EQ(parts.size(), 4u);
    const std::u16string printer(parts[1].begin(), parts[1].end());
    const int id = std::atoi(parts[2].c_str());
    HANDLE start = OpenEventA(SYNCHRONIZE, FALSE, parts[3].c_str());
    ASSERT_NE(start, nullptr);

    InstallWinLogPlatform(nullptr);
    InstallWinLogPlatform(nullptr);
    TheLog().Open(printer, parts[0], kLogToFile, 6, 0);
    ASSERT_EQ(TheLog().OutputMode(), kLogToFile);
    EXPECT_EQ(WaitForSingleObject(start, 60000), WAIT_OBJECT_0);
    CloseHandle(start);
    const std::string payload(120, static_cast<char>('a' + id));
    for (int i = 0; i < kChildLines; ++i) {
        TheLog().Write(kLogError, "Child::Writer", "child %d line %d <%s>", id, i, payload.c_str());
    }
    TheLog().Disable();
}

TEST(LogWinProcesses, WritersInSeveralProcessesNeitherTearNorLoseLines) {
    TempFolder folder;
    const std::string printer = "LogWin Shared " + std::to_string(GetCurrentProcessId());
    const std::string eventName = "KivLogWinStart" + std::to_string(GetCurrentProcessId());
    HANDLE start = CreateEventA(nullptr, TRUE, FALSE, eventName.c_str());
    ASSERT_NE(start, nullptr);

    wchar_t self[MAX_PATH];
    ASSERT_NE(GetModuleFileNameW(nullptr, self, MAX_PATH), 0u);
    SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE nul = CreateFileA("NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit,
                             OPEN_EXISTING, 0, nullptr);
    std::vector<HANDLE> children;
    for (int id = 0; id < kChildren; ++id) {
        const std::string value =
            folder.Path() + "|" + printer + "|" + std::to_string(id) + "|" + eventName;
        SetEnvironmentVariableA(kChildVariable, value.c_str());
        std::wstring command =
            L"\"" + std::wstring(self) + L"\" --gtest_filter=LogWinChild.* --gtest_brief=1";
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdOutput = nul;
        startup.hStdError = nul;
        startup.hStdInput = nullptr;
        PROCESS_INFORMATION process{};
        const BOOL created = CreateProcessW(self, command.data(), nullptr, nullptr, TRUE, 0,
                                            nullptr, nullptr, &startup, &process);
        EXPECT_TRUE(created) << "error " << GetLastError();
        if (created) {
            CloseHandle(process.hThread);
            children.push_back(process.hProcess);
        }
    }
    SetEnvironmentVariableA(kChildVariable, nullptr);
    // Let every child reach its loop before any begins, so the writers really overlap.
    Sleep(children.empty() ? 0 : 1500);
    SetEvent(start);
    for (HANDLE child : children) {
        EXPECT_EQ(WaitForSingleObject(child, 120000), WAIT_OBJECT_0);
        DWORD code = 1;
        GetExitCodeProcess(child, &code);
        EXPECT_EQ(code, 0u);
        CloseHandle(child);
    }
    CloseHandle(start);
    if (nul != INVALID_HANDLE_VALUE) {
        CloseHandle(nul);
    }
    ASSERT_EQ(children.size(), static_cast<size_t>(kChildren));

    const Lines lines = SplitLines(ReadFile(folder.Path() + "\\" + printer + "_UI.log"));
    const std::regex head(R"(\[P[0-9A-F]{4,}/T[0-9A-F]{4,}\]\[\d{4}/\d{2}/\d{2} )"
                          R"(\d{2}:\d{2}:\d{2}:\d{3}\]\[LogFileInfo\] LogFileInfo.*)");
    const std::regex written(R"(\[P[0-9A-F]{4,}/T[0-9A-F]{4,}\]\[\d{4}/\d{2}/\d{2} )"
                             R"(\d{2}:\d{2}:\d{2}:\d{3}\]\[Writer\] child (\d) line (\d+) <(.*)>)");
    ASSERT_EQ(lines.size(), 2u + kChildren * kChildLines);
    // One head, written by whichever child created the file.
    EXPECT_TRUE(std::regex_match(lines[0], head)) << lines[0];
    EXPECT_TRUE(std::regex_match(lines[1], head)) << lines[1];
    std::map<int, int> next;
    int previous = -1;
    int switches = 0;
    for (size_t i = 2; i < lines.size(); ++i) {
        std::smatch match;
        ASSERT_TRUE(std::regex_match(lines[i], match, written)) << "line " << i << ": " << lines[i];
        const int id = std::stoi(match[1].str());
        ASSERT_TRUE(id >= 0 && id < kChildren) << lines[i];
        switches += previous != -1 && id != previous ? 1 : 0;
        previous = id;
        EXPECT_EQ(match[3].str(), std::string(120, static_cast<char>('a' + id))) << lines[i];
        // Each child's lines arrive complete and in its own order.
        EXPECT_EQ(std::stoi(match[2].str()), next[id]) << lines[i];
        next[id] = std::stoi(match[2].str()) + 1;
    }
    for (int id = 0; id < kChildren; ++id) {
        EXPECT_EQ(next[id], kChildLines) << "child " << id;
    }
    // The children were released together; if they never alternated the test proved nothing.
    EXPECT_GT(switches, 0);
    RecordProperty("writer_switches", switches);
}

}  // namespace
