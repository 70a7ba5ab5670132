#include "platform/Os.h"

namespace {

Os* inPlace = nullptr;

}  // namespace

Os::~Os() = default;

Os& currentOs() {
  return inPlace == nullptr ? realOs() : *inPlace;
}

Os* replaceOs(Os* next) {
  Os* before = &currentOs();
  inPlace = next;
  return before;
}
