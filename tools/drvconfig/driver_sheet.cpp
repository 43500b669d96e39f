// The document sheet as the universal driver opens it inside the spooler's common property
// sheet: its own first page, then the plug-in's page function, which forwards every reason to
// IPrintOemUI::DocumentPropertySheets; the plug-in adds its pages with the sheet's own
// pfnComPropSheet. Wine's common sheet has no option-item tree page, so the driver's page is the
// one that routes apply to the plug-in's OEMCUIPCallback, as the tree page does on Windows.
#include "driver_sheet.h"

#include <cstdio>
#include <cstring>
#include <memory>

#include "drv_config_resource.h"
#include "plugin_session.h"

namespace {

HINSTANCE ThisModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&ThisModule), &module);
    return module;
}

// One opening: the plug-in, the devmode the sheet edits and the common UI call, alive from the
// sheet's INIT until both this function and the plug-in's page function got their DESTROY.
struct DriverSheet {
    DOCUMENTPROPERTYHEADER* header = nullptr;
    PluginSession session;
    std::vector<uint8_t> devmode;  // public part, then the plug-in's block
    CommonUiCall call;
    OEMUIPSPARAM psParam = {};
    std::wstring title;
    bool pluginFunctionAdded = false;
    bool pluginDestroyed = false;
    bool sheetDestroyed = false;

    DEVMODEW& Public() { return *reinterpret_cast<DEVMODEW*>(devmode.data()); }
    void* Record() { return devmode.data() + sizeof(DEVMODEW); }

    bool Open(std::wstring& error);
    bool AddPages(PPROPSHEETUI_INFO info);
    void FillDriverPage(HWND hDlg);
    void ShowPaperSource(HWND hDlg);
    LONG_PTR OnApply(HWND hDlg);
    // Frees the opening once nothing can call into it any more.
    void ReleaseIfDone() {
        if (sheetDestroyed && (!pluginFunctionAdded || pluginDestroyed))
            delete this;
    }
};

bool DriverSheet::Open(std::wstring& error) {
    if (!session.Open(header->pszPrinterName, header->hPrinter, error))
        return false;
    const bool merge = (header->fMode & DM_IN_BUFFER) != 0 && header->pdmIn != nullptr;
    const DEVMODEW* in = merge ? header->pdmIn : nullptr;
    // The spooler states no size for the incoming devmode; its own fields bound it.
    const size_t inBytes = in != nullptr ? size_t{in->dmSize} + in->dmDriverExtra : 0;
    if (!session.Compose(in, inBytes, false, devmode, error))
        return false;
    if (!CallCommonUI(session, Public(), Record(), header->fMode, call, error))
        return false;
    psParam.cbSize = sizeof psParam;
    psParam.poemuiobj = call.param.poemuiobj;
    psParam.hPrinter = session.Printer();
    psParam.pPrinterName = session.PrinterName().data();
    psParam.hModule = session.Module();
    psParam.hOEMHeap = session.Heap();
    psParam.pPublicDM = &Public();
    psParam.pOEMDM = call.param.pOEMDM;
    psParam.pOEMUserData = call.param.pOEMUserData;
    psParam.dwFlags = call.param.dwFlags;
    psParam.pOemEntry = this;
    title = session.PrinterName() + L" Printing Preferences";
    return true;
}

INT_PTR PageProc(HWND hDlg, UINT msg, LPARAM lParam) {
    auto* sheet = reinterpret_cast<DriverSheet*>(GetWindowLongPtrW(hDlg, DWLP_USER));
    switch (msg) {
        case WM_INITDIALOG: {
            const auto* page = reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
            sheet = page != nullptr ? reinterpret_cast<DriverSheet*>(page->lParam) : nullptr;
            SetWindowLongPtrW(hDlg, DWLP_USER, reinterpret_cast<LONG_PTR>(sheet));
            if (sheet != nullptr)
                sheet->FillDriverPage(hDlg);
            return TRUE;
        }
        case WM_NOTIFY: {
            const auto* header = reinterpret_cast<const NMHDR*>(lParam);
            if (sheet != nullptr && header != nullptr && header->code == PSN_APPLY) {
                SetWindowLongPtrW(hDlg, DWLP_MSGRESULT, sheet->OnApply(hDlg));
                return TRUE;
            }
            return FALSE;
        }
        default:
            return FALSE;
    }
}

INT_PTR CALLBACK DriverPageProc(HWND hDlg, UINT msg, WPARAM, LPARAM lParam) {
    return Guarded<INT_PTR>(FALSE, [&] { return PageProc(hDlg, msg, lParam); });
}

// The plug-in's page function as the driver registers it. The opening is found through
// pOemEntry, the member of OEMUIPSPARAM that is the driver's own.
LONG ForwardToPlugin(PPROPSHEETUI_INFO info, LPARAM lParam) {
    if (info == nullptr || info->lParamInit == 0)
        return ERR_CPSUI_GETLASTERROR;
    auto* ps = reinterpret_cast<POEMUIPSPARAM>(info->lParamInit);
    auto* sheet = static_cast<DriverSheet*>(ps->pOemEntry);
    if (sheet == nullptr)
        return ERR_CPSUI_GETLASTERROR;
    const HRESULT hr = sheet->session.Ui()->DocumentPropertySheets(info, lParam);
    if (info->Reason == PROPSHEETUI_REASON_DESTROY) {
        sheet->pluginDestroyed = true;
        sheet->ReleaseIfDone();
    }
    // The framework's convention: 1 or more lets the sheet go on, less is a failure.
    return SUCCEEDED(hr) ? 1 : ERR_CPSUI_GETLASTERROR;
}

LONG CALLBACK PluginPageFunction(PPROPSHEETUI_INFO info, LPARAM lParam) {
    return Guarded<LONG>(ERR_CPSUI_GETLASTERROR, [&] { return ForwardToPlugin(info, lParam); });
}

bool DriverSheet::AddPages(PPROPSHEETUI_INFO info) {
    if (info->pfnComPropSheet == nullptr || info->hComPropSheet == nullptr)
        return false;
    PROPSHEETPAGEW page = {};
    page.dwSize = sizeof page;
    page.hInstance = ThisModule();
    page.pszTemplate = MAKEINTRESOURCEW(IDD_DRIVER_PAGE);
    page.pfnDlgProc = DriverPageProc;
    page.lParam = reinterpret_cast<LPARAM>(this);
    if (info->pfnComPropSheet(info->hComPropSheet, CPSFUNC_ADD_PROPSHEETPAGEW,
                              reinterpret_cast<LPARAM>(&page), 0) == 0)
        return false;
    // The plug-in's pages come after the driver's, added by the plug-in itself.
    pluginFunctionAdded = info->pfnComPropSheet(info->hComPropSheet, CPSFUNC_ADD_PFNPROPSHEETUIW,
                                                reinterpret_cast<LPARAM>(PluginPageFunction),
                                                reinterpret_cast<LPARAM>(&psParam)) != 0;
    if (!pluginFunctionAdded)
        Trace(L"the plug-in's page function failed; only the driver's page shows");
    return true;
}

void DriverSheet::FillDriverPage(HWND hDlg) {
    const DEVMODEW& dm = Public();
    SetDlgItemTextW(hDlg, IDC_DRIVER_PRINTER, session.PrinterName().c_str());
    SetDlgItemTextW(hDlg, IDC_DRIVER_MODEL, session.Model().modelName.c_str());
    const std::wstring& path = session.PluginPath();
    const size_t slash = path.find_last_of(L"\\/");
    SetDlgItemTextW(hDlg, IDC_DRIVER_PLUGIN,
                    slash == std::wstring::npos ? path.c_str() : path.c_str() + slash + 1);
    wchar_t text[128];
    const int dpi = dm.dmYResolution > 0 ? dm.dmYResolution : 0;
    const int width = dm.dmPaperWidth > 0 ? dm.dmPaperWidth : 0;
    const int length = dm.dmPaperLength > 0 ? dm.dmPaperLength : 0;
    if (dpi > 0) {
        std::swprintf(text, 128, L"%d.%d x %d.%d mm (%d x %d dots)", width / 10, width % 10,
                      length / 10, length % 10, static_cast<int>(width * dpi / 254.0 + 0.5),
                      static_cast<int>(length * dpi / 254.0 + 0.5));
    } else {
        std::swprintf(text, 128, L"%d.%d x %d.%d mm", width / 10, width % 10, length / 10,
                      length % 10);
    }
    SetDlgItemTextW(hDlg, IDC_DRIVER_PAPER, text);
    std::swprintf(text, 128, L"%d dpi", dpi);
    SetDlgItemTextW(hDlg, IDC_DRIVER_RESOLUTION, text);
    SetDlgItemTextW(hDlg, IDC_DRIVER_ORIENTATION,
                    dm.dmOrientation == DMORIENT_LANDSCAPE ? L"Landscape" : L"Portrait");
    std::swprintf(text, 128, L"%d", dm.dmCopies);
    SetDlgItemTextW(hDlg, IDC_DRIVER_COPIES, text);
    ShowPaperSource(hDlg);
    // The plug-in hides the driver's colour item in favour of its own black-and-white settings.
    const bool colourHidden = (call.drv.Color().Flags & OPTIF_HIDE) != 0;
    SetDlgItemTextW(hDlg, IDC_DRIVER_COLOR,
                    colourHidden ? L"Monochrome; conversion to black and white is on the Print page"
                                 : L"Monochrome");
}

void DriverSheet::ShowPaperSource(HWND hDlg) {
    wchar_t text[64];
    const short source = Public().dmDefaultSource;
    if (source == 0)
        std::swprintf(text, 64, L"Automatically select");
    else
        std::swprintf(text, 64, L"Source %d", source);
    // The model's own name for the source, when its GPD has one of that number.
    const GpdModel& model = session.Model();
    for (size_t i = 0; i < model.bins.size(); ++i) {
        if (model.BinId(i) == source)
            std::swprintf(text, 64, L"%ls", model.bins[i].name.c_str());
    }
    SetDlgItemTextW(hDlg, IDC_DRIVER_SOURCE, text);
}

LONG_PTR DriverSheet::OnApply(HWND hDlg) {
    if (CallApplyNow(call.param, hDlg) == CPSUICB_ACTION_NO_APPLY_EXIT)
        return PSNRET_INVALID_NOCHANGEPAGE;
    ShowPaperSource(hDlg);
    // The spooler sized the buffer by asking; its cbOut is not a size (see DevmodeService).
    if (header->pdmOut != nullptr && (header->fMode & DM_OUT_BUFFER) != 0)
        std::memcpy(header->pdmOut, devmode.data(), devmode.size());
    return PSNRET_NOERROR;
}

}  // namespace

LONG DocumentSheet(PPROPSHEETUI_INFO info, LPARAM lParam) {
    auto* sheet = reinterpret_cast<DriverSheet*>(info->UserData);
    switch (info->Reason) {
        case PROPSHEETUI_REASON_INIT: {
            auto* header = reinterpret_cast<DOCUMENTPROPERTYHEADER*>(info->lParamInit);
            if (header == nullptr || header->cbSize < sizeof *header) {
                SetLastError(ERROR_INVALID_PARAMETER);
                return ERR_CPSUI_GETLASTERROR;
            }
            auto opening = std::make_unique<DriverSheet>();
            opening->header = header;
            std::wstring error;
            if (!opening->Open(error) || !opening->AddPages(info)) {
                Trace(L"the document sheet could not be opened: %ls", error.c_str());
                SetLastError(ERROR_INVALID_DATA);
                return ERR_CPSUI_GETLASTERROR;
            }
            info->UserData = reinterpret_cast<ULONG_PTR>(opening.release());
            info->Result = CPSUI_OK;
            return 1;
        }
        case PROPSHEETUI_REASON_GET_INFO_HEADER: {
            auto* header = reinterpret_cast<PPROPSHEETUI_INFO_HEADER>(lParam);
            if (header == nullptr || sheet == nullptr)
                return ERR_CPSUI_GETLASTERROR;
            header->Flags = PSUIHDRF_EXACT_PTITLE | PSUIHDRF_USEHICON;
            header->pTitle = sheet->title.data();
            header->hInst = ThisModule();
            header->hIcon = LoadIconW(nullptr, IDI_APPLICATION);
            info->Result = 1;
            return 1;
        }
        case PROPSHEETUI_REASON_DESTROY:
            if (sheet != nullptr) {
                info->UserData = 0;
                sheet->sheetDestroyed = true;
                sheet->ReleaseIfDone();
            }
            info->Result = 1;
            return 1;
        default:
            info->Result = 1;
            return 1;
    }
}
