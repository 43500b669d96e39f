// Installs a KIV model's printer driver and a printer on it into the Wine prefix's spooler.
//
// Wine has no universal printer driver, so the driver is made of the stand-in configuration
// module (KivDrvCfg.dll, also the "driver path"), the model's GPD as data file, and the
// plug-in, its .ini, the shared GPD and the rendering module's stand-in (KivUniStandIn.dll) as
// dependent files. The printer's port is mapped to a Unix file, so raw jobs land in a file the
// tests can read.
#pragma once

#include <string>

#include "win/windows_headers_win.h"

struct WinePrinterSetup {
    std::wstring printerName;  // e.g. L"KIV TRX418A CUT"
    std::wstring model;        // e.g. L"TRX418A CUT"; chooses the GPD and the driver name
    std::wstring binaryDir;    // holds KivUI.dll, KivDrvCfg.dll and KivUniStandIn.dll
    std::wstring packageDir;   // holds the GPDs and KivUI.ini (the driver/ folder)
    // Windows path that receives the printer's raw jobs; empty: a file per printer under
    // %LOCALAPPDATA%\KivHost.
    std::wstring outputFile;
};

struct WinePrinterInfo {
    std::wstring driverName;     // "KIV " + model
    std::wstring portName;       // a port of its own per printer
    std::wstring driverDir;      // where the spooler keeps the installed files (...\x64\3)
    std::wstring dataFile;       // full path of the installed model GPD
    std::wstring outputFile;     // Windows path of the raw output file
    std::string outputUnixPath;  // the same file as Wine's spooler writes it
    bool driverReused = false;   // the driver was installed already (its files refreshed)
    bool printerReused = false;  // the printer existed with this driver and port
};

// "KIV_" + the model with blanks as underscores + ".GPD".
std::wstring GpdFileNameForModel(const std::wstring& model);

// The name with every character that a file name cannot hold replaced by '_'.
std::wstring SafeFileName(const std::wstring& name);

// Folder of the running program (or of `module`), without the trailing backslash.
std::wstring ModuleFolder(HMODULE module = nullptr);

// Installs (or reuses, refreshing the files) the model's driver, the port with its file
// mapping, and the printer. Idempotent. False with a one-line reason in `error`.
bool InstallWinePrinter(const WinePrinterSetup& setup, WinePrinterInfo& info, std::wstring& error);

// What stands between the printer and its port, as the plug-in's language-monitor query sees it.
enum class WinePortState {
    kNoMonitor,  // the driver names no language monitor
    kBidi,       // a monitor, and the printer is bidirectional
    kNotBidi,    // a monitor, but the printer is not bidirectional
};

// Puts the printer of `driverName` in `state`: the driver's "Monitor" value, the monitor's key
// with its module, and the printer's PRINTER_ATTRIBUTE_ENABLE_BIDI. The monitor module does not
// exist, so the spooler loads nothing; the plug-in judges such a module by the driver's
// "BidiSupport" setting alone. False with a reason in `error`.
bool SetWinePortState(const std::wstring& printerName, const std::wstring& driverName,
                      WinePortState state, std::wstring& error);

// Deletes the printer if it exists (the driver stays). False with a reason in `error`.
bool RemoveWinePrinter(const std::wstring& printerName, std::wstring& error);

// The Unix file behind a Windows path, through Wine's kernel32; empty on Windows.
std::string UnixPathOf(const std::wstring& windowsPath);

// "Win32 error N: text" for the thread's last error or `code`.
std::wstring Win32ErrorText(DWORD code);
