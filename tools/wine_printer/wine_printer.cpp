// Installs a KIV model's driver, a port mapped to a file and a printer into Wine's spooler.
#include "wine_printer.h"

#include <cwchar>
#include <vector>

namespace {

constexpr wchar_t kEnvironment[] = L"Windows x64";
constexpr wchar_t kConfigModule[] = L"KivDrvCfg.dll";
constexpr wchar_t kPluginModule[] = L"KivUI.dll";
constexpr wchar_t kPluginIni[] = L"KivUI.ini";
constexpr wchar_t kCommonGpd[] = L"KIV_COMMON.GPD";
// The rendering module's stand-in, so the preview buttons find a module to call.
constexpr wchar_t kUniStandIn[] = L"KivUniStandIn.dll";
constexpr wchar_t kDriversKey[] =
    L"System\\CurrentControlSet\\Control\\Print\\Environments\\Windows x64\\Drivers\\Version-3\\";
constexpr wchar_t kMonitorsKey[] = L"System\\CurrentControlSet\\Control\\Print\\Monitors\\";
// A monitor module outside the driver's own naming, so only the driver setting judges it.
constexpr wchar_t kLanguageMonitor[] = L"KIV Language Monitor";
constexpr wchar_t kLanguageMonitorModule[] = L"KivLangMon.dll";
constexpr wchar_t kPortsKey[] = L"Software\\Microsoft\\Windows NT\\CurrentVersion\\Ports";
// Wine's spooler writes a job for a port named here into the Unix file given as the value.
constexpr wchar_t kWineSpoolerKey[] = L"Software\\Wine\\Printing\\Spooler";

std::wstring FilePart(const std::wstring& path) {
    const size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring::npos ? path : path.substr(slash + 1);
}

std::wstring FolderPart(const std::wstring& path) {
    const size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash);
}

bool SameName(const std::wstring& a, const std::wstring& b) {
    return _wcsicmp(a.c_str(), b.c_str()) == 0;
}

std::wstring ExpandEnv(const wchar_t* text) {
    std::vector<wchar_t> buf(1024);
    const DWORD n = ExpandEnvironmentStringsW(text, buf.data(), static_cast<DWORD>(buf.size()));
    if (n == 0 || n > buf.size())
        return {};
    return buf.data();
}

// Creates every missing folder of `folder`.
bool MakeFolders(const std::wstring& folder) {
    if (folder.empty())
        return false;
    const DWORD attrs = GetFileAttributesW(folder.c_str());
    if (attrs != INVALID_FILE_ATTRIBUTES)
        return (attrs & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const std::wstring parent = FolderPart(folder);
    if (!parent.empty() && parent.size() > 2)
        MakeFolders(parent);  // "C:" needs no creation
    return CreateDirectoryW(folder.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS;
}

// The whole file when it is small enough to be a driver file; empty on any failure.
std::vector<char> ReadSmallFile(const std::wstring& path) {
    constexpr LONGLONG kMax = 64LL << 20;
    std::vector<char> bytes;
    HANDLE f = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (f == INVALID_HANDLE_VALUE)
        return bytes;
    LARGE_INTEGER size = {};
    DWORD got = 0;
    if (GetFileSizeEx(f, &size) && size.QuadPart > 0 && size.QuadPart <= kMax) {
        bytes.resize(static_cast<size_t>(size.QuadPart));
        if (!ReadFile(f, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr) ||
            got != bytes.size())
            bytes.clear();
    }
    CloseHandle(f);
    return bytes;
}

// Copies `from` into `toFolder` unless the same bytes are there already. A module that a
// process has loaded cannot be overwritten (Wine's spooler keeps the configuration module
// loaded after adding a printer), but it can be renamed out of the way first.
bool CopyInto(const std::wstring& from, const std::wstring& toFolder, std::wstring& error) {
    const std::wstring to = toFolder + L"\\" + FilePart(from);
    const std::vector<char> source = ReadSmallFile(from);
    if (!source.empty() && source == ReadSmallFile(to))
        return true;
    if (CopyFileW(from.c_str(), to.c_str(), FALSE))
        return true;
    DWORD err = GetLastError();
    if (err == ERROR_SHARING_VIOLATION || err == ERROR_ACCESS_DENIED) {
        const std::wstring aside = to + L"." + std::to_wstring(GetTickCount64()) + L".old";
        if (MoveFileExW(to.c_str(), aside.c_str(), MOVEFILE_REPLACE_EXISTING)) {
            DeleteFileW(aside.c_str());  // fails while loaded; the spooler folder keeps it
            if (CopyFileW(from.c_str(), to.c_str(), FALSE))
                return true;
        }
        err = GetLastError();
    }
    error = L"cannot copy " + from + L" to " + to + L" (" + Win32ErrorText(err) + L")";
    return false;
}

bool SetRegString(HKEY root, const wchar_t* subkey, const std::wstring& name,
                  const std::wstring& value, std::wstring& error) {
    HKEY key = nullptr;
    LSTATUS rc = RegCreateKeyExW(root, subkey, 0, nullptr, 0, KEY_SET_VALUE | KEY_WOW64_64KEY,
                                 nullptr, &key, nullptr);
    if (rc == ERROR_SUCCESS) {
        rc = RegSetValueExW(key, name.c_str(), 0, REG_SZ,
                            reinterpret_cast<const BYTE*>(value.c_str()),
                            static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(key);
    }
    if (rc == ERROR_SUCCESS)
        return true;
    error = std::wstring(L"cannot write registry value ") + subkey + L"\\" + name + L" (" +
            Win32ErrorText(static_cast<DWORD>(rc)) + L")";
    return false;
}

std::wstring Widen(const std::string& s) {
    if (s.empty())
        return {};
    const int n = MultiByteToWideChar(CP_UTF8, 0, s.data(), static_cast<int>(s.size()), nullptr, 0);
    std::wstring w(static_cast<size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, s.data(), static_cast<int>(s.size()), w.data(), n);
    return w;
}

// DRIVER_INFO_3W of an installed driver, by name; empty buffer when there is none.
std::vector<BYTE> FindDriver(const std::wstring& name, DRIVER_INFO_3W*& found) {
    found = nullptr;
    DWORD needed = 0, count = 0;
    EnumPrinterDriversW(nullptr, const_cast<LPWSTR>(kEnvironment), 3, nullptr, 0, &needed, &count);
    if (needed == 0)
        return {};
    std::vector<BYTE> buf(needed);
    if (!EnumPrinterDriversW(nullptr, const_cast<LPWSTR>(kEnvironment), 3, buf.data(), needed,
                             &needed, &count))
        return {};
    auto* drivers = reinterpret_cast<DRIVER_INFO_3W*>(buf.data());
    for (DWORD i = 0; i < count; ++i) {
        if (drivers[i].pName != nullptr && SameName(drivers[i].pName, name))
            found = &drivers[i];
    }
    return buf;
}

// The spooler's driver folder ("...\spool\drivers\x64"); installed files land in its "3".
bool DriverDirectory(std::wstring& dir, std::wstring& error) {
    DWORD needed = 0;
    wchar_t buf[MAX_PATH * 2] = {};
    if (!GetPrinterDriverDirectoryW(nullptr, const_cast<LPWSTR>(kEnvironment), 1,
                                    reinterpret_cast<LPBYTE>(buf), sizeof buf, &needed)) {
        error = L"GetPrinterDriverDirectoryW failed (" + Win32ErrorText(GetLastError()) + L")";
        return false;
    }
    dir = buf;
    return true;
}

struct DriverFiles {
    std::wstring config;  // also the driver path: the stand-in is both
    std::wstring data;    // the model's GPD
    std::wstring plugin;  // KivUI.dll
    std::wstring ini;     // KivUI.ini
    std::wstring common;  // KIV_COMMON.GPD
    std::wstring uni;     // KivUniStandIn.dll

    std::vector<const std::wstring*> All() const {
        return {&config, &data, &plugin, &ini, &common, &uni};
    }
    // The dependent file names, each ended by '|' (by a NUL in DRIVER_INFO_3W).
    std::wstring DependentNames() const {
        std::wstring names;
        for (const std::wstring* p : {&plugin, &ini, &common, &uni})
            names += FilePart(*p) + L'|';
        return names;
    }
};

// The installed driver's dependent file names in the same form, so a driver installed before
// the list changed is installed afresh.
std::wstring DependentNamesOf(const DRIVER_INFO_3W& driver) {
    std::wstring names;
    for (const wchar_t* file = driver.pDependentFiles; file != nullptr && *file != L'\0';
         file += wcslen(file) + 1)
        names += FilePart(file) + L'|';
    return names;
}

bool CheckSources(const DriverFiles& f, std::wstring& error) {
    for (const std::wstring* p : f.All()) {
        if (GetFileAttributesW(p->c_str()) == INVALID_FILE_ATTRIBUTES) {
            error = L"driver file missing: " + *p;
            return false;
        }
    }
    return true;
}

bool InstallDriver(const std::wstring& driverName, const DriverFiles& src, WinePrinterInfo& info,
                   std::wstring& error) {
    std::wstring dir;
    if (!DriverDirectory(dir, error))
        return false;
    if (!MakeFolders(dir + L"\\3")) {
        error = L"cannot create " + dir + L"\\3";
        return false;
    }

    DRIVER_INFO_3W* existing = nullptr;
    std::vector<BYTE> existingBuf = FindDriver(driverName, existing);
    if (existing != nullptr) {
        const bool same = existing->pDataFile && existing->pConfigFile &&
                          SameName(FilePart(existing->pDataFile), FilePart(src.data)) &&
                          SameName(FilePart(existing->pConfigFile), FilePart(src.config)) &&
                          SameName(DependentNamesOf(*existing), src.DependentNames());
        if (same) {
            // Reuse: refresh the installed files in place, so a rebuilt plug-in is picked up.
            const std::wstring installed = FolderPart(existing->pDataFile);
            for (const std::wstring* p : src.All()) {
                if (!CopyInto(*p, installed, error))
                    return false;
            }
            info.driverReused = true;
            info.driverDir = installed;
            info.dataFile = existing->pDataFile;
            return true;
        }
        if (!DeletePrinterDriverW(nullptr, const_cast<LPWSTR>(kEnvironment),
                                  const_cast<LPWSTR>(driverName.c_str()))) {
            error = L"driver " + driverName + L" exists with other files and cannot be deleted (" +
                    Win32ErrorText(GetLastError()) + L")";
            return false;
        }
    }

    // The spooler copies from its driver folder into the version folder "3".
    for (const std::wstring* p : src.All()) {
        if (!CopyInto(*p, dir, error))
            return false;
    }
    std::wstring configPath = dir + L"\\" + FilePart(src.config);
    std::wstring dataPath = dir + L"\\" + FilePart(src.data);
    std::wstring dependent = src.DependentNames() + L'|';
    for (wchar_t& c : dependent) {
        if (c == L'|')
            c = L'\0';
    }
    std::wstring name = driverName;
    std::wstring env = kEnvironment;
    std::wstring datatype = L"RAW";

    DRIVER_INFO_3W di = {};
    di.cVersion = 3;
    di.pName = name.data();
    di.pEnvironment = env.data();
    di.pDriverPath = configPath.data();
    di.pDataFile = dataPath.data();
    di.pConfigFile = configPath.data();
    di.pDependentFiles = dependent.data();
    di.pDefaultDataType = datatype.data();
    if (!AddPrinterDriverExW(nullptr, 3, reinterpret_cast<LPBYTE>(&di), APD_COPY_ALL_FILES)) {
        error = L"AddPrinterDriverExW(" + driverName + L") failed (" +
                Win32ErrorText(GetLastError()) + L")";
        return false;
    }
    info.driverDir = dir + L"\\3";
    info.dataFile = info.driverDir + L"\\" + FilePart(src.data);
    return true;
}

bool InstallPort(const std::wstring& port, const std::wstring& outputFile, WinePrinterInfo& info,
                 std::wstring& error) {
    if (!MakeFolders(FolderPart(outputFile))) {
        error = L"cannot create the folder of " + outputFile;
        return false;
    }
    info.outputFile = outputFile;
    info.outputUnixPath = UnixPathOf(outputFile);
    if (info.outputUnixPath.empty() || info.outputUnixPath[0] != '/') {
        error = L"no Unix path for " + outputFile + L" (is this Wine?)";
        return false;
    }
    return SetRegString(HKEY_LOCAL_MACHINE, kPortsKey, port, L"", error) &&
           SetRegString(HKEY_CURRENT_USER, kWineSpoolerKey, port, Widen(info.outputUnixPath),
                        error);
}

// True when the printer exists on this driver and port; deletes it when it exists otherwise.
bool KeepOrDeletePrinter(const std::wstring& printer, const std::wstring& driver,
                         const std::wstring& port, bool& kept, std::wstring& error) {
    kept = false;
    HANDLE h = nullptr;
    PRINTER_DEFAULTSW defaults = {nullptr, nullptr, PRINTER_ALL_ACCESS};
    if (!OpenPrinterW(const_cast<LPWSTR>(printer.c_str()), &h, &defaults))
        return true;
    DWORD needed = 0;
    GetPrinterW(h, 2, nullptr, 0, &needed);
    std::vector<BYTE> buf(needed ? needed : 1);
    if (needed && GetPrinterW(h, 2, buf.data(), needed, &needed)) {
        const auto* pi = reinterpret_cast<const PRINTER_INFO_2W*>(buf.data());
        kept = pi->pDriverName && pi->pPortName && SameName(pi->pDriverName, driver) &&
               SameName(pi->pPortName, port);
    }
    bool ok = true;
    if (!kept && !DeletePrinter(h)) {
        error = L"printer " + printer + L" exists on another driver and cannot be deleted (" +
                Win32ErrorText(GetLastError()) + L")";
        ok = false;
    }
    ClosePrinter(h);
    return ok;
}

}  // namespace

std::string UnixPathOf(const std::wstring& windowsPath) {
    using WineGetUnixFileName = char*(CDECL*)(LPCWSTR);
    HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    auto fn = reinterpret_cast<WineGetUnixFileName>(
        reinterpret_cast<void*>(GetProcAddress(kernel, "wine_get_unix_file_name")));
    if (fn == nullptr)
        return {};
    char* unix = fn(windowsPath.c_str());
    if (unix == nullptr)
        return {};
    std::string result(unix);
    HeapFree(GetProcessHeap(), 0, unix);
    return result;
}

std::wstring Win32ErrorText(DWORD code) {
    wchar_t* text = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, 0, reinterpret_cast<LPWSTR>(&text), 0, nullptr);
    std::wstring result = L"Win32 error " + std::to_wstring(code);
    if (text != nullptr) {
        std::wstring msg = text;
        LocalFree(text);
        while (!msg.empty() && (msg.back() == L'\n' || msg.back() == L'\r' || msg.back() == L' '))
            msg.pop_back();
        if (!msg.empty())
            result += L": " + msg;
    }
    return result;
}

std::wstring GpdFileNameForModel(const std::wstring& model) {
    std::wstring name = L"KIV_" + model + L".GPD";
    for (wchar_t& c : name) {
        if (c == L' ')
            c = L'_';
    }
    return name;
}

std::wstring SafeFileName(const std::wstring& name) {
    std::wstring safe = name;
    for (wchar_t& c : safe) {
        if (c < 32 || std::wcschr(L"\\/:*?\"<>|", c) != nullptr)
            c = L'_';
    }
    return safe;
}

std::wstring ModuleFolder(HMODULE module) {
    std::vector<wchar_t> buf(MAX_PATH);
    for (;;) {
        const DWORD n = GetModuleFileNameW(module, buf.data(), static_cast<DWORD>(buf.size()));
        if (n == 0)
            return {};
        if (n < buf.size())
            return FolderPart(std::wstring(buf.data(), n));
        buf.resize(buf.size() * 2);
    }
}

bool InstallWinePrinter(const WinePrinterSetup& setup, WinePrinterInfo& info, std::wstring& error) {
    info = WinePrinterInfo{};
    if (setup.printerName.empty() || setup.model.empty()) {
        error = L"printer name and model are required";
        return false;
    }
    info.driverName = L"KIV " + setup.model;
    info.portName = L"KIVOUT_" + SafeFileName(setup.printerName) + L":";
    for (wchar_t& c : info.portName) {
        if (c == L' ')
            c = L'_';
    }

    DriverFiles src;
    src.config = setup.binaryDir + L"\\" + kConfigModule;
    src.plugin = setup.binaryDir + L"\\" + kPluginModule;
    src.data = setup.packageDir + L"\\" + GpdFileNameForModel(setup.model);
    src.ini = setup.packageDir + L"\\" + kPluginIni;
    src.common = setup.packageDir + L"\\" + kCommonGpd;
    src.uni = setup.binaryDir + L"\\" + kUniStandIn;
    if (!CheckSources(src, error))
        return false;
    if (!InstallDriver(info.driverName, src, info, error))
        return false;

    std::wstring output = setup.outputFile;
    if (output.empty()) {
        output =
            ExpandEnv(L"%LOCALAPPDATA%\\KivHost\\") + SafeFileName(setup.printerName) + L".prn";
    }
    if (!InstallPort(info.portName, output, info, error))
        return false;

    bool kept = false;
    if (!KeepOrDeletePrinter(setup.printerName, info.driverName, info.portName, kept, error))
        return false;
    info.printerReused = kept;
    if (kept)
        return true;

    std::wstring printer = setup.printerName;
    std::wstring port = info.portName;
    std::wstring driver = info.driverName;
    std::wstring processor = L"winprint";
    std::wstring datatype = L"RAW";  // the only datatype Wine's winprint accepts
    PRINTER_INFO_2W pi = {};
    pi.pPrinterName = printer.data();
    pi.pPortName = port.data();
    pi.pDriverName = driver.data();
    pi.pPrintProcessor = processor.data();
    pi.pDatatype = datatype.data();
    pi.Attributes = PRINTER_ATTRIBUTE_LOCAL;
    HANDLE h = AddPrinterW(nullptr, 2, reinterpret_cast<LPBYTE>(&pi));
    if (h == nullptr) {
        error = L"AddPrinterW(" + setup.printerName + L") failed (" +
                Win32ErrorText(GetLastError()) + L")";
        return false;
    }
    ClosePrinter(h);
    return true;
}

bool SetWinePortState(const std::wstring& printerName, const std::wstring& driverName,
                      WinePortState state, std::wstring& error) {
    const std::wstring driverKey = std::wstring(kDriversKey) + driverName;
    const std::wstring monitorKey = std::wstring(kMonitorsKey) + kLanguageMonitor;
    if (state == WinePortState::kNoMonitor) {
        const LSTATUS rc =
            RegDeleteKeyExW(HKEY_LOCAL_MACHINE, monitorKey.c_str(), KEY_WOW64_64KEY, 0);
        if (rc != ERROR_SUCCESS && rc != ERROR_FILE_NOT_FOUND) {
            error = L"cannot delete " + monitorKey + L" (" +
                    Win32ErrorText(static_cast<DWORD>(rc)) + L")";
            return false;
        }
    } else if (!SetRegString(HKEY_LOCAL_MACHINE, monitorKey.c_str(), L"Driver",
                             kLanguageMonitorModule, error)) {
        return false;
    }
    if (!SetRegString(HKEY_LOCAL_MACHINE, driverKey.c_str(), L"Monitor",
                      state == WinePortState::kNoMonitor ? L"" : kLanguageMonitor, error))
        return false;

    HANDLE h = nullptr;
    PRINTER_DEFAULTSW defaults = {nullptr, nullptr, PRINTER_ALL_ACCESS};
    if (!OpenPrinterW(const_cast<LPWSTR>(printerName.c_str()), &h, &defaults)) {
        error =
            L"OpenPrinterW(" + printerName + L") failed (" + Win32ErrorText(GetLastError()) + L")";
        return false;
    }
    DWORD needed = 0;
    GetPrinterW(h, 2, nullptr, 0, &needed);
    std::vector<BYTE> buf(needed ? needed : 1);
    bool ok = needed != 0 && GetPrinterW(h, 2, buf.data(), needed, &needed);
    if (ok) {
        auto* pi = reinterpret_cast<PRINTER_INFO_2W*>(buf.data());
        if (state == WinePortState::kBidi)
            pi->Attributes |= PRINTER_ATTRIBUTE_ENABLE_BIDI;
        else
            pi->Attributes &= ~static_cast<DWORD>(PRINTER_ATTRIBUTE_ENABLE_BIDI);
        pi->pSecurityDescriptor = nullptr;
        ok = SetPrinterW(h, 2, buf.data(), 0) != FALSE;
    }
    if (!ok)
        error = L"the attributes of " + printerName + L" cannot be set (" +
                Win32ErrorText(GetLastError()) + L")";
    ClosePrinter(h);
    return ok;
}

bool RemoveWinePrinter(const std::wstring& printerName, std::wstring& error) {
    HANDLE h = nullptr;
    PRINTER_DEFAULTSW defaults = {nullptr, nullptr, PRINTER_ALL_ACCESS};
    if (!OpenPrinterW(const_cast<LPWSTR>(printerName.c_str()), &h, &defaults))
        return true;
    const bool ok = DeletePrinter(h) != FALSE;
    if (!ok)
        error =
            L"DeletePrinter(" + printerName + L") failed (" + Win32ErrorText(GetLastError()) + L")";
    ClosePrinter(h);
    return ok;
}
