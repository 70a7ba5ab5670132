// Helpers shared by the tests of the collection.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "collection/DipoleFace.h"
#include "platform/Utf.h"
#include "tests/support/ScriptedOperator.h"

// A collection is large: on the heap. Its n-th dipole lies at (n, 10 n, 100 n) and has the identifier n.
inline std::unique_ptr<CDipoleFace> faceOf(int count) {
  auto face = std::make_unique<CDipoleFace>();
  for (int n = 0; n < count; ++n) {
    const auto value = static_cast<float>(n);
    face->addDipoleF(value, 10.0F * value, 100.0F * value);
    face->getDipole(-1)->m_id = n;
  }
  return face;
}

// The identifiers in the used slots; -1 for an empty one.
inline std::vector<int> idsOf(const CDipoleFace& face) {
  std::vector<int> ids;
  ids.reserve(face.getTotalDipoles());
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    ids.push_back(face.m_dipoles[slot] != nullptr ? face.m_dipoles[slot]->m_id : -1);
  }
  return ids;
}

// The numbers in the used slots; -1 for an empty one.
inline std::vector<int> numbersOf(const CDipoleFace& face) {
  std::vector<int> numbers;
  numbers.reserve(face.getTotalDipoles());
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    numbers.push_back(face.m_dipoles[slot] != nullptr ? face.m_dipoles[slot]->m_number : -1);
  }
  return numbers;
}

// Slots behind the count that hold something.
inline int leftovers(const CDipoleFace& face) {
  int total = 0;
  for (int slot = face.m_totalDipoles; slot < DipoleTable::capacity; ++slot) {
    total += face.m_dipoles[slot] != nullptr ? 1 : 0;
  }
  return total;
}

// As a moving-dipole import leaves it: objects behind the count.
inline void leaveBehindCount(CDipoleFace& face, int objects) {
  face.m_totalDipoles -= objects;
}

using Ids = std::vector<int>;
using Texts = std::vector<std::string>;
