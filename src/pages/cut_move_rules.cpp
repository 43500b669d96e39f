// The Cut/Move page's rules: the cutter, line feeds before the cut, recovery, black mark and
// continuous mode.
#include "pages/cut_move_rules.h"

#include "settings/ui_device_common.h"

namespace {

ComboView OfferedCombo(bool shown, Capability capability, const std::vector<uint8_t>& values,
                       uint8_t value) {
    if (!shown) {
        return ComboView{{}, 0};
    }
    return ComboView{CapabilityLabels(capability, values), ValueToIndex(values, value)};
}

}  // namespace

CutMoveView MakeCutMoveView(const UiDeviceCommon& device) {
    const bool cutter = device.GetCapabilityFlag(kCapCutter) != 0;
    const bool recovery = device.GetCapabilityFlag(kCapRecovery) != 0;
    const bool blackMark = device.GetCapabilityFlag(kCapBlackMark) != 0;
    const bool continuous = device.GetCapabilityFlag(kCapContinuousMode) != 0;
    const int lines = device.GetLfBeforeCut();
    const int lineCount = static_cast<int>(CutMoveCountLabels().size());
    return CutMoveView{
        cutter,
        recovery,
        blackMark,
        continuous,
        OfferedCombo(cutter, Capability::Cutter, device.GetCutModeList(), device.GetCutMode()),
        cutter ? ComboView{CutMoveCountLabels(), lines >= 0 && lines < lineCount ? lines : 0}
               : ComboView{{}, 0},
        OfferedCombo(recovery, Capability::Recovery, device.GetRecoveryList(),
                     device.GetRecovery()),
        OfferedCombo(blackMark, Capability::BlackMark, device.GetBlackMarkList(),
                     device.GetBlackMark()),
        OfferedCombo(continuous, Capability::ContinuousMode, device.GetContinuousModeList(),
                     device.GetContinuousMode()),
    };
}

void StoreCutMoveControls(UiDeviceCommon& device, const CutMoveControls& controls) {
    device.SetCutMode(SelectedValue(device.GetCutModeList(), controls.cutModeSelection));
    device.SetLfBeforeCut(controls.lfBeforeCutSelection > 0 ? controls.lfBeforeCutSelection : 0);
    device.SetRecovery(SelectedValue(device.GetRecoveryList(), controls.recoverySelection));
    device.SetBlackMark(SelectedValue(device.GetBlackMarkList(), controls.blackMarkSelection));
    device.SetContinuousMode(
        SelectedValue(device.GetContinuousModeList(), controls.continuousSelection));
}
