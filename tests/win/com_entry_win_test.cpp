// Tests of KivUI.dll's entry points and class factory, called as the framework calls them.
#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

#include "kivui_dll_win.h"
#include "process_usage.h"
#include "wine_printer.h"

namespace {

void* const kGarbage = reinterpret_cast<void*>(static_cast<uintptr_t>(0xBAADF00D));
const GUID kForeignClsid = {
    0x6d6abf26, 0x9f38, 0x11d1, {0x88, 0x2a, 0x00, 0xc0, 0x4f, 0xb9, 0x61, 0xec}};

// The fixture's driver UI object stays alive through every test.
class ComEntry : public OemUiTest {
  protected:
    void SetUp() override {
        OemUiTest::SetUp();
        if (HasFatalFailure())
            return;
        ASSERT_EQ(S_OK, GetClassObject()(CLSID_OEMUI, IID_IClassFactory, factory_.out()));
    }
    static DllGetClassObjectFn GetClassObject() { return KivUiDll::Get().getClassObject; }
    ComRef<IClassFactory> factory_;
};

// On success the caller holds the only reference to a new object; on failure the out pointer is
// cleared.
TEST_F(ComEntry, GetClassObjectAndCreateInstanceResults) {
    EXPECT_EQ(E_POINTER, GetClassObject()(CLSID_OEMUI, IID_IClassFactory, nullptr));
    EXPECT_EQ(E_POINTER, factory_->CreateInstance(nullptr, IID_IUnknown, nullptr));
    void* out = kGarbage;
    EXPECT_EQ(CLASS_E_NOAGGREGATION, factory_->CreateInstance(factory_.get(), IID_IUnknown, &out));
    EXPECT_EQ(nullptr, out);
    struct Case {
        const char* what;
        const GUID* clsid;  // null: the factory's CreateInstance
        const GUID& iid;
        HRESULT expected;
    };
    const Case cases[] = {
        {"rendering class id", &kForeignClsid, IID_IClassFactory, CLASS_E_CLASSNOTAVAILABLE},
        {"class factory", &CLSID_OEMUI, IID_IClassFactory, S_OK},
        {"class object as unknown", &CLSID_OEMUI, IID_IUnknown, S_OK},
        {"the UI interface is not the factory's", &CLSID_OEMUI, IID_IPrintOemUI, E_NOINTERFACE},
        {"instance as unknown", nullptr, IID_IUnknown, S_OK},
        {"instance as UI interface", nullptr, IID_IPrintOemUI, S_OK},
        {"newer UI interface", nullptr, IID_IPrintOemUI2, E_NOINTERFACE},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        out = kGarbage;
        EXPECT_EQ(c.expected, c.clsid != nullptr ? GetClassObject()(*c.clsid, c.iid, &out)
                                                 : factory_->CreateInstance(nullptr, c.iid, &out));
        EXPECT_EQ(c.expected == S_OK, out != nullptr);
        if (c.expected == S_OK && out != nullptr) {
            EXPECT_EQ(0u, static_cast<IUnknown*>(out)->Release());
        }
    }
}

// Each object answers its own interfaces with one identity and one added reference, and refuses
// the rest (CreateInstance answers through the object's own query, so its refusals are above).
TEST_F(ComEntry, QueryInterfaceOfFactoryAndUiObject) {
    struct Case {
        const char* what;
        IUnknown* object;
        const GUID& iid;
        HRESULT expected;
    };
    const Case cases[] = {
        {"factory as unknown", factory_.get(), IID_IUnknown, S_OK},
        {"factory as factory", factory_.get(), IID_IClassFactory, S_OK},
        {"factory as UI", factory_.get(), IID_IPrintOemUI, E_NOINTERFACE},
        {"UI as unknown", ui_.get(), IID_IUnknown, S_OK},
        {"UI as UI", ui_.get(), IID_IPrintOemUI, S_OK},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        void* out = kGarbage;
        EXPECT_EQ(c.expected, c.object->QueryInterface(c.iid, &out));
        EXPECT_EQ(c.expected == S_OK ? static_cast<void*>(c.object) : nullptr, out);
        if (c.expected == S_OK && out == c.object) {
            EXPECT_EQ(1u, c.object->Release());  // one reference added, the fixture's kept
        }
    }
    EXPECT_EQ(E_POINTER, factory_->QueryInterface(IID_IUnknown, nullptr));
}

// Live objects and factories do not hold the module; only LockServer does.
TEST_F(ComEntry, CanUnloadNowFollowsLockServerOnly) {
    const DllCanUnloadNowFn canUnloadNow = KivUiDll::Get().canUnloadNow;
    EXPECT_EQ(S_OK, canUnloadNow());
    EXPECT_EQ(S_OK, factory_->LockServer(TRUE));
    EXPECT_EQ(S_FALSE, canUnloadNow());
    EXPECT_EQ(S_OK, factory_->LockServer(TRUE));
    EXPECT_EQ(S_OK, factory_->LockServer(FALSE));
    EXPECT_EQ(S_FALSE, canUnloadNow());
    EXPECT_EQ(S_OK, factory_->LockServer(FALSE));
    EXPECT_EQ(S_OK, canUnloadNow());
}

// The framework loads and frees the plug-in around each properties call: a copy under its own
// name (the test program keeps KivUI.dll itself loaded) is loaded, asked for its defaults and
// freed 50 times, once first so that the system DLLs it pulls in stay, and nothing may remain.
TEST(ComEntryModule, LoadingAndFreeingLeavesNothingBehind) {
    const std::wstring copy = ModuleFolder() + L"\\KivUI_load_test.dll";
    ASSERT_TRUE(CopyFileW((ModuleFolder() + L"\\KivUI.dll").c_str(), copy.c_str(), FALSE));
    const auto loadAndFree = [&] {
        {
            const KivUiDll dll(copy.c_str());
            const ComRef<IPrintOemUI> ui(dll.CreateOemUI());
            ASSERT_NE(nullptr, ui.get());
            std::vector<BYTE> record(OEMDEV_SIZE);
            OEMDMPARAM param = DevModeParam(nullptr, record.data());
            EXPECT_EQ(S_OK, ui->DevMode(OEMDM_DEFAULT, &param));
        }
        ASSERT_EQ(GetModuleHandleW(copy.c_str()), nullptr);
    };
    loadAndFree();
    const uint64_t heapBefore = HeapBytesInUse();
    const int handlesBefore = OpenHandles();
    for (int i = 0; i < 50; ++i)
        loadAndFree();
    const uint64_t heapAfter = HeapBytesInUse();
    const int handlesAfter = OpenHandles();
    DeleteFileW(copy.c_str());
    std::cout << "50 loads: heap " << heapBefore << " -> " << heapAfter << " bytes, handles "
              << handlesBefore << " -> " << handlesAfter << "\n";
    EXPECT_LE(heapAfter, heapBefore);
    EXPECT_LE(handlesAfter, handlesBefore);
}

}  // namespace
