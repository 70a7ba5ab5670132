// The label of a place, and the nearest one, against a look at every voxel.
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <random>
#include <vector>

#include "host/head/LabelGrid.h"
#include "tests/host/text/Failing.h"

namespace {

using host::Affine;
using host::Label;
using host::LabelGrid;
using host::NearLabel;
using host::Vector3;

const Affine identity;

std::vector<Label> noLabels(int count) {
  return std::vector<Label>(static_cast<std::size_t>(count));
}

// Every voxel, one after the other.
std::optional<NearLabel> plainNearest(const std::array<int, 3>& size, const std::vector<Label>& labels,
                                      const Affine& toMm, const Vector3& place, double reach) {
  std::optional<NearLabel> best;
  std::size_t at = 0;
  for (int k = 0; k < size[2]; ++k) {
    for (int j = 0; j < size[1]; ++j) {
      for (int i = 0; i < size[0]; ++i, ++at) {
        const double distance = host::length(toMm({1.0 * i, 1.0 * j, 1.0 * k}) - place);
        if (labels[at] == 0 || distance > reach) {
          continue;
        }
        if (!best || distance < best->distance || (distance == best->distance && labels[at] < best->label)) {
          best = NearLabel{labels[at], distance};
        }
      }
    }
  }
  return best;
}

void expectSame(const std::optional<NearLabel>& found, const std::optional<NearLabel>& expected) {
  ASSERT_EQ(found.has_value(), expected.has_value());
  if (found) {
    EXPECT_EQ(found->label, expected->label);
    EXPECT_NEAR(found->distance, expected->distance, 1e-12);
  }
}

}  // namespace

TEST(LabelGrid, APlaceHasTheLabelOfTheVoxelAroundIt) {
  const LabelGrid grid({3, 1, 1}, {5, 0, 7}, Affine({2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {10, 20, 30}));
  EXPECT_EQ(grid.at({10, 20, 30}), 5);
  EXPECT_EQ(grid.at({10.9, 20.9, 29.1}), 5);
  EXPECT_EQ(grid.at({12, 20, 30}), 0);
  EXPECT_EQ(grid.at({14.9, 20, 30}), 7);
}

TEST(LabelGrid, HalfWayBetweenTwoVoxelsIsTheHigherOne) {
  const LabelGrid grid({2, 1, 1}, {5, 7}, identity);
  EXPECT_EQ(grid.at({0.5, 0, 0}), 7);
  EXPECT_EQ(grid.at({-0.5, 0, 0}), 5);
  EXPECT_EQ(grid.at({1.5, 0, 0}), 0);
}

TEST(LabelGrid, NoPlaceOutsideHasALabel) {
  const LabelGrid grid({1, 1, 1}, {5}, identity);
  constexpr double infinite = std::numeric_limits<double>::infinity();
  for (const double away : {-0.6, 0.6, 1e300, -1e300, infinite, -infinite, std::nan("")}) {
    EXPECT_EQ(grid.at({away, 0, 0}), 0);
    EXPECT_EQ(grid.at({0, away, 0}), 0);
    EXPECT_EQ(grid.at({0, 0, away}), 0);
  }
}

TEST(LabelGrid, AlongAFlippedAxisTheFirstVoxelIsTheOneToTheRight) {
  const LabelGrid grid({2, 1, 1}, {1, 2}, Affine({-1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {30, 0, 0}));
  EXPECT_EQ(grid.at({30, 0, 0}), 1);
  EXPECT_EQ(grid.at({29, 0, 0}), 2);
}

TEST(LabelGrid, InALabelTheDistanceIsNothing) {
  const LabelGrid grid({2, 1, 1}, {1, 2}, identity);
  const std::optional<NearLabel> found = grid.nearest({0.4, 0.4, 0.4}, 20.0);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->label, 1);
  EXPECT_EQ(found->distance, 0.0);
}

TEST(LabelGrid, TheReachEndsTheSearch) {
  const LabelGrid grid({1, 1, 1}, {4}, identity);
  EXPECT_TRUE(grid.nearest({0, 20, 0}, 20.0));
  EXPECT_FALSE(grid.nearest({0, 20.001, 0}, 20.0));
  EXPECT_FALSE(grid.nearest({std::nan(""), 0, 0}, 20.0));
  EXPECT_FALSE(grid.nearest({0, std::numeric_limits<double>::infinity(), 0}, 20.0));
}

TEST(LabelGrid, OfEquallyNearLabelsTheSmallestNumberIsTaken) {
  std::vector<Label> labels = noLabels(81);
  labels[4] = 9;   // 4, 0, 0
  labels[36] = 3;  // 0, 4, 0
  labels[44] = 8;  // 8, 4, 0
  const LabelGrid grid({9, 9, 1}, labels, identity);
  const std::optional<NearLabel> found = grid.nearest({4, 4, 0}, 20.0);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->label, 3);
  EXPECT_EQ(found->distance, 4.0);
}

TEST(LabelGrid, FindsWhatALookAtEveryVoxelFinds) {
  std::mt19937 random(13);
  const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
  const auto real = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  const Affine maps[] = {identity, Affine({-2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {90, -126, -72}),
                         Affine({1.1, 0.2, -0.3}, {0, 0.7, 0.4}, {-0.5, 0.1, 3}, {5, -6, 7})};
  int withLabel = 0;
  for (int round = 0; round < 600; ++round) {
    const std::array<int, 3> size = {1 + below(12), 1 + below(12), 1 + below(12)};
    std::vector<Label> labels = noLabels(size[0] * size[1] * size[2]);
    for (int i = below(8); i >= 0; --i) {
      labels[static_cast<std::size_t>(below(static_cast<unsigned>(labels.size())))] =
          static_cast<Label>(1 + below(3));
    }
    const Affine& map = maps[round % 3];
    const LabelGrid grid(size, labels, map);
    for (int look = 0; look < 20; ++look) {
      // Also on and between voxels, where several are equally near.
      const Vector3 index = look % 2 == 0 ? Vector3{real(-6, 18), real(-6, 18), real(-6, 18)}
                                          : Vector3{below(24) * 0.5, below(24) * 0.5, below(24) * 0.5};
      const Vector3 place = map(index);
      const double reach = real(0.5, 15.0);
      if (const Label own = grid.at(place); own != 0) {
        expectSame(grid.nearest(place, reach), NearLabel{own, 0.0});
        continue;
      }
      const std::optional<NearLabel> expected = plainNearest(size, labels, map, place, reach);
      expectSame(grid.nearest(place, reach), expected);
      withLabel += expected ? 1 : 0;
    }
  }
  EXPECT_GT(withLabel, 2000);
}

TEST(LabelGrid, RefusesWhatIsNoGrid) {
  EXPECT_NE(failureOf([] { LabelGrid({0, 1, 1}, {}, identity); }), "");
  EXPECT_NE(failureOf([] { LabelGrid({2, 1, 1}, {1}, identity); }), "");
  EXPECT_NE(failureOf([] { LabelGrid({1, 1, 1}, {1}, Affine({1, 0, 0}, {1, 0, 0}, {0, 0, 1}, {})); }), "");
}
