// Which document pages a sheet gets, in their order, from the model's capability flags.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

inline constexpr size_t kCapabilityFlagCount = 11;

enum class DocPage {
    Print,
    PrintAdjust,
    CutMove,
    Accessories,
    Peripherals,
    Presentation,
    Watermark,
    Coupon,
    Logos,
    Console,
    Admin,
    Version,
};

struct PageRegistration {
    DocPage page;
    int dialogId;
    const char* logText;  // written at level 6 once the page is added
};

// The registration table in its fixed order, whether or not a page applies.
const std::vector<PageRegistration>& PageRegistrationTable();

// The pages to add, in order. `flags` is the capability flag row of the model (null when there
// is no capability object, which lets every conditional page through); `admin` is the
// module-wide administrator flag.
std::vector<PageRegistration> PagesToRegister(const uint8_t* flags, bool admin);
