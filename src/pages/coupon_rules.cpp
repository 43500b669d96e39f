// The Coupon page's rules: an image printed after the document, in copies, with its own cuts.
#include "pages/coupon_rules.h"

#include <algorithm>

#include "infra/text_format.h"
#include "pages/label_tables.h"
#include "settings/setting_enums.h"
#include "settings/ui_device_common.h"

namespace {

bool CutterMakes(const UiDeviceCommon& device, std::initializer_list<uint8_t> cuts) {
    const std::vector<uint8_t>& offered = device.GetCutModeList();
    return std::any_of(cuts.begin(), cuts.end(), [&](uint8_t cut) {
        return std::find(offered.begin(), offered.end(), cut) != offered.end();
    });
}

// Alignment and size lists are short; a stored value past them shows the first entry.
int BelowOr0(int value, int count) {
    return value >= 0 && value < count ? value : 0;
}

}  // namespace

std::vector<uint8_t> CouponCutValues(const UiDeviceCommon& device) {
    std::vector<uint8_t> values{PRN_COP_CUTTER_NONE};
    if (CutterMakes(device, {PRN_PROP_CUTTER_TC_END_PAGE, PRN_PROP_CUTTER_TC_END_DOC,
                             PRN_PROP_CUTTER_TC_END_JOB})) {
        values.push_back(PRN_COP_CUTTER_TC);
    }
    if (CutterMakes(device, {PRN_PROP_CUTTER_PC_END_PAGE, PRN_PROP_CUTTER_PC_END_DOC,
                             PRN_PROP_CUTTER_PC_END_JOB})) {
        values.push_back(PRN_COP_CUTTER_PC);
    }
    if (device.GetCutModeList().empty() ||
        CutterMakes(device, {PRN_PROP_CUTTER_TEAROFF_END_PAGE, PRN_PROP_CUTTER_TEAROFF_END_JOB})) {
        values.push_back(PRN_COP_CUTTER_TEAROFF);
    }
    return values;
}

CouponPageView MakeCouponPageView(const UiDeviceCommon& device) {
    const std::vector<uint8_t> cuts = CouponCutValues(device);
    const LabelList cutLabels = CapabilityLabels(Capability::CouponCut, cuts);
    const int copies = static_cast<int>(CouponCopiesLabels().size());
    return CouponPageView{
        device.GetCouponEnable() != 0,
        device.GetCouponPath(),
        {CouponAlignLabels(), BelowOr0(device.GetCouponDrawPosition(), 3)},
        {CouponSizeLabels(), BelowOr0(device.GetCouponDrawType(), 2)},
        {CouponCopiesLabels(), BelowOr0(device.GetCouponCopies() - 1, copies)},
        {cutLabels, ValueToIndex(cuts, device.GetCouponCutInter())},
        {cutLabels, ValueToIndex(cuts, device.GetCouponCutFinal())},
    };
}

std::optional<ValidationFailure> ValidateCouponControls(const CouponControls& controls,
                                                        const FileExists& exists) {
    if (!controls.enabled) {
        return std::nullopt;
    }
    return CheckImagePath(
        controls.path, exists, PageId::kCoupon,
        {"The path of the coupon image file is empty", "Coupon : text empty",
         "The path of the coupon image file is wrong or the file doesn't exist. Do you want to "
         "continue to save this value?",
         Format("Coupon path doesn't exists <%s>", controls.path.c_str())});
}

void StoreCouponControls(UiDeviceCommon& device, const CouponControls& controls) {
    const std::vector<uint8_t> cuts = CouponCutValues(device);
    device.SetCouponEnable(controls.enabled ? 1 : 0);
    device.SetCouponDrawPosition(static_cast<uint8_t>(BelowOr0(controls.align, 3)));
    device.SetCouponDrawType(static_cast<uint8_t>(BelowOr0(controls.size, 2)));
    device.SetCouponCutInter(SelectedValue(cuts, controls.cutBetween));
    device.SetCouponCutFinal(SelectedValue(cuts, controls.cutLast));
    device.SetCouponPath(controls.path);
    device.SetCouponCopies(static_cast<uint8_t>(
        BelowOr0(controls.copies, static_cast<int>(CouponCopiesLabels().size())) + 1));
}

UniImageRequest CouponPreviewRequest(const CouponControls& controls, const PreviewPaper& paper) {
    UniImageRequest request;
    request.path = controls.path;
    request.paperWidthDots = paper.widthDots;
    request.modelNumber = paper.modelNumber;
    request.drawType = static_cast<uint8_t>(BelowOr0(controls.size, 2));
    request.position = static_cast<uint8_t>(BelowOr0(controls.align, 3));
    return request;
}
