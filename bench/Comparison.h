// Measures a piece of work beside its yardsticks in one run.
//
// All of them are run in turn, many rounds, so that a machine whose speed drifts slows them alike; the ratio
// of their medians is what counts, not the milliseconds. Processor time is measured, the system's included.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct Contender {
  std::string name;
  std::function<void()> prepare;  // before each round, not measured; may be empty
  std::function<void()> work;     // measured
};

// A ratio of medians that the comparison's first contender is held to.
struct Goal {
  std::size_t yardstick;  // which contender
  double limit;
  bool isAtLeast;  // true: the yardstick must take at least `limit` times as long as the first contender;
                   // false: the first contender may take at most `limit` times as long as the yardstick
};

// Prints a table of medians and ratios. Returns whether every goal was met.
bool compare(const std::string& title, const std::vector<Contender>& contenders,
             const std::vector<Goal>& goals, int rounds);

// Keeps a result from being optimised away.
template <typename Value>
void keep(const Value& value) {
  asm volatile("" : : "g"(&value) : "memory");
}
