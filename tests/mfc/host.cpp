// What a program that loads the module sees: the one header, its classes imported.
#include <afxwin.h>

#include "module/dipole.h"

#ifdef _AFXEXT
#error "This is the view of a program, not of an extension library."
#endif

int countDipoles(const CDipoleFacezq& face) {
  CDipoleFacezq copy(face);
  copy = face;
  return copy.m_totalDipoles;
}
