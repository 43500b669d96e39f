// The universal driver's UI plug-in declarations that mingw-w64 lacks (GUIDs, interfaces,
// structures).
#pragma once

// Include after win/windows_headers_win.h.
#include <cstddef>

#include "entry/devmode.h"  // OEMDM_SIZE .. OEMDM_MERGE
#include "win/windows_headers_win.h"

// wingdi.h and winspool.h turn these names into ...A/...W macros, which would silently rename
// the interface methods below (the slots stay, the source names drift). Code that needs the
// Win32 functions calls DeviceCapabilitiesW / DocumentEventW by their full names.
#undef DeviceCapabilities
#undef DocumentEvent

// ---------------------------------------------------------------------------------------------
// GUIDs. The universal driver asks every UI plug-in for CLSID_OEMUI; no plug-in registers its own.

inline constexpr GUID CLSID_OEMUI = {
    0xabce80d7, 0x9f46, 0x11d1, {0x88, 0x2a, 0x00, 0xc0, 0x4f, 0xb9, 0x61, 0xec}};
inline constexpr GUID IID_IPrintOemCommon = {
    0x7f42285e, 0x91d5, 0x11d1, {0x88, 0x20, 0x00, 0xc0, 0x4f, 0xb9, 0x61, 0xec}};
inline constexpr GUID IID_IPrintOemUI = {
    0xc6a7a9d0, 0x774c, 0x11d1, {0x94, 0x7f, 0x00, 0xa0, 0xc9, 0x06, 0x40, 0xb8}};
inline constexpr GUID IID_IPrintOemUI2 = {
    0x292515f9, 0xb54b, 0x489b, {0x92, 0x75, 0xba, 0xb5, 0x68, 0x21, 0x39, 0x5e}};
inline constexpr GUID IID_IPrintOemDriverUI = {
    0x92b05d50, 0x78bc, 0x11d1, {0x94, 0x80, 0x00, 0xa0, 0xc9, 0x06, 0x40, 0xb8}};

// ---------------------------------------------------------------------------------------------
// Constants.

// IPrintOemCommon::GetInfo modes and answers.
#define OEMGI_GETSIGNATURE 1
#define OEMGI_GETINTERFACEVERSION 2
#define OEMGI_GETVERSION 3
#define OEMGI_GETPUBLISHERINFO 4
#define OEMGI_GETREQUESTEDHELPERINTERFACES 5
#define OEMPUBLISH_DEFAULT 0
#define OEMPUBLISH_IPRINTCOREHELPER 1
#define PRINTER_OEMINTF_VERSION 0x00010000
#define OEM_MODE_PUBLISHER 0x00000001

// IPrintOemUI::CommonUIProp modes.
#define OEMCUIP_DOCPROP 1
#define OEMCUIP_PRNPROP 2

// IPrintOemUI::QueryColorProfile query modes and result flags.
#define QCP_DEVICEPROFILE 0x0000
#define QCP_SOURCEPROFILE 0x0001
#define QCP_PROFILEMEMORY 0x00000001
#define QCP_PROFILEDISK 0x00000002

#define S_DEVCAP_OUTPUT_FULL_REPLACEMENT ((HRESULT)0x0004DC01L)

// DOCUMENTPROPERTYHEADER.fMode and DEVICEPROPERTYHEADER.Flags bits.
#ifndef DM_ADVANCED
#define DM_ADVANCED 0x10
#endif
#ifndef DM_NOPERMISSION
#define DM_NOPERMISSION 0x20
#endif
#ifndef DM_USER_DEFAULT
#define DM_USER_DEFAULT 0x40
#endif
#ifndef DPS_NOPERMISSION
#define DPS_NOPERMISSION 0x0001
#endif

// Wine 8 (like Windows 8 and later) sends this reason first, with a null sheet handle.
#ifndef PROPSHEETUI_REASON_BEFORE_INIT
#define PROPSHEETUI_REASON_BEFORE_INIT 5
#endif

// ---------------------------------------------------------------------------------------------
// Structures (x64 layout of the driver kit's declarations).

typedef struct _OEM_DMEXTRAHEADER {
    DWORD dwSize;
    DWORD dwSignature;
    DWORD dwVersion;
} OEM_DMEXTRAHEADER, *POEM_DMEXTRAHEADER;

typedef struct _OEMDMPARAM {
    DWORD cbSize;
    PVOID pdriverobj;
    HANDLE hPrinter;
    HANDLE hModule;
    DEVMODEW* pPublicDMIn;
    DEVMODEW* pPublicDMOut;
    PVOID pOEMDMIn;
    PVOID pOEMDMOut;
    DWORD cbBufSize;
} OEMDMPARAM, *POEMDMPARAM;

// The obsolete function forms of the helper (the COM methods replaced them); they return BOOL.
typedef BOOL(APIENTRY* PFN_DrvGetDriverSetting)(PVOID pdriverobj, PCSTR Feature, PVOID pOutput,
                                                DWORD cbSize, PDWORD pcbNeeded,
                                                PDWORD pdwOptionsReturned);
typedef BOOL(APIENTRY* PFN_DrvUpdateUISetting)(PVOID pdriverobj, PVOID pOptItem,
                                               DWORD dwPreviousSelection, DWORD dwMode);
typedef BOOL(APIENTRY* PFN_DrvUpgradeRegistrySetting)(HANDLE hPrinter, PCSTR pFeature,
                                                      PCSTR pOption);

typedef struct _OEMUIPROCS {
    PFN_DrvGetDriverSetting DrvGetDriverSetting;
    PFN_DrvUpdateUISetting DrvUpdateUISetting;
} OEMUIPROCS, *POEMUIPROCS;

typedef struct _OEMUIOBJ {
    DWORD cbSize;
    POEMUIPROCS pOemUIProcs;
} OEMUIOBJ, *POEMUIOBJ;

struct _OEMCUIPPARAM;
typedef LONG(APIENTRY* OEMCUIPCALLBACK)(PCPSUICBPARAM pCPSUICBParam,
                                        struct _OEMCUIPPARAM* pOEMCUIPParam);

typedef struct _OEMCUIPPARAM {
    DWORD cbSize;
    POEMUIOBJ poemuiobj;
    HANDLE hPrinter;
    PWSTR pPrinterName;
    HANDLE hModule;
    HANDLE hOEMHeap;
    DEVMODEW* pPublicDM;  // document properties only
    PVOID pOEMDM;         // document properties only
    DWORD dwFlags;
    POPTITEM pDrvOptItems;  // not valid on the first (counting) call
    DWORD cDrvOptItems;
    POPTITEM pOEMOptItems;  // null on the first (counting) call
    DWORD cOEMOptItems;
    PVOID pOEMUserData;
    OEMCUIPCALLBACK OEMCUIPCallback;
} OEMCUIPPARAM, *POEMCUIPPARAM;

// lParamInit of DocumentPropertySheets / DevicePropertySheets. dwFlags and pOEMUserData stand in
// the opposite order from OEMCUIPPARAM.
typedef struct _OEMUIPSPARAM {
    DWORD cbSize;
    POEMUIOBJ poemuiobj;
    HANDLE hPrinter;
    PWSTR pPrinterName;
    HANDLE hModule;
    HANDLE hOEMHeap;
    DEVMODEW* pPublicDM;
    PVOID pOEMDM;
    PVOID pOEMUserData;
    DWORD dwFlags;
    PVOID pOemEntry;
} OEMUIPSPARAM, *POEMUIPSPARAM;

typedef struct _DEVQUERYPRINT_INFO {
    WORD cbSize;
    WORD Level;
    HANDLE hPrinter;
    DEVMODEW* pDevMode;
    LPWSTR pszErrorStr;
    DWORD cchErrorStr;
    DWORD cchNeeded;
} DEVQUERYPRINT_INFO, *PDEVQUERYPRINT_INFO;

typedef struct _DOCUMENTPROPERTYHEADER {
    WORD cbSize;
    WORD Reserved;
    HANDLE hPrinter;
    LPWSTR pszPrinterName;
    DEVMODEW* pdmIn;
    DEVMODEW* pdmOut;
    DWORD cbOut;
    DWORD fMode;
} DOCUMENTPROPERTYHEADER, *PDOCUMENTPROPERTYHEADER;

typedef struct _DEVICEPROPERTYHEADER {
    WORD cbSize;
    WORD Flags;
    HANDLE hPrinter;
    LPWSTR pszPrinterName;
} DEVICEPROPERTYHEADER, *PDEVICEPROPERTYHEADER;

typedef struct _DRIVER_UPGRADE_INFO_1 {
    LPWSTR pPrinterName;
    LPWSTR pOldDriverDirectory;
} DRIVER_UPGRADE_INFO_1, *PDRIVER_UPGRADE_INFO_1;

// ---------------------------------------------------------------------------------------------
// Interfaces. No virtual destructors: g++ would spend two vtable slots on one and shift every
// method after it.

struct IPrintOemDriverUI : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE DrvGetDriverSetting(PVOID pci, PCSTR Feature, PVOID pOutput,
                                                          DWORD cbSize, PDWORD pcbNeeded,
                                                          PDWORD pdwOptionsReturned) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrvUpgradeRegistrySetting(HANDLE hPrinter, PCSTR pFeature,
                                                                PCSTR pOption) = 0;
    virtual HRESULT STDMETHODCALLTYPE DrvUpdateUISetting(PVOID pci, PVOID pOptItem,
                                                         DWORD dwPreviousSelection,
                                                         DWORD dwMode) = 0;
};

struct IPrintOemCommon : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetInfo(DWORD dwMode, PVOID pBuffer, DWORD cbSize,
                                              PDWORD pcbNeeded) = 0;
    virtual HRESULT STDMETHODCALLTYPE DevMode(DWORD dwMode, POEMDMPARAM pOemDMParam) = 0;
};

struct IPrintOemUI : public IPrintOemCommon {
    virtual HRESULT STDMETHODCALLTYPE PublishDriverInterface(IUnknown* pIUnknown) = 0;
    virtual HRESULT STDMETHODCALLTYPE CommonUIProp(DWORD dwMode, POEMCUIPPARAM pOemCUIPParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE DocumentPropertySheets(PPROPSHEETUI_INFO pPSUIInfo,
                                                             LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE DevicePropertySheets(PPROPSHEETUI_INFO pPSUIInfo,
                                                           LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE DevQueryPrintEx(POEMUIOBJ poemuiobj,
                                                      PDEVQUERYPRINT_INFO pDQPInfo,
                                                      DEVMODEW* pPublicDM, PVOID pOEMDM) = 0;
    virtual HRESULT STDMETHODCALLTYPE DeviceCapabilities(POEMUIOBJ poemuiobj, HANDLE hPrinter,
                                                         PWSTR pDeviceName, WORD wCapability,
                                                         PVOID pOutput, DEVMODEW* pPublicDM,
                                                         PVOID pOEMDM, DWORD dwOld,
                                                         DWORD* dwResult) = 0;
    virtual HRESULT STDMETHODCALLTYPE UpgradePrinter(DWORD dwLevel, PBYTE pDriverUpgradeInfo) = 0;
    virtual HRESULT STDMETHODCALLTYPE PrinterEvent(PWSTR pPrinterName, INT iDriverEvent,
                                                   DWORD dwFlags, LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE DriverEvent(DWORD dwDriverEvent, DWORD dwLevel,
                                                  LPBYTE pDriverInfo, LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE QueryColorProfile(HANDLE hPrinter, POEMUIOBJ poemuiobj,
                                                        DEVMODEW* pPublicDM, PVOID pOEMDM,
                                                        ULONG ulQueryMode, VOID* pvProfileData,
                                                        ULONG* pcbProfileData,
                                                        FLONG* pflProfileData) = 0;
    virtual HRESULT STDMETHODCALLTYPE FontInstallerDlgProc(HWND hWnd, UINT usMsg, WPARAM wParam,
                                                           LPARAM lParam) = 0;
    virtual HRESULT STDMETHODCALLTYPE UpdateExternalFonts(HANDLE hPrinter, HANDLE hHeap,
                                                          PWSTR pwstrCartridges) = 0;
};

// Declared for completeness of the IID family; this plug-in answers only IPrintOemUI.
struct IPrintOemUI2 : public IPrintOemUI {
    virtual HRESULT STDMETHODCALLTYPE QueryJobAttributes(HANDLE hPrinter, DEVMODEW* pDevmode,
                                                         DWORD dwLevel, LPBYTE lpAttributeInfo) = 0;
    virtual HRESULT STDMETHODCALLTYPE HideStandardUI(DWORD dwMode) = 0;
    virtual HRESULT STDMETHODCALLTYPE DocumentEvent(HANDLE hPrinter, HDC hdc, INT iEsc, ULONG cbIn,
                                                    PVOID pvIn, ULONG cbOut, PVOID pvOut,
                                                    PINT piResult) = 0;
};

// Lets __uuidof(...) and IID_PPV_ARGS(...) work on the interfaces above.
__CRT_UUID_DECL(IPrintOemDriverUI, 0x92b05d50, 0x78bc, 0x11d1, 0x94, 0x80, 0x00, 0xa0, 0xc9, 0x06,
                0x40, 0xb8)
__CRT_UUID_DECL(IPrintOemCommon, 0x7f42285e, 0x91d5, 0x11d1, 0x88, 0x20, 0x00, 0xc0, 0x4f, 0xb9,
                0x61, 0xec)
__CRT_UUID_DECL(IPrintOemUI, 0xc6a7a9d0, 0x774c, 0x11d1, 0x94, 0x7f, 0x00, 0xa0, 0xc9, 0x06, 0x40,
                0xb8)
__CRT_UUID_DECL(IPrintOemUI2, 0x292515f9, 0xb54b, 0x489b, 0x92, 0x75, 0xba, 0xb5, 0x68, 0x21, 0x39,
                0x5e)

// ---------------------------------------------------------------------------------------------
// The x64 layout the framework passes; a mismatch here would corrupt every call.

#define KIV_FW_AT(type, field, off) static_assert(offsetof(type, field) == (off), #type "." #field)

static_assert(sizeof(void*) == 8, "the plug-in is 64-bit only");
static_assert(sizeof(DEVMODEW) == 220);

static_assert(sizeof(OEM_DMEXTRAHEADER) == 12);
KIV_FW_AT(OEM_DMEXTRAHEADER, dwSignature, 4);
KIV_FW_AT(OEM_DMEXTRAHEADER, dwVersion, 8);

static_assert(sizeof(OEMDMPARAM) == 72);
KIV_FW_AT(OEMDMPARAM, pdriverobj, 8);
KIV_FW_AT(OEMDMPARAM, hPrinter, 16);
KIV_FW_AT(OEMDMPARAM, hModule, 24);
KIV_FW_AT(OEMDMPARAM, pPublicDMIn, 32);
KIV_FW_AT(OEMDMPARAM, pPublicDMOut, 40);
KIV_FW_AT(OEMDMPARAM, pOEMDMIn, 48);
KIV_FW_AT(OEMDMPARAM, pOEMDMOut, 56);
KIV_FW_AT(OEMDMPARAM, cbBufSize, 64);

static_assert(sizeof(OEMUIPROCS) == 16);
KIV_FW_AT(OEMUIPROCS, DrvUpdateUISetting, 8);
static_assert(sizeof(OEMUIOBJ) == 16);
KIV_FW_AT(OEMUIOBJ, pOemUIProcs, 8);

static_assert(sizeof(OEMCUIPPARAM) == 120);
KIV_FW_AT(OEMCUIPPARAM, poemuiobj, 8);
KIV_FW_AT(OEMCUIPPARAM, hPrinter, 16);
KIV_FW_AT(OEMCUIPPARAM, pPrinterName, 24);
KIV_FW_AT(OEMCUIPPARAM, hModule, 32);
KIV_FW_AT(OEMCUIPPARAM, hOEMHeap, 40);
KIV_FW_AT(OEMCUIPPARAM, pPublicDM, 48);
KIV_FW_AT(OEMCUIPPARAM, pOEMDM, 56);
KIV_FW_AT(OEMCUIPPARAM, dwFlags, 64);
KIV_FW_AT(OEMCUIPPARAM, pDrvOptItems, 72);
KIV_FW_AT(OEMCUIPPARAM, cDrvOptItems, 80);
KIV_FW_AT(OEMCUIPPARAM, pOEMOptItems, 88);
KIV_FW_AT(OEMCUIPPARAM, cOEMOptItems, 96);
KIV_FW_AT(OEMCUIPPARAM, pOEMUserData, 104);
KIV_FW_AT(OEMCUIPPARAM, OEMCUIPCallback, 112);

static_assert(sizeof(OEMUIPSPARAM) == 88);
KIV_FW_AT(OEMUIPSPARAM, poemuiobj, 8);
KIV_FW_AT(OEMUIPSPARAM, hPrinter, 16);
KIV_FW_AT(OEMUIPSPARAM, pPrinterName, 24);
KIV_FW_AT(OEMUIPSPARAM, hModule, 32);
KIV_FW_AT(OEMUIPSPARAM, hOEMHeap, 40);
KIV_FW_AT(OEMUIPSPARAM, pPublicDM, 48);
KIV_FW_AT(OEMUIPSPARAM, pOEMDM, 56);
KIV_FW_AT(OEMUIPSPARAM, pOEMUserData, 64);
KIV_FW_AT(OEMUIPSPARAM, dwFlags, 72);
KIV_FW_AT(OEMUIPSPARAM, pOemEntry, 80);

static_assert(sizeof(DEVQUERYPRINT_INFO) == 40);
KIV_FW_AT(DEVQUERYPRINT_INFO, Level, 2);
KIV_FW_AT(DEVQUERYPRINT_INFO, hPrinter, 8);
KIV_FW_AT(DEVQUERYPRINT_INFO, pDevMode, 16);
KIV_FW_AT(DEVQUERYPRINT_INFO, pszErrorStr, 24);
KIV_FW_AT(DEVQUERYPRINT_INFO, cchErrorStr, 32);
KIV_FW_AT(DEVQUERYPRINT_INFO, cchNeeded, 36);

static_assert(sizeof(DOCUMENTPROPERTYHEADER) == 48);
KIV_FW_AT(DOCUMENTPROPERTYHEADER, Reserved, 2);
KIV_FW_AT(DOCUMENTPROPERTYHEADER, hPrinter, 8);
KIV_FW_AT(DOCUMENTPROPERTYHEADER, pszPrinterName, 16);
KIV_FW_AT(DOCUMENTPROPERTYHEADER, pdmIn, 24);
KIV_FW_AT(DOCUMENTPROPERTYHEADER, pdmOut, 32);
KIV_FW_AT(DOCUMENTPROPERTYHEADER, cbOut, 40);
KIV_FW_AT(DOCUMENTPROPERTYHEADER, fMode, 44);

static_assert(sizeof(DEVICEPROPERTYHEADER) == 24);
KIV_FW_AT(DEVICEPROPERTYHEADER, Flags, 2);
KIV_FW_AT(DEVICEPROPERTYHEADER, hPrinter, 8);
KIV_FW_AT(DEVICEPROPERTYHEADER, pszPrinterName, 16);

static_assert(sizeof(DRIVER_UPGRADE_INFO_1) == 16);

// The compstui structures the plug-in reads and writes.
static_assert(sizeof(PROPSHEETUI_INFO) == 48);
KIV_FW_AT(PROPSHEETUI_INFO, Version, 2);
KIV_FW_AT(PROPSHEETUI_INFO, Flags, 4);
KIV_FW_AT(PROPSHEETUI_INFO, Reason, 6);
KIV_FW_AT(PROPSHEETUI_INFO, hComPropSheet, 8);
KIV_FW_AT(PROPSHEETUI_INFO, pfnComPropSheet, 16);
KIV_FW_AT(PROPSHEETUI_INFO, lParamInit, 24);
KIV_FW_AT(PROPSHEETUI_INFO, UserData, 32);
KIV_FW_AT(PROPSHEETUI_INFO, Result, 40);

static_assert(sizeof(PROPSHEETUI_INFO_HEADER) == 40);
KIV_FW_AT(PROPSHEETUI_INFO_HEADER, pTitle, 8);
KIV_FW_AT(PROPSHEETUI_INFO_HEADER, hWndParent, 16);
KIV_FW_AT(PROPSHEETUI_INFO_HEADER, hInst, 24);

static_assert(sizeof(SETRESULT_INFO) == 24);
KIV_FW_AT(SETRESULT_INFO, hSetResult, 8);
KIV_FW_AT(SETRESULT_INFO, Result, 16);

static_assert(sizeof(CPSUICBPARAM) == 64);
KIV_FW_AT(CPSUICBPARAM, Reason, 2);
KIV_FW_AT(CPSUICBPARAM, hDlg, 8);
KIV_FW_AT(CPSUICBPARAM, pOptItem, 16);
KIV_FW_AT(CPSUICBPARAM, cOptItem, 24);
KIV_FW_AT(CPSUICBPARAM, Flags, 26);
KIV_FW_AT(CPSUICBPARAM, pCurItem, 32);
KIV_FW_AT(CPSUICBPARAM, UserData, 48);
KIV_FW_AT(CPSUICBPARAM, Result, 56);

static_assert(sizeof(OPTITEM) == 88);
KIV_FW_AT(OPTITEM, Level, 2);
KIV_FW_AT(OPTITEM, Flags, 4);
KIV_FW_AT(OPTITEM, UserData, 8);
KIV_FW_AT(OPTITEM, pName, 16);
KIV_FW_AT(OPTITEM, pOptType, 40);
KIV_FW_AT(OPTITEM, HelpIndex, 48);
KIV_FW_AT(OPTITEM, DMPubID, 52);
KIV_FW_AT(OPTITEM, UserItemID, 53);
KIV_FW_AT(OPTITEM, pOIExt, 56);
KIV_FW_AT(OPTITEM, dwReserved, 64);

static_assert(sizeof(OPTTYPE) == 48);
static_assert(sizeof(OPTPARAM) == 48);
static_assert(sizeof(PSPINFO) == 32);
KIV_FW_AT(PSPINFO, hComPropSheet, 8);
KIV_FW_AT(PSPINFO, hCPSUIPage, 16);
KIV_FW_AT(PSPINFO, pfnComPropSheet, 24);

static_assert(PROPSHEETUI_INFO_VERSION == 0x0100);
static_assert(DMPUB_COLOR == 6 && OPTIF_HIDE == 2);
static_assert(CPSUICB_REASON_APPLYNOW == 6 && CPSUICB_REASON_SETACTIVE == 10 &&
              CPSUICB_REASON_KILLACTIVE == 11 && CPSUICB_ACTION_ITEMS_APPLIED == 4);
static_assert(CPSFUNC_ADD_PROPSHEETPAGEW == 1 && CPSFUNC_GET_PAGECOUNT == 8);

#undef KIV_FW_AT
