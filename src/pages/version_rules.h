// The Version page's rule: the hidden admin-mode switch behind its header picture.
#pragma once

#include <cstdint>

// A click on the header picture: with Ctrl and Shift both held it flips `adminFlag` (a null
// pointer stores nothing) and returns the message to show, after which the sheet closes so that
// it is rebuilt with or without the Admin page. Null when nothing happens.
const char* ToggleAdminMode(bool ctrlDown, bool shiftDown, uint32_t* adminFlag);
