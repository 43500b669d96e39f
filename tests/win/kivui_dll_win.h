// Loads the KivUI.dll beside the test program and creates its objects as the framework does.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

#include "win/windows_headers_win.h"
#include "settings/oemdev.h"
#include "win/oem_framework_win.h"

using DllGetClassObjectFn = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using DllCanUnloadNowFn = HRESULT(STDAPICALLTYPE*)();

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
    void** out() { return reinterpret_cast<void**>(&p_); }
    T* detach() { return std::exchange(p_, nullptr); }

  private:
    T* p_;
};

// The plug-in module, freed with this object. Get() is the one loaded for the whole test
// program (as a driver keeps it loaded); the program's own folder comes first in the search, so
// it is the copy beside it.
class KivUiDll {
  public:
    explicit KivUiDll(const wchar_t* file) : module(LoadLibraryW(file)) {}
    ~KivUiDll() {
        if (module != nullptr)
            FreeLibrary(module);
    }
    KivUiDll(const KivUiDll&) = delete;
    KivUiDll& operator=(const KivUiDll&) = delete;
    static KivUiDll& Get() {
        static KivUiDll dll(L"KivUI.dll");
        return dll;
    }
    bool Loaded() const { return getClassObject != nullptr && canUnloadNow != nullptr; }

    // The framework's sequence: class factory, CreateInstance(IUnknown), QueryInterface.
    IPrintOemUI* CreateOemUI() const {
        ComRef<IClassFactory> factory;
        ComRef<IUnknown> unknown;
        IPrintOemUI* ui = nullptr;
        if (Loaded() && SUCCEEDED(getClassObject(CLSID_OEMUI, IID_IClassFactory, factory.out())) &&
            SUCCEEDED(factory->CreateInstance(nullptr, IID_IUnknown, unknown.out()))) {
            unknown->QueryInterface(IID_IPrintOemUI, reinterpret_cast<void**>(&ui));
        }
        return ui;
    }

    const HMODULE module;
    const DllGetClassObjectFn getClassObject = Export<DllGetClassObjectFn>("DllGetClassObject");
    const DllCanUnloadNowFn canUnloadNow = Export<DllCanUnloadNowFn>("DllCanUnloadNow");

  private:
    template <typename Fn>
    Fn Export(const char* name) const {
        return module == nullptr
                   ? nullptr
                   : reinterpret_cast<Fn>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    }
};

// A test holding a fresh driver UI object of the plug-in.
class OemUiTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_NE(nullptr, ui_.get()) << "KivUI.dll not loadable"; }
    ComRef<IPrintOemUI> ui_{KivUiDll::Get().CreateOemUI()};
};

// A fresh folder under the temporary folder, removed with everything in it at the end.
struct TempFolder {
    inline static int serial = 0;
    const std::string path =
        (std::filesystem::temp_directory_path() /
         ("kivtest_" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(++serial)))
            .string();
    TempFolder() { std::filesystem::create_directories(path); }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

// A printer name no real printer has, unique to this test process.
inline std::wstring ScratchPrinterName(const wchar_t* tag) {
    return std::wstring(L"KivComTest ") + tag + L" " + std::to_wstring(GetCurrentProcessId());
}

// Deletes the printer's configuration key (and everything below it) before and after a scope.
class ScratchConfigKey {
  public:
    explicit ScratchConfigKey(std::wstring printerName) : name_(std::move(printerName)) {
        Delete();
    }
    ~ScratchConfigKey() { Delete(); }
    ScratchConfigKey(const ScratchConfigKey&) = delete;
    ScratchConfigKey& operator=(const ScratchConfigKey&) = delete;
    std::wstring Path() const { return L"Software\\Orvane\\Kiv\\" + name_; }

  private:
    void Delete() const { RegDeleteTreeW(HKEY_CURRENT_USER, Path().c_str()); }
    std::wstring name_;
};

// The framework's parameter block of one DevMode call.
inline OEMDMPARAM DevModeParam(void* in, void* out, DWORD bufSize = OEMDEV_SIZE) {
    OEMDMPARAM param{};
    param.cbSize = sizeof param;
    param.pOEMDMIn = in;
    param.pOEMDMOut = out;
    param.cbBufSize = bufSize;
    return param;
}
