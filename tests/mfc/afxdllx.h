// The names that Microsoft's documentation gives to <afxdllx.h>.
#pragma once

#include <afxwin.h>

// Linked into the program's list of libraries, which ends it.
class CDynLinkLibrary : public CCmdTarget {
 public:
  explicit CDynLinkLibrary(AFX_EXTENSION_MODULE&, BOOL = FALSE);
};
