// Loads the KivUI.dll beside the test program and creates its objects as the framework does.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "win/windows_headers.h"
#include "win/oem_framework.h"

using DllGetClassObjectFn = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using DllCanUnloadNowFn = HRESULT(STDAPICALLTYPE*)();

// The plug-in module, loaded once for the whole test program (as a driver keeps it loaded).
class KivUiDll {
  public:
    static KivUiDll& Get() {
        static KivUiDll dll;
        return dll;
    }
    bool Loaded() const { return module_ != nullptr && getClassObject_ != nullptr; }
    DllGetClassObjectFn GetClassObject() const { return getClassObject_; }
    DllCanUnloadNowFn CanUnloadNow() const { return canUnloadNow_; }

    // The framework's sequence: class factory, CreateInstance(IUnknown), QueryInterface.
    IPrintOemUI* CreateOemUI() const {
        IClassFactory* factory = nullptr;
        if (FAILED(getClassObject_(CLSID_OEMUI, IID_IClassFactory,
                                   reinterpret_cast<void**>(&factory)))) {
            return nullptr;
        }
        IUnknown* unknown = nullptr;
        const HRESULT hr =
            factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&unknown));
        factory->Release();
        if (FAILED(hr))
            return nullptr;
        IPrintOemUI* ui = nullptr;
        unknown->QueryInterface(IID_IPrintOemUI, reinterpret_cast<void**>(&ui));
        unknown->Release();
        return ui;
    }

  private:
    KivUiDll() {
        wchar_t path[MAX_PATH];
        const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
        std::wstring file(path, length);
        file = file.substr(0, file.find_last_of(L"\\/") + 1) + L"KivUI.dll";
        module_ = LoadLibraryW(file.c_str());
        if (module_ != nullptr) {
            getClassObject_ = reinterpret_cast<DllGetClassObjectFn>(
                reinterpret_cast<void*>(GetProcAddress(module_, "DllGetClassObject")));
            canUnloadNow_ = reinterpret_cast<DllCanUnloadNowFn>(
                reinterpret_cast<void*>(GetProcAddress(module_, "DllCanUnloadNow")));
        }
    }

    HMODULE module_ = nullptr;
    DllGetClassObjectFn getClassObject_ = nullptr;
    DllCanUnloadNowFn canUnloadNow_ = nullptr;
};

// Releases an interface at the end of a scope.
template <typename T>
class ComRef {
  public:
    explicit ComRef(T* p = nullptr) : p_(p) {}
    ~ComRef() {
        if (p_ != nullptr)
            p_->Release();
    }
    ComRef(const ComRef&) = delete;
    ComRef& operator=(const ComRef&) = delete;
    T* operator->() const { return p_; }
    T* get() const { return p_; }
    T** out() { return &p_; }
    T* detach() {
        T* p = p_;
        p_ = nullptr;
        return p;
    }

  private:
    T* p_;
};

// A printer name no real printer has, unique to this test process.
inline std::wstring ScratchPrinterName(const wchar_t* tag) {
    return std::wstring(L"KivComTest ") + tag + L" " + std::to_wstring(GetCurrentProcessId());
}

// Deletes the printer's configuration key (and everything below it) at the end of a scope.
class ScratchConfigKey {
  public:
    explicit ScratchConfigKey(std::wstring printerName) : name_(std::move(printerName)) {
        Delete();
    }
    ~ScratchConfigKey() { Delete(); }
    ScratchConfigKey(const ScratchConfigKey&) = delete;
    ScratchConfigKey& operator=(const ScratchConfigKey&) = delete;
    std::wstring Path() const { return L"Software\\Orvane\\Kiv\\" + name_; }
    bool Exists() const {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, Path().c_str(), 0, KEY_READ | KEY_WOW64_64KEY, &key) !=
            ERROR_SUCCESS) {
            return false;
        }
        RegCloseKey(key);
        return true;
    }

  private:
    void Delete() const { RegDeleteTreeW(HKEY_CURRENT_USER, Path().c_str()); }
    std::wstring name_;
};
