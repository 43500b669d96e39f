// Which document pages a sheet gets, in their order, from the model's capability flags.
#include "entry/page_registration.h"

#include <initializer_list>

#include "resource.h"

namespace {

constexpr uint16_t Flags(std::initializer_list<int> indexes) {
    uint16_t mask = 0;
    for (int i : indexes)
        mask |= static_cast<uint16_t>(1u << i);
    return mask;
}

// A page with conditions is added when any of its flags is set (or without a capability
// object); an empty mask means always.
struct Row {
    PageRegistration registration;
    uint16_t anyOfFlags;
    bool adminOnly;
};

const Row kRows[] = {
    {{PageId::kPrint, IDD_PROPPAGE_DOC_PRINT, "Added IDD_PROPPAGE_DOC_PRINT"}, 0, false},
    {{PageId::kPrintAdjust, IDD_PROPPAGE_DOC_PRINT_ADJUST, "Added IDD_PROPPAGE_DOC_PRINT_ADJUST"},
     0,
     false},
    {{PageId::kCutMove, IDD_PROPPAGE_DOC_CUTMODE, "Added IDD_PROPPAGE_DOC_CUTMODE"},
     Flags({7, 2, 5, 6}),
     false},
    {{PageId::kAccessories, IDD_PROPPAGE_DOC_ACCESSORIES, "Added IDD_PROPPAGE_DOC_ACCESSORIES"},
     Flags({3, 4}),
     false},
    {{PageId::kPeripherals, IDD_PROPPAGE_DOC_PERIPHERALS, "Added IDD_PROPPAGE_DOC_PERIPHERALS"},
     Flags({1, 0}),
     false},
    {{PageId::kPresentation, IDD_PROPPAGE_DOC_PRESENTATION, "Added IDD_PROPPAGE_DOC_PRESENTATION"},
     Flags({10, 8, 9}),
     false},
    {{PageId::kWatermark, IDD_PROPPAGE_DOC_WATERMARK, "Added IDD_PROPPAGE_DOC_WATERMARK"},
     0,
     false},
    {{PageId::kCoupon, IDD_PROPPAGE_DOC_COUPON, "Added IDD_PROPPAGE_DOC_COUPON"}, 0, false},
    {{PageId::kLogo, IDD_PROPPAGE_DOC_LOGOS, "Added IDD_PROPPAGE_DOC_LOGOS"}, 0, false},
    {{PageId::kConsole, IDD_PROPPAGE_DOC_CONSOLE, "Added IDD_PROPPAGE_DOC_CONSOLE"}, 0, false},
    {{PageId::kAdmin, IDD_PROPPAGE_DOC_ADMIN, "Added IDD_PROPPAGE_DOC_ADMIN"}, 0, true},
    {{PageId::kVersion, IDD_PROPPAGE_DOC_VERSION, "Added IDD_PROPPAGE_DOC_VERSION"}, 0, false},
};

bool Applies(const Row& row, const uint8_t* flags, bool admin) {
    if (row.adminOnly)
        return admin;
    if (row.anyOfFlags == 0 || flags == nullptr)
        return true;
    for (size_t i = 0; i < kCapabilityFlagCount; ++i) {
        if ((row.anyOfFlags & (1u << i)) != 0 && flags[i] != 0)
            return true;
    }
    return false;
}

}  // namespace

const std::vector<PageRegistration>& PageRegistrationTable() {
    static const std::vector<PageRegistration> table = [] {
        std::vector<PageRegistration> all;
        for (const Row& row : kRows)
            all.push_back(row.registration);
        return all;
    }();
    return table;
}

std::vector<PageRegistration> PagesToRegister(const uint8_t* flags, bool admin) {
    std::vector<PageRegistration> pages;
    for (const Row& row : kRows) {
        if (Applies(row, flags, admin))
            pages.push_back(row.registration);
    }
    return pages;
}
