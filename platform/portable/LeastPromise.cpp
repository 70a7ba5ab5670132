#include "platform/LeastPromise.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

constexpr int spoilt = 0xCD;

bool askedByEnvironment() {
  const char* const value = std::getenv("PLATFORM_LEAST_PROMISE");
  return value != nullptr && *value != 0;
}

bool isOn = askedByEnvironment();

}  // namespace

bool isLeastPromised() {
  return isOn;
}

bool promiseLeast(bool least) {
  return std::exchange(isOn, least);
}

void spoil(void* memory, std::size_t bytes) {
  if (isOn && bytes != 0) {
    std::memset(memory, spoilt, bytes);
  }
}

void endUnpromised(const char* what) {
  static_cast<void>(std::fprintf(stderr, "MFC does not promise this: %s\n", what));
  std::abort();
}
