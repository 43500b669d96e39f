// Tests of IOemUI::CommonUIProp and the document callback, through KivUI.dll as the framework calls
// them.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "host_run_win.h"
#include "session/oem_ui_state.h"
#include "infra/registry_win.h"
#include "kivui_dll_win.h"
#include "settings/oemdev.h"
#include "settings/ui_device_common.h"
#include "win/text_win.h"

namespace {

// The framework's parameter block of one CommonUIProp call, with driver items of its own.
struct DocumentCall {
    explicit DocumentCall(const std::wstring& printer) : name(printer) {
        drvItems[0].DMPubID = DMPUB_COLOR;
        drvItems[0].Flags = OPTIF_CHANGED;
        drvItems[1].DMPubID = DMPUB_ORIENTATION;
        drvItems[2].DMPubID = DMPUB_COLOR;
        drvItems[3].DMPubID = DMPUB_COLOR;  // past cDrvOptItems: not the framework's item
        dm.dmSize = sizeof dm;
        dm.dmPaperWidth = 800;
        dm.dmYResolution = 203;
        param.cbSize = sizeof param;
        param.pPrinterName = const_cast<PWSTR>(name.c_str());
        param.pPublicDM = &dm;
        param.pDrvOptItems = drvItems;
        param.cDrvOptItems = 3;
        param.pOEMOptItems = oemItems;
    }
    OemUiState* State() const { return static_cast<OemUiState*>(param.pOEMUserData); }
    std::wstring name;
    OPTITEM drvItems[4]{};
    OPTITEM oemItems[1]{};
    DEVMODEW dm{};
    OEMCUIPPARAM param{};
};

class CommonUi : public OemUiTest {
  protected:
    RegistryWin registry_;
};

// Printer properties and the document call that only counts items (no item array) touch
// nothing; the full document pass hides only the framework's colour items within its count.
TEST_F(CommonUi, OnlyTheFullDocumentPassPreparesAnOpening) {
    for (const DWORD mode : {DWORD{OEMCUIP_PRNPROP}, DWORD{OEMCUIP_DOCPROP}, DWORD{0}}) {
        SCOPED_TRACE(mode);
        const bool full = mode == 0;
        const std::wstring printer = ScratchPrinterName(L"untouched");
        ScratchConfigKey key(printer);
        DocumentCall call(printer);
        call.param.pOEMOptItems = mode == OEMCUIP_DOCPROP ? nullptr : call.oemItems;
        call.param.cOEMOptItems = 5;
        EXPECT_EQ(S_OK, ui_->CommonUIProp(full ? OEMCUIP_DOCPROP : mode, &call.param));
        EXPECT_EQ(full ? 5u : 0u, call.param.cOEMOptItems);  // the counting call answers none
        EXPECT_EQ(full, call.param.OEMCUIPCallback != nullptr);
        EXPECT_EQ(full, registry_.KeyExists(key.Path()));
        EXPECT_EQ(static_cast<DWORD>(OPTIF_CHANGED | (full ? OPTIF_HIDE : 0)),
                  call.drvItems[0].Flags);
        EXPECT_EQ(0u, call.drvItems[1].Flags);
        EXPECT_EQ(static_cast<DWORD>(full ? OPTIF_HIDE : 0), call.drvItems[2].Flags);
        EXPECT_EQ(0u, call.drvItems[3].Flags);
        EXPECT_EQ(full, call.State() != nullptr);
    }
    // Any other mode fails, after the pass.
    ScratchConfigKey key(ScratchPrinterName(L"mode3"));
    DocumentCall call(ScratchPrinterName(L"mode3"));
    SetLastError(0);
    EXPECT_EQ(E_FAIL, ui_->CommonUIProp(3, &call.param));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
}

bool MutexExists(const std::wstring& printer) {
    HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, (L"Global\\M_LOG_" + printer).c_str());
    if (mutex != nullptr)
        CloseHandle(mutex);
    return mutex != nullptr;
}

TEST_F(CommonUi, TwoPrintersHaveTwoKeysLogsAndMutexes) {
    const TempFolder temp;
    const std::wstring folder = std::filesystem::path(temp.path).wstring();
    const std::wstring a = ScratchPrinterName(L"A"), b = ScratchPrinterName(L"B");
    const std::wstring logA = folder + L"\\" + a + L"_UI.log",
                       logB = folder + L"\\" + b + L"_UI.log";
    ScratchConfigKey keyA(a), keyB(b);
    for (const ScratchConfigKey* key : {&keyA, &keyB}) {
        registry_.WriteDword(key->Path(), L"LogVerbosity_UiUni", key == &keyA ? 6 : 4);
        registry_.WriteString(key->Path(), L"LogFolder", folder);
    }

    DocumentCall callA(a);
    ASSERT_EQ(S_OK, ui_->CommonUIProp(OEMCUIP_DOCPROP, &callA.param));
    EXPECT_NE(std::string::npos, ReadFileText(logA).find("PrinterName <" + NarrowAnsi(a) + ">"));
    EXPECT_TRUE(MutexExists(a));

    ComRef<IPrintOemUI> other(KivUiDll::Get().CreateOemUI());
    ASSERT_NE(nullptr, other.get());
    DocumentCall callB(b);
    ASSERT_EQ(S_OK, other->CommonUIProp(OEMCUIP_DOCPROP, &callB.param));
    // Verbosity 4: the level-4 language-monitor lines, not the level-6 printer name.
    const std::string textB = ReadFileText(logB);
    EXPECT_NE(std::string::npos, textB.find("LM Enable <0>"));
    EXPECT_EQ(std::string::npos, textB.find("PrinterName <"));
    EXPECT_EQ(std::string::npos, ReadFileText(logA).find(NarrowAnsi(b)));
    EXPECT_TRUE(MutexExists(b));
    EXPECT_FALSE(MutexExists(a));  // the log let go of A's mutex when it moved to B
}

// One opening as the framework runs it: the record merged in, the common UI pass, and the
// callback it installs.
struct Opening {
    Opening(IPrintOemUI* ui, DocumentCall& call, std::vector<BYTE>& record) {
        std::vector<BYTE> merged(OEMDEV_SIZE);
        OEMDMPARAM dm = DevModeParam(record.data(), merged.data());
        EXPECT_EQ(S_OK, ui->DevMode(OEMDM_MERGE, &dm));
        call.param.pOEMDM = record.data();
        EXPECT_EQ(S_OK, ui->CommonUIProp(OEMCUIP_DOCPROP, &call.param));
        callback = call.param.OEMCUIPCallback;
    }
    LONG Press(POEMCUIPPARAM param, WORD reason = CPSUICB_REASON_APPLYNOW) const {
        CPSUICBPARAM cb{};
        cb.cbSize = sizeof cb;
        cb.Reason = reason;
        return callback(&cb, param);
    }
    OEMCUIPCALLBACK callback = nullptr;
};

// Only Apply writes, and only into a record of ours. What is applied is there at the next
// opening: after an old layout version (the opening repairs it, and the apply must carry the
// repair), and for a printer of unknown model, whose new record opens with values its Print page
// accepts.
TEST_F(CommonUi, OnlyApplyWritesAndAppliedValuesSurviveTheNextOpening) {
    const std::wstring printer = ScratchPrinterName(L"reopen");
    ScratchConfigKey key(printer);
    // An old layout version; applies to the current one are SheetWin.AppliedChanges...'.
    const uint32_t layout = 1;
    std::vector<BYTE> record(OEMDEV_SIZE);
    OEMDMPARAM dm = DevModeParam(nullptr, record.data());
    ASSERT_EQ(S_OK, ui_->DevMode(OEMDM_DEFAULT, &dm));
    std::memcpy(&record[20], &layout, 4);
    DocumentCall call(printer);
    const Opening first(ui_.get(), call, record);
    UiDeviceCommon& device = *call.State()->device;
    EXPECT_EQ(128, device.GetConvThreshold());
    EXPECT_EQ(255, device.GetConvFilterUp());
    device.SetOffsetX(-12);
    const std::vector<BYTE> before = record;
    for (WORD reason :
         {CPSUICB_REASON_SETACTIVE, CPSUICB_REASON_KILLACTIVE, CPSUICB_REASON_SEL_CHANGED})
        EXPECT_EQ(CPSUICB_ACTION_NONE, first.Press(&call.param, reason));
    EXPECT_EQ(CPSUICB_ACTION_NONE, first.callback(nullptr, &call.param));
    EXPECT_EQ(before, record);
    // A record that is not ours is left alone, and the apply goes on.
    std::vector<BYTE> foreign(record);
    foreign[4] ^= 0xFF;
    const std::vector<BYTE> stranger = foreign;
    OEMCUIPPARAM other = call.param;
    other.pOEMDM = foreign.data();
    EXPECT_EQ(0, first.Press(&other));
    EXPECT_EQ(stranger, foreign);
    ASSERT_EQ(0, first.Press(&call.param));

    // The next opening's pass has no public devmode: the first one's paper stays.
    call.param.pPublicDM = nullptr;
    const Opening second(ui_.get(), call, record);
    EXPECT_EQ(639, call.State()->paperWidthDots);
    EXPECT_EQ(-12, call.State()->device->GetOffsetX());
    EXPECT_EQ(0, std::memcmp(record.data(), &call.State()->workOEMDev, OEMDEV_SIZE));
}

}  // namespace
