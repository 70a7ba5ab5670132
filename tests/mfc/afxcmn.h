// The names that Microsoft's documentation gives to <afxcmn.h>.
#pragma once

#include <afxwin.h>

#include "documented/CommonControls.h"
