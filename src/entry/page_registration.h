// Which document pages a sheet gets, in their order, from the model's capability flags.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "pages/page_id.h"
#include "settings/ui_device_common.h"  // kCapabilityFlagCount

struct PageRegistration {
    PageId page;
    int dialogId;
    const char* logText;  // written at level 6 once the page is added
};

// The registration table in its fixed order, whether or not a page applies.
const std::vector<PageRegistration>& PageRegistrationTable();

// The pages to add, in order. `flags` is the capability flag row of the model (null when there
// is no capability object, which lets every conditional page through); `admin` is the
// module-wide administrator flag.
std::vector<PageRegistration> PagesToRegister(const uint8_t* flags, bool admin);
