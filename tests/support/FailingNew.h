// Makes allocations by operator new fail, to prove what happens when memory is used up.
//
// The test program's operator new is replaced for it, on every system and under the sanitizers too; without
// one of these objects it only counts. For one thread.
#pragma once

#include "tests/support/Lasting.h"

class FailingNew {
 public:
  // The `nth` (from 1) allocation from now on throws std::bad_alloc, or, where the least is promised
  // (platform/LeastPromise.h), CMemoryException*, as MFC's own does; later ones work again, or not.
  explicit FailingNew(int nth, Lasting lasting = Lasting::once);
  ~FailingNew();
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;

  bool failed() const;  // whether that allocation has been asked for
};

// While one lives, no allocation fails or is counted towards the one that is to fail: for what a test itself
// notes down while the tested code runs.
class MemoryTruce {
 public:
  MemoryTruce();
  ~MemoryTruce();
  MemoryTruce(const MemoryTruce&) = delete;
  MemoryTruce& operator=(const MemoryTruce&) = delete;
};

// How many allocations by operator new have not been freed yet.
long long liveAllocations();
