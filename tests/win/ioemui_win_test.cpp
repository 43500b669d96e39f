// Tests of IOemUI as the framework calls it: slot order, GetInfo, DevMode, helper, colour profile.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "entry/intrface.h"
#include "entry/oem_ui_state.h"
#include "fake_log_platform.h"
#include "kivui_dll_win.h"
#include "settings/oemdev.h"

namespace {

constexpr DWORD kUntouched = 0xA5A5A5A5;

class OemUi : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(KivUiDll::Get().Loaded());
        ui_ = KivUiDll::Get().CreateOemUI();
        ASSERT_NE(nullptr, ui_);
    }
    void TearDown() override {
        if (ui_ != nullptr)
            ui_->Release();
    }
    IPrintOemUI* ui_ = nullptr;
};

// Calls through the raw vtable by slot number, independent of the header's declaration order.
template <typename Fn>
Fn Slot(IUnknown* object, size_t index) {
    void** vtable = *reinterpret_cast<void***>(object);
    return reinterpret_cast<Fn>(vtable[index]);
}

TEST_F(OemUi, SlotsInFrameworkOrder) {
    using GetInfoFn = HRESULT(STDMETHODCALLTYPE*)(void*, DWORD, PVOID, DWORD, PDWORD);
    DWORD value = 0, needed = 0;
    EXPECT_EQ(S_OK, Slot<GetInfoFn>(ui_, 3)(ui_, OEMGI_GETSIGNATURE, &value, 4, &needed));
    EXPECT_EQ(0x4B495643u, value);

    using DevModeFn = HRESULT(STDMETHODCALLTYPE*)(void*, DWORD, POEMDMPARAM);
    OEMDMPARAM param{};
    param.cbSize = sizeof param;
    EXPECT_EQ(S_OK, Slot<DevModeFn>(ui_, 4)(ui_, OEMDM_SIZE, &param));
    EXPECT_EQ(3329u, param.cbBufSize);

    using PublishFn = HRESULT(STDMETHODCALLTYPE*)(void*, IUnknown*);
    EXPECT_EQ(E_FAIL, Slot<PublishFn>(ui_, 5)(ui_, nullptr));

    using CommonUiFn = HRESULT(STDMETHODCALLTYPE*)(void*, DWORD, POEMCUIPPARAM);
    OEMCUIPPARAM cuip{};
    cuip.cOEMOptItems = 7;
    EXPECT_EQ(S_OK, Slot<CommonUiFn>(ui_, 6)(ui_, OEMCUIP_PRNPROP, &cuip));
    EXPECT_EQ(0u, cuip.cOEMOptItems);

    using SheetsFn = HRESULT(STDMETHODCALLTYPE*)(void*, PPROPSHEETUI_INFO, LPARAM);
    PROPSHEETUI_INFO info{};
    EXPECT_EQ(S_OK, Slot<SheetsFn>(ui_, 8)(ui_, &info, 0));

    using DevQueryFn =
        HRESULT(STDMETHODCALLTYPE*)(void*, POEMUIOBJ, PDEVQUERYPRINT_INFO, DEVMODEW*, PVOID);
    EXPECT_EQ(E_NOTIMPL, Slot<DevQueryFn>(ui_, 9)(ui_, nullptr, nullptr, nullptr, nullptr));
    using DevCapsFn = HRESULT(STDMETHODCALLTYPE*)(void*, POEMUIOBJ, HANDLE, PWSTR, WORD, PVOID,
                                                  DEVMODEW*, PVOID, DWORD, DWORD*);
    EXPECT_EQ(E_NOTIMPL, Slot<DevCapsFn>(ui_, 10)(ui_, nullptr, nullptr, nullptr, 0, nullptr,
                                                  nullptr, nullptr, 0, nullptr));
    using UpgradeFn = HRESULT(STDMETHODCALLTYPE*)(void*, DWORD, PBYTE);
    EXPECT_EQ(E_NOTIMPL, Slot<UpgradeFn>(ui_, 11)(ui_, 1, nullptr));
    using PrinterEventFn = HRESULT(STDMETHODCALLTYPE*)(void*, PWSTR, INT, DWORD, LPARAM);
    EXPECT_EQ(E_NOTIMPL, Slot<PrinterEventFn>(ui_, 12)(ui_, nullptr, 0, 0, 0));
    using DriverEventFn = HRESULT(STDMETHODCALLTYPE*)(void*, DWORD, DWORD, LPBYTE, LPARAM);
    EXPECT_EQ(E_NOTIMPL, Slot<DriverEventFn>(ui_, 13)(ui_, 1, 1, nullptr, 0));

    using ProfileFn = HRESULT(STDMETHODCALLTYPE*)(void*, HANDLE, POEMUIOBJ, DEVMODEW*, PVOID, ULONG,
                                                  VOID*, ULONG*, FLONG*);
    ULONG size = 0;
    EXPECT_EQ(E_FAIL, Slot<ProfileFn>(ui_, 14)(ui_, nullptr, nullptr, nullptr, nullptr,
                                               QCP_DEVICEPROFILE, nullptr, &size, nullptr));
    EXPECT_EQ(32u, size);

    using FontDlgFn = HRESULT(STDMETHODCALLTYPE*)(void*, HWND, UINT, WPARAM, LPARAM);
    EXPECT_EQ(E_NOTIMPL, Slot<FontDlgFn>(ui_, 15)(ui_, nullptr, 0, 0, 0));
    using FontsFn = HRESULT(STDMETHODCALLTYPE*)(void*, HANDLE, HANDLE, PWSTR);
    EXPECT_EQ(E_NOTIMPL, Slot<FontsFn>(ui_, 16)(ui_, nullptr, nullptr, nullptr));
}

TEST_F(OemUi, GetInfoCases) {
    struct Case {
        const char* what;
        DWORD mode;
        bool buffer;
        DWORD cbSize;
        bool withNeeded;
        HRESULT hr;
        DWORD lastError;  // kUntouched: not checked
        DWORD needed;     // kUntouched: left alone
        DWORD value;      // kUntouched: buffer left alone
    };
    const Case cases[] = {
        {"signature", OEMGI_GETSIGNATURE, true, 4, true, S_OK, kUntouched, 4, 0x4B495643},
        {"version", OEMGI_GETVERSION, true, 8, true, S_OK, kUntouched, 4, 1},
        {"interface version is refused", OEMGI_GETINTERFACEVERSION, true, 4, true, E_FAIL, 87,
         kUntouched, kUntouched},
        {"mode 0", 0, true, 4, true, E_FAIL, 87, kUntouched, kUntouched},
        {"mode 5", OEMGI_GETREQUESTEDHELPERINTERFACES, true, 4, true, E_FAIL, 87, kUntouched,
         kUntouched},
        {"no pcbNeeded", OEMGI_GETSIGNATURE, true, 4, false, E_FAIL, 87, kUntouched, kUntouched},
        {"3-byte buffer", OEMGI_GETSIGNATURE, true, 3, true, E_FAIL, 122, 4, kUntouched},
        {"no buffer", OEMGI_GETVERSION, false, 4, true, E_FAIL, 122, 4, kUntouched},
        {"publisher info", OEMGI_GETPUBLISHERINFO, true, 4, true, E_FAIL, 50, 0, kUntouched},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        DWORD value = kUntouched;
        DWORD needed = kUntouched;
        SetLastError(kUntouched);
        EXPECT_EQ(c.hr, ui_->GetInfo(c.mode, c.buffer ? &value : nullptr, c.cbSize,
                                     c.withNeeded ? &needed : nullptr));
        if (c.lastError != kUntouched) {
            EXPECT_EQ(c.lastError, GetLastError());
        }
        EXPECT_EQ(c.needed, needed);
        EXPECT_EQ(c.value, value);
    }
}

TEST_F(OemUi, QueryColorProfileCases) {
    struct Case {
        const char* what;
        ULONG mode;
        ULONG bufferBytes;  // 0: no buffer
        HRESULT hr;
        ULONG sizeAfter;
        FLONG flagsAfter;
        bool nameWritten;
    };
    const Case cases[] = {
        {"source profile is not served", QCP_SOURCEPROFILE, 64, E_FAIL, 64, 0, false},
        {"no buffer asks for 32", QCP_DEVICEPROFILE, 0, E_FAIL, 32, 0, false},
        {"30 bytes would hold the name, still 32 asked", QCP_DEVICEPROFILE, 30, E_FAIL, 32, 0,
         false},
        {"exactly 32", QCP_DEVICEPROFILE, 32, S_OK, 32, QCP_PROFILEDISK, true},
        {"larger buffer reports 32", QCP_DEVICEPROFILE, 64, S_OK, 32, QCP_PROFILEDISK, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<BYTE> buffer(80, 0xEE);
        ULONG size = c.bufferBytes == 0 ? 64 : c.bufferBytes;
        FLONG flags = 0;
        SetLastError(0);
        EXPECT_EQ(c.hr, ui_->QueryColorProfile(nullptr, nullptr, nullptr, nullptr, c.mode,
                                               c.bufferBytes == 0 ? nullptr : buffer.data(), &size,
                                               &flags));
        EXPECT_EQ(c.sizeAfter, size);
        EXPECT_EQ(c.flagsAfter, flags);
        if (c.hr == E_FAIL && c.mode == QCP_DEVICEPROFILE) {
            EXPECT_EQ(122u, GetLastError());
        }
        if (c.nameWritten) {
            EXPECT_STREQ(L"OEMPROFILE.icm", reinterpret_cast<const wchar_t*>(buffer.data()));
        } else {
            EXPECT_EQ(0xEE, buffer[0]);
        }
        // Never a byte past what the caller offered.
        if (c.bufferBytes != 0 && c.bufferBytes < buffer.size()) {
            EXPECT_EQ(0xEE, buffer[c.bufferBytes]);
        }
    }
}

// A record placed so that its last readable byte is the last byte before an inaccessible page:
// any read past the size the record declares faults.
class GuardedRecord {
  public:
    explicit GuardedRecord(size_t bytes) : bytes_(bytes) {
        SYSTEM_INFO si;
        GetSystemInfo(&si);
        page_ = si.dwPageSize;
        const size_t dataPages = (bytes + page_ - 1) / page_;
        base_ = static_cast<BYTE*>(VirtualAlloc(nullptr, (dataPages + 1) * page_,
                                                MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        DWORD old = 0;
        VirtualProtect(base_ + dataPages * page_, page_, PAGE_NOACCESS, &old);
        data_ = base_ + dataPages * page_ - bytes;
    }
    ~GuardedRecord() { VirtualFree(base_, 0, MEM_RELEASE); }
    GuardedRecord(const GuardedRecord&) = delete;
    GuardedRecord& operator=(const GuardedRecord&) = delete;
    BYTE* data() { return data_; }

  private:
    size_t bytes_;
    size_t page_ = 0;
    BYTE* base_ = nullptr;
    BYTE* data_ = nullptr;
};

void PutU32(BYTE* at, uint32_t value) {
    std::memcpy(at, &value, 4);
}
uint32_t GetU32(const BYTE* at) {
    uint32_t v;
    std::memcpy(&v, at, 4);
    return v;
}

TEST_F(OemUi, DevModeParameterChecks) {
    struct Case {
        const char* what;
        DWORD mode;
        bool param;
        DWORD bufSize;
        HRESULT hr;
        DWORD lastError;
    };
    const Case cases[] = {
        {"mode 0", 0, true, OEMDEV_SIZE, E_FAIL, 87},
        {"mode 5", 5, true, OEMDEV_SIZE, E_FAIL, 87},
        {"no parameter block", OEMDM_SIZE, false, 0, E_FAIL, 87},
        {"default into a short buffer", OEMDM_DEFAULT, true, OEMDEV_SIZE - 1, E_FAIL, 87},
        {"merge into a short buffer", OEMDM_MERGE, true, 100, E_FAIL, 87},
        {"default into a whole buffer", OEMDM_DEFAULT, true, OEMDEV_SIZE, S_OK, kUntouched},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<BYTE> in(OEMDEV_SIZE, 0), out(OEMDEV_SIZE + 16, 0x77);
        OEMDMPARAM param{};
        param.cbSize = sizeof param;
        param.pOEMDMIn = in.data();
        param.pOEMDMOut = out.data();
        param.cbBufSize = c.bufSize;
        SetLastError(kUntouched);
        EXPECT_EQ(c.hr, ui_->DevMode(c.mode, c.param ? &param : nullptr));
        EXPECT_EQ(c.lastError, GetLastError());
        if (c.hr == E_FAIL) {
            EXPECT_EQ(0x77, out[0]);  // nothing written
        }
        EXPECT_EQ(0x77, out[OEMDEV_SIZE]);  // never past the record
    }
}

TEST_F(OemUi, DevModeServices) {
    OEMDMPARAM param{};
    param.cbSize = sizeof param;
    param.cbBufSize = 1;
    ASSERT_EQ(S_OK, ui_->DevMode(OEMDM_SIZE, &param));
    EXPECT_EQ(OEMDEV_SIZE, param.cbBufSize);

    std::vector<BYTE> out(OEMDEV_SIZE, 0x33);
    param.pOEMDMOut = out.data();
    param.cbBufSize = OEMDEV_SIZE;
    ASSERT_EQ(S_OK, ui_->DevMode(OEMDM_DEFAULT, &param));
    EXPECT_EQ(OEMDEV_SIZE, GetU32(&out[0]));
    EXPECT_EQ(KIVITEM_SIGNATURE, GetU32(&out[4]));
    EXPECT_EQ(KIVITEM_SIGN_H, GetU32(&out[12]));
    EXPECT_EQ(2u, GetU32(&out[20]));
    EXPECT_EQ(0, out[24]);
    EXPECT_EQ(KIVITEM_SIGN_T, GetU32(&out[3325]));

    // Conversion reads only what the incoming record declares, here 1000 bytes at a page end.
    GuardedRecord in(1000);
    std::memset(in.data(), 0x41, 1000);
    PutU32(in.data(), 1000);
    PutU32(in.data() + 4, KIVITEM_SIGNATURE);
    PutU32(in.data() + 8, 1);
    param.pOEMDMIn = in.data();
    ASSERT_EQ(S_OK, ui_->DevMode(OEMDM_CONVERT, &param));
    EXPECT_EQ(OEMDEV_SIZE, GetU32(&out[0]));
    EXPECT_EQ(0x41, out[999]);
    EXPECT_EQ(0, out[1000]);
    EXPECT_EQ(KIVITEM_SIGN_T, GetU32(&out[3321]));
    // The merge copy reads no further either.
    ASSERT_EQ(S_OK, ui_->DevMode(OEMDM_MERGE, &param));
}

// Opens the document pages far enough to reach the object's state through pOEMUserData.
OemUiState* StateAfterDocumentPass(IPrintOemUI* ui, const std::wstring& printer) {
    OPTITEM items[1]{};
    OEMCUIPPARAM cuip{};
    cuip.cbSize = sizeof cuip;
    cuip.pPrinterName = const_cast<PWSTR>(printer.c_str());
    cuip.pOEMOptItems = items;
    if (ui->CommonUIProp(OEMCUIP_DOCPROP, &cuip) != S_OK)
        return nullptr;
    return static_cast<OemUiState*>(cuip.pOEMUserData);
}

TEST_F(OemUi, MergeKeepsTheIncomingRecord) {
    const std::wstring printer = ScratchPrinterName(L"merge");
    ScratchConfigKey key(printer);
    // An incoming record with broken head guards: the merged output is reset, the kept copy is
    // the incoming record byte for byte.
    std::vector<BYTE> in(OEMDEV_SIZE, 0x5C);
    PutU32(&in[0], OEMDEV_SIZE);
    PutU32(&in[4], KIVITEM_SIGNATURE);
    PutU32(&in[8], 1);
    std::vector<BYTE> out(OEMDEV_SIZE, 0);
    PutU32(&out[0], OEMDEV_SIZE);
    PutU32(&out[4], KIVITEM_SIGNATURE);
    OEMDMPARAM param{};
    param.cbSize = sizeof param;
    param.pOEMDMIn = in.data();
    param.pOEMDMOut = out.data();
    param.cbBufSize = OEMDEV_SIZE;
    ASSERT_EQ(S_OK, ui_->DevMode(OEMDM_MERGE, &param));
    EXPECT_EQ(0, out[24]);  // body reset in the output

    OemUiState* state = StateAfterDocumentPass(ui_, printer);
    ASSERT_NE(nullptr, state);
    EXPECT_EQ(0, std::memcmp(&state->savedOEMDev, in.data(), OEMDEV_SIZE));
    // The working copy was repaired from it: the guards were broken.
    EXPECT_EQ(KIVITEM_SIGN_H, state->workOEMDev.dwSignHead1);

    // A shorter incoming record is kept as far as it goes; the rest of the copy is zero.
    GuardedRecord shortIn(500);
    std::memset(shortIn.data(), 0x6D, 500);
    PutU32(shortIn.data(), 500);
    PutU32(shortIn.data() + 4, KIVITEM_SIGNATURE);
    param.pOEMDMIn = shortIn.data();
    ASSERT_EQ(S_OK, ui_->DevMode(OEMDM_MERGE, &param));
    const BYTE* saved = reinterpret_cast<const BYTE*>(&state->savedOEMDev);
    EXPECT_EQ(0, std::memcmp(saved, shortIn.data(), 500));
    EXPECT_EQ(0, saved[500]);
    EXPECT_EQ(0, saved[OEMDEV_SIZE - 1]);
}

// An IUnknown that hands out a driver helper (or refuses to) and counts references.
class FakeHelper : public IPrintOemDriverUI {
  public:
    explicit FakeHelper(bool answers) : answers_(answers) {}
    LONG refs = 1;
    int queries = 0;
    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override {
        ++queries;
        if (answers_ &&
            (IsEqualIID(riid, IID_IPrintOemDriverUI) || IsEqualIID(riid, IID_IUnknown))) {
            *ppv = static_cast<IPrintOemDriverUI*>(this);
            AddRef();
            return S_OK;
        }
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++refs); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--refs); }
    STDMETHODIMP DrvGetDriverSetting(PVOID, PCSTR, PVOID, DWORD, PDWORD, PDWORD) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP DrvUpgradeRegistrySetting(HANDLE, PCSTR, PCSTR) override { return E_NOTIMPL; }
    STDMETHODIMP DrvUpdateUISetting(PVOID, PVOID, DWORD, DWORD) override { return E_NOTIMPL; }

  private:
    bool answers_;
};

TEST_F(OemUi, PublishDriverInterfaceKeepsTheFirstHelper) {
    FakeHelper refusing(false), first(true), second(true);
    EXPECT_EQ(E_FAIL, ui_->PublishDriverInterface(&refusing));
    EXPECT_EQ(S_OK, ui_->PublishDriverInterface(&first));
    EXPECT_EQ(2, first.refs);
    EXPECT_EQ(S_OK, ui_->PublishDriverInterface(&second));
    EXPECT_EQ(0, second.queries);
    EXPECT_EQ(1, second.refs);
    // Destroying the object releases the helper it held.
    ui_->Release();
    ui_ = nullptr;
    EXPECT_EQ(1, first.refs);
}

TEST(OemUiCheck, FailedReferenceCheckIsLoggedNotFatal) {
    ScopedTestLog log(kLogError, 0, u"CheckPrinter");
    EXPECT_TRUE(KivCheck(true, "0 == m_cRef", "intrface", 48));
    EXPECT_EQ("", log.Text());
    EXPECT_FALSE(KivCheck(false, "0 == m_cRef", "intrface", 48));
    const std::vector<std::string> messages = log.Messages();
    ASSERT_EQ(1u, messages.size());
    EXPECT_EQ("Assertion failed: 0 == m_cRef, file intrface, line 48", messages[0]);
}

}  // namespace
