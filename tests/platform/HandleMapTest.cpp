// The objects of handles when memory runs out while one is made or while they are dropped.
#include <gtest/gtest.h>

#include "platform/windows/HandleMap.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Thrown.h"

namespace {

struct Thing {
  int handle = 0;
};

struct TemporaryThing : Thing {
  explicit TemporaryThing(const int* place) { handle = *place; }
  void loseHandle() { handle = 0; }
};

bool isAlive(const int* /*place*/) {
  return true;
}

using Things = HandleMap<const int*, Thing, TemporaryThing, &isAlive>;

TEST(HandleMap, WithoutMemoryHasNoEntryWithoutAnObject) {
  const int place = 7;
  bool failed = true;
  for (int nth = 1; failed; ++nth) {
    Things things;
    {
      const FailingNew failing(nth);
      failed = runsOutOfMemory([&] { things.find(&place); });
    }
    ASSERT_NE(things.find(&place), nullptr) << nth;
    EXPECT_EQ(things.find(&place)->handle, 7) << nth;
    things.drop();
    ASSERT_LT(nth, 10);
  }
}

TEST(HandleMap, WithoutMemoryDropsAllOrNone) {
  const int places[] = {1, 2, 3};
  bool failed = true;
  for (int nth = 1; failed; ++nth) {
    Things things;
    Thing* found[3] = {};
    for (int i = 0; i < 3; ++i) {
      found[i] = things.find(&places[i]);
    }
    {
      const FailingNew failing(nth);
      failed = runsOutOfMemory([&] { things.drop(); });
    }
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(found[i]->handle, failed ? places[i] : 0) << nth;
    }
    ASSERT_LT(nth, 10);
  }
}

}  // namespace
