// Tests of KivUI.dll's entry points and class factory, called as the framework calls them.
#include <gtest/gtest.h>

#include "kivui_dll_win.h"

namespace {

void* const kGarbage = reinterpret_cast<void*>(static_cast<uintptr_t>(0xBAADF00D));
const GUID kForeignClsid = {
    0x6d6abf26, 0x9f38, 0x11d1, {0x88, 0x2a, 0x00, 0xc0, 0x4f, 0xb9, 0x61, 0xec}};

class ComEntry : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(KivUiDll::Get().Loaded()) << "KivUI.dll not loadable"; }
    DllGetClassObjectFn GetClassObject() { return KivUiDll::Get().GetClassObject(); }
    HRESULT CanUnloadNow() { return KivUiDll::Get().CanUnloadNow()(); }
};

TEST_F(ComEntry, GetClassObjectResults) {
    EXPECT_EQ(E_POINTER, GetClassObject()(CLSID_OEMUI, IID_IClassFactory, nullptr));

    struct Case {
        const char* what;
        const GUID& clsid;
        const GUID& iid;
        HRESULT expected;
    };
    const Case cases[] = {
        {"rendering class id", kForeignClsid, IID_IClassFactory, CLASS_E_CLASSNOTAVAILABLE},
        {"interface id as class id", IID_IPrintOemUI, IID_IClassFactory, CLASS_E_CLASSNOTAVAILABLE},
        {"class factory", CLSID_OEMUI, IID_IClassFactory, S_OK},
        {"unknown", CLSID_OEMUI, IID_IUnknown, S_OK},
        {"the UI interface is not the factory's", CLSID_OEMUI, IID_IPrintOemUI, E_NOINTERFACE},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        void* out = kGarbage;
        EXPECT_EQ(c.expected, GetClassObject()(c.clsid, c.iid, &out));
        if (c.expected == S_OK) {
            ASSERT_NE(nullptr, out);
            // The caller holds the only reference: one more and one less give 2 and 1.
            IUnknown* unknown = static_cast<IUnknown*>(out);
            EXPECT_EQ(2u, unknown->AddRef());
            EXPECT_EQ(1u, unknown->Release());
            EXPECT_EQ(0u, unknown->Release());
        } else {
            EXPECT_EQ(nullptr, out);
        }
    }
}

TEST_F(ComEntry, FactoryQueryInterface) {
    ComRef<IClassFactory> factory;
    ASSERT_EQ(S_OK, GetClassObject()(CLSID_OEMUI, IID_IClassFactory,
                                     reinterpret_cast<void**>(factory.out())));
    void* out = kGarbage;
    EXPECT_EQ(S_OK, factory->QueryInterface(IID_IUnknown, &out));
    EXPECT_EQ(static_cast<void*>(factory.get()), out);
    static_cast<IUnknown*>(out)->Release();
    EXPECT_EQ(S_OK, factory->QueryInterface(IID_IClassFactory, &out));
    static_cast<IUnknown*>(out)->Release();
    out = kGarbage;
    EXPECT_EQ(E_NOINTERFACE, factory->QueryInterface(IID_IPrintOemUI, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(E_POINTER, factory->QueryInterface(IID_IUnknown, nullptr));
    EXPECT_EQ(2u, factory->AddRef());
    EXPECT_EQ(1u, factory->Release());
}

TEST_F(ComEntry, CreateInstanceResults) {
    ComRef<IClassFactory> factory;
    ASSERT_EQ(S_OK, GetClassObject()(CLSID_OEMUI, IID_IClassFactory,
                                     reinterpret_cast<void**>(factory.out())));
    EXPECT_EQ(E_POINTER, factory->CreateInstance(nullptr, IID_IUnknown, nullptr));

    void* out = kGarbage;
    EXPECT_EQ(
        CLASS_E_NOAGGREGATION,
        factory->CreateInstance(reinterpret_cast<IUnknown*>(factory.get()), IID_IUnknown, &out));
    EXPECT_EQ(nullptr, out);

    struct Case {
        const char* what;
        const GUID& iid;
        HRESULT expected;
    };
    const Case cases[] = {
        {"unknown", IID_IUnknown, S_OK},
        {"UI interface", IID_IPrintOemUI, S_OK},
        {"newer UI interface", IID_IPrintOemUI2, E_NOINTERFACE},
        {"common interface alone", IID_IPrintOemCommon, E_NOINTERFACE},
        {"class factory", IID_IClassFactory, E_NOINTERFACE},
        {"driver helper", IID_IPrintOemDriverUI, E_NOINTERFACE},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        out = kGarbage;
        EXPECT_EQ(c.expected, factory->CreateInstance(nullptr, c.iid, &out));
        if (c.expected == S_OK) {
            ASSERT_NE(nullptr, out);
            IUnknown* unknown = static_cast<IUnknown*>(out);
            EXPECT_EQ(2u, unknown->AddRef());
            EXPECT_EQ(1u, unknown->Release());
            EXPECT_EQ(0u, unknown->Release());
        } else {
            EXPECT_EQ(nullptr, out);
        }
    }
}

TEST_F(ComEntry, UiObjectInterfaces) {
    ComRef<IPrintOemUI> ui(KivUiDll::Get().CreateOemUI());
    ASSERT_NE(nullptr, ui.get());
    void* out = kGarbage;
    EXPECT_EQ(S_OK, ui->QueryInterface(IID_IUnknown, &out));
    // One identity for both interfaces.
    EXPECT_EQ(static_cast<void*>(ui.get()), out);
    static_cast<IUnknown*>(out)->Release();
    for (const GUID* iid : {&IID_IPrintOemUI2, &IID_IPrintOemCommon, &IID_IClassFactory}) {
        out = kGarbage;
        EXPECT_EQ(E_NOINTERFACE, ui->QueryInterface(*iid, &out));
        EXPECT_EQ(nullptr, out);
    }
    EXPECT_EQ(2u, ui->AddRef());
    EXPECT_EQ(1u, ui->Release());
}

TEST_F(ComEntry, CanUnloadNowFollowsLockServerOnly) {
    ASSERT_EQ(S_OK, CanUnloadNow());
    ComRef<IClassFactory> factory;
    ASSERT_EQ(S_OK, GetClassObject()(CLSID_OEMUI, IID_IClassFactory,
                                     reinterpret_cast<void**>(factory.out())));
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    EXPECT_EQ(S_FALSE, CanUnloadNow());
    EXPECT_EQ(S_OK, factory->LockServer(TRUE));
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    EXPECT_EQ(S_FALSE, CanUnloadNow());
    EXPECT_EQ(S_OK, factory->LockServer(FALSE));
    EXPECT_EQ(S_OK, CanUnloadNow());

    // Live objects and factories do not hold the module.
    ComRef<IPrintOemUI> ui(KivUiDll::Get().CreateOemUI());
    ASSERT_NE(nullptr, ui.get());
    EXPECT_EQ(S_OK, CanUnloadNow());
}

}  // namespace
