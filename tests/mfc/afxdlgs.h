// The names that Microsoft's documentation gives to <afxdlgs.h>.
#pragma once

#include <afxwin.h>

#include "documented/CommonDialogs.h"
