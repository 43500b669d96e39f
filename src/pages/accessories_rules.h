// The Accessories page's rules: the multi-feeder's paper source and the ticket selector.
#pragma once

#include "pages/page_view.h"

class UiDeviceCommon;

struct AccessoriesView {
    bool feederShown;  // a group the model lacks is hidden, not disabled
    bool selectorShown;
    ComboView feeder;  // empty when its group is hidden
    ComboView selector;
};
AccessoriesView MakeAccessoriesView(const UiDeviceCommon& device);

struct AccessoriesControls {
    int feederSelection;
    int selectorSelection;
};
// The selections back into values through the same offered lists; a hidden group's empty
// combo has no selection and stores 0 ("not set by driver").
void StoreAccessoriesControls(UiDeviceCommon& device, const AccessoriesControls& controls);
