// Tests of IOemUI::CommonUIProp and the document callback, through KivUI.dll as the framework calls
// them.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "entry/gpd_reader_win.h"
#include "entry/oem_ui_state.h"
#include "infra/registry_win.h"
#include "kivui_dll_win.h"
#include "settings/oemdev.h"

namespace {

std::wstring TempFolder(const wchar_t* tag) {
    wchar_t temp[MAX_PATH];
    const DWORD length = GetTempPathW(MAX_PATH, temp);
    std::wstring folder(temp, length);
    if (!folder.empty() && folder.back() == L'\\')
        folder.pop_back();
    folder += std::wstring(L"\\kivcom_") + tag + L"_" + std::to_wstring(GetCurrentProcessId());
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}

std::string Narrow(const std::wstring& text) {
    return std::string(text.begin(), text.end());
}

std::string ReadWholeFile(const std::wstring& path) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    std::string contents;
    char buffer[4096];
    DWORD got = 0;
    while (ReadFile(file, buffer, sizeof buffer, &got, nullptr) && got != 0) {
        contents.append(buffer, got);
    }
    CloseHandle(file);
    return contents;
}

void WriteWholeFile(const std::wstring& path, const std::string& text) {
    std::ofstream out(Narrow(path), std::ios::binary);
    out << text;
}

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
        dm.dmPaperLength = 1000;
        dm.dmYResolution = 203;
        param.cbSize = sizeof param;
        param.pPrinterName = const_cast<PWSTR>(name.c_str());
        param.pPublicDM = &dm;
        param.pDrvOptItems = drvItems;
        param.cDrvOptItems = 3;
        param.pOEMOptItems = oemItems;
    }
    std::wstring name;
    OPTITEM drvItems[4]{};
    OPTITEM oemItems[1]{};
    DEVMODEW dm{};
    OEMCUIPPARAM param{};
};

class CommonUi : public ::testing::Test {
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
    RegistryWin registry_;
};

TEST_F(CommonUi, PrinterPropertiesAndCountingCallTouchNothing) {
    struct Case {
        const char* what;
        DWORD mode;
        bool items;
    };
    const Case cases[] = {
        {"printer properties", OEMCUIP_PRNPROP, true},
        {"printer properties, counting", OEMCUIP_PRNPROP, false},
        {"document counting call", OEMCUIP_DOCPROP, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const std::wstring printer = ScratchPrinterName(L"untouched");
        ScratchConfigKey key(printer);
        DocumentCall call(printer);
        if (!c.items)
            call.param.pOEMOptItems = nullptr;
        call.param.cOEMOptItems = 5;
        EXPECT_EQ(S_OK, ui_->CommonUIProp(c.mode, &call.param));
        EXPECT_EQ(0u, call.param.cOEMOptItems);
        EXPECT_FALSE(key.Exists());
        EXPECT_EQ(static_cast<DWORD>(OPTIF_CHANGED), call.drvItems[0].Flags);
        EXPECT_EQ(0u, call.drvItems[2].Flags);
        EXPECT_EQ(nullptr, call.param.pOEMUserData);
        EXPECT_EQ(nullptr, call.param.OEMCUIPCallback);
    }
}

TEST_F(CommonUi, FullDocumentPass) {
    const std::wstring printer = ScratchPrinterName(L"full");
    ScratchConfigKey key(printer);
    DocumentCall call(printer);
    ASSERT_EQ(S_OK, ui_->CommonUIProp(OEMCUIP_DOCPROP, &call.param));

    // Only the framework's colour items, within its count, are hidden.
    EXPECT_EQ(static_cast<DWORD>(OPTIF_CHANGED | OPTIF_HIDE), call.drvItems[0].Flags);
    EXPECT_EQ(0u, call.drvItems[1].Flags);
    EXPECT_EQ(static_cast<DWORD>(OPTIF_HIDE), call.drvItems[2].Flags);
    EXPECT_EQ(0u, call.drvItems[3].Flags);
    EXPECT_NE(nullptr, call.param.OEMCUIPCallback);

    // The defaults are written back on the first opening, without the language monitor's value.
    ASSERT_TRUE(key.Exists());
    std::wstring text;
    DWORD number = 99;
    EXPECT_TRUE(registry_.ReadString(key.Path(), L"LogFolder", &text));
    EXPECT_EQ(L"%ALLUSERSPROFILE%\\ORVANE\\KIV\\Logs", text);
    EXPECT_TRUE(registry_.ReadString(key.Path(), L"PrnFolder", &text));
    EXPECT_EQ(L"%ALLUSERSPROFILE%\\ORVANE\\KIV", text);
    EXPECT_TRUE(registry_.ReadDword(key.Path(), L"LogVerbosity_UiUni", &number));
    EXPECT_EQ(0u, number);
    EXPECT_TRUE(registry_.ReadDword(key.Path(), L"Settings_Ui", &number));
    EXPECT_EQ(0u, number);
    EXPECT_FALSE(registry_.ReadDword(key.Path(), L"LogVerbosity_LM", &number));

    const OemUiState* state = static_cast<const OemUiState*>(call.param.pOEMUserData);
    ASSERT_NE(nullptr, state);
    EXPECT_EQ(Narrow(printer), state->printerName);
    EXPECT_EQ(800, state->paperWidth);
    EXPECT_EQ(203, state->yResolution);
    EXPECT_EQ(639, state->paperWidthDots);
    EXPECT_EQ(799, state->paperLengthDots);
    // No printer handle: no model data text, one empty piece, the generic device.
    EXPECT_EQ("", state->oemCustomData);
    EXPECT_EQ(1u, state->oemCustomDataList.size());
    EXPECT_NE(nullptr, state->device.get());
    EXPECT_EQ(0u, state->lmAvailable + state->lmBidi + state->lmEnable);
    // The repair rebuilt the working copy from the model.
    EXPECT_EQ(KIVITEM_SIGN_H, state->workOEMDev.dwSignHead1);
    EXPECT_EQ(KIVITEM_VERCURRENT, state->workOEMDev.dwVerCurrent);

    // A pass without a public devmode keeps the paper values.
    call.param.pPublicDM = nullptr;
    ASSERT_EQ(S_OK, ui_->CommonUIProp(OEMCUIP_DOCPROP, &call.param));
    EXPECT_EQ(639, state->paperWidthDots);
}

TEST_F(CommonUi, ConfigurationValuesAreReadAndWrittenBack) {
    const std::wstring folder = TempFolder(L"cfg");
    const std::wstring printer = ScratchPrinterName(L"config");
    struct Case {
        const char* what;
        bool verbosityAsString;
        DWORD verbosity;
        const wchar_t* logFolder;  // null: the temp folder
        DWORD expectedVerbosity;
        const wchar_t* expectedFolder;  // null: the temp folder
    };
    const Case cases[] = {
        {"verbosity 100 reads as 7", false, 100, nullptr, 7, nullptr},
        {"verbosity as a string reads as 0", true, 5, nullptr, 0, nullptr},
        {"empty log folder is replaced", false, 0, L"", 0, L"%ALLUSERSPROFILE%\\ORVANE\\KIV\\Logs"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ScratchConfigKey key(printer);
        if (c.verbosityAsString) {
            registry_.WriteString(key.Path(), L"LogVerbosity_UiUni", L"5");
        } else {
            registry_.WriteDword(key.Path(), L"LogVerbosity_UiUni", c.verbosity);
        }
        registry_.WriteString(key.Path(), L"LogFolder", c.logFolder ? c.logFolder : folder);
        DocumentCall call(printer);
        ASSERT_EQ(S_OK, ui_->CommonUIProp(OEMCUIP_DOCPROP, &call.param));
        const OemUiState* state = static_cast<const OemUiState*>(call.param.pOEMUserData);
        ASSERT_NE(nullptr, state);
        EXPECT_EQ(c.expectedVerbosity, state->config.logVerbosity);
        DWORD stored = 99;
        EXPECT_TRUE(registry_.ReadDword(key.Path(), L"LogVerbosity_UiUni", &stored));
        EXPECT_EQ(c.expectedVerbosity, stored);
        std::wstring storedFolder;
        EXPECT_TRUE(registry_.ReadString(key.Path(), L"LogFolder", &storedFolder));
        EXPECT_EQ(c.expectedFolder ? std::wstring(c.expectedFolder) : folder, storedFolder);
        EXPECT_EQ(Narrow(storedFolder), state->config.logFolder);
    }
    // Leave the process-wide log off for the tests that follow.
    const std::wstring quiet = ScratchPrinterName(L"quiet");
    ScratchConfigKey quietKey(quiet);
    DocumentCall off(quiet);
    ui_->CommonUIProp(OEMCUIP_DOCPROP, &off.param);
    DeleteFileW((folder + L"\\" + printer + L"_UI.log").c_str());
    RemoveDirectoryW(folder.c_str());
}

bool MutexExists(const std::wstring& printer) {
    HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, (L"Global\\M_LOG_" + printer).c_str());
    if (mutex == nullptr)
        return false;
    CloseHandle(mutex);
    return true;
}

TEST_F(CommonUi, TwoPrintersHaveTwoKeysLogsAndMutexes) {
    const std::wstring folder = TempFolder(L"two");
    const std::wstring a = ScratchPrinterName(L"A");
    const std::wstring b = ScratchPrinterName(L"B");
    ScratchConfigKey keyA(a), keyB(b);
    registry_.WriteDword(keyA.Path(), L"LogVerbosity_UiUni", 6);
    registry_.WriteString(keyA.Path(), L"LogFolder", folder);
    registry_.WriteDword(keyB.Path(), L"LogVerbosity_UiUni", 4);
    registry_.WriteString(keyB.Path(), L"LogFolder", folder);
    const std::wstring logA = folder + L"\\" + a + L"_UI.log";
    const std::wstring logB = folder + L"\\" + b + L"_UI.log";

    DocumentCall callA(a);
    ASSERT_EQ(S_OK, ui_->CommonUIProp(OEMCUIP_DOCPROP, &callA.param));
    EXPECT_NE(std::string::npos, ReadWholeFile(logA).find("PrinterName <" + Narrow(a) + ">"));
    EXPECT_TRUE(MutexExists(a));

    ComRef<IPrintOemUI> other(KivUiDll::Get().CreateOemUI());
    ASSERT_NE(nullptr, other.get());
    DocumentCall callB(b);
    ASSERT_EQ(S_OK, other->CommonUIProp(OEMCUIP_DOCPROP, &callB.param));
    const std::string textB = ReadWholeFile(logB);
    // Verbosity 4: the level-4 language-monitor lines, not the level-6 printer name.
    EXPECT_NE(std::string::npos, textB.find("LM Enable <0>"));
    EXPECT_EQ(std::string::npos, textB.find("PrinterName <"));
    EXPECT_EQ(std::string::npos, ReadWholeFile(logA).find(Narrow(b)));
    EXPECT_TRUE(MutexExists(b));
    EXPECT_FALSE(MutexExists(a));  // the log let go of A's mutex when it moved to B

    // The two keys stay apart.
    DWORD verbosity = 0;
    EXPECT_TRUE(registry_.ReadDword(keyA.Path(), L"LogVerbosity_UiUni", &verbosity));
    EXPECT_EQ(6u, verbosity);
    EXPECT_TRUE(registry_.ReadDword(keyB.Path(), L"LogVerbosity_UiUni", &verbosity));
    EXPECT_EQ(4u, verbosity);

    const std::wstring quiet = ScratchPrinterName(L"quiet2");
    ScratchConfigKey quietKey(quiet);
    DocumentCall off(quiet);
    ui_->CommonUIProp(OEMCUIP_DOCPROP, &off.param);
    EXPECT_FALSE(MutexExists(b));
    DeleteFileW(logA.c_str());
    DeleteFileW(logB.c_str());
    RemoveDirectoryW(folder.c_str());
}

TEST_F(CommonUi, InvalidModeFailsAfterThePass) {
    const std::wstring printer = ScratchPrinterName(L"mode3");
    ScratchConfigKey key(printer);
    DocumentCall call(printer);
    SetLastError(0);
    EXPECT_EQ(E_FAIL, ui_->CommonUIProp(3, &call.param));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
}

TEST_F(CommonUi, ApplySavesTheDeviceValuesIntoTheRecord) {
    const std::wstring printer = ScratchPrinterName(L"apply");
    ScratchConfigKey key(printer);
    DocumentCall call(printer);
    std::vector<BYTE> record(OEMDEV_SIZE, 0x5A);
    const uint32_t header[3] = {OEMDEV_SIZE, KIVITEM_SIGNATURE, 1};
    std::memcpy(record.data(), header, sizeof header);
    call.param.pOEMDM = record.data();
    ASSERT_EQ(S_OK, ui_->CommonUIProp(OEMCUIP_DOCPROP, &call.param));
    ASSERT_NE(nullptr, call.param.OEMCUIPCallback);
    const OemUiState* state = static_cast<const OemUiState*>(call.param.pOEMUserData);
    ASSERT_NE(nullptr, state);

    CPSUICBPARAM cb{};
    cb.cbSize = sizeof cb;
    for (WORD reason : {CPSUICB_REASON_SETACTIVE, CPSUICB_REASON_KILLACTIVE,
                        CPSUICB_REASON_SEL_CHANGED, CPSUICB_REASON_ABOUT}) {
        SCOPED_TRACE(reason);
        cb.Reason = reason;
        EXPECT_EQ(CPSUICB_ACTION_NONE, call.param.OEMCUIPCallback(&cb, &call.param));
        EXPECT_EQ(0x5A, record[OEMDEV_HEADER_SIZE]);
    }
    EXPECT_EQ(CPSUICB_ACTION_NONE, call.param.OEMCUIPCallback(nullptr, &call.param));

    cb.Reason = CPSUICB_REASON_APPLYNOW;
    // Apply answers what the save answers: 0 when it went through, 3 when a page refused.
    const LONG kSaved = 0;
    // Without the object's state nothing is written, and the apply goes on.
    OEMCUIPPARAM noState = call.param;
    noState.pOEMUserData = nullptr;
    EXPECT_EQ(kSaved, call.param.OEMCUIPCallback(&cb, &noState));
    EXPECT_EQ(0x5A, record[OEMDEV_HEADER_SIZE]);
    // A record that is not ours is left alone.
    std::vector<BYTE> foreign(record);
    const uint32_t otherSignature = 0x12345678;
    std::memcpy(foreign.data() + 4, &otherSignature, 4);
    OEMCUIPPARAM foreignCall = call.param;
    foreignCall.pOEMDM = foreign.data();
    EXPECT_EQ(kSaved, call.param.OEMCUIPCallback(&cb, &foreignCall));
    EXPECT_EQ(0x5A, foreign[OEMDEV_HEADER_SIZE]);

    EXPECT_EQ(kSaved, call.param.OEMCUIPCallback(&cb, &call.param));
    EXPECT_EQ(0, std::memcmp(record.data() + OEMDEV_HEADER_SIZE, &state->workOEMDev.payload,
                             OEMDEV_PAYLOAD_SIZE));
    EXPECT_EQ(0, std::memcmp(record.data(), header, sizeof header));  // header kept
    EXPECT_EQ(0x5A, record[20]);  // guards and version are the framework's record's own
}

TEST(CommonUiModelText, ReadFromGpdFilesInOneFolder) {
    const std::wstring folder = TempFolder(L"gpd");
    WriteWholeFile(folder + L"\\model.gpd",
                   "*GPDSpecVersion: \"1.0\"\r\n*Include: \"names.gpd\"\r\n*ModelName: \"X\"\r\n");
    WriteWholeFile(folder + L"\\names.gpd",
                   "*% model data\r\n*OEMCustomData: \"TRX418A|SEC\"\r\n+ \"<7C>3\"\r\n");
    const GpdReadResult found = ReadModelDataTextFromFile(folder + L"\\model.gpd");
    EXPECT_TRUE(found.found);
    EXPECT_EQ("TRX418A|SEC|3", found.text);

    const GpdReadResult missing = ReadModelDataTextFromFile(folder + L"\\absent.gpd");
    EXPECT_FALSE(missing.found);
    EXPECT_EQ(1u, missing.unreadFiles);
    EXPECT_EQ(L"", PrinterDataFile(nullptr));

    DeleteFileW((folder + L"\\model.gpd").c_str());
    DeleteFileW((folder + L"\\names.gpd").c_str());
    RemoveDirectoryW(folder.c_str());
}

}  // namespace
