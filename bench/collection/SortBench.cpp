// Sorting a full collection beside std::stable_sort of the same pointers by the same key.
#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "module/dipole.h"

namespace {

constexpr int rounds = 31;

template <typename KeyOf>
bool benchKey(const std::string& name, int key, KeyOf keyOf) {
  auto face = std::make_unique<CDipoleFace9File>();
  std::mt19937 random(11);
  std::uniform_real_distribution<double> value(-100.0, 100.0);
  std::vector<CDipoleszq*> dipoles;
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    face->addDipole();
    CDipoleszq& dipole = *face->getDipole(-1);
    dipole.m_number = static_cast<int>(random() % DipoleTable::capacity);
    dipole.m_location[0] = value(random);
    dipoles.push_back(&dipole);
  }
  const auto shuffleTable = [&] {
    for (int slot = 0; slot < DipoleTable::capacity; ++slot) {
      face->m_dipoles.swap(slot, static_cast<int>(random() % DipoleTable::capacity));
    }
  };
  const auto shuffleVector = [&] { std::shuffle(dipoles.begin(), dipoles.end(), random); };
  const auto byKey = [&](const CDipoleszq* a, const CDipoleszq* b) { return keyOf(*a) < keyOf(*b); };
  return compare(
      "sort of " + std::to_string(DipoleTable::capacity) + " dipoles by " + name,
      {{"sortDipoles", shuffleTable, [&] { face->sortDipoles(key); }},
       {"std::stable_sort", shuffleVector, [&] { std::stable_sort(dipoles.begin(), dipoles.end(), byKey); }}},
      {{1, 3.0, false}}, rounds);
}

}  // namespace

bool benchSort() {
  const bool byNumber = benchKey("number", 0, [](const CDipoleszq& d) { return d.m_number; });
  const bool byX = benchKey("position x", 2, [](const CDipoleszq& d) { return d.m_location[0]; });
  return byNumber && byX;
}
