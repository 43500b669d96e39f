// The driver helper (IPrintOemDriverUI) the universal driver publishes to its plug-ins.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "win/oem_framework_win.h"

// Answers DrvGetDriverSetting from a fixed table of feature -> selected option, like the
// universal driver answers from the GPD's current selections. The other two methods are not
// implemented; a plug-in must cope with that, as it must with a driver that lacks them.
class DriverUI final : public IPrintOemDriverUI {
  public:
    DriverUI();

    // IUnknown. The object lives as long as the request that published it; the count only
    // records the plug-in's references, so the request can tell they were all given back.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE DrvGetDriverSetting(PVOID pci, PCSTR Feature, PVOID pOutput,
                                                  DWORD cbSize, PDWORD pcbNeeded,
                                                  PDWORD pdwOptionsReturned) override;
    HRESULT STDMETHODCALLTYPE DrvUpgradeRegistrySetting(HANDLE hPrinter, PCSTR pFeature,
                                                        PCSTR pOption) override;
    HRESULT STDMETHODCALLTYPE DrvUpdateUISetting(PVOID pci, PVOID pOptItem,
                                                 DWORD dwPreviousSelection, DWORD dwMode) override;

    void Set(const std::string& feature, const std::string& option) { settings_[feature] = option; }
    LONG References() const { return refs_; }
    // How many times DrvGetDriverSetting was asked, to show what the plug-in used.
    int Queries() const { return queries_; }

    // The obsolete function forms in OEMUIOBJ; `pdriverobj` is the DriverObject handed out.
    static BOOL APIENTRY GetSettingProc(PVOID pdriverobj, PCSTR Feature, PVOID pOutput,
                                        DWORD cbSize, PDWORD pcbNeeded, PDWORD pdwOptionsReturned);
    static BOOL APIENTRY UpdateUISettingProc(PVOID pdriverobj, PVOID pOptItem,
                                             DWORD dwPreviousSelection, DWORD dwMode);

  private:
    std::map<std::string, std::string> settings_;
    volatile LONG refs_ = 1;
    int queries_ = 0;
};

// The OEMUIOBJ the driver hands the plug-in, followed by the helper its function forms answer
// from: the plug-in passes the object back as `pdriverobj`.
struct DriverObject {
    OEMUIPROCS procs = {DriverUI::GetSettingProc, DriverUI::UpdateUISettingProc};
    OEMUIOBJ obj = {sizeof(OEMUIOBJ), &procs};
    DriverUI* helper = nullptr;
};
