// Tests of IOemUI as the framework calls it: slot order, GetInfo, DevMode, helper, colour profile.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

#include "entry/intrface_win.h"
#include "session/oem_ui_state.h"
#include "fake_log_ports.h"
#include "kivui_dll_win.h"
#include "settings/oemdev.h"

namespace {

constexpr DWORD kUntouched = 0xA5A5A5A5;
using OemUi = OemUiTest;

template <typename T>
UINT_PTR Arg(T* pointer) {
    return reinterpret_cast<UINT_PTR>(pointer);
}

// Calls a method by its slot in the raw vtable, independent of the header's declaration order.
// The x64 caller owns the argument area, so zeros past what a method takes are harmless.
HRESULT CallSlot(IUnknown* object, size_t slot, std::array<UINT_PTR, 8> a = {}) {
    using Fn = HRESULT(STDMETHODCALLTYPE*)(void*, UINT_PTR, UINT_PTR, UINT_PTR, UINT_PTR, UINT_PTR,
                                           UINT_PTR, UINT_PTR, UINT_PTR);
    const Fn fn = reinterpret_cast<Fn>((*reinterpret_cast<void***>(object))[slot]);
    return fn(object, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7]);
}

TEST_F(OemUi, SlotsInFrameworkOrder) {
    IUnknown* ui = ui_.get();
    DWORD value = 0, needed = 0;
    EXPECT_EQ(S_OK, CallSlot(ui, 3, {OEMGI_GETSIGNATURE, Arg(&value), 4, Arg(&needed)}));
    EXPECT_EQ(0x4B495643u, value);
    OEMDMPARAM param = DevModeParam(nullptr, nullptr, 0);
    EXPECT_EQ(S_OK, CallSlot(ui, 4, {OEMDM_SIZE, Arg(&param)}));
    EXPECT_EQ(OEMDEV_SIZE, param.cbBufSize);
    EXPECT_EQ(E_FAIL, CallSlot(ui, 5));  // PublishDriverInterface(nullptr)
    OEMCUIPPARAM cuip{};
    cuip.cOEMOptItems = 7;
    EXPECT_EQ(S_OK, CallSlot(ui, 6, {OEMCUIP_PRNPROP, Arg(&cuip)}));
    EXPECT_EQ(0u, cuip.cOEMOptItems);
    ULONG size = 0;
    EXPECT_EQ(E_FAIL, CallSlot(ui, 14, {0, 0, 0, 0, QCP_DEVICEPROFILE, 0, Arg(&size)}));
    EXPECT_EQ(32u, size);
    for (size_t slot : {9, 10, 11, 12, 13, 15, 16}) {
        SCOPED_TRACE(slot);
        EXPECT_EQ(E_NOTIMPL, CallSlot(ui, slot));
    }
}

TEST_F(OemUi, GetInfoCases) {
    // kUntouched: last error, pcbNeeded or the buffer left alone.
    struct Case {
        const char* what;
        DWORD mode, cbSize;
        bool buffer, withNeeded;
        HRESULT hr;
        DWORD lastError, needed, value;
    };
    const DWORD kNone = kUntouched;
    const Case cases[] = {
        {"signature", OEMGI_GETSIGNATURE, 4, true, true, S_OK, kNone, 4, 0x4B495643},
        {"version", OEMGI_GETVERSION, 8, true, true, S_OK, kNone, 4, 1},
        {"interface version", OEMGI_GETINTERFACEVERSION, 4, true, true, E_FAIL, 87, kNone, kNone},
        {"mode 5", OEMGI_GETREQUESTEDHELPERINTERFACES, 4, true, true, E_FAIL, 87, kNone, kNone},
        {"no pcbNeeded", OEMGI_GETSIGNATURE, 4, true, false, E_FAIL, 87, kNone, kNone},
        {"3-byte buffer", OEMGI_GETSIGNATURE, 3, true, true, E_FAIL, 122, 4, kNone},
        {"no buffer", OEMGI_GETVERSION, 4, false, true, E_FAIL, 122, 4, kNone},
        {"publisher info", OEMGI_GETPUBLISHERINFO, 4, true, true, E_FAIL, 50, 0, kNone},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        DWORD value = kUntouched, needed = kUntouched;
        SetLastError(kUntouched);
        EXPECT_EQ(c.hr, ui_->GetInfo(c.mode, c.buffer ? &value : nullptr, c.cbSize,
                                     c.withNeeded ? &needed : nullptr));
        EXPECT_EQ(c.lastError, GetLastError());
        EXPECT_EQ(c.needed, needed);
        EXPECT_EQ(c.value, value);
    }
}

// The object compiled into this program, where its state and the log can be reached.
class OemUiInProcess : public ::testing::Test {
  protected:
    ~OemUiInProcess() override {
        ui_->Release();
        TheLog().SetPorts(before_);
    }
    const LogPorts* const before_ = TheLog().Ports();
    IOemUI* const ui_ = new IOemUI();  // installs the Windows log platform
};

// Why mode 2 is refused, and a failed reference check is logged rather than fatal.
TEST_F(OemUiInProcess, LogTexts) {
    ScopedTestLog log(kLogWarning, 0, u"CheckPrinter");
    DWORD value = 0, needed = 0;
    EXPECT_EQ(E_FAIL, ui_->GetInfo(OEMGI_GETINTERFACEVERSION, &value, 4, &needed));
    EXPECT_TRUE(KivCheck(true, "0 == m_cRef", "intrface", 48));
    EXPECT_FALSE(KivCheck(false, "0 == m_cRef", "intrface", 48));
    EXPECT_EQ(log.Messages(),
              (std::vector<std::string>{"exit pcbNeeded is NULL! ERROR_INVALID_PARAMETER",
                                        "Assertion failed: 0 == m_cRef, file intrface, line 48"}));
}

TEST_F(OemUi, QueryColorProfileCases) {
    struct Case {
        const char* what;
        ULONG mode, bufferBytes;  // bufferBytes 0: no buffer
        HRESULT hr;
        ULONG sizeAfter;
    };
    const Case cases[] = {
        {"source profile is not served", QCP_SOURCEPROFILE, 64, E_FAIL, 64},
        {"no buffer asks for 32", QCP_DEVICEPROFILE, 0, E_FAIL, 32},
        {"30 bytes would hold the name, still 32 asked", QCP_DEVICEPROFILE, 30, E_FAIL, 32},
        {"exactly 32", QCP_DEVICEPROFILE, 32, S_OK, 32},
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
        EXPECT_EQ(c.hr == S_OK ? static_cast<FLONG>(QCP_PROFILEDISK) : 0, flags);
        EXPECT_EQ(c.mode == QCP_DEVICEPROFILE && c.hr == E_FAIL ? 122u : 0u, GetLastError());
        EXPECT_EQ(c.hr == S_OK, std::memcmp(buffer.data(), L"OEMPROFILE.icm", 30) == 0);
        EXPECT_EQ(0xEE, buffer[c.bufferBytes]);  // nothing past what the caller offered
    }
}

// A record of ours cut to `bytes` bytes (its header, as far as it goes, claims a whole one),
// carried as the driver extra of a public devmode and placed so that its last byte is the last one
// before an inaccessible page: any read past the block faults. Every call reuses the same page.
BYTE* GuardedRecord(OEMDMPARAM& param, size_t bytes, BYTE fill) {
    static BYTE* const page = [] {
        auto* p = static_cast<BYTE*>(
            VirtualAlloc(nullptr, 2 * 4096, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        DWORD old = 0;
        VirtualProtect(p + 4096, 4096, PAGE_NOACCESS, &old);
        return p;
    }();
    BYTE* data = page + 4096 - bytes;
    std::memset(data, fill, bytes);
    const uint32_t header[3] = {OEMDEV_SIZE, KIVITEM_SIGNATURE, 1};
    std::memcpy(data, header, std::min(bytes, sizeof header));
    auto* pub = reinterpret_cast<DEVMODEW*>(data - sizeof(DEVMODEW));
    std::memset(pub, 0, sizeof *pub);
    pub->dmSize = sizeof(DEVMODEW);
    pub->dmDriverExtra = static_cast<WORD>(bytes);
    param.pPublicDMIn = pub;
    param.pOEMDMIn = data;
    return data;
}

// The framework's out buffer must hold a whole record before anything is written to it, and
// nothing is ever written past one.
TEST_F(OemUi, DevModeNeverWritesPastARecord) {
    struct Case {
        DWORD mode, bufSize;
        HRESULT hr;
    };
    for (const Case& c : {Case{OEMDM_DEFAULT, OEMDEV_SIZE - 1, E_FAIL},
                          Case{OEMDM_MERGE, 100, E_FAIL}, Case{OEMDM_DEFAULT, OEMDEV_SIZE, S_OK}}) {
        SCOPED_TRACE(testing::Message() << c.mode << " into " << c.bufSize);
        std::vector<BYTE> in(OEMDEV_SIZE, 0), out(OEMDEV_SIZE + 16, 0x77);
        OEMDMPARAM param = DevModeParam(in.data(), out.data(), c.bufSize);
        SetLastError(kUntouched);
        EXPECT_EQ(c.hr, ui_->DevMode(c.mode, &param));
        EXPECT_EQ(c.hr == S_OK ? kUntouched : 87u, GetLastError());
        uint32_t size = 0;
        std::memcpy(&size, out.data(), 4);
        EXPECT_EQ(c.hr == S_OK ? OEMDEV_SIZE : 0x77777777u, size);
        EXPECT_EQ(0x77, out[OEMDEV_SIZE]);
    }
}

// Records cut short of what they claim end at a no-access page: nothing past the block is read,
// and the merge keeps what there is (what a conversion makes of a record is the core tests' and
// the fuzzer's business).
TEST_F(OemUiInProcess, TruncatedRecordsAreNeverReadPastTheirEnd) {
    const BYTE* saved = reinterpret_cast<const BYTE*>(&ui_->State().savedOEMDev);
    for (size_t bytes : {8, 100, 2000, 3328}) {
        for (DWORD mode : {OEMDM_CONVERT, OEMDM_MERGE}) {
            SCOPED_TRACE(testing::Message() << bytes << " bytes, mode " << mode);
            std::vector<BYTE> out(OEMDEV_SIZE);
            OEMDMPARAM param = DevModeParam(nullptr, out.data());
            const BYTE* in = GuardedRecord(param, bytes, 0x5A);
            ASSERT_EQ(S_OK, ui_->DevMode(mode, &param));
            if (mode == OEMDM_MERGE) {
                EXPECT_EQ(0, std::memcmp(saved, in, bytes));
                EXPECT_EQ(0, saved[OEMDEV_SIZE - 1]);
            }
        }
    }
}

// A driver helper that counts references and queries.
class FakeHelper : public IPrintOemDriverUI {
  public:
    LONG refs = 1;
    int queries = 0;
    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override {
        ++queries;
        *ppv = IsEqualIID(riid, IID_IPrintOemDriverUI) ? this : nullptr;
        return *ppv != nullptr ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++refs); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--refs); }
    STDMETHODIMP DrvGetDriverSetting(PVOID, PCSTR, PVOID, DWORD, PDWORD, PDWORD) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP DrvUpgradeRegistrySetting(HANDLE, PCSTR, PCSTR) override { return E_NOTIMPL; }
    STDMETHODIMP DrvUpdateUISetting(PVOID, PVOID, DWORD, DWORD) override { return E_NOTIMPL; }
};

TEST_F(OemUi, PublishDriverInterfaceKeepsTheFirstHelper) {
    FakeHelper first, second;
    EXPECT_EQ(E_FAIL, ui_->PublishDriverInterface(ui_.get()));  // no helper behind this one
    EXPECT_EQ(S_OK, ui_->PublishDriverInterface(&first));
    EXPECT_EQ(2, first.refs);
    EXPECT_EQ(S_OK, ui_->PublishDriverInterface(&second));
    EXPECT_EQ(0, second.queries);
    EXPECT_EQ(1, second.refs);
    ui_.detach()->Release();  // destroying the object releases the helper it held
    EXPECT_EQ(1, first.refs);
}

}  // namespace
