// The parts are those that a walk over all pairs finds, whatever the places are, and at once also where all
// of them are near each other.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "host/dipoles/NearParts.h"

namespace {

using host::DirectedPlace;
using host::nearParts;
using host::NearRule;
using host::Vector3;
using Places = std::vector<DirectedPlace>;

// By the words of the rule alone.
bool isEdge(const DirectedPlace& one, const DirectedPlace& other, const NearRule& rule) {
  const Vector3 away = one.place - other.place;
  if (std::sqrt(away.x * away.x + away.y * away.y + away.z * away.z) > rule.distance) {
    return false;
  }
  const Vector3& u = one.direction;
  const Vector3& v = other.direction;
  const double sine = std::hypot(u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x);
  const double cosine = u.x * v.x + u.y * v.y + u.z * v.z;
  return !rule.angle || std::atan2(sine, cosine) * (180.0 / 3.14159265358979323846) <= *rule.angle;
}

std::vector<int> literalParts(const Places& places, const NearRule& rule) {
  std::vector<int> parts(places.size(), -1);
  int next = 0;
  for (std::size_t first = 0; first < places.size(); ++first) {
    if (parts[first] >= 0) {
      continue;
    }
    std::vector<std::size_t> reached{first};
    parts[first] = next;
    while (!reached.empty()) {
      const std::size_t from = reached.back();
      reached.pop_back();
      for (std::size_t to = 0; to < places.size(); ++to) {
        if (parts[to] < 0 && isEdge(places[from], places[to], rule)) {
          parts[to] = next;
          reached.push_back(to);
        }
      }
    }
    ++next;
  }
  return parts;
}

Vector3 directionBy(std::mt19937& random) {
  std::normal_distribution<double> normal;
  const Vector3 any{normal(random), normal(random), normal(random)};
  return any * (1.0 / host::length(any));
}

// All over a cube, in whole tenths of its side: so that many distances and places are the same.
Places onGrid(int count, double side, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> step(0, 10);
  Places places;
  for (int i = 0; i < count; ++i) {
    const auto tenths = [&] { return step(random) * side / 10.0; };
    places.push_back({{tenths(), tenths(), tenths()}, directionBy(random)});
  }
  return places;
}

Places spread(int count, double side, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> coordinate(-side / 2.0, side / 2.0);
  Places places;
  for (int i = 0; i < count; ++i) {
    places.push_back({{coordinate(random), coordinate(random), coordinate(random)}, directionBy(random)});
  }
  return places;
}

// In clouds, which are denser in their middles.
Places inClouds(int count, double width, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> coordinate(-60.0, 60.0);
  std::normal_distribution<double> away(0.0, width);
  Places places;
  Vector3 middle;
  for (int i = 0; i < count; ++i) {
    if (i % 40 == 0) {
      middle = {coordinate(random), coordinate(random), coordinate(random)};
    }
    const Vector3 step{away(random), away(random), away(random)};
    places.push_back({middle + step, directionBy(random)});
  }
  return places;
}

int partsIn(const std::vector<int>& parts) {
  return parts.empty() ? 0 : *std::max_element(parts.begin(), parts.end()) + 1;
}

double secondsOf(const Places& places, const NearRule& rule) {
  const auto start = std::chrono::steady_clock::now();
  (void)nearParts(places, rule);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

TEST(NearParts, AreThoseOfAllPairsWhereverThePlacesLie) {
  int severalParts = 0;
  for (unsigned seed = 0; seed < 25; ++seed) {
    const int count = 1 + static_cast<int>(seed) * 14;
    for (const Places& places : {spread(count, 120.0, seed), inClouds(count, 6.0, seed)}) {
      for (const double distance : {0.5, 5.0, 10.0, 20.0, 60.0}) {
        const std::vector<int> parts = nearParts(places, {distance, {}});
        ASSERT_EQ(parts, literalParts(places, {distance, {}})) << "seed " << seed << ", " << distance;
        severalParts += partsIn(parts) > 1 && partsIn(parts) < count ? 1 : 0;
      }
    }
  }
  EXPECT_GT(severalParts, 100);
}

TEST(NearParts, AreThoseOfAllPairsWithAnAngle) {
  int severalParts = 0;
  for (unsigned seed = 0; seed < 20; ++seed) {
    const int count = 2 + static_cast<int>(seed) * 17;
    for (const Places& places : {spread(count, 60.0, seed), inClouds(count, 3.0, seed)}) {
      for (const double angle : {0.0, 10.0, 30.0, 90.0, 150.0, 180.0}) {
        const NearRule rule{10.0, angle};
        const std::vector<int> parts = nearParts(places, rule);
        ASSERT_EQ(parts, literalParts(places, rule)) << "seed " << seed << ", " << angle << " degrees";
        severalParts += partsIn(parts) > 1 && partsIn(parts) < count ? 1 : 0;
      }
    }
  }
  EXPECT_GT(severalParts, 100);
}

// Steps are as long as the distance to the last bit, places the same.
TEST(NearParts, AreThoseOfAllPairsWhereDistancesAreEqual) {
  for (unsigned seed = 0; seed < 15; ++seed) {
    const Places places = onGrid(150 + static_cast<int>(seed), 100.0, seed);
    for (const double distance : {0.0, 9.999, 10.0, 10.001, 14.142135623730951, 20.0}) {
      ASSERT_EQ(nearParts(places, {distance, {}}), literalParts(places, {distance, {}})) << distance;
      ASSERT_EQ(nearParts(places, {distance, 90.0}), literalParts(places, {distance, 90.0})) << distance;
    }
  }
}

TEST(NearParts, TheDistanceItselfIsNearAndTheNextNumberIsNot) {
  const Places chain{{{0, 0, 0}, {}}, {{10, 0, 0}, {}}, {{10, 10, 0}, {}}};
  EXPECT_EQ(nearParts(chain, {10.0, {}}), (std::vector{0, 0, 0}));
  EXPECT_EQ(nearParts(chain, {std::nextafter(10.0, 0.0), {}}), (std::vector{0, 1, 2}));
}

TEST(NearParts, TheAngleItselfIsNearAndSignsCount) {
  const Places turned{{{}, {1, 0, 0}}, {{}, {0, 1, 0}}, {{}, {-1, 0, 0}}};
  EXPECT_EQ(nearParts(turned, {1.0, 90.0}), (std::vector{0, 0, 0}));
  EXPECT_EQ(nearParts(turned, {1.0, std::nextafter(90.0, 0.0)}), (std::vector{0, 1, 2}));
  const Places opposite{turned[0], turned[2]};
  EXPECT_EQ(nearParts(opposite, {1.0, 180.0}), (std::vector{0, 0}));
  EXPECT_EQ(nearParts(opposite, {1.0, 179.99}), (std::vector{0, 1}));
  EXPECT_EQ(host::degreesBetween({1, 0, 0}, {-1, 0, 0}), 180.0);
}

// Eight places whose ends are too far apart, four between them, and five far away: so that the tree has the
// first two in boxes of their own.
TEST(NearParts, EndsThatAreFarApartAreOnePartByWhatIsBetweenThem) {
  for (const double side : {1.0, -1.0}) {
    Places places;
    for (int i = 0; i < 8; ++i) {
      places.push_back({{i % 2 == 0 ? 9.0 : -9.0, 0, 0}, {}});
    }
    places.insert(places.end(), 4, {{0, 3.0 * side, 0}, {}});
    for (int i = 0; i < 5; ++i) {
      places.push_back({{0, (100.0 + 20.0 * i) * side, 0}, {}});
    }
    const std::vector<int> parts = nearParts(places, {10.0, {}});
    EXPECT_EQ(parts, (std::vector{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5})) << side;
  }
}

TEST(NearParts, OfNothingAreNone) {
  EXPECT_TRUE(nearParts({}, {10.0, {}}).empty());
  EXPECT_EQ(nearParts({{}}, {0.0, 0.0}), std::vector{0});
}

TEST(NearParts, AreTheSameInAnyOrder) {
  const Places places = inClouds(700, 5.0, 3);
  const Places reversed(places.rbegin(), places.rend());
  const NearRule rule{8.0, 60.0};
  const std::vector<int> parts = nearParts(places, rule);
  std::vector<int> back = nearParts(reversed, rule);
  std::reverse(back.begin(), back.end());
  for (std::size_t i = 0; i < parts.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      ASSERT_EQ(parts[i] == parts[j], back[i] == back[j]);
    }
  }
}

// 450 million pairs take a minute in a build that checks what it does.
TEST(NearParts, WhatIsDenseTakesNoTimeOfAllPairs) {
  constexpr int many = 30000;
  constexpr double seconds = 20.0;
  const auto expectSoon = [&](const char* what, const Places& places, const NearRule& rule, int parts) {
    EXPECT_LT(secondsOf(places, rule), seconds) << what;
    EXPECT_EQ(partsIn(nearParts(places, rule)), parts) << what;
  };
  const Places onePoint(many, {{1, 2, 3}, {0, 0, 1}});
  expectSoon("one point", onePoint, {10.0, {}}, 1);
  expectSoon("one point, no distance, no angle", onePoint, {0.0, 0.0}, 1);

  Places twoPoints = onePoint;
  for (int i = 0; i < many; i += 2) {
    twoPoints[static_cast<std::size_t>(i)] = {{11, 2, 3}, {0, 1, 0}};
  }
  expectSoon("two points at the distance", twoPoints, {10.0, 90.0}, 1);
  expectSoon("two points beyond it", twoPoints, {9.99, {}}, 2);
  expectSoon("two points beyond the angle", twoPoints, {10.0, 89.99}, 2);

  Places halves = spread(many, 4.0, 1);
  for (int i = 0; i < many; i += 2) {
    halves[static_cast<std::size_t>(i)].place.x += 14.0;
  }
  expectSoon("two dense clouds", halves, {9.9, {}}, 2);
  Places turned = spread(many, 1.0, 2);
  expectSoon("a dense cloud, all orientations", turned, {10.0, 30.0}, 1);
}
