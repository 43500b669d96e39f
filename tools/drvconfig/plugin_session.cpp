// Finding, loading and calling the plug-in as the universal driver does for each request.
#include "plugin_session.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

using DllGetClassObjectFn = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, LPVOID*);
using DllCanUnloadNowFn = HRESULT(STDAPICALLTYPE*)();

// A private block longer than this is not a settings record but garbage.
constexpr DWORD kMostRecordBytes = 0xFFFF;
// What a driver information answer may take, at most.
constexpr DWORD kMostDriverInfoBytes = 1u << 20;

std::wstring Hex(HRESULT hr) {
    wchar_t buf[16];
    std::swprintf(buf, 16, L"0x%08lX", static_cast<unsigned long>(hr));
    return buf;
}

std::wstring FolderOf(const std::wstring& path) {
    const size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash);
}

bool EndsWithNoCase(const std::wstring& text, const wchar_t* tail) {
    const size_t n = wcslen(tail);
    return text.size() >= n &&
           CompareStringOrdinal(text.c_str() + text.size() - n, -1, tail, -1, TRUE) == CSTR_EQUAL;
}

// Takes over the caller's choices for the public fields this driver knows, from the part of `in`
// its dmSize covers; a paper size must be one of the model's.
void MergePublic(DEVMODEW& dm, const DEVMODEW& in, size_t inPublic, const GpdModel& model) {
    if (inPublic < offsetof(DEVMODEW, dmYResolution) + sizeof in.dmYResolution)
        return;
    const DWORD f = in.dmFields & kPublicFields;
    const int paper = in.dmPaperSize - kFirstPaperId;
    if ((f & DM_PAPERSIZE) && paper >= 0 && static_cast<size_t>(paper) < model.papers.size())
        SetPaper(dm, model, static_cast<size_t>(paper));
    if (f & DM_ORIENTATION)
        dm.dmOrientation = in.dmOrientation;
    if ((f & DM_COPIES) && in.dmCopies > 0)
        dm.dmCopies = in.dmCopies;
    if (f & DM_DEFAULTSOURCE)
        dm.dmDefaultSource = in.dmDefaultSource;
}

}  // namespace

void SetPaper(DEVMODEW& dm, const GpdModel& model, size_t index) {
    const GpdOption& paper = model.papers[index];
    dm.dmPaperSize = static_cast<short>(kFirstPaperId + index);
    dm.dmPaperWidth = static_cast<short>(DotsToTenthsOfMm(paper.widthDots, model.dpi));
    dm.dmPaperLength = static_cast<short>(DotsToTenthsOfMm(paper.lengthDots, model.dpi));
}

void Trace(const wchar_t* format, ...) {
    wchar_t text[512];
    va_list args;
    va_start(args, format);
    std::vswprintf(text, 512, format, args);
    va_end(args);
    OutputDebugStringW((std::wstring(L"KivDrvCfg: ") + text + L"\n").c_str());
}

bool ReadDriverFiles(HANDLE printer, GpdModel& model, std::wstring& plugin, std::wstring& error) {
    DWORD needed = 0;
    GetPrinterDriverW(printer, nullptr, 3, nullptr, 0, &needed);
    if (needed < sizeof(DRIVER_INFO_3W) || needed > kMostDriverInfoBytes) {
        error = L"GetPrinterDriverW level 3 gave no driver information";
        return false;
    }
    std::vector<BYTE> buf(needed);
    if (!GetPrinterDriverW(printer, nullptr, 3, buf.data(), needed, &needed)) {
        error = L"GetPrinterDriverW level 3 failed (" + std::to_wstring(GetLastError()) + L")";
        return false;
    }
    const auto* driver = reinterpret_cast<const DRIVER_INFO_3W*>(buf.data());
    if (driver->pDataFile == nullptr || !ReadGpdModel(driver->pDataFile, model)) {
        error = L"the driver's data file names no paper size";
        return false;
    }
    // The plug-in configuration file is the dependent file that ends in ".ini"; the plug-in sits
    // beside it.
    const BYTE* end = buf.data() + buf.size();
    for (const wchar_t* file = driver->pDependentFiles;
         file != nullptr && reinterpret_cast<const BYTE*>(file) < end && *file != L'\0';
         file += wcsnlen(file, MAX_PATH) + 1) {
        const std::wstring name(file, wcsnlen(file, MAX_PATH));
        if (!EndsWithNoCase(name, L".ini"))
            continue;
        wchar_t value[MAX_PATH] = {};
        GetPrivateProfileStringW(L"OEMFiles", L"OEMConfigFile1", L"", value, MAX_PATH,
                                 name.c_str());
        if (value[0] != L'\0' && wcspbrk(value, L"\\/:") == nullptr) {
            plugin = FolderOf(name) + L"\\" + value;
            break;
        }
    }
    if (plugin.empty()) {
        error = L"no dependent .ini names a plug-in ([OEMFiles] OEMConfigFile1)";
        return false;
    }
    return true;
}

PluginSession::~PluginSession() {
    if (ui_ != nullptr)
        ui_->Release();
    ui_ = nullptr;
    if (module_ != nullptr) {
        auto canUnload = reinterpret_cast<DllCanUnloadNowFn>(
            reinterpret_cast<void*>(GetProcAddress(module_, "DllCanUnloadNow")));
        // The request lets the module go whatever DllCanUnloadNow says (it stays pinned).
        if (canUnload != nullptr)
            canUnload();
        FreeLibrary(module_);
    }
    if (published_ && helper_.References() != 1)
        Trace(L"the plug-in kept %ld reference(s) to the driver helper", helper_.References() - 1);
    if (heap_ != nullptr)
        HeapDestroy(heap_);
}

bool RequestedPrinter::Open(const wchar_t* name, HANDLE given, std::wstring& error) {
    handle_ = given;
    if (handle_ != nullptr)
        return true;
    PRINTER_DEFAULTSW defaults = {nullptr, nullptr, PRINTER_ACCESS_USE};
    if (name == nullptr || !OpenPrinterW(const_cast<wchar_t*>(name), &handle_, &defaults)) {
        handle_ = nullptr;
        error = L"OpenPrinterW failed (" + std::to_wstring(GetLastError()) + L")";
        return false;
    }
    owned_ = true;
    return true;
}

bool PluginSession::Open(const wchar_t* printerName, HANDLE printer, std::wstring& error) {
    if (printerName == nullptr || printerName[0] == L'\0') {
        error = L"no printer name";
        return false;
    }
    printerName_.assign(printerName, wcsnlen(printerName, 1024));
    if (!printer_.Open(printerName_.c_str(), printer, error))
        return false;
    std::wstring plugin;
    if (!ReadDriverFiles(printer_.Handle(), model_, plugin, error))
        return false;
    heap_ = HeapCreate(0, 0, 0);
    if (heap_ == nullptr) {
        error = L"HeapCreate failed";
        return false;
    }
    return Load(plugin, error);
}

bool PluginSession::Load(const std::wstring& path, std::wstring& error) {
    module_ = LoadLibraryW(path.c_str());
    if (module_ == nullptr) {
        error = path + L" could not be loaded (" + std::to_wstring(GetLastError()) + L")";
        return false;
    }
    path_ = path;
    // Pinned: what the plug-in keeps for the rest of the process (admin mode) must outlive one
    // request, as it does when a host holds the plug-in for its whole run.
    HMODULE pinned = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN, path.c_str(), &pinned);
    auto getClass = reinterpret_cast<DllGetClassObjectFn>(
        reinterpret_cast<void*>(GetProcAddress(module_, "DllGetClassObject")));
    if (getClass == nullptr) {
        error = path + L" has no DllGetClassObject export";
        return false;
    }
    IClassFactory* factory = nullptr;
    HRESULT hr = getClass(CLSID_OEMUI, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    if (FAILED(hr) || factory == nullptr) {
        error = L"DllGetClassObject(CLSID_OEMUI) " + Hex(hr);
        return false;
    }
    IUnknown* unknown = nullptr;
    hr = factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&unknown));
    factory->Release();
    if (FAILED(hr) || unknown == nullptr) {
        error = L"IClassFactory::CreateInstance " + Hex(hr);
        return false;
    }
    // Newest interface first, as the driver asks; an IPrintOemUI2 plug-in is one as well.
    hr = unknown->QueryInterface(IID_IPrintOemUI2, reinterpret_cast<void**>(&ui_));
    if (FAILED(hr))
        hr = unknown->QueryInterface(IID_IPrintOemUI, reinterpret_cast<void**>(&ui_));
    unknown->Release();
    if (FAILED(hr) || ui_ == nullptr) {
        ui_ = nullptr;
        error = L"QueryInterface(IID_IPrintOemUI) " + Hex(hr);
        return false;
    }
    hr = ui_->PublishDriverInterface(static_cast<IPrintOemDriverUI*>(&helper_));
    if (FAILED(hr)) {
        error = L"PublishDriverInterface " + Hex(hr);
        return false;
    }
    published_ = true;
    DWORD needed = 0;
    hr = ui_->GetInfo(OEMGI_GETSIGNATURE, &signature_, sizeof signature_, &needed);
    if (FAILED(hr) || needed != sizeof signature_) {
        error = L"GetInfo(OEMGI_GETSIGNATURE) " + Hex(hr);
        return false;
    }
    OEMDMPARAM p = {};
    if (!DevMode(OEMDM_SIZE, p, error))
        return false;
    if (p.cbBufSize < sizeof(OEM_DMEXTRAHEADER) || p.cbBufSize > kMostRecordBytes) {
        error = L"DevMode(OEMDM_SIZE) gave an unusable size " + std::to_wstring(p.cbBufSize);
        return false;
    }
    recordSize_ = p.cbBufSize;
    return true;
}

bool PluginSession::DevMode(DWORD mode, OEMDMPARAM& p, std::wstring& error) {
    p.cbSize = sizeof p;
    p.hPrinter = printer_.Handle();
    p.hModule = module_;
    const HRESULT hr = ui_->DevMode(mode, &p);
    if (FAILED(hr)) {
        error = L"DevMode(" + std::to_wstring(mode) + L") " + Hex(hr);
        return false;
    }
    return true;
}

// The model's default paper and resolution, portrait, one copy, the first paper source.
void PluginSession::DefaultPublic(DEVMODEW& dm) const {
    std::memset(&dm, 0, sizeof dm);
    wcsncpy(dm.dmDeviceName, printerName_.c_str(), CCHDEVICENAME - 1);
    dm.dmSpecVersion = DM_SPECVERSION;
    dm.dmDriverVersion = kDriverVersion;
    dm.dmSize = sizeof(DEVMODEW);
    dm.dmFields = kPublicFields;
    dm.dmOrientation = DMORIENT_PORTRAIT;
    SetPaper(dm, model_, model_.defaultPaper);
    dm.dmCopies = 1;
    dm.dmPrintQuality = static_cast<short>(model_.dpi);
    dm.dmYResolution = static_cast<short>(model_.dpi);
    dm.dmColor = DMCOLOR_MONOCHROME;
}

bool PluginSession::Compose(const DEVMODEW* in, size_t inBytes, bool convert,
                            std::vector<uint8_t>& out, std::wstring& error) {
    DEVMODEW dm;
    DefaultPublic(dm);
    std::vector<uint8_t> defaults(recordSize_, 0);
    OEMDMPARAM p = {};
    p.pPublicDMIn = &dm;
    p.pOEMDMOut = defaults.data();
    p.cbBufSize = recordSize_;
    if (!DevMode(OEMDM_DEFAULT, p, error))
        return false;

    std::vector<uint8_t> record = defaults;
    if (in != nullptr && inBytes >= offsetof(DEVMODEW, dmFields)) {
        // Only what the devmode's own sizes and the caller's buffer both cover is read.
        const size_t inPublic = std::min<size_t>(in->dmSize, inBytes);
        const size_t extra = std::min<size_t>(in->dmDriverExtra, inBytes - inPublic);
        DEVMODEW inPublicCopy = {};
        std::memcpy(&inPublicCopy, in, std::min(inPublic, sizeof inPublicCopy));
        MergePublic(dm, inPublicCopy, inPublic, model_);
        const uint8_t* block = reinterpret_cast<const uint8_t*>(in) + inPublic;
        OEM_DMEXTRAHEADER header = {};
        if (extra >= sizeof header)
            std::memcpy(&header, block, sizeof header);
        // Another driver's private part, or none: the plug-in starts from its defaults.
        std::vector<uint8_t> incoming = defaults;
        if (extra >= sizeof header && header.dwSignature == signature_) {
            incoming.assign(std::max<size_t>(recordSize_, extra), 0);
            std::memcpy(incoming.data(), block, extra);
            // The plug-in bounds its read by the header, which must not reach past the copy.
            header.dwSize = static_cast<DWORD>(std::min<size_t>(header.dwSize, extra));
            std::memcpy(incoming.data(), &header, sizeof header);
        }
        const auto step = [&](DWORD mode) {
            p = {};
            p.pPublicDMIn = &dm;
            p.pPublicDMOut = &dm;
            p.pOEMDMIn = incoming.data();
            p.pOEMDMOut = record.data();
            p.cbBufSize = recordSize_;
            return DevMode(mode, p, error);
        };
        // A conversion brings an older record to the current format; the merge after it checks
        // the result as every incoming record is checked, so a damaged one comes back repaired.
        if (convert) {
            if (!step(OEMDM_CONVERT))
                return false;
            std::copy(record.begin(), record.end(), incoming.begin());
        }
        if (!step(OEMDM_MERGE))
            return false;
    }
    dm.dmSize = sizeof(DEVMODEW);
    dm.dmDriverExtra = static_cast<WORD>(recordSize_);
    out.resize(DevmodeBytes());
    std::memcpy(out.data(), &dm, sizeof dm);
    std::memcpy(out.data() + sizeof dm, record.data(), recordSize_);
    return true;
}

DriverItems::DriverItems() {
    const struct {
        const wchar_t* name;
        BYTE id;
    } table[] = {{L"Orientation", DMPUB_ORIENTATION},
                 {L"Color", DMPUB_COLOR},
                 {L"Copies", DMPUB_COPIES_COLLATE}};
    for (size_t i = 0; i < 3; ++i) {
        items[i].cbSize = sizeof(OPTITEM);
        items[i].Level = 1;
        items[i].pName = const_cast<LPWSTR>(table[i].name);
        items[i].DMPubID = table[i].id;
    }
}

CommonUiCall::~CommonUiCall() {
    if (param.pOEMOptItems != nullptr)
        HeapFree(heap, 0, param.pOEMOptItems);
}

bool CallCommonUI(PluginSession& s, DEVMODEW& publicDM, void* record, DWORD mode,
                  CommonUiCall& call, std::wstring& error) {
    OEMCUIPPARAM& param = call.param;
    call.heap = s.Heap();
    call.driverObject.helper = &s.Helper();
    param.cbSize = sizeof param;
    param.poemuiobj = &call.driverObject.obj;
    param.hPrinter = s.Printer();
    param.pPrinterName = s.PrinterName().data();
    param.hModule = s.Module();
    param.hOEMHeap = s.Heap();
    param.pPublicDM = &publicDM;
    param.pOEMDM = record;
    param.dwFlags = mode;
    param.pDrvOptItems = call.drv.items;
    param.cDrvOptItems = 3;

    // First call: how many items the plug-in adds.
    HRESULT hr = s.Ui()->CommonUIProp(OEMCUIP_DOCPROP, &param);
    const DWORD count = param.cOEMOptItems;
    if (FAILED(hr) || count > 1000) {
        error = L"CommonUIProp (counting call) " + Hex(hr);
        return false;
    }
    // Second call with the array the driver allocates from the plug-in's heap.
    auto* items = static_cast<OPTITEM*>(
        HeapAlloc(s.Heap(), HEAP_ZERO_MEMORY, sizeof(OPTITEM) * (count ? count : 1)));
    if (items == nullptr) {
        error = L"CommonUIProp: out of memory";
        return false;
    }
    param.pOEMOptItems = items;
    param.cOEMOptItems = count;
    hr = s.Ui()->CommonUIProp(OEMCUIP_DOCPROP, &param);
    if (FAILED(hr)) {
        error = L"CommonUIProp " + Hex(hr);
        return false;
    }
    Trace(L"CommonUIProp: %lu plug-in items; driver colour item %ls; %d driver setting queries",
          static_cast<unsigned long>(param.cOEMOptItems),
          (call.drv.Color().Flags & OPTIF_HIDE) ? L"hidden" : L"left visible",
          s.Helper().Queries());
    if (param.OEMCUIPCallback == nullptr) {
        error = L"the plug-in installed no OEMCUIPCallback, so the sheet could not apply";
        return false;
    }
    return true;
}

LONG CallApplyNow(OEMCUIPPARAM& param, HWND hDlg) {
    CPSUICBPARAM cb = {};
    cb.cbSize = sizeof cb;
    cb.Reason = CPSUICB_REASON_APPLYNOW;
    cb.hDlg = hDlg;
    cb.pOptItem = param.pOEMOptItems;
    cb.cOptItem = static_cast<WORD>(param.cOEMOptItems);
    cb.Result = CPSUI_OK;
    const LONG action = param.OEMCUIPCallback(&cb, &param);
    Trace(L"APPLYNOW: callback returned %ld", static_cast<long>(action));
    return action;
}
