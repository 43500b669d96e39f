// Runs kivhost.exe (the application that opens a printer's preferences) as a child process and
// reads back what it leaves behind.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "settings/oemdev.h"
#include "text_lines.h"
#include "win/text_win.h"
#include "win/windows_headers_win.h"
#include "wine_printer.h"

struct HostRun {
    DWORD exitCode = 0xFFFFFFFF;
    std::string output;  // stdout and stderr together
};

// Starts `program` from this program's folder and collects everything it prints.
inline HostRun RunProgram(const std::wstring& program, const std::wstring& args) {
    HostRun run;
    SECURITY_ATTRIBUTES sa = {sizeof sa, nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &sa, 0))
        return run;
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);

    std::wstring cmd = L"\"" + ModuleFolder() + L"\\" + program + L"\" " + args;
    STARTUPINFOW si = {};
    si.cb = sizeof si;
    si.dwFlags = STARTF_USESTDHANDLES;
    si.hStdOutput = writeEnd;
    si.hStdError = writeEnd;
    PROCESS_INFORMATION pi = {};
    const BOOL started =
        CreateProcessW(nullptr, cmd.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &si, &pi);
    CloseHandle(writeEnd);
    if (!started) {
        run.output = "CreateProcessW failed: " + NarrowAnsi(Win32ErrorText(GetLastError()));
        CloseHandle(readEnd);
        return run;
    }
    char buf[4096];
    DWORD got = 0;
    while (ReadFile(readEnd, buf, sizeof buf, &got, nullptr) && got > 0)
        run.output.append(buf, got);
    CloseHandle(readEnd);
    if (WaitForSingleObject(pi.hProcess, 120000) == WAIT_OBJECT_0)
        GetExitCodeProcess(pi.hProcess, &run.exitCode);
    else
        TerminateProcess(pi.hProcess, 99);
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
    return run;
}

inline HostRun RunHost(const std::wstring& args) {
    return RunProgram(L"kivhost.exe", args);
}

inline std::string ReadFileText(const std::wstring& path) {
    std::ifstream in(path.c_str(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

inline bool Contains(const std::string& text, const std::string& what) {
    return text.find(what) != std::string::npos;
}

// The printer's per-user default devmode (GetPrinterW level 9), where the host stores what was
// applied; empty when there is none.
inline std::string StoredDevmode(const std::wstring& printer) {
    std::wstring name = printer;
    HANDLE h = nullptr;
    if (!OpenPrinterW(name.data(), &h, nullptr))
        return {};
    DWORD needed = 0;
    GetPrinterW(h, 9, nullptr, 0, &needed);
    std::vector<BYTE> buf(needed);
    std::string bytes;
    const DEVMODEW* dm =
        needed >= sizeof(PRINTER_INFO_9W) && GetPrinterW(h, 9, buf.data(), needed, &needed)
            ? reinterpret_cast<const PRINTER_INFO_9W*>(buf.data())->pDevMode
            : nullptr;
    if (dm != nullptr)
        bytes.assign(reinterpret_cast<const char*>(dm), dm->dmSize + dm->dmDriverExtra);
    ClosePrinter(h);
    return bytes;
}

// The plug-in's record in a devmode's bytes, right after the public part; zeros when short of one.
template <typename Bytes>
OEMDEV RecordOf(const Bytes& devmode) {
    OEMDEV record{};
    if (devmode.size() >= sizeof(DEVMODEW) + sizeof record)
        std::memcpy(&record, devmode.data() + sizeof(DEVMODEW), sizeof record);
    return record;
}

// Scratch printers whose logs, devmode files and output live in one scratch folder; the
// printers, their registry keys and the folder are removed afterwards.
class HostTestBase : public ::testing::Test {
  protected:
    explicit HostTestBase(std::wstring tag) : tag_(std::move(tag)) {}

    void SetUp() override {
        dir_ = (std::filesystem::temp_directory_path() /
                (L"kiv_" + tag_ + L"_" + std::to_wstring(GetCurrentProcessId())))
                   .wstring();
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override {
        std::wstring error;
        for (const std::wstring& printer : printers_) {
            RemoveWinePrinter(printer, error);
            RegDeleteTreeW(HKEY_CURRENT_USER, (L"Software\\Orvane\\Kiv\\" + printer).c_str());
        }
        std::error_code ignored;
        std::filesystem::remove_all(dir_, ignored);
    }

    // A printer whose configuration starts afresh with its log and its print folder (the host's
    // last document) in the scratch folder.
    std::wstring NewPrinter(const std::wstring& model, const std::wstring& suffix = L"") {
        std::wstring printer = L"KIV " + tag_ + L" " + model + suffix;
        printers_.push_back(printer);
        const std::wstring key = L"Software\\Orvane\\Kiv\\" + printer;
        RegDeleteTreeW(HKEY_CURRENT_USER, key.c_str());
        for (const wchar_t* folder : {L"LogFolder", L"PrnFolder"})
            RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), folder, REG_SZ, dir_.c_str(),
                            static_cast<DWORD>((dir_.size() + 1) * sizeof(wchar_t)));
        return printer;
    }
    // Installs the scratch printer of `model` as the host would.
    void InstallPrinter(const std::wstring& printer, const std::wstring& model) {
        const WinePrinterSetup setup{printer, model, ModuleFolder(), ModuleFolder() + L"\\driver",
                                     dir_ + L"\\" + SafeFileName(printer) + L".prn"};
        WinePrinterInfo info;
        std::wstring error;
        ASSERT_TRUE(InstallWinePrinter(setup, info, error)) << NarrowAnsi(error);
    }
    std::wstring LogPath(const std::wstring& printer) const {
        return dir_ + L"\\" + SafeFileName(printer) + L"_UI.log";
    }
    std::wstring DevmodePath(const std::wstring& printer) const {
        return dir_ + L"\\" + SafeFileName(printer) + L".devmode";
    }
    // The arguments that tie a run to the scratch printer.
    std::wstring PrinterArgs(const std::wstring& printer, const std::wstring& model) const {
        return L"--verbosity 7 --model \"" + model + L"\" --printer \"" + printer + L"\"";
    }

    std::wstring tag_;
    std::wstring dir_;
    std::vector<std::wstring> printers_;
};
