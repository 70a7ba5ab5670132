// The application object, messages and drawing under MFC's header name; on Windows also windows, dialogs,
// menus, data exchange and extension libraries.
#pragma once

#include <afx.h>

#include "platform/portable/Gdi.h"
#include "platform/portable/WinApp.h"

#ifdef _WIN32
#include "platform/windows/Button.h"
#include "platform/windows/CmdUI.h"
#include "platform/windows/DataExchange.h"
#include "platform/windows/Dialog.h"
#include "platform/windows/DynLinkLibrary.h"
#include "platform/windows/Edit.h"
#include "platform/windows/FrameWnd.h"
#include "platform/windows/Menu.h"
#include "platform/windows/MessageMap.h"
#include "platform/windows/ScrollBar.h"
#include "platform/windows/Static.h"
#include "platform/windows/WindowDC.h"
#include "platform/windows/WindowExceptions.h"
#include "platform/windows/Wnd.h"
#endif
