// The numbers of the extension library's resources: none of them is the test program's.
#pragma once

#define IDD_EXTENSION 301
#define IDR_EXTENSION 302
#define IDC_SEVEN 3007
