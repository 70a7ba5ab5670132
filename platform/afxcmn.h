// The common controls under MFC's header name. Windows only.
#pragma once

#include <afxwin.h>

#include "platform/windows/ImageList.h"
#include "platform/windows/ListCtrl.h"
