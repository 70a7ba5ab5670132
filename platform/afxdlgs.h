// The common dialogs under MFC's header name.
#pragma once

#include <afxwin.h>

#include "platform/portable/ColorDialog.h"
#include "platform/portable/FileDialog.h"
