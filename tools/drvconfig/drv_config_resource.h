// Resource ids of the driver's own first page of the document sheet.
#pragma once

#define IDD_DRIVER_PAGE 201

#define IDC_DRIVER_PRINTER 1001
#define IDC_DRIVER_MODEL 1002
#define IDC_DRIVER_PAPER 1003
#define IDC_DRIVER_RESOLUTION 1004
#define IDC_DRIVER_ORIENTATION 1005
#define IDC_DRIVER_COPIES 1006
#define IDC_DRIVER_SOURCE 1007
#define IDC_DRIVER_COLOR 1008
#define IDC_DRIVER_PLUGIN 1009
