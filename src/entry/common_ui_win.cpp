// IOemUI::CommonUIProp: the fixed sequence that prepares every opening of the document pages.
#include "actions/language_monitor.h"
#include "entry/common_ui.h"
#include "entry/gpd_reader_win.h"
#include "entry/intrface_win.h"
#include "entry/property_page_entry_win.h"
#include "entry/record_repair.h"
#include "infra/guarded.h"
#include "infra/log.h"
#include "ports/platform_win.h"
#include "session/session_printer.h"
#include "settings/device_factory.h"
#include "settings/ui_device_common.h"
#include "win/text_win.h"

namespace {

const char kFn[] = "IOemUI::CommonUIProp";

// The plug-in offers its own colour handling, so the driver's colour item must not show.
void HideDriverColourItems(POEMCUIPPARAM param) {
    if (param->pDrvOptItems == nullptr)
        return;
    for (DWORD i = 0; i < param->cDrvOptItems; ++i) {
        OPTITEM& item = param->pDrvOptItems[i];
        if (item.DMPubID == DMPUB_COLOR)
            item.Flags |= OPTIF_HIDE;
    }
}

std::string ModelDataText(HANDLE hPrinter) {
    const std::wstring dataFile = PrinterDataFile(hPrinter);
    if (dataFile.empty())
        return {};
    const GpdReadResult result = ReadModelDataTextFromFile(dataFile);
    if (!result.found) {
        TheLog().Write(kLogWarning, kFn, "No OEMCustomData in <%ls> (unread %u, bad %u)",
                       dataFile.c_str(), static_cast<unsigned>(result.unreadFiles),
                       static_cast<unsigned>(result.badEntries));
    }
    return result.text;
}

// The driver's settings through the helper interface it published; without one no setting can
// be read.
class HelperDriverSettings : public DriverSettingSource {
  public:
    HelperDriverSettings(void* helper, void* object)
        : helper_(static_cast<IPrintOemDriverUI*>(helper)), object_(object) {}
    int32_t GetDriverSetting(const char* feature, char* output, uint32_t size,
                             uint32_t* needed) override {
        if (helper_ == nullptr)
            return E_NOINTERFACE;
        DWORD cbNeeded = 0;
        DWORD options = 0;
        const HRESULT hr =
            helper_->DrvGetDriverSetting(object_, feature, output, size, &cbNeeded, &options);
        *needed = cbNeeded;
        return hr;
    }

  private:
    IPrintOemDriverUI* helper_;
    void* object_;
};

}  // namespace

STDMETHODIMP IOemUI::CommonUIProp(DWORD dwMode, POEMCUIPPARAM pOemCUIPParam) {
    return Guarded(kFn, E_FAIL, [&] {
        TraceScope trace(kFn, "Begin mode : ");
        // Printer properties and the framework's first (counting) call change nothing.
        if (dwMode != OEMCUIP_PRNPROP && pOemCUIPParam != nullptr &&
            pOemCUIPParam->pOEMOptItems != nullptr) {
            PrepareDocumentPass(pOemCUIPParam);
            pOemCUIPParam->pOEMUserData = &m_state;
        }
        return trace.Return(hrOEMPropertyPage(dwMode, pOemCUIPParam));
    });
}

void IOemUI::PrepareDocumentPass(POEMCUIPPARAM param) {
    OemUiState& s = m_state;
    HideDriverColourItems(param);

    s.printerNameWide =
        param->pPrinterName != nullptr ? U16FromWide(param->pPrinterName) : std::u16string();
    s.printerName = NarrowAnsi(param->pPrinterName != nullptr ? param->pPrinterName : L"");

    if (param->pPublicDM != nullptr) {
        s.yResolution = param->pPublicDM->dmYResolution;
        s.paperWidth = param->pPublicDM->dmPaperWidth;
        s.paperLength = param->pPublicDM->dmPaperLength;
        s.paperWidthDots = PaperDots(s.paperWidth, s.yResolution);
        s.paperLengthDots = PaperDots(s.paperLength, s.yResolution);
    }

    const Platform& platform = WinPlatform();
    ReadConfiguration(*platform.currentUser, *platform.log.text, s.printerNameWide, s.config);
    WriteConfiguration(*platform.currentUser, *platform.log.text, s.printerNameWide, s.config, 0);

    if (s.config.logVerbosity != 0) {
        TheLog().Open(s.printerNameWide, s.config.logFolder, kLogToFile,
                      static_cast<uint8_t>(s.config.logVerbosity), s.config.settingsUi);
    } else {
        TheLog().Disable();
    }
    TheLog().Write(kLogDetail, kFn, "******************** PrinterName <%s> ********************",
                   s.printerName.c_str());

    s.hPrinter = param->hPrinter;
    s.oemCustomData = ModelDataText(param->hPrinter);
    TheLog().Write(kLogDetail, kFn, "OEMCustomData <%s>", s.oemCustomData.c_str());
    s.oemCustomDataList = SplitModelText(s.oemCustomData);

    s.device = CreateUiDevice(
        ModelTextPiece(s.oemCustomDataList, 0), ModelTextPiece(s.oemCustomDataList, 1),
        ModelTextPiece(s.oemCustomDataList, 2), ModelTextPiece(s.oemCustomDataList, 3));
    TheLog().Write(kLogDetail, kFn, "PrinterDevice <%s>", s.device->GetModelName().c_str());

    RepairWorkingRecord(s.savedOEMDev, s.workOEMDev, *s.device, s.printerName);

    s.lmAvailable = 0;
    s.lmBidi = 0;
    s.lmEnable = 0;
    HelperDriverSettings settings(s.driverHelper, param->poemuiobj);
    const RequestPrinter printer(*platform.spooler, s);
    const uint8_t status = QueryLanguageMonitorStatus(
        {*platform.spooler, *platform.localMachine, *platform.log.text, *platform.versions},
        settings, printer.Handle());
    TheLog().Write(kLogDetail, kFn, " Available LM Status : <%s>", GetLMStatusName(status));
    const LmFlags flags = LmFlagsFromStatus(status);
    s.lmAvailable = flags.available;
    s.lmBidi = flags.bidi;
    s.lmEnable = flags.enable;
    TheLog().Write(kLogInfo, kFn, "LM Available <%d>", static_cast<int>(s.lmAvailable));
    TheLog().Write(kLogInfo, kFn, "LM Bidi <%d>", static_cast<int>(s.lmBidi));
    TheLog().Write(kLogInfo, kFn, "LM Enable <%d>", static_cast<int>(s.lmEnable));
}
