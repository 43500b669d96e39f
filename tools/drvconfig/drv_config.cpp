// Stand-in for the universal driver's configuration module: the two exports Wine's spooler calls.
//
// Wine has no universal printer driver. When a printer is added, Wine's spooler loads the
// driver's configuration file and asks DrvDocumentPropertySheets for the printer's default
// devmode; without that export AddPrinterW crashes. This module answers with a plain public
// devmode for a thermal roll printer and adds no pages of its own.
#include <cstddef>
#include <cstring>

#include "win/oem_framework_win.h"

namespace {

// 80 mm roll paper, an A4-long page, 203 dpi: what the host and the model GPDs default to.
constexpr short kPaperWidth = 800;    // tenths of a millimetre
constexpr short kPaperLength = 2970;  // tenths of a millimetre
constexpr short kDpi = 203;
constexpr DWORD kFields = DM_ORIENTATION | DM_PAPERSIZE | DM_PAPERLENGTH | DM_PAPERWIDTH |
                          DM_COPIES | DM_DEFAULTSOURCE | DM_PRINTQUALITY | DM_COLOR |
                          DM_YRESOLUTION;

void FillDefault(DEVMODEW& dm, const wchar_t* printerName) {
    std::memset(&dm, 0, sizeof dm);
    if (printerName != nullptr) {
        // dmDeviceName holds 31 characters and a terminator; longer names are cut.
        for (size_t i = 0; i + 1 < CCHDEVICENAME && printerName[i] != L'\0'; ++i)
            dm.dmDeviceName[i] = printerName[i];
    }
    dm.dmSpecVersion = DM_SPECVERSION;
    dm.dmDriverVersion = 0x0100;
    dm.dmSize = sizeof(DEVMODEW);
    dm.dmDriverExtra = 0;
    dm.dmFields = kFields;
    dm.dmOrientation = DMORIENT_PORTRAIT;
    dm.dmPaperSize = DMPAPER_USER;
    dm.dmPaperLength = kPaperLength;
    dm.dmPaperWidth = kPaperWidth;
    dm.dmCopies = 1;
    dm.dmDefaultSource = DMBIN_AUTO;
    dm.dmPrintQuality = kDpi;
    dm.dmColor = DMCOLOR_MONOCHROME;
    dm.dmYResolution = kDpi;
}

// Takes over the caller's choices for the fields this driver knows, when its devmode is long
// enough to hold them.
void MergeFrom(DEVMODEW& dm, const DEVMODEW& in) {
    if (in.dmSize < offsetof(DEVMODEW, dmYResolution) + sizeof in.dmYResolution)
        return;
    const DWORD f = in.dmFields & kFields;
    if (f & DM_ORIENTATION)
        dm.dmOrientation = in.dmOrientation;
    if (f & DM_PAPERSIZE)
        dm.dmPaperSize = in.dmPaperSize;
    if ((f & DM_PAPERLENGTH) && in.dmPaperLength > 0)
        dm.dmPaperLength = in.dmPaperLength;
    if ((f & DM_PAPERWIDTH) && in.dmPaperWidth > 0)
        dm.dmPaperWidth = in.dmPaperWidth;
    if ((f & DM_COPIES) && in.dmCopies > 0)
        dm.dmCopies = in.dmCopies;
    if (f & DM_DEFAULTSOURCE)
        dm.dmDefaultSource = in.dmDefaultSource;
    if ((f & DM_PRINTQUALITY) && in.dmPrintQuality > 0)
        dm.dmPrintQuality = in.dmPrintQuality;
    if ((f & DM_YRESOLUTION) && in.dmYResolution > 0)
        dm.dmYResolution = in.dmYResolution;
}

LONG DevmodeService(const DOCUMENTPROPERTYHEADER* dph) {
    if (dph == nullptr || dph->cbSize < sizeof(DOCUMENTPROPERTYHEADER)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return -1;
    }
    // The size question: no output buffer, or no mode at all.
    if (dph->fMode == 0 || dph->pdmOut == nullptr)
        return sizeof(DEVMODEW);
    // Wine sizes the buffer from the answer above but may leave cbOut at 0; a size that is
    // stated must hold the whole devmode.
    if (dph->cbOut != 0 && dph->cbOut < sizeof(DEVMODEW)) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return -1;
    }
    if (dph->fMode & DM_OUT_BUFFER) {
        DEVMODEW dm;
        FillDefault(dm, dph->pszPrinterName);
        if ((dph->fMode & DM_IN_BUFFER) && dph->pdmIn != nullptr)
            MergeFrom(dm, *dph->pdmIn);
        std::memcpy(dph->pdmOut, &dm, sizeof dm);
    }
    return IDOK;
}

}  // namespace

extern "C" LONG WINAPI DrvDocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam) {
    if (pPSUIInfo == nullptr)
        return DevmodeService(reinterpret_cast<const DOCUMENTPROPERTYHEADER*>(lParam));
    // A sheet: this stand-in adds no pages; every reason succeeds.
    switch (pPSUIInfo->Reason) {
        case PROPSHEETUI_REASON_INIT:
        case PROPSHEETUI_REASON_GET_INFO_HEADER:
        case PROPSHEETUI_REASON_DESTROY:
        case PROPSHEETUI_REASON_BEFORE_INIT:
            pPSUIInfo->Result = CPSUI_OK;
            return 1;
        default:
            return 1;
    }
}

extern "C" DWORD WINAPI DrvDeviceCapabilities(HANDLE, PWSTR, WORD iDevCap, void*, DEVMODEW*) {
    switch (iDevCap) {
        case DC_SIZE:
            return sizeof(DEVMODEW);
        case DC_EXTRA:
            return 0;
        case DC_FIELDS:
            return kFields;
        case DC_DRIVER:
            return 0x0100;
        case DC_COPIES:
            return 1;
        default:
            // Lists (papers, bins, resolutions) are empty: nothing under Wine asks for them.
            return 0;
    }
}
