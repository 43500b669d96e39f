// The Version page's admin-mode switch.
#include "pages/version_rules.h"

const char* ToggleAdminMode(bool ctrlDown, bool shiftDown, uint32_t* adminFlag) {
    if (!ctrlDown || !shiftDown)
        return nullptr;
    if (adminFlag == nullptr)
        return "ADMIN MODE ON";
    if (*adminFlag != 0) {
        *adminFlag = 0;
        return "ADMIN MODE OFF";
    }
    *adminFlag = 1;
    return "ADMIN MODE ON";
}
