// The test program's operator new and operator delete, over malloc and free, which the sanitizers watch.
#include <algorithm>
#include <cstdlib>
#include <new>

#include "platform/LeastPromise.h"
#include "platform/portable/Exceptions.h"
#include "tests/support/FailingNew.h"
#include "tests/support/FreeLog.h"

namespace {

long long live = 0;
int untilFailure = 0;  // 0: none is to fail
bool hasFailed = false;
Lasting failureLasts = Lasting::once;
int truces = 0;
FreeLog* freeLog = nullptr;

bool mustFail() {
  if (untilFailure == 0 || truces > 0) {
    return false;
  }
  if (untilFailure > 1) {
    --untilFailure;
    return false;
  }
  hasFailed = true;
  untilFailure = failureLasts == Lasting::once ? 0 : 1;
  return true;
}

void* allocate(std::size_t size) noexcept {
  void* memory = mustFail() ? nullptr : std::malloc((std::max)(size, std::size_t{1}));
  live += memory != nullptr ? 1 : 0;
  return memory;
}

void* allocateOrThrow(std::size_t size) {
  void* memory = allocate(size);
  if (memory != nullptr) {
    return memory;
  }
  if (isLeastPromised()) {
    AfxThrowMemoryException();
  }
  throw std::bad_alloc();
}

void release(void* memory) noexcept {
  if (memory == nullptr) {
    return;
  }
  if (freeLog != nullptr) {
    freeLog->add(memory);
  }
  --live;
  std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocate(size);
}
void operator delete(void* memory) noexcept {
  release(memory);
}
void operator delete[](void* memory) noexcept {
  release(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  release(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
  release(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
  release(memory);
}
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
  release(memory);
}

FailingNew::FailingNew(int nth, Lasting lasting) {
  hasFailed = false;
  failureLasts = lasting;
  untilFailure = nth;
}

FailingNew::~FailingNew() {
  untilFailure = 0;
}

bool FailingNew::failed() const {
  return hasFailed;
}

MemoryTruce::MemoryTruce() {
  ++truces;
}

MemoryTruce::~MemoryTruce() {
  --truces;
}

long long liveAllocations() {
  return live;
}

FreeLog::FreeLog() : m_previous(freeLog) {
  freeLog = this;
}

FreeLog::~FreeLog() {
  freeLog = m_previous;
}

int FreeLog::timesFreed(const void* address) const {
  return static_cast<int>(std::count(m_addresses.begin(), m_addresses.begin() + m_count, address));
}

void FreeLog::clear() {
  m_count = 0;
  m_overflowed = false;
}

void FreeLog::add(const void* address) {
  if (m_count < m_addresses.size()) {
    m_addresses[m_count++] = address;
  } else {
    m_overflowed = true;
  }
}
