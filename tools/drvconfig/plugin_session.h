// The plug-in as the universal driver holds it for one request: found among the printer driver's
// dependent files, loaded through its class object, and every devmode composed through it.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "driver_ui.h"
#include "model_gpd.h"
#include "win/oem_framework_win.h"

// The model (from the driver's data file) and the plug-in's full path (from the dependent `.ini`'s
// [OEMFiles] OEMConfigFile1, beside it) of the printer's driver. False with a reason in `error`.
bool ReadDriverFiles(HANDLE printer, GpdModel& model, std::wstring& plugin, std::wstring& error);

// The public devmode's fields this driver keeps, and its driver version.
inline constexpr DWORD kPublicFields = DM_ORIENTATION | DM_PAPERSIZE | DM_PAPERLENGTH |
                                       DM_PAPERWIDTH | DM_COPIES | DM_DEFAULTSOURCE |
                                       DM_PRINTQUALITY | DM_COLOR | DM_YRESOLUTION;
inline constexpr DWORD kDriverVersion = 0x0100;

// The printer a request is about: the caller's handle, or one opened by name and closed again
// when the spooler passed none (Wine's print dialog sizes its devmode that way).
class RequestedPrinter {
  public:
    RequestedPrinter() = default;
    RequestedPrinter(const RequestedPrinter&) = delete;
    RequestedPrinter& operator=(const RequestedPrinter&) = delete;
    ~RequestedPrinter() {
        if (owned_)
            ClosePrinter(handle_);
    }
    // False with a reason in `error` when there is no handle and `name` opens none.
    bool Open(const wchar_t* name, HANDLE given, std::wstring& error);
    HANDLE Handle() const { return handle_; }

  private:
    HANDLE handle_ = nullptr;
    bool owned_ = false;
};

// The model's paper sizes are numbered from here in dmPaperSize and DC_PAPERS, in GPD order.
inline constexpr short kFirstPaperId = DMPAPER_USER + 1;
// Puts the model's paper `index` (in range) into the devmode.
void SetPaper(DEVMODEW& dm, const GpdModel& model, size_t index);

// Loaded for one request and let go, in the driver's order, when it is destroyed.
class PluginSession {
  public:
    PluginSession() = default;
    PluginSession(const PluginSession&) = delete;
    PluginSession& operator=(const PluginSession&) = delete;
    ~PluginSession();

    // Opens `printerName` (unless `printer` is its open handle), reads its driver's files,
    // loads the plug-in, publishes the helper and asks GetInfo and the record's size. False with
    // a reason in `error`.
    bool Open(const wchar_t* printerName, HANDLE printer, std::wstring& error);

    // The devmode the spooler hands out: public part, then the plug-in's block (its
    // OEM_DMEXTRAHEADER first) as the private part. `in` (when not null) is an incoming devmode
    // of at most `inBytes` readable bytes, merged (with `convert`, converted first) into the
    // defaults; a private part that is not the plug-in's gets its defaults.
    bool Compose(const DEVMODEW* in, size_t inBytes, bool convert, std::vector<uint8_t>& out,
                 std::wstring& error);
    // The size of every devmode Compose makes.
    size_t DevmodeBytes() const { return sizeof(DEVMODEW) + recordSize_; }
    DWORD RecordBytes() const { return recordSize_; }

    IPrintOemUI* Ui() const { return ui_; }
    HMODULE Module() const { return module_; }
    HANDLE Printer() const { return printer_.Handle(); }
    HANDLE Heap() const { return heap_; }
    DriverUI& Helper() { return helper_; }
    const std::wstring& PluginPath() const { return path_; }
    const GpdModel& Model() const { return model_; }
    std::wstring& PrinterName() { return printerName_; }

  private:
    bool Load(const std::wstring& path, std::wstring& error);
    bool DevMode(DWORD mode, OEMDMPARAM& p, std::wstring& error);
    void DefaultPublic(DEVMODEW& dm) const;

    HMODULE module_ = nullptr;
    IPrintOemUI* ui_ = nullptr;
    RequestedPrinter printer_;
    HANDLE heap_ = nullptr;
    DriverUI helper_;
    bool published_ = false;
    std::wstring path_;
    std::wstring printerName_;
    GpdModel model_;
    DWORD signature_ = 0;
    DWORD recordSize_ = 0;
};

// The driver's own option items; the plug-in must hide the colour one it replaces.
struct DriverItems {
    OPTITEM items[3] = {};
    DriverItems();
    const OPTITEM& Color() const { return items[1]; }
};

// One opening's common UI entry: the parameter block and what it points to, kept for as long
// as the sheet that uses it.
struct CommonUiCall {
    DriverObject driverObject;
    DriverItems drv;
    OEMCUIPPARAM param = {};
    HANDLE heap = nullptr;

    CommonUiCall() = default;
    CommonUiCall(const CommonUiCall&) = delete;
    CommonUiCall& operator=(const CommonUiCall&) = delete;
    // The driver frees the item array it allocated for the plug-in.
    ~CommonUiCall();
};

// CommonUIProp twice, as the driver calls it for a document sheet: counting, then with the item
// array. `publicDM` and `record` are the devmode the sheet edits.
bool CallCommonUI(PluginSession& s, DEVMODEW& publicDM, void* record, DWORD mode,
                  CommonUiCall& call, std::wstring& error);

// The CPSUICB_REASON_APPLYNOW call the driver's option page makes when the sheet applies.
LONG CallApplyNow(OEMCUIPPARAM& param, HWND hDlg);

// Runs `body`; an exception becomes `failed` with a last error, as no exception may leave the
// module into the spooler's or the sheet's code.
template <typename T, typename Body>
T Guarded(T failed, Body body) {
    try {
        return body();
    } catch (const std::exception&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    } catch (...) {
        SetLastError(ERROR_INVALID_DATA);
    }
    return failed;
}

// A step the driver took, for a debugger's eyes (OutputDebugString): the module has no console.
void Trace(const wchar_t* format, ...);
