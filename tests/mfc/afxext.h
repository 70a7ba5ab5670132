// Microsoft's documentation gives <afxext.h> bars, views and splitters. The module has none of them.
#pragma once

#include <afxwin.h>
