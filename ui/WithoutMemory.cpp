#include "ui/WithoutMemory.h"

namespace {

bool isTelling = false;

}  // namespace

void tellOfMemory() {
  if (isTelling) {
    return;
  }
  isTelling = true;
  isWithinMemory([] { AfxMessageBox(_T("Not enough memory")); });
  isTelling = false;
}
