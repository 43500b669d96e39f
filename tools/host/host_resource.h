// Resource ids of kivhost's own dialog, the driver's first page of the sheet.
#pragma once

#define IDD_HOST_DRIVER_PAGE 201

// Common controls 6, as an application's manifest asks for them. Not id 1, which the loader
// would make the process's own: kivhost activates it itself unless told to run with version 5.
#define IDR_HOST_COMCTL6_MANIFEST 101

#define IDC_HOST_PRINTER 1001
#define IDC_HOST_MODEL 1002
#define IDC_HOST_PAPER 1003
#define IDC_HOST_RESOLUTION 1004
#define IDC_HOST_ORIENTATION 1005
#define IDC_HOST_COPIES 1006
#define IDC_HOST_SOURCE 1007
#define IDC_HOST_COLOR 1008
#define IDC_HOST_PLUGIN 1009
