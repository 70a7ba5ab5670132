// What all users without a plan have in common: they do one thing after the other by chance, keep account of
// what they did, and count what the program holds.
#pragma once

#include <afxwin.h>

#include <cstdio>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <numeric>
#include <string>

#include "tests/platform/windows/HandleCount.h"
#include "tests/ui/endurance/Chance.h"
#include "tests/ui/endurance/MemoryCount.h"

template <typename Monkey>
struct MonkeyAction {
  const char* name;
  int weight;  // how often it is done, beside the other weights
  void (Monkey::*act)();
};

template <typename Actions>
const auto& anyAction(const Actions& actions, Chance& chance) {
  const int total = std::accumulate(std::begin(actions), std::end(actions), 0,
                                    [](int sum, const auto& action) { return sum + action.weight; });
  int left = chance.below(total);
  const auto* action = std::begin(actions);
  while (left >= action->weight) {
    left -= action->weight;
    ++action;
  }
  return *action;
}

// How often each thing was done, and how long it took.
class Efforts {
 public:
  template <typename Monkey>
  void act(Monkey& monkey, const MonkeyAction<Monkey>& action) {
    const ULONGLONG start = ::GetTickCount64();
    (monkey.*action.act)();
    Effort& effort = m_done[action.name];
    ++effort.times;
    effort.milliseconds += ::GetTickCount64() - start;
  }
  void print() const {
    for (const auto& [name, effort] : m_done) {
      std::printf("%6d x %s, %llu ms\n", effort.times, name.c_str(), effort.milliseconds);
    }
  }

 private:
  struct Effort {
    int times = 0;
    ULONGLONG milliseconds = 0;
  };
  std::map<std::string, Effort> m_done;
};

// What the program holds.
struct MonkeyUse {
  int windows = windowHandles();
  int drawing = gdiHandles();
  HeapUse heap = heapUse();

  void print(const std::string& when) const {
    std::printf("%s: %d windows, %d drawing handles, %lld blocks of %lld bytes\n", when.c_str(), windows,
                drawing, heap.blocks, heap.bytes);
    std::fflush(stdout);
  }
  // `left`: bytes that may have come by and by.
  void expectNoMoreThan(const MonkeyUse& first, long long left) const {
    constexpr int drawingOfTheSystem = 10;  // it makes some when they are first needed
    EXPECT_LE(windows, first.windows);
    EXPECT_LE(drawing, first.drawing + drawingOfTheSystem);
    EXPECT_LE(heap.bytes, first.heap.bytes + left);
  }
};

inline bool hasFailed() {
  return testing::UnitTest::GetInstance()->Failed();
}
