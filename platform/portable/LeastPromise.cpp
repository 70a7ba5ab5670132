#include "platform/LeastPromise.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int spoilt = 0xCD;

bool askedByEnvironment() {
  const char* const value = std::getenv("PLATFORM_LEAST_PROMISE");
  return value != nullptr && *value != 0;
}

bool& theSwitch() {
  static bool least = askedByEnvironment();
  return least;
}

}  // namespace

bool isLeastPromised() {
  return theSwitch();
}

bool promiseLeast(bool least) {
  const bool before = theSwitch();
  theSwitch() = least;
  return before;
}

void spoil(void* memory, std::size_t bytes) {
  if (theSwitch() && bytes != 0) {
    std::memset(memory, spoilt, bytes);
  }
}

void endUnpromised(const char* what) {
  std::fprintf(stderr, "MFC does not promise this: %s\n", what);
  std::abort();
}
