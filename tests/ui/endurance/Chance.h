// Chance that is the same in every run with the same seed, on every system.
#pragma once

#include <cstdint>

class Chance {
 public:
  explicit Chance(unsigned seed) : m_state(seed) {}

  // 0 .. count - 1, all equally likely; 0 when there are none.
  int below(int count) {
    return count <= 0 ? 0 : static_cast<int>(next() % static_cast<std::uint64_t>(count));
  }
  bool oneIn(int count) { return below(count) == 0; }

 private:
  // A counter with its bits well mixed (splitmix64).
  std::uint64_t next() {
    m_state += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return (mixed ^ (mixed >> 31)) >> 16;
  }

  std::uint64_t m_state;
};
