// Makes one allocation by operator new fail, to prove what happens when memory is used up.
//
// The test program's operator new is replaced for it, on every system and under the sanitizers too; without
// one of these objects it only counts. For one thread.
#pragma once

class FailingNew {
 public:
  // The `nth` (from 1) allocation from now on throws std::bad_alloc; later ones work again.
  explicit FailingNew(int nth);
  ~FailingNew();
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;

  bool failed() const;  // whether that allocation has been asked for
};

// How many allocations by operator new have not been freed yet.
long long liveAllocations();
