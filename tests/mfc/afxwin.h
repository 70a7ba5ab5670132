// The names that Microsoft's documentation gives to <afxwin.h>.
#pragma once

#include <afx.h>

#include "documented/Application.h"
#include "documented/Exchange.h"
#include "documented/MessageMap.h"
