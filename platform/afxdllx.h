// What the one source of an extension library that holds DllMain includes, under MFC's header name and behind
// the others: in MFC it makes the linker take the library's own start. Here that needs nothing.
#pragma once

#include <afxwin.h>
