// The largest coordinate extent of a set.
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "tests/collection/FaceFixture.h"

namespace {

using Location = std::array<double, 3>;

std::unique_ptr<CDipoleFace> faceAt(const std::vector<Location>& locations) {
  auto face = std::make_unique<CDipoleFace>();
  for (const Location& location : locations) {
    face->addDipole();
    std::copy(location.begin(), location.end(), face->getDipole(-1)->m_location);
  }
  return face;
}

// Step by step as documented, with the y extremes decided by x.
float literalRange(const std::vector<Location>& locations) {
  if (locations.empty()) {
    return 0.0F;
  }
  float minX = static_cast<float>(locations[0][0]);
  float maxX = minX;
  float minY = static_cast<float>(locations[0][1]);
  float maxY = minY;
  float minZ = static_cast<float>(locations[0][2]);
  float maxZ = minZ;
  for (std::size_t i = 1; i < locations.size(); ++i) {
    const double x = locations[i][0];
    const double y = locations[i][1];
    const double z = locations[i][2];
    maxX = x > static_cast<double>(maxX) ? static_cast<float>(x) : maxX;
    minX = x < static_cast<double>(minX) ? static_cast<float>(x) : minX;
    maxY = x > static_cast<double>(maxY) ? static_cast<float>(y) : maxY;
    minY = x < static_cast<double>(minY) ? static_cast<float>(y) : minY;
    maxZ = z > static_cast<double>(maxZ) ? static_cast<float>(z) : maxZ;
    minZ = z < static_cast<double>(minZ) ? static_cast<float>(z) : minZ;
  }
  float largest = std::fabs(minX);
  for (const float extreme : {maxX, minY, maxY, minZ, maxZ}) {
    if (std::fabs(extreme) > largest) {
      largest = std::fabs(extreme);
    }
  }
  return largest;
}

bool same(float a, float b) {
  return a == b || (std::isnan(a) && std::isnan(b));
}

}  // namespace

TEST(SetRange, OfAnEmptyCollectionIsZero) {
  EXPECT_EQ(faceAt({})->getMaxDipoleRange(), 0.0F);
}

TEST(SetRange, OfOneDipoleIsItsLargestCoordinateWithoutSign) {
  EXPECT_EQ(faceAt({{-3.0, 2.0, 1.0}})->getMaxDipoleRange(), 3.0F);
}

TEST(SetRange, TheLowerYExtremeFollowsX) {
  EXPECT_EQ(faceAt({{1.0, 50.0, 0.0}, {2.0, -80.0, 0.0}})->getMaxDipoleRange(), 80.0F);
}

TEST(SetRange, TheUpperYExtremeFollowsX) {
  EXPECT_EQ(faceAt({{1.0, 50.0, 0.0}, {60.0, 10.0, 0.0}})->getMaxDipoleRange(), 60.0F);
}

TEST(SetRange, ALargeYThatXDoesNotReachIsNotSeen) {
  EXPECT_EQ(faceAt({{1.0, 0.0, 0.0}, {0.0, 90.0, 0.0}})->getMaxDipoleRange(), 1.0F);
}

TEST(SetRange, EachZExtremeCounts) {
  EXPECT_EQ(faceAt({{1.0, 1.0, 2.0}, {1.0, 1.0, 70.0}})->getMaxDipoleRange(), 70.0F);
  EXPECT_EQ(faceAt({{1.0, 1.0, 2.0}, {1.0, 1.0, -70.0}})->getMaxDipoleRange(), 70.0F);
}

TEST(SetRange, EachXExtremeCounts) {
  EXPECT_EQ(faceAt({{1.0, 1.0, 2.0}, {70.0, 1.0, 2.0}})->getMaxDipoleRange(), 70.0F);
  EXPECT_EQ(faceAt({{1.0, 1.0, 2.0}, {-70.0, 1.0, 2.0}})->getMaxDipoleRange(), 70.0F);
}

TEST(SetRange, PassesOverHoles) {
  const auto face = faceAt({{1.0, 2.0, 3.0}, {500.0, 500.0, 500.0}, {4.0, 5.0, 6.0}});
  face->deleteDipole(1, 0);
  EXPECT_EQ(face->getMaxDipoleRange(), 6.0F);
}

TEST(SetRange, StartsAtTheFirstDipoleWhenSlotZeroIsEmpty) {
  const auto face = faceAt({{500.0, 500.0, 500.0}, {4.0, 5.0, 6.0}});
  face->deleteDipole(0, 0);
  EXPECT_EQ(face->getMaxDipoleRange(), 6.0F);
}

TEST(SetRange, OfHolesAloneIsZero) {
  const auto face = faceAt({{4.0, 5.0, 6.0}});
  face->deleteDipole(0, 0);
  EXPECT_EQ(face->getMaxDipoleRange(), 0.0F);
}

TEST(SetRange, DoesNotSeeObjectsBehindTheCount) {
  const auto face = faceAt({{4.0, 5.0, 6.0}, {500.0, 500.0, 500.0}});
  leaveBehindCount(*face, 1);
  EXPECT_EQ(face->getMaxDipoleRange(), 6.0F);
}

TEST(SetRange, FollowsItsStepsOnRandomAndOddSets) {
  std::mt19937 random(42);
  const double odd[] = {0.0,
                        -0.0,
                        1e300,
                        -1e300,
                        std::numeric_limits<double>::infinity(),
                        std::numeric_limits<double>::quiet_NaN(),
                        0.1,
                        static_cast<double>(0.1F)};
  std::uniform_int_distribution<std::size_t> pick(0, 60);
  std::uniform_real_distribution<double> any(-100.0, 100.0);
  const auto face = std::make_unique<CDipoleFace>();
  for (int round = 0; round < 3000; ++round) {
    std::vector<Location> locations(1 + static_cast<std::size_t>(round % 9));
    for (Location& location : locations) {
      for (double& coordinate : location) {
        const std::size_t i = pick(random);
        coordinate = i < std::size(odd) ? odd[i] : any(random);
      }
    }
    while (face->m_totalDipoles < static_cast<int>(locations.size())) {
      face->addDipole();
    }
    while (face->m_totalDipoles > static_cast<int>(locations.size())) {
      face->deleteCurrentDipole();
    }
    for (std::size_t i = 0; i < locations.size(); ++i) {
      std::copy(locations[i].begin(), locations[i].end(), face->m_dipoles[static_cast<int>(i)]->m_location);
    }
    ASSERT_TRUE(same(face->getMaxDipoleRange(), literalRange(locations))) << round;
  }
}
