// Component entry points.
#include "win/windows_headers.h"

extern "C" HRESULT __stdcall DllGetClassObject(REFCLSID, REFIID, void** ppv) {
    if (ppv == nullptr) return E_POINTER;
    *ppv = nullptr;
    return CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" HRESULT __stdcall DllCanUnloadNow() { return S_OK; }
