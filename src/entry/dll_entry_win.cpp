// Component entry points (DllMain, DllGetClassObject, DllCanUnloadNow) and the class factory
// IOemCF.
#include <cstdio>
#include <new>

#include "entry/intrface_win.h"
#include "infra/guarded.h"
#include "infra/log.h"
#include "ports/platform_win.h"

// The statically linked C++ runtime keeps a 74 KB emergency pool for exceptions thrown when
// memory runs out, and frees it only when asked; without this every unload would leave it in the
// process's heap, since the framework loads and frees the plug-in for each properties call.
namespace __gnu_cxx {
void __freeres();
}

namespace {

HMODULE g_hModule = nullptr;
// Meant as the number of live objects, but nothing ever changes it: unloading depends on the
// lock count alone (kept-behaviour: Object count).
const LONG g_cComponents = 0;
volatile LONG g_cServerLocks = 0;

}  // namespace

HMODULE KivModuleHandle() {
    return g_hModule;
}

LONG KivServerLockCount() {
    return InterlockedCompareExchange(&g_cServerLocks, 0, 0);
}

bool KivCheck(bool condition, const char* expression, const char* source, int line) {
    if (condition)
        return true;
    char text[256];
    std::snprintf(text, sizeof text, "Assertion failed: %s, file %s, line %d", expression, source,
                  line);
    TheLog().Write(kLogError, "KivCheck", "%s", text);
    OutputDebugStringA(text);
    OutputDebugStringA("\n");
    return false;
}

// ---------------------------------------------------------------------------------------------
// IOemCF

STDMETHODIMP IOemCF::QueryInterface(REFIID riid, void** ppv) {
    return Guarded("IOemCF::QueryInterface", E_FAIL, [&] {
        TraceScope trace("IOemCF::QueryInterface");
        if (ppv == nullptr)
            return trace.Return(E_POINTER);
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IClassFactory)) {
            *ppv = static_cast<IClassFactory*>(this);
            AddRef();
            return trace.Return(S_OK);
        }
        TheLog().Write(kLogInfo, "IOemCF::QueryInterface", "IID not supported.");
        *ppv = nullptr;
        return trace.Return(E_NOINTERFACE);
    });
}

STDMETHODIMP_(ULONG) IOemCF::AddRef() {
    return Guarded("IOemCF::AddRef", ULONG{0},
                   [&] { return static_cast<ULONG>(InterlockedIncrement(&m_cRef)); });
}

STDMETHODIMP_(ULONG) IOemCF::Release() {
    return Guarded("IOemCF::Release", ULONG{0}, [&] {
        const LONG count = InterlockedDecrement(&m_cRef);
        if (count == 0)
            delete this;
        return static_cast<ULONG>(count);
    });
}

STDMETHODIMP IOemCF::CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) {
    return Guarded("IOemCF::CreateInstance", E_FAIL, [&] {
        if (ppv == nullptr)
            return E_POINTER;
        *ppv = nullptr;
        if (pUnkOuter != nullptr)
            return CLASS_E_NOAGGREGATION;
        IOemUI* object = new (std::nothrow) IOemUI;
        if (object == nullptr)
            return E_OUTOFMEMORY;
        const HRESULT hr = object->QueryInterface(riid, ppv);
        object->Release();  // a failed query frees the object here
        return hr;
    });
}

STDMETHODIMP IOemCF::LockServer(BOOL fLock) {
    return Guarded("IOemCF::LockServer", E_FAIL, [&] {
        if (fLock) {
            InterlockedIncrement(&g_cServerLocks);
        } else {
            InterlockedDecrement(&g_cServerLocks);
        }
        return S_OK;
    });
}

// ---------------------------------------------------------------------------------------------
// Exports

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD dwReason, LPVOID) {
    return Guarded("DllMain", FALSE, [&] {
        switch (dwReason) {
            case DLL_PROCESS_ATTACH:
                g_hModule = hInstance;
                break;
            case DLL_PROCESS_DETACH:
                TheLog().Close();
                __gnu_cxx::__freeres();
                break;
            default:
                break;
        }
        return TRUE;
    });
}

namespace {

HRESULT GetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    // The log's Win32 side is installed here rather than in DllMain, which must stay minimal.
    InstallWinPlatform(g_hModule);
    TraceScope trace("DllGetClassObject");
    if (ppv == nullptr)
        return trace.Return(E_POINTER);
    *ppv = nullptr;
    if (!IsEqualCLSID(rclsid, CLSID_OEMUI))
        return trace.Return(CLASS_E_CLASSNOTAVAILABLE);
    IOemCF* factory = new (std::nothrow) IOemCF;
    if (factory == nullptr)
        return trace.Return(E_OUTOFMEMORY);
    const HRESULT hr = factory->QueryInterface(riid, ppv);
    factory->Release();
    return trace.Return(hr);
}

}  // namespace

extern "C" HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv) {
    return Guarded("DllGetClassObject", E_FAIL, [&] { return GetClassObject(rclsid, riid, ppv); });
}

extern "C" HRESULT STDAPICALLTYPE DllCanUnloadNow() {
    return Guarded("DllCanUnloadNow", E_FAIL,
                   [] { return g_cComponents != 0 || KivServerLockCount() != 0 ? S_FALSE : S_OK; });
}
