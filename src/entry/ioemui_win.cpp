// IOemUI: the driver UI interface object's answers to the framework (all but CommonUIProp).
#include <algorithm>
#include <cstring>

#include "entry/devmode.h"
#include "entry/intrface_win.h"
#include "entry/property_sheets_win.h"
#include "entry/property_page_entry_win.h"
#include "infra/guarded.h"
#include "infra/log.h"
#include "ports/platform_win.h"
#include "settings/ui_device_common.h"

namespace {

constexpr DWORD kInfoSize = sizeof(DWORD);
constexpr ULONG kProfileBytes = 32;  // two bytes more than the name needs; the framework saw 32
constexpr wchar_t kProfileName[] = L"OEMPROFILE.icm";

// A bounded copy of a wide string into `bytes` bytes, always terminated; fails without writing
// past the buffer when the text does not fit.
HRESULT CopyWideBounded(void* destination, size_t bytes, const wchar_t* text) {
    const size_t chars = bytes / sizeof(wchar_t);
    if (chars == 0)
        return HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);
    const size_t length = wcslen(text);
    wchar_t* out = static_cast<wchar_t*>(destination);
    if (length >= chars) {
        out[0] = L'\0';
        return HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);
    }
    std::memcpy(out, text, (length + 1) * sizeof(wchar_t));
    return S_OK;
}

bool ModeWritesRecord(DWORD dwMode) {
    return dwMode == OEMDM_DEFAULT || dwMode == OEMDM_CONVERT || dwMode == OEMDM_MERGE;
}

// How many bytes of the incoming private block may be read; the public devmode that carries it
// is the framework's and is whole to its own dmSize + dmDriverExtra.
size_t ReadableRecordBytes(const OEMDMPARAM& param) {
    const DEVMODEW* pub = param.pPublicDMIn;
    return IncomingRecordExtent(static_cast<const uint8_t*>(param.pOEMDMIn),
                                reinterpret_cast<const uint8_t*>(pub),
                                pub != nullptr ? size_t{pub->dmSize} + pub->dmDriverExtra : 0);
}

}  // namespace

IOemUI::IOemUI() {
    InstallWinPlatform(KivModuleHandle());
}

IOemUI::~IOemUI() {
    if (m_pOEMHelp != nullptr) {
        m_pOEMHelp->Release();
        m_pOEMHelp = nullptr;
    }
    KivCheck(m_cRef == 0, "0 == m_cRef", "intrface", 48);  // kept-behaviour: Assertion text
}

STDMETHODIMP IOemUI::QueryInterface(REFIID riid, void** ppv) {
    return Guarded("IOemUI::QueryInterface", E_FAIL, [&] {
        static const char* const kFn = "IOemUI::QueryInterface";
        TraceScope trace(kFn);
        if (ppv == nullptr)
            return trace.Return(E_POINTER);
        if (IsEqualIID(riid, IID_IUnknown)) {
            *ppv = static_cast<IUnknown*>(this);
            TheLog().Write(kLogInfo, kFn, "Return pointer to IUnknown.");
        } else if (IsEqualIID(riid, IID_IPrintOemUI)) {
            *ppv = static_cast<IPrintOemUI*>(this);
            TheLog().Write(kLogInfo, kFn, "pointer to IPrintOemUI.");
        } else {
            TheLog().Write(kLogInfo, kFn, "QueryInterface IID not supported.");
            *ppv = nullptr;
            return trace.Return(E_NOINTERFACE);
        }
        AddRef();
        return trace.Return(S_OK);
    });
}

STDMETHODIMP_(ULONG) IOemUI::AddRef() {
    return Guarded("IOemUI::AddRef", ULONG{0}, [&] {
        TraceScope trace("IOemUI::AddRef");
        return trace.Return(static_cast<ULONG>(InterlockedIncrement(&m_cRef)));
    });
}

STDMETHODIMP_(ULONG) IOemUI::Release() {
    return Guarded("IOemUI::Release", ULONG{0}, [&] {
        TraceScope trace("IOemUI::Release");
        const LONG count = InterlockedDecrement(&m_cRef);
        if (count == 0)
            delete this;
        return trace.Return(static_cast<ULONG>(count));
    });
}

STDMETHODIMP IOemUI::GetInfo(DWORD dwMode, PVOID pBuffer, DWORD cbSize, PDWORD pcbNeeded) {
    return Guarded("IOemUI::GetInfo", E_FAIL, [&] {
        static const char* const kFn = "IOemUI::GetInfo";
        TraceScope trace(kFn);
        // The interface version is not answered either, and with the same text.
        if (pcbNeeded == nullptr || dwMode < OEMGI_GETSIGNATURE ||
            dwMode > OEMGI_GETPUBLISHERINFO || dwMode == OEMGI_GETINTERFACEVERSION) {
            TheLog().Write(kLogWarning, kFn, "exit pcbNeeded is NULL! ERROR_INVALID_PARAMETER");
            SetLastError(ERROR_INVALID_PARAMETER);
            return trace.Return(E_FAIL);
        }
        *pcbNeeded = kInfoSize;
        if (cbSize < kInfoSize || pBuffer == nullptr) {
            TheLog().Write(kLogWarning, kFn, "IOemUI::GetInfo() exit insufficient buffer!");
            SetLastError(ERROR_INSUFFICIENT_BUFFER);
            return trace.Return(E_FAIL);
        }
        DWORD value = 0;
        switch (dwMode) {
            case OEMGI_GETSIGNATURE:
                value = KIVITEM_SIGNATURE;
                break;
            case OEMGI_GETVERSION:
                value = KIVITEM_VERSION;
                break;
            default:  // OEMGI_GETPUBLISHERINFO
                TheLog().Write(kLogWarning, kFn, "IOemUI::GetInfo() exit mode not supported.");
                *pcbNeeded = 0;
                SetLastError(ERROR_NOT_SUPPORTED);
                return trace.Return(E_FAIL);
        }
        std::memcpy(pBuffer, &value, sizeof value);
        return trace.Return(S_OK);
    });
}

STDMETHODIMP IOemUI::DevMode(DWORD dwMode, POEMDMPARAM pOemDMParam) {
    return Guarded("IOemUI::DevMode", E_FAIL, [&] {
        TraceScope trace("IOemUI::DevMode");
        DevModeCall call;
        uint32_t bufSize = 0;  // DWORD and uint32_t are distinct types to the compiler
        if (pOemDMParam != nullptr) {
            // The framework's out buffer must hold a whole record before anything is written to it.
            if (ModeWritesRecord(dwMode) && pOemDMParam->pOEMDMOut != nullptr &&
                pOemDMParam->cbBufSize < OEMDEV_SIZE) {
                TheLog().Write(kLogError, "IOemUI::DevMode", "ERROR_INVALID_PARAMETER.");
                SetLastError(ERROR_INVALID_PARAMETER);
                return trace.Return(E_FAIL);
            }
            call.paramPresent = true;
            call.oemIn = static_cast<const uint8_t*>(pOemDMParam->pOEMDMIn);
            call.oemInAvailable = ReadableRecordBytes(*pOemDMParam);
            call.oemOut = static_cast<OEMDEV*>(pOemDMParam->pOEMDMOut);
            bufSize = pOemDMParam->cbBufSize;
            call.cbBufSize = &bufSize;
            call.mergeCopy = &m_state.savedOEMDev;
        }
        const DevModeResult result = hrOEMDevMode(dwMode, call);
        if (pOemDMParam != nullptr)
            pOemDMParam->cbBufSize = bufSize;
        if (result.lastError != kErrorSuccess)
            SetLastError(result.lastError);
        return trace.Return(static_cast<HRESULT>(result.hr));
    });
}

STDMETHODIMP IOemUI::PublishDriverInterface(IUnknown* pIUnknown) {
    return Guarded("IOemUI::PublishDriverInterface", E_FAIL, [&] {
        TraceScope trace("IOemUI::PublishDriverInterface", " Begin");
        if (m_pOEMHelp == nullptr) {
            void* helper = nullptr;
            const HRESULT hr = pIUnknown != nullptr
                                   ? pIUnknown->QueryInterface(IID_IPrintOemDriverUI, &helper)
                                   : E_POINTER;
            if (FAILED(hr) || helper == nullptr) {
                m_pOEMHelp = nullptr;
                m_state.driverHelper = nullptr;
                return trace.Return(E_FAIL);
            }
            m_pOEMHelp = static_cast<IPrintOemDriverUI*>(helper);
            m_state.driverHelper = m_pOEMHelp;
        }
        return trace.Return(S_OK);
    });
}

STDMETHODIMP IOemUI::DocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam) {
    return Guarded("IOemUI::DocumentPropertySheets", E_FAIL, [&] {
        TraceScope trace("IOemUI::DocumentPropertySheets");
        return trace.Return(hrOEMDocumentPropertySheets(pPSUIInfo, lParam, m_pOEMHelp, &m_state,
                                                        ModuleAdminFlag(), m_state.lmAvailable,
                                                        m_state.lmBidi, m_state.lmEnable));
    });
}

STDMETHODIMP IOemUI::DevicePropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam) {
    return Guarded("IOemUI::DevicePropertySheets", E_FAIL, [&] {
        TraceScope trace("IOemUI::DevicePropertySheets");
        return trace.Return(hrOEMDevicePropertySheets(pPSUIInfo, lParam));
    });
}

STDMETHODIMP IOemUI::DevQueryPrintEx(POEMUIOBJ, PDEVQUERYPRINT_INFO, DEVMODEW*, PVOID) {
    return Guarded("IOemUI::DevQueryPrintEx", E_FAIL, [&] {
        TraceScope trace("IOemUI::DevQueryPrintEx");
        return trace.Return(E_NOTIMPL);
    });
}

STDMETHODIMP IOemUI::DeviceCapabilities(POEMUIOBJ, HANDLE, PWSTR, WORD, PVOID, DEVMODEW*, PVOID,
                                        DWORD, DWORD*) {
    return Guarded("IOemUI::DeviceCapabilitiesW", E_FAIL, [&] {
        TraceScope trace("IOemUI::DeviceCapabilitiesW");
        return trace.Return(E_NOTIMPL);
    });
}

STDMETHODIMP IOemUI::UpgradePrinter(DWORD, PBYTE) {
    return Guarded("IOemUI::UpgradePrinter", E_FAIL, [&] {
        TraceScope trace("IOemUI::UpgradePrinter");
        return trace.Return(E_NOTIMPL);
    });
}

STDMETHODIMP IOemUI::PrinterEvent(PWSTR, INT, DWORD, LPARAM) {
    return Guarded("IOemUI::PrinterEvent", E_FAIL, [&] {
        TraceScope trace("IOemUI::PrinterEvent");
        return trace.Return(E_NOTIMPL);
    });
}

STDMETHODIMP IOemUI::DriverEvent(DWORD, DWORD, LPBYTE, LPARAM) {
    return Guarded("IOemUI::DriverEvent", E_FAIL, [&] {
        TraceScope trace("IOemUI::DriverEvent");
        return trace.Return(E_NOTIMPL);
    });
}

STDMETHODIMP IOemUI::QueryColorProfile(HANDLE, POEMUIOBJ, DEVMODEW*, PVOID, ULONG ulQueryMode,
                                       VOID* pvProfileData, ULONG* pcbProfileData,
                                       FLONG* pflProfileData) {
    return Guarded("IOemUI::QueryColorProfile", E_FAIL, [&] {
        TraceScope trace("IOemUI::QueryColorProfile");
        if (ulQueryMode != QCP_DEVICEPROFILE)
            return trace.Return(E_FAIL);
        if (pcbProfileData == nullptr) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return trace.Return(E_FAIL);
        }
        if (pvProfileData == nullptr || *pcbProfileData < kProfileBytes) {
            *pcbProfileData = kProfileBytes;
            SetLastError(ERROR_INSUFFICIENT_BUFFER);
            return trace.Return(E_FAIL);
        }
        const HRESULT hr = CopyWideBounded(pvProfileData, *pcbProfileData, kProfileName);
        if (FAILED(hr)) {
            SetLastError(static_cast<DWORD>(hr));
            return trace.Return(E_FAIL);
        }
        *pcbProfileData = kProfileBytes;
        if (pflProfileData != nullptr)
            *pflProfileData = QCP_PROFILEDISK;
        return trace.Return(hr);
    });
}

STDMETHODIMP IOemUI::FontInstallerDlgProc(HWND, UINT, WPARAM, LPARAM) {
    return Guarded("IOemUI::FontInstallerDlgProc", E_FAIL, [&] {
        TraceScope trace("IOemUI::FontInstallerDlgProc");
        return trace.Return(E_NOTIMPL);
    });
}

STDMETHODIMP IOemUI::UpdateExternalFonts(HANDLE, HANDLE, PWSTR) {
    return Guarded("IOemUI::UpdateExternalFonts", E_FAIL, [&] {
        TraceScope trace("IOemUI::UpdateExternalFonts");
        return trace.Return(E_NOTIMPL);
    });
}
