// KivDrvCfg.dll: the universal printer driver's UI part, as the configuration module of the
// Wine printers that the host and the Windows tests install. A test and demonstration module:
// it is never shipped, and the real driver package (driver/) does not name it.
//
// What it does: for every request of the spooler it finds the plug-in as the universal driver
// does (the printer driver's dependent `.ini`, its [OEMFiles] OEMConfigFile1), loads it through
// DllGetClassObject(CLSID_OEMUI), publishes its own IPrintOemDriverUI, and releases it when the
// request is answered; the plug-in's module stays pinned, so what it keeps for the rest of the
// process (admin mode) lasts from one opening to the next. Every devmode it hands out is the
// public DEVMODEW followed by the plug-in's block (which starts with its OEM_DMEXTRAHEADER), made
// through the plug-in's DevMode: size, default, merge of an incoming devmode (a damaged record
// comes back repaired, another driver's private part gets the defaults) and conversion. With a
// prompt it adds its own first page and the plug-in's pages to the spooler's common property
// sheet and routes apply to the plug-in's OEMCUIPCallback; each accepted apply (OK included)
// writes the devmode to the caller's pdmOut, and nothing else does, so an application sees what
// was applied, and whether anything was, while the sheet is still open. Device capabilities
// (paper sizes, paper sources) come from the model's GPD.
//
// What it does not do: no rendering, no printer property sheet (DrvDevicePropertySheets), no
// option-item tree page (Wine's common sheet has none), no driver features beyond the table its
// DrvGetDriverSetting answers from, and no upgrade of a devmode of an older driver format.
#include <cstring>
#include <vector>

#include "driver_sheet.h"
#include "plugin_session.h"

namespace {

// DrvConvertDevMode's modes.
constexpr DWORD kCdmConvert = 0x01;
constexpr DWORD kCdmConvert351 = 0x02;
constexpr DWORD kCdmDriverDefault = 0x04;

// Names in DC_PAPERNAMES and DC_BINNAMES take 64 and 24 characters, terminator included.
constexpr size_t kPaperNameChars = 64;
constexpr size_t kBinNameChars = 24;

LONG Refuse(DWORD error, const std::wstring& why) {
    Trace(L"%ls", why.c_str());
    SetLastError(error);
    return -1;
}

LONG DevmodeService(const DOCUMENTPROPERTYHEADER* dph) {
    if (dph == nullptr || dph->cbSize < sizeof(DOCUMENTPROPERTYHEADER))
        return Refuse(ERROR_INVALID_PARAMETER, L"no document property header");
    PluginSession session;
    std::wstring error;
    if (!session.Open(dph->pszPrinterName, dph->hPrinter, error))
        return Refuse(ERROR_INVALID_DATA, error);
    // The size question: no output buffer, or no mode at all.
    if (dph->fMode == 0 || dph->pdmOut == nullptr)
        return static_cast<LONG>(session.DevmodeBytes());
    // The caller sized pdmOut by asking the question above, as DocumentPropertiesW requires.
    // cbOut cannot say otherwise: Wine's spooler takes it from the output buffer's own dmSize
    // and dmDriverExtra, which are whatever the fresh buffer held (the print dialog's is
    // uninitialised heap), so refusing on it would leave the caller's devmode unwritten.
    if ((dph->fMode & DM_OUT_BUFFER) == 0)
        return IDOK;
    const DEVMODEW* in = (dph->fMode & DM_IN_BUFFER) ? dph->pdmIn : nullptr;
    const size_t inBytes = in != nullptr ? size_t{in->dmSize} + in->dmDriverExtra : 0;
    std::vector<uint8_t> devmode;
    if (!session.Compose(in, inBytes, false, devmode, error))
        return Refuse(ERROR_INVALID_DATA, error);
    std::memcpy(dph->pdmOut, devmode.data(), devmode.size());
    return IDOK;
}

// Copies `count` fixed-width names into `out`, each cut to `width` - 1 characters and padded.
void PutNames(void* out, const std::vector<GpdOption>& options, size_t width) {
    auto* names = static_cast<wchar_t*>(out);
    for (size_t i = 0; i < options.size(); ++i) {
        wchar_t* name = names + i * width;
        std::memset(name, 0, width * sizeof(wchar_t));
        wcsncpy(name, options[i].name.c_str(), width - 1);
    }
}

DWORD Capability(HANDLE printer, const wchar_t* device, WORD cap, void* out) {
    switch (cap) {
        case DC_SIZE:
            return sizeof(DEVMODEW);
        case DC_FIELDS:
            return kPublicFields;
        case DC_DRIVER:
            return kDriverVersion;
        case DC_COPIES:
            return 1;
        default:
            break;
    }
    std::wstring error;
    if (cap == DC_EXTRA) {
        PluginSession session;
        if (!session.Open(device, printer, error))
            return static_cast<DWORD>(Refuse(ERROR_INVALID_DATA, error));
        return session.RecordBytes();
    }
    GpdModel model;
    std::wstring plugin;
    RequestedPrinter requested;
    if (!requested.Open(device, printer, error))
        return static_cast<DWORD>(Refuse(ERROR_INVALID_PARAMETER, error));
    if (!ReadDriverFiles(requested.Handle(), model, plugin, error))
        return static_cast<DWORD>(Refuse(ERROR_INVALID_DATA, error));
    const DWORD papers = static_cast<DWORD>(model.papers.size());
    const DWORD bins = static_cast<DWORD>(model.bins.size());
    switch (cap) {
        case DC_PAPERS:
            for (DWORD i = 0; out != nullptr && i < papers; ++i)
                static_cast<WORD*>(out)[i] = static_cast<WORD>(kFirstPaperId + i);
            return papers;
        case DC_PAPERSIZE:
            for (DWORD i = 0; out != nullptr && i < papers; ++i) {
                static_cast<POINT*>(out)[i] =
                    POINT{.x = DotsToTenthsOfMm(model.papers[i].widthDots, model.dpi),
                          .y = DotsToTenthsOfMm(model.papers[i].lengthDots, model.dpi)};
            }
            return papers;
        case DC_PAPERNAMES:
            if (out != nullptr)
                PutNames(out, model.papers, kPaperNameChars);
            return papers;
        case DC_BINS:
            for (DWORD i = 0; out != nullptr && i < bins; ++i)
                static_cast<WORD*>(out)[i] = static_cast<WORD>(model.BinId(i));
            return bins;
        case DC_BINNAMES:
            if (out != nullptr)
                PutNames(out, model.bins, kBinNameChars);
            return bins;
        default:
            // Resolutions, media types and the rest: nothing under Wine asks for them.
            return 0;
    }
}

}  // namespace

extern "C" LONG WINAPI DrvDocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam) {
    return Guarded<LONG>(-1, [&] {
        if (pPSUIInfo == nullptr)
            return DevmodeService(reinterpret_cast<const DOCUMENTPROPERTYHEADER*>(lParam));
        return DocumentSheet(pPSUIInfo, lParam);
    });
}

extern "C" BOOL WINAPI DrvConvertDevMode(LPWSTR pPrinterName, DEVMODEW* pdmIn, DEVMODEW* pdmOut,
                                         LONG* pcbNeeded, DWORD fMode) {
    return Guarded<BOOL>(FALSE, [&]() -> BOOL {
        if (pcbNeeded == nullptr || pdmOut == nullptr ||
            (fMode & (kCdmConvert | kCdmConvert351 | kCdmDriverDefault)) == 0 ||
            ((fMode & kCdmDriverDefault) == 0 && pdmIn == nullptr)) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return FALSE;
        }
        PluginSession session;
        std::wstring error;
        if (!session.Open(pPrinterName, nullptr, error))
            return Refuse(ERROR_INVALID_DATA, error) >= 0;
        const LONG needed = static_cast<LONG>(session.DevmodeBytes());
        if (*pcbNeeded < needed) {
            *pcbNeeded = needed;
            SetLastError(ERROR_INSUFFICIENT_BUFFER);
            return FALSE;
        }
        const bool toDefault = (fMode & kCdmDriverDefault) != 0;
        const size_t inBytes = toDefault ? 0 : size_t{pdmIn->dmSize} + pdmIn->dmDriverExtra;
        std::vector<uint8_t> devmode;
        if (!session.Compose(toDefault ? nullptr : pdmIn, inBytes, true, devmode, error))
            return Refuse(ERROR_INVALID_DATA, error) >= 0;
        std::memcpy(pdmOut, devmode.data(), devmode.size());
        *pcbNeeded = needed;
        return TRUE;
    });
}

extern "C" DWORD WINAPI DrvDeviceCapabilities(HANDLE hPrinter, PWSTR pDeviceName, WORD iDevCap,
                                              void* pOutput, DEVMODEW*) {
    return Guarded<DWORD>(GDI_ERROR,
                          [&] { return Capability(hPrinter, pDeviceName, iDevCap, pOutput); });
}
