// The document properties callback that the framework calls on apply and on page changes.
#pragma once

#include "win/windows_headers_win.h"
#include "win/oem_framework_win.h"

// The shared page block of a sheet; the page framework defines it.
struct PageContext;

// The shared page block of the sheet that `hDlg` belongs to: the pages keep it as the window
// user data of their parent, the sheet. Null when there is none.
PageContext* FindPageBlock(HWND hDlg);

// Reaches the interface object's state through pOEMUserData, which the common UI entry sets.
LONG APIENTRY OEMDocUICallBack(PCPSUICBPARAM pCallbackParam, POEMCUIPPARAM pOEMUIParam);
