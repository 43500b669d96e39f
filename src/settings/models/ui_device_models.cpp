// The model tables: per model its name, number, capability export, offered lists and starts.
#include "settings/models/ui_device_models.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "settings/setting_enums.h"

namespace {

template <typename T>
struct Offered {
    std::vector<T> values;  // in the order of the page's drop-down entries
    T start;
};

Offered<uint8_t> Offer(std::vector<uint8_t> values, uint8_t start) {
    return {std::move(values), start};
}

struct PresentationDefaults {
    uint8_t mode;
    uint8_t value;
    uint8_t timeout;
};

struct Page2PageDefaults {
    uint8_t action;
    uint8_t checkPoint;
    uint16_t timeout;
};

struct CouponCuts {
    uint8_t inter;
    uint8_t final;
};

// What the capability export writes. Density, quality and the cutter are on every model; an
// absent feature keeps its Sup byte 0. No model writes the buzzer or selector Sup bytes.
struct ModelExport {
    uint8_t cashDrawer = 0;  // the Sup byte itself, which every model writes
    uint8_t density = PRN_PROP_DENS_NORMAL;
    uint8_t quality = PRN_PROP_QUAL_NORMAL;
    uint8_t cutMode = PRN_PROP_CUTTER_NOTSETBYDRIVER;
    std::optional<uint8_t> recovery{};
    std::optional<uint8_t> blackMark{};
    std::optional<PresentationDefaults> presentation{};
    std::optional<uint8_t> headLed{};
    std::optional<uint8_t> continuousMode{};
    std::optional<uint16_t> feeder{};
    std::optional<Page2PageDefaults> page2Page{};
    std::optional<CouponCuts> couponCuts{};
};

struct ModelData {
    const char* name{};
    int number{};
    ModelExport exported{};
    // Offered values with the starting value; an absent list is left empty.
    Offered<uint8_t> density{};
    Offered<uint8_t> quality{};
    Offered<uint8_t> cutMode{};
    std::optional<Offered<uint8_t>> recovery{};
    std::optional<Offered<uint8_t>> blackMark{};
    std::optional<Offered<uint8_t>> presentation{};
    std::optional<Offered<uint8_t>> continuousMode{};
    std::optional<Offered<uint8_t>> headLed{};
    std::optional<Offered<uint8_t>> page2PageAction{};
    std::optional<Offered<uint16_t>> feeder{};
    std::vector<uint8_t> cashDrawerPhases{};
    std::vector<uint8_t> buzzers{};
    // Further starting values.
    std::optional<CouponCuts> couponCuts{};
    std::optional<int32_t> presentationValue{};
    std::optional<int32_t> presentationTimeout{};
    std::optional<uint8_t> page2PageExtra{};
};

const std::vector<uint8_t> kDensityAll = {0x00, 0x10, 0x20, 0x30, 0x40,
                                          0x50, 0x60, 0x70, 0x80, 0x90};
const std::vector<uint8_t> kDensityNarrow = {0x00, 0x30, 0x40, 0x50, 0x60, 0x70};
const std::vector<uint8_t> kQualityFour = {0x00, 0x30, 0x20, 0x10};
const std::vector<uint8_t> kQualityNoHigh = {0x00, 0x30, 0x20};
const std::vector<uint8_t> kQualityNoSpeed = {0x00, 0x20, 0x10};
const std::vector<uint8_t> kTrxCuts = {0x80, 0x20, 0x40, 0x11};
const std::vector<uint8_t> kTrxRecovery = {0x10, 0x20, 0x30, 0x00};
const std::vector<uint8_t> kShortRecovery = {0x10, 0x20};
const std::vector<uint8_t> kPresenterModes = {0x10, 0x40, 0x60};
const std::vector<uint8_t> kContinuousModes = {0x01, 0x10, 0x20};
const std::vector<uint8_t> kPage2PageActions = {
    PRN_PROP_PAGE2PAGE_EJECT, PRN_PROP_PAGE2PAGE_RETRACT, PRN_PROP_PAGE2PAGE_HOLD};
constexpr CouponCuts kTotalCuts = {PRN_COP_CUTTER_TC, PRN_COP_CUTTER_TC};
constexpr Page2PageDefaults kEjectAtPageBegin = {PRN_PROP_PAGE2PAGE_EJECT,
                                                 PRN_PROP_PAGE2PAGE_CHECKTO_BEGINPAGE, 10};

ModelData TrxModel(const char* name, uint8_t cutStart, uint8_t recoveryStart) {
    return {
        .name = name,
        .number = 608,
        .exported = {.cutMode = cutStart,
                     .recovery = recoveryStart,
                     .blackMark = PRN_PROP_BMARK_OFF},
        .density = Offer(kDensityAll, 0x50),
        .quality = Offer(kQualityFour, 0x20),
        .cutMode = Offer(kTrxCuts, cutStart),
        .recovery = Offer(kTrxRecovery, recoveryStart),
        .blackMark = Offer({0x10, 0x40}, 0x10),
        .cashDrawerPhases = {0x00, 0x30, 0x10},
        .buzzers = {0x00, 0x10},
    };
}

// The two-inch kiosk family (HB and WR): narrow density, no high quality, normal recovery.
ModelData KioskModel(const char* name, int number, std::vector<uint8_t> cuts,
                     std::vector<uint8_t> phases, std::vector<uint8_t> buzzers) {
    return {
        .name = name,
        .number = number,
        .exported = {.cutMode = PRN_PROP_CUTTER_TC_END_PAGE,
                     .recovery = PRN_PROP_RECOVERY_NORMAL_AT_CUT,
                     .blackMark = PRN_PROP_BMARK_OFF,
                     .couponCuts = kTotalCuts},
        .density = Offer(kDensityNarrow, 0x50),
        .quality = Offer(kQualityNoHigh, 0x20),
        .cutMode = Offer(std::move(cuts), 0x20),
        .recovery = Offer(kShortRecovery, 0x20),
        .blackMark = Offer({0x10, 0x30}, 0x10),
        .cashDrawerPhases = std::move(phases),
        .buzzers = std::move(buzzers),
    };
}

ModelData MakeModelData(ModelId id) {
    switch (id) {
        case ModelId::J7:
            return {
                .name = "J7",
                .number = 576,
                .exported = {.cashDrawer = 1,
                             .cutMode = PRN_PROP_CUTTER_PC_END_PAGE,
                             .blackMark = PRN_PROP_BMARK_OFF,
                             .couponCuts = kTotalCuts},
                .density = Offer(kDensityAll, 0x50),
                .quality = Offer(kQualityFour, 0x20),
                .cutMode = Offer({0x10, 0x11, 0x20, 0x40, 0x60, 0x30, 0x50, 0x70}, 0x30),
                .blackMark = Offer({0x10, 0x30}, 0x10),
                .cashDrawerPhases = {0x30, 0x10, 0x20},
                .buzzers = {0x00, 0x10, 0x20},
                .couponCuts = kTotalCuts,
            };
        case ModelId::TRX415A: {
            ModelData model =
                TrxModel("TRX415A", PRN_PROP_CUTTER_TC_END_PAGE, PRN_PROP_RECOVERY_TOTAL_AT_CUT);
            model.exported.couponCuts = kTotalCuts;
            model.couponCuts = kTotalCuts;
            return model;
        }
        case ModelId::TRX418A_CUT: {
            ModelData model =
                TrxModel("TRX418A CUT", PRN_PROP_NO_CUT, PRN_PROP_RECOVERY_TOTAL_AT_CUT);
            model.exported.couponCuts = kTotalCuts;
            model.couponCuts = kTotalCuts;
            return model;
        }
        case ModelId::TRX418A_NOCUT: {
            // No cutter blade: tear-off only, no recovery, coupons are not cut.
            ModelData model = TrxModel("TRX418A NOCUT", PRN_PROP_CUTTER_TEAROFF_END_PAGE, 0);
            model.exported.recovery.reset();
            model.exported.couponCuts = CouponCuts{PRN_COP_CUTTER_NONE, PRN_COP_CUTTER_NONE};
            model.cutMode = Offer({0x10, 0x11}, 0x10);
            model.recovery.reset();
            model.couponCuts = CouponCuts{PRN_COP_CUTTER_NONE, PRN_COP_CUTTER_NONE};
            return model;
        }
        case ModelId::TRX430ATF: {
            ModelData model = TrxModel("TRX430ATF", PRN_PROP_CUTTER_TC_END_PAGE,
                                       PRN_PROP_RECOVERY_NOTSETBYDRIVER);
            model.exported.feeder = PRN_PROP_FEEDER_AUTO;
            model.feeder = Offered<uint16_t>{{1000, 1001, 1002, 1003}, PRN_PROP_FEEDER_AUTO};
            model.couponCuts = kTotalCuts;
            return model;
        }
        case ModelId::TRX430A:
            return TrxModel("TRX430A", PRN_PROP_CUTTER_TC_END_PAGE,
                            PRN_PROP_RECOVERY_NOTSETBYDRIVER);
        case ModelId::Vorta5XCA:
            return {
                .name = "VORTA5X",
                .number = 624,
                .exported = {.cutMode = PRN_PROP_CUTTER_TC_END_PAGE,
                             .blackMark = PRN_PROP_BMARK_NOTSETBYDRIVER,
                             .presentation =
                                 PresentationDefaults{PRN_PROP_PRESENT_HOLD_FIXED, 0, 10},
                             .continuousMode = PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER,
                             .couponCuts = kTotalCuts},
                .density = Offer(kDensityNarrow, 0x50),
                .quality = Offer(kQualityNoSpeed, 0x20),
                .cutMode = Offer({0x00, 0x20, 0x30}, 0x20),
                .blackMark = Offer({0x10, 0x30, 0x20}, 0x10),
                .presentation = Offer({0x00, 0x40, 0x10}, 0x10),
                .continuousMode = Offer(kContinuousModes, 0x01),
                .cashDrawerPhases = {0x10, 0x20},
                .buzzers = {0x00, 0x10, 0x20},
                .presentationTimeout = 10,
            };
        case ModelId::N5:
            return {
                .name = "N5",
                .number = 608,
                .exported = {.cashDrawer = 1,
                             .cutMode = PRN_PROP_CUTTER_PC_END_PAGE,
                             .couponCuts = kTotalCuts},
                .density = Offer(kDensityNarrow, 0x50),
                .quality = Offer(kQualityNoSpeed, 0x20),
                .cutMode = Offer({0x80, 0x20, 0x40, 0x60, 0x30, 0x50, 0x70}, 0x30),
                .cashDrawerPhases = {0x10, 0x20},
                .buzzers = {0x00, 0x10, 0x20},
            };
        case ModelId::HB5820AEJ:
            return {
                .name = "HB5820A-EJ",
                .number = 448,
                .exported = {.cutMode = PRN_PROP_CUTTER_TC_END_PAGE,
                             .blackMark = PRN_PROP_BMARK_OFF,
                             .presentation =
                                 PresentationDefaults{PRN_PROP_PRESENT_HOLD_FIXED, 40, 10},
                             .couponCuts = kTotalCuts},
                .density = Offer(kDensityNarrow, 0x50),
                .quality = Offer(kQualityNoHigh, 0x20),
                .cutMode = Offer({0x20}, 0x20),
                .blackMark = Offer({0x10, 0x30}, 0x10),
                .presentation = Offer(kPresenterModes, 0x10),
                .cashDrawerPhases = {0x10},
                .buzzers = {0x00, 0x10},
                .presentationValue = 40,
                .presentationTimeout = 10,
            };
        case ModelId::HB5820A:
            return KioskModel("HB5820A", 448, {0x80, 0x20, 0x10}, {0x00, 0x30, 0x10}, {0x00, 0x10});
        case ModelId::HB5840A:
            return KioskModel("HB5840A", 608, {0x80, 0x20}, {0x00, 0x30, 0x10}, {0x00, 0x10});
        case ModelId::WR35EJ: {
            // The WR35VII with the ticket presenter of the HB5820A-EJ.
            ModelData model = KioskModel("WR35VIIEJ", 448, {0x80, 0x20, 0x30}, {0x00, 0x20, 0x10},
                                         {0x00, 0x20, 0x10});
            model.exported.presentation = PresentationDefaults{PRN_PROP_PRESENT_HOLD_FIXED, 40, 10};
            model.presentation = Offer(kPresenterModes, 0x10);
            model.presentationValue = 40;
            model.presentationTimeout = 10;
            model.couponCuts = kTotalCuts;
            return model;
        }
        case ModelId::WR35:
            return KioskModel("WR35VII", 448, {0x80, 0x20, 0x30}, {0x00, 0x20, 0x10},
                              {0x00, 0x20, 0x10});
        case ModelId::WR55:
            return KioskModel("WR55VII", 448, {0x80, 0x20, 0x30}, {0x00, 0x20, 0x10},
                              {0x00, 0x20, 0x10});
        case ModelId::ZLD40:
            return {
                .name = "ZLD40",
                .number = 480,
                .exported = {.cutMode = PRN_PROP_CUTTER_TC_END_PAGE,
                             .blackMark = PRN_PROP_BMARK_NOTSETBYDRIVER,
                             .couponCuts = kTotalCuts},
                .density = Offer(kDensityNarrow, 0x50),
                .quality = Offer(kQualityNoSpeed, 0x20),
                .cutMode = Offer({0x00, 0x80, 0x20, 0x30, 0x40, 0x50}, 0x20),
                .blackMark = Offer({0x10, 0x30, 0x20}, 0x10),
                .cashDrawerPhases = {0x00, 0x20, 0x10},
                .buzzers = {0x00, 0x20, 0x10},
            };
        case ModelId::ZLD40P:
            return {
                .name = "ZLD40PRESENTER",
                .number = 480,
                .exported = {.cutMode = PRN_PROP_CUTTER_TC_END_PAGE,
                             .blackMark = PRN_PROP_BMARK_NOTSETBYDRIVER,
                             .presentation =
                                 PresentationDefaults{PRN_PROP_PRESENT_HOLD_FIXED, 0, 10},
                             .continuousMode = PRN_PROP_CONTINUOUSMODE_NOTSETBYDRIVER,
                             .page2Page = kEjectAtPageBegin,
                             .couponCuts = kTotalCuts},
                .density = Offer(kDensityNarrow, 0x50),
                .quality = Offer(kQualityNoSpeed, 0x20),
                .cutMode = Offer({0x20, 0x40}, 0x20),
                .blackMark = Offer({0x10, 0x30, 0x20}, 0x10),
                .presentation = Offer(kPresenterModes, 0x10),
                .continuousMode = Offer(kContinuousModes, 0x01),
                .page2PageAction = Offer(kPage2PageActions, PRN_PROP_PAGE2PAGE_EJECT),
                .cashDrawerPhases = {0x10},
                .buzzers = {0x00, 0x10},
                .page2PageExtra = PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_DOC,
            };
        case ModelId::ZLD90VII:
            return {
                .name = "ZLD90VII",
                .number = 640,
                .exported = {.cutMode = PRN_PROP_CUTTER_TC_END_PAGE,
                             .blackMark = PRN_PROP_BMARK_OFF,
                             .presentation =
                                 PresentationDefaults{PRN_PROP_PRESENT_HOLD_VALUE, 40, 10},
                             .headLed = PRN_HLED_BLINK,
                             .continuousMode = PRN_PROP_CONTINUOUSMODE_AUTO,
                             .page2Page = kEjectAtPageBegin,
                             .couponCuts = kTotalCuts},
                .density = Offer(kDensityAll, 0x50),
                .quality = Offer(kQualityFour, 0x20),
                .cutMode = Offer({0x40, 0x20}, 0x20),
                .blackMark = Offer({0x10, 0x30}, 0x10),
                .presentation = Offer({0x20, 0x30, 0x40, 0x60, 0x70}, 0x20),
                .continuousMode = Offer({0x00, 0x10, 0x20}, 0x00),
                .headLed = Offer({0x00, 0x10, 0x20, 0x30, 0x40}, PRN_HLED_BLINK),
                .page2PageAction = Offer(kPage2PageActions, PRN_PROP_PAGE2PAGE_EJECT),
                .cashDrawerPhases = {0x10},
                .buzzers = {0x00, 0x10},
                .presentationValue = 40,
                .page2PageExtra = PRN_PROP_PAGE2PAGE_AFTERTO_CLEAN_DOC,
            };
    }
    return {};
}

template <ModelId kId>
const ModelData& DataOf() {
    static const ModelData model = MakeModelData(kId);
    return model;
}

void WriteExport(const ModelExport& e, OemDevPayload& p) {
    p.supCashDrawer = e.cashDrawer;
    p.supDensity = 1;
    p.density = e.density;
    p.supQuality = 1;
    p.quality = e.quality;
    p.supCutter = 1;
    p.cutMode = e.cutMode;
    if (e.recovery) {
        p.supRecovery = 1;
        p.recovery = *e.recovery;
    }
    if (e.blackMark) {
        p.supBlackMark = 1;
        p.blackMark = *e.blackMark;
    }
    if (e.presentation) {
        p.supPresentation = 1;
        p.presentationMode = e.presentation->mode;
        p.presentationValue = e.presentation->value;
        p.presentationTimeout = e.presentation->timeout;
    }
    if (e.headLed) {
        p.supHeadLed = 1;
        p.headLed = *e.headLed;
    }
    if (e.continuousMode) {
        p.supContinuousMode = 1;
        p.continuousMode = *e.continuousMode;
    }
    if (e.feeder) {
        p.supFeeder = 1;
        p.feeder = *e.feeder;
    }
    if (e.page2Page) {
        p.supPage2Page = 1;
        p.page2PageAction = e.page2Page->action;
        p.page2PageCheckPoint = e.page2Page->checkPoint;
        p.page2PageTimeout = e.page2Page->timeout;
    }
    if (e.couponCuts) {
        p.couponCutInter = e.couponCuts->inter;
        p.couponCutFinal = e.couponCuts->final;
    }
}

template <typename Setter, typename T>
void ApplyOffer(const std::optional<Offered<T>>& offer, UiDeviceCommon& device,
                void (UiDeviceCommon::*setList)(std::vector<T>), Setter setValue) {
    if (offer) {
        (device.*setList)(offer->values);
        (device.*setValue)(offer->start);
    }
}

void ApplyOffers(const ModelData& s, UiDeviceCommon& d) {
    d.SetDensityList(s.density.values);
    d.SetDensity(s.density.start);
    d.SetQualityList(s.quality.values);
    d.SetQuality(s.quality.start);
    d.SetCutModeList(s.cutMode.values);
    d.SetCutMode(s.cutMode.start);
    ApplyOffer(s.recovery, d, &UiDeviceCommon::SetRecoveryList, &UiDeviceCommon::SetRecovery);
    ApplyOffer(s.blackMark, d, &UiDeviceCommon::SetBlackMarkList, &UiDeviceCommon::SetBlackMark);
    ApplyOffer(s.presentation, d, &UiDeviceCommon::SetPresentationList,
               &UiDeviceCommon::SetPresentationMode);
    ApplyOffer(s.continuousMode, d, &UiDeviceCommon::SetContinuousModeList,
               &UiDeviceCommon::SetContinuousMode);
    ApplyOffer(s.headLed, d, &UiDeviceCommon::SetHeadLedList, &UiDeviceCommon::SetHeadLed);
    ApplyOffer(s.page2PageAction, d, &UiDeviceCommon::SetPage2PageActionList,
               &UiDeviceCommon::SetPage2PageAction);
    ApplyOffer(s.feeder, d, &UiDeviceCommon::SetFeederList, &UiDeviceCommon::SetFeeder);
    d.SetCashDrawerPhaseList(s.cashDrawerPhases);
    d.SetBuzzerList(s.buzzers);
    if (s.couponCuts) {
        d.SetCouponCutInter(s.couponCuts->inter);
        d.SetCouponCutFinal(s.couponCuts->final);
    }
    if (s.presentationValue) {
        d.SetPresentationValue(*s.presentationValue);
    }
    if (s.presentationTimeout) {
        d.SetPresentationTimeout(*s.presentationTimeout);
    }
    if (s.page2PageExtra) {
        d.SetPage2PageExtra(*s.page2PageExtra);
    }
}

}  // namespace

template <ModelId kId>
UiDeviceModel<kId>::UiDeviceModel(std::string second, std::string third, std::string fourth)
    : UiDeviceCommon(DataOf<kId>().name, std::move(second), std::move(third), std::move(fourth)) {
    ApplyOffers(DataOf<kId>(), *this);
    TakeCapabilityFlagsFromExport();
    KeepStartingValues();
}

template <ModelId kId>
std::string UiDeviceModel<kId>::GetModelName() const {
    return DataOf<kId>().name;
}

template <ModelId kId>
void UiDeviceModel<kId>::ExportCapabilities(OemDevPayload& payload) const {
    WriteExport(DataOf<kId>().exported, payload);
}

template <ModelId kId>
int UiDeviceModel<kId>::GetModelNumber() const {
    return DataOf<kId>().number;
}

template class UiDeviceModel<ModelId::J7>;
template class UiDeviceModel<ModelId::TRX415A>;
template class UiDeviceModel<ModelId::TRX418A_CUT>;
template class UiDeviceModel<ModelId::TRX418A_NOCUT>;
template class UiDeviceModel<ModelId::TRX430ATF>;
template class UiDeviceModel<ModelId::TRX430A>;
template class UiDeviceModel<ModelId::Vorta5XCA>;
template class UiDeviceModel<ModelId::N5>;
template class UiDeviceModel<ModelId::HB5820AEJ>;
template class UiDeviceModel<ModelId::HB5820A>;
template class UiDeviceModel<ModelId::HB5840A>;
template class UiDeviceModel<ModelId::WR35EJ>;
template class UiDeviceModel<ModelId::WR35>;
template class UiDeviceModel<ModelId::WR55>;
template class UiDeviceModel<ModelId::ZLD40>;
template class UiDeviceModel<ModelId::ZLD40P>;
template class UiDeviceModel<ModelId::ZLD90VII>;
