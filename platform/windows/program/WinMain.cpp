// Where a program with windows starts. It is linked into the program itself; its application object, a global
// one, exists by then.
#include <afxwin.h>

int WINAPI wWinMain(HINSTANCE /*program*/, HINSTANCE /*none*/, LPWSTR /*arguments*/, int nShowCmd) {
  return AfxWinMain(nShowCmd);
}
