// The Accessories page's rules: the multi-feeder's paper source and the ticket selector.
#include "pages/accessories_rules.h"

#include "settings/ui_device_common.h"

AccessoriesView MakeAccessoriesView(const UiDeviceCommon& device) {
    AccessoriesView view{device.GetCapabilityFlag(kCapFeeder) != 0,
                         device.GetCapabilityFlag(kCapSelector) != 0,
                         {{}, 0},
                         {{}, 0}};
    if (view.feederShown) {
        const auto& feeders = device.GetFeederList();
        view.feeder = {CapabilityLabels(Capability::Feeder, feeders),
                       ValueToIndex(feeders, device.GetFeeder())};
    }
    if (view.selectorShown) {
        const auto& selectors = device.GetSelectorList();
        view.selector = {CapabilityLabels(Capability::Selector, selectors),
                         ValueToIndex(selectors, device.GetSelector())};
    }
    return view;
}

void StoreAccessoriesControls(UiDeviceCommon& device, const AccessoriesControls& controls) {
    device.SetFeeder(SelectedValue(device.GetFeederList(), controls.feederSelection));
    device.SetSelector(SelectedValue(device.GetSelectorList(), controls.selectorSelection));
}
