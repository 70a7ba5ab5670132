// Claim: sortDipoles puts the dipoles into exactly the order of the selection sort that hosts know, swap for
// swap, for every key, ties and odd numbers included.
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <optional>
#include <random>

#include "collection/DipoleFace1Process.h"
#include "collection/SelectionOrder.h"
#include "tests/collection/FaceFixture.h"
#include "tests/support/FailingNew.h"

namespace {

// The sort as it is described: one pass per position, the minimum held in the type Minimum.
template <typename Minimum, typename Key>
std::vector<int> literalSort(std::vector<Key> keys) {
  std::vector<int> order(keys.size());
  std::iota(order.begin(), order.end(), 0);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    auto minimum = static_cast<Minimum>(keys[i]);
    std::size_t choice = i;
    for (std::size_t j = i; j < keys.size(); ++j) {
      if (keys[j] < static_cast<Key>(minimum)) {
        minimum = static_cast<Minimum>(keys[j]);
        choice = j;
      }
    }
    std::swap(keys[i], keys[choice]);
    std::swap(order[i], order[choice]);
  }
  return order;
}

// Likewise in a table with holes: a slot without a key is never chosen and stays where it is.
template <typename Minimum, typename Key>
std::vector<int> literalSort(std::vector<std::optional<Key>> keys) {
  std::vector<int> order(keys.size());
  std::iota(order.begin(), order.end(), 0);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (!keys[i]) {
      order[i] = -1;
      continue;
    }
    auto minimum = static_cast<Minimum>(*keys[i]);
    std::size_t choice = i;
    for (std::size_t j = i; j < keys.size(); ++j) {
      if (keys[j] && *keys[j] < static_cast<Key>(minimum)) {
        minimum = static_cast<Minimum>(*keys[j]);
        choice = j;
      }
    }
    std::swap(keys[i], keys[choice]);
    std::swap(order[i], order[choice]);
  }
  return order;
}

template <typename Minimum, typename Key>
std::vector<int> quickSort(const std::vector<Key>& keys) {
  const auto count = static_cast<int>(keys.size());
  SelectionOrder<Key, Minimum> selection(count);
  std::vector<int> order(keys.size());
  for (int slot = 0; slot < count; ++slot) {
    selection.setKey(slot, keys[static_cast<std::size_t>(slot)]);
    order[static_cast<std::size_t>(slot)] = slot;
  }
  selection.build();
  for (int slot = 0; slot < count; ++slot) {
    std::swap(order[static_cast<std::size_t>(slot)],
              order[static_cast<std::size_t>(selection.takeNext(slot))]);
  }
  return order;
}

// Keys rich in ties, near-ties beyond single precision, and numbers that compare oddly.
double hostileKey(std::mt19937& random) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double odd[] = {0.0,   -0.0,   infinity, -infinity, std::nan(""), 1e300,  -1e300,
                        1e-50, -1e-50, 3.5e38,   -3.5e38,   1e-45,        -1e-45, 16777217.0};
  switch (random() % 4) {
    case 0:
      return odd[random() % std::size(odd)];
    case 1:
      return static_cast<double>(random() % 4);
    default: {
      // Neighbours, in double precision, of a few floats and of the halfway points between floats.
      double key = 1.0 + static_cast<double>(random() % 3) * 0x1p-24;
      const auto steps = static_cast<int>(random() % 5) - 2;
      for (int i = 0; i < std::abs(steps); ++i) {
        key = std::nextafter(key, steps < 0 ? -infinity : infinity);
      }
      return random() % 2 == 0 ? key : -key;
    }
  }
}

std::unique_ptr<CDipoleFace1Process> faceWithKeys(const std::vector<double>& keys, int key) {
  auto face = std::make_unique<CDipoleFace1Process>();
  for (std::size_t i = 0; i < keys.size(); ++i) {
    face->addDipole();
    CDipoleszq& dipole = *face->getDipole(-1);
    dipole.m_id = static_cast<int>(i);
    double* const members[] = {nullptr,
                               &dipole.m_latency,
                               &dipole.m_location[0],
                               &dipole.m_location[1],
                               &dipole.m_location[2],
                               &dipole.m_orientation[0],
                               &dipole.m_orientation[1],
                               &dipole.m_orientation[2],
                               &dipole.m_fitError,
                               &dipole.m_moment};
    *members[key] = keys[i];
  }
  return face;
}

std::unique_ptr<CDipoleFace1Process> faceWithNumbers(const std::vector<int>& numbers) {
  auto face = std::make_unique<CDipoleFace1Process>();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    face->addDipole();
    face->getDipole(-1)->m_id = static_cast<int>(i);
    face->getDipole(-1)->m_number = numbers[i];
  }
  return face;
}

}  // namespace

TEST(SelectionOrder, IsTheLiteralSelectionSortOnAHundredThousandHostileTables) {
  std::mt19937 random(20061206);
  for (int table = 0; table < 100000; ++table) {
    std::vector<double> keys(1 + random() % 24);
    for (double& key : keys) {
      key = hostileKey(random);
    }
    ASSERT_EQ((quickSort<float>(keys)), (literalSort<float>(keys))) << "table " << table;
  }
}

TEST(SelectionOrder, ComparesWholeNumbersExactly) {
  std::mt19937 random(1);
  for (int table = 0; table < 2000; ++table) {
    std::vector<int> keys(1 + random() % 40);
    for (int& key : keys) {
      key = 16777216 + static_cast<int>(random() % 5);  // beyond what a float tells apart
    }
    ASSERT_EQ((quickSort<int>(keys)), (literalSort<int>(keys))) << "table " << table;
  }
}

TEST(SortDipoles, OrdersEachOfTheTenKeysByItsOwnMember) {
  const std::vector<double> keys = {5.0, -1.0, 3.0, 3.0, -7.5, 100.0};
  for (int key = 1; key <= 9; ++key) {
    const auto face = faceWithKeys(keys, key);
    EXPECT_EQ(face->sortDipoles(key), 1);
    EXPECT_EQ(idsOf(*face), literalSort<float>(keys)) << "key " << key;
  }
}

TEST(SortDipoles, FollowsTheLiteralSortOnHostileKeysInEveryMember) {
  std::mt19937 random(7);
  for (int key = 1; key <= 9; ++key) {
    for (int table = 0; table < 100; ++table) {
      std::vector<double> keys(1 + random() % 24);
      for (double& value : keys) {
        value = hostileKey(random);
      }
      const auto face = faceWithKeys(keys, key);
      EXPECT_EQ(face->sortDipoles(key), 1);
      ASSERT_EQ(idsOf(*face), literalSort<float>(keys)) << "key " << key << ", table " << table;
    }
  }
}

TEST(SortDipoles, FollowsTheLiteralSortInLargeTablesFullOfTies) {
  std::mt19937 random(9);
  for (int key = 1; key <= 9; ++key) {
    std::vector<double> keys(1000 + random() % 2001);
    for (double& value : keys) {  // every key many times, or hostile ones
      value = key % 3 == 0 ? static_cast<double>(random() % 50) : hostileKey(random);
    }
    const auto face = faceWithKeys(keys, key);
    EXPECT_EQ(face->sortDipoles(key), 1);
    ASSERT_EQ(idsOf(*face), literalSort<float>(keys)) << "key " << key;
  }
  std::vector<int> numbers(3000);
  for (int& number : numbers) {
    number = 16777216 + static_cast<int>(random() % 700);
  }
  const auto face = faceWithNumbers(numbers);
  EXPECT_EQ(face->sortDipoles(0), 1);
  EXPECT_EQ(idsOf(*face), literalSort<int>(numbers));
}

TEST(SortDipoles, FollowsTheLiteralSortInTablesWithRandomHoles) {
  std::mt19937 random(10);
  for (int table = 0; table < 60; ++table) {
    const int key = 1 + table % 9;
    std::vector<double> values(table < 50 ? 1 + random() % 40 : 1000 + random() % 2001);
    for (double& value : values) {
      value = hostileKey(random);
    }
    const auto face = faceWithKeys(values, key);
    std::vector<std::optional<double>> keys(values.begin(), values.end());
    for (std::size_t slot = 0; slot < keys.size(); ++slot) {
      if (random() % 4 == 0) {
        face->deleteDipole(static_cast<int>(slot), 0);
        keys[slot].reset();
      }
    }
    EXPECT_EQ(face->sortDipoles(key), 1);
    ASSERT_EQ(idsOf(*face), literalSort<float>(keys)) << "table " << table;
  }
}

TEST(SortDipoles, WithoutMemoryGivesTheSameOrderWithoutAWord) {
  const ScriptedOperator user;
  std::mt19937 random(11);
  for (int table = 0; table < 90; ++table) {
    const int key = 1 + table % 9;
    std::vector<double> values(1 + random() % 60);
    for (double& value : values) {
      value = hostileKey(random);
    }
    const auto face = faceWithKeys(values, key);
    std::vector<std::optional<double>> keys(values.begin(), values.end());
    for (std::size_t slot = 0; slot < keys.size(); ++slot) {
      if (random() % 6 == 0) {
        face->deleteDipole(static_cast<int>(slot), 0);
        keys[slot].reset();
      }
    }
    {
      const FailingNew failing(1, Lasting::fromThenOn);
      EXPECT_EQ(face->sortDipoles(key), 1);
      EXPECT_TRUE(failing.failed());
    }
    ASSERT_EQ(idsOf(*face), literalSort<float>(keys)) << "table " << table;
  }
  const std::vector<int> numbers = {16777217, 16777216, 3, 16777218, 3, -5};
  const auto face = faceWithNumbers(numbers);
  {
    const FailingNew failing(1, Lasting::fromThenOn);
    EXPECT_EQ(face->sortDipoles(0), 1);
  }
  EXPECT_EQ(idsOf(*face), literalSort<int>(numbers));
  EXPECT_EQ(user.texts(), Texts{});
}

TEST(SortDipoles, ByIndexRestoresTheOrderOfImport) {
  const auto face = faceWithNumbers({3, 1, 4, 2});
  EXPECT_EQ(face->sortDipoles(0), 1);
  EXPECT_EQ(numbersOf(*face), (std::vector<int>{1, 2, 3, 4}));
}

TEST(SortDipoles, ByIndexTellsNumbersApartThatAFloatDoesNot) {
  std::mt19937 random(8);
  for (int table = 0; table < 100; ++table) {
    std::vector<int> numbers(2 + random() % 24);
    for (int& number : numbers) {
      number = 16777216 + static_cast<int>(random() % 9);
    }
    const auto face = faceWithNumbers(numbers);
    EXPECT_EQ(face->sortDipoles(0), 1);
    ASSERT_EQ(idsOf(*face), literalSort<int>(numbers)) << "table " << table;
  }
}

TEST(SortDipoles, LeavesTheTableAloneForOtherKeysAndForAnEmptySet) {
  const auto face = faceWithKeys({3.0, 1.0, 2.0}, 1);
  for (const int key : {10, 11, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(face->sortDipoles(key), 1);
    EXPECT_EQ(idsOf(*face), (Ids{0, 1, 2})) << "key " << key;
  }
  const auto empty = std::make_unique<CDipoleFace1Process>();
  EXPECT_EQ(empty->sortDipoles(3), 1);
  EXPECT_EQ(empty->m_totalDipoles, 0);
}

TEST(SortDipoles, LeavesTheCurrentIndexAndTheDipolesThemselvesAlone) {
  const auto face = faceWithKeys({3.0, 1.0, 2.0}, 9);
  face->setCurrentDipole(0);
  const CDipoleszq* first = face->getDipole(0);
  face->sortDipoles(9);
  EXPECT_EQ(face->m_currentDipole, 0);
  EXPECT_EQ(face->getDipole(2), first);
  EXPECT_EQ(first->m_moment, 3.0);
  EXPECT_EQ(first->m_number, 0);
}

TEST(SortDipoles, KeepsEmptySlotsWhereTheyAreAndDoesNotChooseThem) {
  const auto face = faceWithKeys({3.0, 9.0, 1.0, 2.0}, 9);
  face->deleteDipole(1, 0);
  face->sortDipoles(9);
  EXPECT_EQ(idsOf(*face), (Ids{2, -1, 3, 0}));
}
