// CScrollBar: a scroll bar or slider, as the handlers of scrolling see it.
#pragma once

#include "platform/windows/Wnd.h"

class CScrollBar : public CWnd {};
