// Extension libraries under MFC's header name. Windows only: <afxwin.h> brings all there is.
#pragma once

#include <afxwin.h>
