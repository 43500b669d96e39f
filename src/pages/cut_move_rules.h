// The Cut/Move page's rules: the cutter, line feeds before the cut, recovery, black mark and
// continuous mode.
#pragma once

#include "pages/page_view.h"

class UiDeviceCommon;

// A group or row the model lacks is hidden; its combo then stays empty.
struct CutMoveView {
    bool cutterShown;  // cut mode and line feeds before the cut
    bool recoveryShown;
    bool blackMarkShown;
    bool continuousShown;
    ComboView cutMode;
    ComboView lfBeforeCut;  // "0" to "15": the item index is the count
    ComboView recovery;
    ComboView blackMark;
    ComboView continuous;
};
CutMoveView MakeCutMoveView(const UiDeviceCommon& device);

struct CutMoveControls {
    int cutModeSelection;
    int lfBeforeCutSelection;
    int recoverySelection;
    int blackMarkSelection;
    int continuousSelection;
};
// Selections back into values through the offered lists; the line-feed count is the index.
void StoreCutMoveControls(UiDeviceCommon& device, const CutMoveControls& controls);
