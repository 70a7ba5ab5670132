#include "platform/Operator.h"

namespace {

Operator* theOperator = nullptr;

}  // namespace

Operator::~Operator() = default;

Operator* installOperator(Operator* next) {
  Operator* before = theOperator;
  theOperator = next;
  return before;
}

Operator* installedOperator() {
  return theOperator;
}

int carefulAnswer(UINT type) {
  switch (type & MB_TYPEMASK) {
    case MB_OK:
      return IDOK;
    case MB_YESNO:
    case MB_YESNOCANCEL:
      return IDNO;
    case MB_ABORTRETRYIGNORE:
      return IDABORT;
    default:
      return IDCANCEL;
  }
}
