// The application object, messages and drawing under MFC's header name.
#pragma once

#include <afx.h>

#include "platform/portable/Gdi.h"
#include "platform/portable/WinApp.h"
