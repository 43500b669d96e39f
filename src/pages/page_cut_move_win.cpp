// The Cut/Move page: the cutter, line feeds before the cut, recovery, black mark and continuous
// mode.
#include "../../resources/resource.h"
#include "pages/cut_move_rules.h"
#include "pages/page_framework_win.h"
#include "settings/ui_device_common.h"

namespace {

constexpr wchar_t kCutterHelp[] =
    L"CUTTER\n\nCut mode: when the printer cuts the paper. A total cut separates the ticket, a "
    L"partial cut\nleaves it hanging by a small bridge, tear off only moves the paper to the "
    L"tear bar.\nEach can happen after every page, after every document or at the end of the "
    L"job.\n\nLine feeds before cut: blank lines fed before the cut, so the last printed line "
    L"clears\nthe cutter.\n\nRecovery: what the printer does with the paper left before the "
    L"cutter when it starts\nagain after a cut.\n\nNot set by Driver: the printer keeps its own "
    L"setting.\n";
constexpr wchar_t kBlackMarkHelp[] =
    L"BLACK MARK\n\nFor paper with printed black marks on the back: the printer moves the paper "
    L"to the next mark\nat the beginning of each page, at the end of each page, or at both.\n\n"
    L"Disable: the marks are ignored.\nNot set by Driver: the printer keeps its own setting.\n";
constexpr wchar_t kContinuousHelp[] =
    L"CONTINUOUS MODE\n\nHow the printer handles long tickets that are not cut:\n\n- Loopaway: "
    L"the paper forms a loop inside the printer.\n- Feedaway: the paper is fed straight out of "
    L"the printer.\n- Automatic: the printer chooses.\n\nNot set by Driver: the printer keeps "
    L"its own setting.\n";

constexpr PictureRow kPictures[] = {
    {IDC_CUTMOVE_CONTINUOUS_PICTURE, IDB_PNG_CONTINUOUS_MODE},
    {IDC_CUTMOVE_CUTTER_PICTURE, IDB_PNG_CUTTER},
    {IDC_CUTMOVE_BLACK_MARK_PICTURE, IDB_PNG_BLACK_MARK},
};
constexpr HelpRow kHelps[] = {
    {IDC_CUTMOVE_CUTTER_HELP, kCutterHelp},
    {IDC_CUTMOVE_BLACK_MARK_HELP, kBlackMarkHelp},
    {IDC_CUTMOVE_CONTINUOUS_HELP, kContinuousHelp},
};

constexpr int kCutterGroup[] = {IDC_CUTMOVE_CUTTER_GROUP, IDC_CUTMOVE_CUTTER_HELP,
                                IDC_CUTMOVE_CUTTER_PICTURE};
constexpr int kCutterRows[] = {IDC_CUTMOVE_CUT_MODE_CAPTION, IDC_CUTMOVE_CUT_MODE,
                               IDC_CUTMOVE_LF_BEFORE_CUT_CAPTION, IDC_CUTMOVE_LF_BEFORE_CUT};
constexpr int kRecoveryRow[] = {IDC_CUTMOVE_RECOVERY_CAPTION, IDC_CUTMOVE_RECOVERY};
constexpr int kBlackMarkGroup[] = {IDC_CUTMOVE_BLACK_MARK_GROUP, IDC_CUTMOVE_BLACK_MARK_HELP,
                                   IDC_CUTMOVE_BLACK_MARK_PICTURE, IDC_CUTMOVE_BLACK_MARK_CAPTION,
                                   IDC_CUTMOVE_BLACK_MARK};
constexpr int kContinuousGroup[] = {IDC_CUTMOVE_CONTINUOUS_GROUP, IDC_CUTMOVE_CONTINUOUS_HELP,
                                    IDC_CUTMOVE_CONTINUOUS_PICTURE, IDC_CUTMOVE_CONTINUOUS_CAPTION,
                                    IDC_CUTMOVE_CONTINUOUS_MODE};

void ShowCombo(HWND hDlg, bool shown, std::span<const int> controls, int comboId,
               const ComboView& combo) {
    if (shown) {
        FillComboFromLabels(hDlg, comboId, combo.labels, combo.selection);
    } else {
        SetControlsState(hDlg, controls, kControlHide);
    }
}

void Fill(HWND hDlg, UiDeviceCommon& device) {
    const CutMoveView view = MakeCutMoveView(device);
    if (!view.cutterShown && !view.recoveryShown) {
        SetControlsState(hDlg, kCutterGroup, kControlHide);
    }
    ShowCombo(hDlg, view.cutterShown, kCutterRows, IDC_CUTMOVE_CUT_MODE, view.cutMode);
    if (view.cutterShown) {
        FillComboFromLabels(hDlg, IDC_CUTMOVE_LF_BEFORE_CUT, view.lfBeforeCut.labels,
                            view.lfBeforeCut.selection);
    }
    ShowCombo(hDlg, view.recoveryShown, kRecoveryRow, IDC_CUTMOVE_RECOVERY, view.recovery);
    ShowCombo(hDlg, view.blackMarkShown, kBlackMarkGroup, IDC_CUTMOVE_BLACK_MARK, view.blackMark);
    ShowCombo(hDlg, view.continuousShown, kContinuousGroup, IDC_CUTMOVE_CONTINUOUS_MODE,
              view.continuous);
}

}  // namespace

template <>
const PageDefinition& DefinitionOf<PageId::kCutMove>() {
    static const PageDefinition definition{
        kPictures,
        kHelps,
        {},
        Fill,
        nullptr,
        nullptr,
        [](HWND hDlg, UiDeviceCommon& device) {
            StoreCutMoveControls(device, CutMoveControls{
                                             ComboSelection(hDlg, IDC_CUTMOVE_CUT_MODE),
                                             ComboSelection(hDlg, IDC_CUTMOVE_LF_BEFORE_CUT),
                                             ComboSelection(hDlg, IDC_CUTMOVE_RECOVERY),
                                             ComboSelection(hDlg, IDC_CUTMOVE_BLACK_MARK),
                                             ComboSelection(hDlg, IDC_CUTMOVE_CONTINUOUS_MODE),
                                         });
        },
    };
    return definition;
}
