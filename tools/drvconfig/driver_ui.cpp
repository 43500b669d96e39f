// The driver's IPrintOemDriverUI: driver settings by feature name, the rest not implemented.
#include "driver_ui.h"

#include <cstdint>
#include <cstring>

namespace {

// Feature names are GPD keywords; a longer "name" is a bad pointer or garbage.
constexpr size_t kMaxFeatureName = 256;

}  // namespace

DriverUI::DriverUI() {
    // What the shared GPD selects by default, plus the language monitor's switch.
    settings_["BidiSupport"] = "ENABLE_WAITJOB";
    settings_["Orientation"] = "PORTRAIT";
    settings_["InputBin"] = "ROLL";
    settings_["Resolution"] = "DPI203";
}

HRESULT STDMETHODCALLTYPE DriverUI::QueryInterface(REFIID riid, void** ppv) {
    if (ppv == nullptr)
        return E_POINTER;
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IPrintOemDriverUI)) {
        *ppv = static_cast<IPrintOemDriverUI*>(this);
        AddRef();
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

ULONG STDMETHODCALLTYPE DriverUI::AddRef() {
    return static_cast<ULONG>(InterlockedIncrement(&refs_));
}

ULONG STDMETHODCALLTYPE DriverUI::Release() {
    return static_cast<ULONG>(InterlockedDecrement(&refs_));
}

HRESULT STDMETHODCALLTYPE DriverUI::DrvGetDriverSetting(PVOID, PCSTR Feature, PVOID pOutput,
                                                        DWORD cbSize, PDWORD pcbNeeded,
                                                        PDWORD pdwOptionsReturned) {
    ++queries_;
    if (pcbNeeded == nullptr || Feature == nullptr)
        return E_INVALIDARG;
    // Values below 0x10000 are OEMGDS_ constants, not names; this driver keeps none of them.
    if (reinterpret_cast<uintptr_t>(Feature) < 0x10000)
        return E_NOTIMPL;
    const size_t len = strnlen(Feature, kMaxFeatureName);
    if (len == kMaxFeatureName)
        return E_INVALIDARG;
    const auto it = settings_.find(std::string(Feature, len));
    if (it == settings_.end()) {
        *pcbNeeded = 0;
        return E_INVALIDARG;
    }
    // The selected options as a multi-string: one name, its NUL, the closing NUL.
    const DWORD needed = static_cast<DWORD>(it->second.size() + 2);
    *pcbNeeded = needed;
    if (pOutput == nullptr || cbSize < needed) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return E_FAIL;
    }
    std::memcpy(pOutput, it->second.c_str(), it->second.size() + 1);
    static_cast<char*>(pOutput)[needed - 1] = '\0';
    if (pdwOptionsReturned != nullptr)
        *pdwOptionsReturned = 1;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE DriverUI::DrvUpgradeRegistrySetting(HANDLE, PCSTR, PCSTR) {
    return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE DriverUI::DrvUpdateUISetting(PVOID, PVOID, DWORD, DWORD) {
    return E_NOTIMPL;
}

BOOL APIENTRY DriverUI::GetSettingProc(PVOID pdriverobj, PCSTR Feature, PVOID pOutput, DWORD cbSize,
                                       PDWORD pcbNeeded, PDWORD pdwOptionsReturned) {
    // OEMUIOBJ is the object's second member; the plug-in hands back a pointer to it.
    if (pdriverobj == nullptr)
        return FALSE;
    auto* object = reinterpret_cast<DriverObject*>(static_cast<BYTE*>(pdriverobj) -
                                                   offsetof(DriverObject, obj));
    if (object->helper == nullptr)
        return FALSE;
    return SUCCEEDED(object->helper->DrvGetDriverSetting(pdriverobj, Feature, pOutput, cbSize,
                                                         pcbNeeded, pdwOptionsReturned));
}

BOOL APIENTRY DriverUI::UpdateUISettingProc(PVOID, PVOID, DWORD, DWORD) {
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return FALSE;
}
