// The printer models: one capability class per model, all built from the model tables.
#pragma once

#include <memory>
#include <string>

#include "settings/ui_device_common.h"

enum class ModelId {
    J7,
    TRX415A,
    TRX418A_CUT,
    TRX418A_NOCUT,
    TRX430ATF,
    TRX430A,
    Vorta5XCA,
    N5,
    HB5820AEJ,
    HB5820A,
    HB5840A,
    WR35EJ,
    WR35,
    WR55,
    ZLD40,
    ZLD40P,
    ZLD90VII,
};

// One class per model. The models differ only in data (offered lists, starting values, the
// bytes their export writes), which lives in one table per model; the template gives each
// model a type of its own that derives directly from UiDeviceCommon.
template <ModelId kId>
class UiDeviceModel final : public UiDeviceCommon {
  public:
    // The three further pieces of the model data text; the model name is the class's own.
    UiDeviceModel(std::string second, std::string third, std::string fourth);
    std::string GetModelName() const override;
    void ExportCapabilities(OemDevPayload& payload) const override;
    int GetModelNumber() const override;
    std::unique_ptr<UiDeviceCommon> Clone() const override {
        return std::make_unique<UiDeviceModel>(*this);
    }
};

using UiDeviceJ7 = UiDeviceModel<ModelId::J7>;
using UiDeviceTRX415A = UiDeviceModel<ModelId::TRX415A>;
using UiDeviceTRX418A_CUT = UiDeviceModel<ModelId::TRX418A_CUT>;
using UiDeviceTRX418A_NOCUT = UiDeviceModel<ModelId::TRX418A_NOCUT>;
using UiDeviceTRX430ATF = UiDeviceModel<ModelId::TRX430ATF>;
using UiDeviceTRX430A = UiDeviceModel<ModelId::TRX430A>;
using UiDeviceVorta5XCA = UiDeviceModel<ModelId::Vorta5XCA>;
using UiDeviceN5 = UiDeviceModel<ModelId::N5>;
using UiDeviceHB5820AEJ = UiDeviceModel<ModelId::HB5820AEJ>;
using UiDeviceHB5820A = UiDeviceModel<ModelId::HB5820A>;
using UiDeviceHB5840A = UiDeviceModel<ModelId::HB5840A>;
using UiDeviceWR35EJ = UiDeviceModel<ModelId::WR35EJ>;
using UiDeviceWR35 = UiDeviceModel<ModelId::WR35>;
using UiDeviceWR55 = UiDeviceModel<ModelId::WR55>;
using UiDeviceZLD40 = UiDeviceModel<ModelId::ZLD40>;
using UiDeviceZLD40P = UiDeviceModel<ModelId::ZLD40P>;
using UiDeviceZLD90VII = UiDeviceModel<ModelId::ZLD90VII>;

extern template class UiDeviceModel<ModelId::J7>;
extern template class UiDeviceModel<ModelId::TRX415A>;
extern template class UiDeviceModel<ModelId::TRX418A_CUT>;
extern template class UiDeviceModel<ModelId::TRX418A_NOCUT>;
extern template class UiDeviceModel<ModelId::TRX430ATF>;
extern template class UiDeviceModel<ModelId::TRX430A>;
extern template class UiDeviceModel<ModelId::Vorta5XCA>;
extern template class UiDeviceModel<ModelId::N5>;
extern template class UiDeviceModel<ModelId::HB5820AEJ>;
extern template class UiDeviceModel<ModelId::HB5820A>;
extern template class UiDeviceModel<ModelId::HB5840A>;
extern template class UiDeviceModel<ModelId::WR35EJ>;
extern template class UiDeviceModel<ModelId::WR35>;
extern template class UiDeviceModel<ModelId::WR55>;
extern template class UiDeviceModel<ModelId::ZLD40>;
extern template class UiDeviceModel<ModelId::ZLD40P>;
extern template class UiDeviceModel<ModelId::ZLD90VII>;
