// The numbers of the test dialogs' resources.
#pragma once

#define IDD_VALUES 100
#define IDD_PLAIN 101
#define IDD_LIST 102
#define IDR_MENU 200
#define IDR_FRAME 201

#define IDC_DOUBLE 1001
#define IDC_FLOAT 1002
#define IDC_INT 1003
#define IDC_TEXT 1004
#define IDC_CHECK 1005
#define IDC_APPLY 1006
#define IDC_LIST 1010

#define ID_FIRST 2001
#define ID_SECOND 2002
#define ID_THIRD 2003
#define ID_NOBODYS 2004
#define ID_RANGE_FIRST 2010
#define ID_RANGE_LAST 2012
