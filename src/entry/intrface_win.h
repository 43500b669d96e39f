// The plug-in's COM classes: the class factory IOemCF and the driver UI interface object IOemUI.
#pragma once

#include "session/oem_ui_state.h"
#include "win/windows_headers_win.h"
#include "win/oem_framework_win.h"

// Module-wide state kept by the entry points.
HMODULE KivModuleHandle();
// Outstanding IClassFactory::LockServer(TRUE) calls.
LONG KivServerLockCount();

// The destructor's reference-count check. A failure writes the assertion text to the log (level
// 2) and to the debugger output, and returns false; it never ends the host process, which is
// the framework's (an application's print dialog, the spooler).
bool KivCheck(bool condition, const char* expression, const char* source, int line);

class IOemCF final : public IClassFactory {
  public:
    IOemCF() = default;
    IOemCF(const IOemCF&) = delete;
    IOemCF& operator=(const IOemCF&) = delete;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    // IClassFactory
    STDMETHODIMP CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppv) override;
    STDMETHODIMP LockServer(BOOL fLock) override;

  private:
    ~IOemCF() = default;  // only Release destroys it

    volatile LONG m_cRef = 1;
};

class IOemUI final : public IPrintOemUI {
  public:
    IOemUI();
    IOemUI(const IOemUI&) = delete;
    IOemUI& operator=(const IOemUI&) = delete;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID riid, void** ppv) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    // IPrintOemCommon
    STDMETHODIMP GetInfo(DWORD dwMode, PVOID pBuffer, DWORD cbSize, PDWORD pcbNeeded) override;
    STDMETHODIMP DevMode(DWORD dwMode, POEMDMPARAM pOemDMParam) override;
    // IPrintOemUI
    STDMETHODIMP PublishDriverInterface(IUnknown* pIUnknown) override;
    STDMETHODIMP CommonUIProp(DWORD dwMode, POEMCUIPPARAM pOemCUIPParam) override;
    STDMETHODIMP DocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam) override;
    STDMETHODIMP DevicePropertySheets(PPROPSHEETUI_INFO pPSUIInfo, LPARAM lParam) override;
    STDMETHODIMP DevQueryPrintEx(POEMUIOBJ poemuiobj, PDEVQUERYPRINT_INFO pDQPInfo,
                                 DEVMODEW* pPublicDM, PVOID pOEMDM) override;
    STDMETHODIMP DeviceCapabilities(POEMUIOBJ poemuiobj, HANDLE hPrinter, PWSTR pDeviceName,
                                    WORD wCapability, PVOID pOutput, DEVMODEW* pPublicDM,
                                    PVOID pOEMDM, DWORD dwOld, DWORD* dwResult) override;
    STDMETHODIMP UpgradePrinter(DWORD dwLevel, PBYTE pDriverUpgradeInfo) override;
    STDMETHODIMP PrinterEvent(PWSTR pPrinterName, INT iDriverEvent, DWORD dwFlags,
                              LPARAM lParam) override;
    STDMETHODIMP DriverEvent(DWORD dwDriverEvent, DWORD dwLevel, LPBYTE pDriverInfo,
                             LPARAM lParam) override;
    STDMETHODIMP QueryColorProfile(HANDLE hPrinter, POEMUIOBJ poemuiobj, DEVMODEW* pPublicDM,
                                   PVOID pOEMDM, ULONG ulQueryMode, VOID* pvProfileData,
                                   ULONG* pcbProfileData, FLONG* pflProfileData) override;
    STDMETHODIMP FontInstallerDlgProc(HWND hWnd, UINT usMsg, WPARAM wParam, LPARAM lParam) override;
    STDMETHODIMP UpdateExternalFonts(HANDLE hPrinter, HANDLE hHeap, PWSTR pwstrCartridges) override;

    OemUiState& State() { return m_state; }
    IPrintOemDriverUI* DriverHelper() const { return m_pOEMHelp; }

  private:
    ~IOemUI();  // only Release destroys it

    // The full document pass of CommonUIProp: everything the pages share, rebuilt.
    void PrepareDocumentPass(POEMCUIPPARAM param);

    volatile LONG m_cRef = 1;
    IPrintOemDriverUI* m_pOEMHelp = nullptr;
    OemUiState m_state;
};
