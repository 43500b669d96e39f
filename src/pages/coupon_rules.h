// The Coupon page's rules: an image printed after the document, in copies, with its own cuts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "actions/uni_bridge.h"
#include "pages/page_view.h"

class UiDeviceCommon;

// The coupon cuts a model can make, from what its cutter offers: no cut always, a total or a
// partial cut when the cutter makes one, tearing off when it tears off or has no cutter at all.
std::vector<uint8_t> CouponCutValues(const UiDeviceCommon& device);

struct CouponPageView {
    bool enabled;
    std::string path;
    ComboView align;
    ComboView size;
    ComboView copies;
    ComboView cutBetween;
    ComboView cutLast;
};
CouponPageView MakeCouponPageView(const UiDeviceCommon& device);

// The Coupon controls as Apply and the print preview read them.
struct CouponControls {
    bool enabled;
    std::string path;
    int align;
    int size;
    int copies;
    int cutBetween;
    int cutLast;
};
std::optional<ValidationFailure> ValidateCouponControls(const CouponControls& controls,
                                                        const FileExists& exists);
void StoreCouponControls(UiDeviceCommon& device, const CouponControls& controls);
UniImageRequest CouponPreviewRequest(const CouponControls& controls, const PreviewPaper& paper);
