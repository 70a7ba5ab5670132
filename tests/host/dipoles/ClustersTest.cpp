// Clusters are what their limits say, with figures that can be checked by hand; every dipole is in one of
// them or in one number alone.
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <optional>
#include <random>
#include <stdexcept>
#include <vector>

#include "host/dipoles/Clusters.h"

namespace {

using host::Cluster;
using host::ClusterRule;
using host::Clusters;
using host::clustersOf;
using host::DipoleValue;
using host::Vector3;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

using Set = std::unique_ptr<CDipoleFace>;

Set emptySet() {
  return std::make_unique<CDipoleFace>();
}

CDipoleszq& add(CDipoleFace& set, const Vector3& place, const Vector3& orientation = {0, 0, 1}) {
  set.addDipole();
  CDipoleszq& dipole = *set.m_dipoles[set.m_totalDipoles - 1];
  for (int axis = 0; axis < 3; ++axis) {
    dipole.m_location[axis] = place[axis];
    dipole.m_orientation[axis] = orientation[axis];
  }
  return dipole;
}

// A row of dipoles along x, a step apart.
void addRow(CDipoleFace& set, int count, const Vector3& start, double step) {
  for (int i = 0; i < count; ++i) {
    add(set, start + Vector3{i * step, 0, 0});
  }
}

ClusterRule ruleOf(int members, double distance, std::optional<double> angle = {}) {
  return {distance, angle, members};
}

std::vector<std::vector<int>> slotsOf(const Clusters& found) {
  std::vector<std::vector<int>> slots;
  for (const Cluster& cluster : found.clusters) {
    slots.push_back(cluster.slots);
  }
  return slots;
}

int sumOf(const Clusters& found) {
  return found.clustered() + found.beyondFitError + found.beyondMoment + found.beyondLatency + found.nowhere +
         found.withoutOrientation + found.scattered;
}

void expectNear(const Vector3& one, const Vector3& other, double within) {
  EXPECT_NEAR(one.x, other.x, within);
  EXPECT_NEAR(one.y, other.y, within);
  EXPECT_NEAR(one.z, other.z, within);
}

}  // namespace

TEST(Clusters, AreSixOrMoreWithinTenMillimetresUnlessToldOtherwise) {
  const Set set = emptySet();
  addRow(*set, 6, {0, 0, 0}, 10.0);
  addRow(*set, 5, {0, 50, 0}, 1.0);
  const Clusters found = clustersOf(*set, {}, {});
  EXPECT_EQ(slotsOf(found), (std::vector<std::vector<int>>{{0, 1, 2, 3, 4, 5}}));
  EXPECT_EQ(found.scattered, 5);
  EXPECT_EQ(found.bySlot, (std::vector{0, 0, 0, 0, 0, 0, -1, -1, -1, -1, -1}));
  EXPECT_EQ(ruleText(found.rule), "6 or more within 10 mm");
}

TEST(Clusters, TheRuleNamesTheAngleToo) {
  EXPECT_EQ(ruleText(ruleOf(3, 7.5, 30.0)), "3 or more within 7.5 mm and 30 degrees");
}

TEST(Clusters, TheLargestComesFirstAndOfEqualOnesTheFirstSlot) {
  const Set set = emptySet();
  addRow(*set, 2, {0, 0, 0}, 1.0);
  addRow(*set, 2, {0, 100, 0}, 1.0);
  addRow(*set, 3, {0, 200, 0}, 1.0);
  const Clusters found = clustersOf(*set, {}, ruleOf(2, 5.0));
  EXPECT_EQ(slotsOf(found), (std::vector<std::vector<int>>{{4, 5, 6}, {0, 1}, {2, 3}}));
  EXPECT_EQ(found.of(5), 0);
  EXPECT_EQ(found.of(3), 2);
}

TEST(Clusters, EachLimitCountsWhatItRemovesInOrder) {
  const Set set = emptySet();
  addRow(*set, 8, {0, 0, 0}, 0.0);
  for (int slot = 0; slot < 8; ++slot) {
    set->m_dipoles[slot]->m_fitError = slot < 2 ? 20.0 : 10.0;   // two beyond
    set->m_dipoles[slot]->m_moment = slot < 3 ? -5.0 : 5.0;      // one more
    set->m_dipoles[slot]->m_latency = slot < 5 ? 200.0 : 100.0;  // two more
  }
  const host::DipoleFilter filter{{{}, 10.0}, {5.0, {}}, {{}, 100.0}};
  const Clusters found = clustersOf(*set, filter, ruleOf(3, 10.0));
  EXPECT_EQ(found.beyondFitError, 2);
  EXPECT_EQ(found.beyondMoment, 1);
  EXPECT_EQ(found.beyondLatency, 2);
  EXPECT_EQ(slotsOf(found), (std::vector<std::vector<int>>{{5, 6, 7}}));
}

TEST(Clusters, WhatIsRemovedConnectsNothing) {
  const Set set = emptySet();
  addRow(*set, 3, {0, 0, 0}, 10.0);
  set->m_dipoles[1]->m_fitError = 50.0;
  EXPECT_EQ(slotsOf(clustersOf(*set, {}, ruleOf(2, 10.0))), (std::vector<std::vector<int>>{{0, 1, 2}}));
  host::DipoleFilter filter;
  filter.fitError.most = 49.0;
  const Clusters found = clustersOf(*set, filter, ruleOf(2, 10.0));
  EXPECT_TRUE(found.clusters.empty());
  EXPECT_EQ(found.scattered, 2);
}

TEST(Clusters, PlacesThatAreNoneAreCountedAndBelongToNone) {
  const Set set = emptySet();
  for (const double x : {0.0, notANumber, infinite, 100001.0, -100001.0, 1.0, 100000.0, 100000.0}) {
    add(*set, {x, 0, 0});
  }
  set->deleteDipole(0, 0);  // an empty slot is no dipole
  const Clusters found = clustersOf(*set, {}, ruleOf(2, 10.0));
  EXPECT_EQ(found.nowhere, 4);
  EXPECT_EQ(found.total, 7);
  EXPECT_EQ(slotsOf(found), (std::vector<std::vector<int>>{{6, 7}}));
  EXPECT_EQ(found.bySlot.size(), 8U);
}

TEST(Clusters, OrientationsWithoutLengthCountOnlyWithAnAngle) {
  const Set set = emptySet();
  for (const double z : {1.0, 0.0, notANumber, infinite, 2.0, 5e-324}) {
    add(*set, {0, 0, 0}, {0, 0, z});
  }
  host::UnknownValues values;
  values.mark(4, DipoleValue::orientation);
  host::UnknownDipoles unknown;
  unknown.mark(*set, values);

  const Clusters all = clustersOf(*set, {}, ruleOf(2, 1.0), &unknown);
  EXPECT_EQ(all.withoutOrientation, 0);
  ASSERT_EQ(slotsOf(all), (std::vector<std::vector<int>>{{0, 1, 2, 3, 4, 5}}));
  EXPECT_EQ(all.clusters[0].orientation->count, 2);

  const ClusterRule rule = ruleOf(2, 1.0, 180.0);
  const Clusters turned = clustersOf(*set, {}, rule, &unknown);
  EXPECT_EQ(turned.withoutOrientation, 4);
  EXPECT_EQ(slotsOf(turned), (std::vector<std::vector<int>>{{0, 5}}));
  EXPECT_EQ(clustersOf(*set, {}, rule).withoutOrientation, 3);
}

TEST(Clusters, TheSignOfAnOrientationCounts) {
  const Set set = emptySet();
  add(*set, {0, 0, 0}, {0, 0, 5});
  add(*set, {0, 0, 0}, {0, 0, 0.1});
  add(*set, {0, 0, 0}, {0, 0, -1});
  EXPECT_EQ(slotsOf(clustersOf(*set, {}, ruleOf(2, 1.0, 90.0))), (std::vector<std::vector<int>>{{0, 1}}));
}

TEST(Clusters, CentroidAndSpreadAreThoseOfTheirPlaces) {
  const Set set = emptySet();
  add(*set, {10, 20, 30});
  add(*set, {14, 20, 30});
  add(*set, {12, 23, 30});
  add(*set, {12, 17, 30});
  const Clusters found = clustersOf(*set, {}, ruleOf(4, 10.0));
  ASSERT_EQ(found.clusters.size(), 1U);
  expectNear(found.clusters[0].centroid, {12, 20, 30}, 1e-12);
  EXPECT_NEAR(found.clusters[0].rmsDistance, std::sqrt((4.0 + 4.0 + 9.0 + 9.0) / 4.0), 1e-12);
  EXPECT_NEAR(found.clusters[0].largestDistance, 3.0, 1e-12);
}

TEST(Clusters, TheMeanOrientationIsThatOfUnitVectorsAndTheConeHoldsNineteenOfTwenty) {
  const Set set = emptySet();
  for (int i = 0; i < 20; ++i) {  // ten pairs around z, each to both sides of it, the last the widest
    const double degrees = i / 2 + 1;
    const double angle = (i % 2 == 0 ? degrees : -degrees) * std::acos(-1.0) / 180.0;
    add(*set, {0, 0, 0}, Vector3{std::sin(angle), 0, std::cos(angle)} * (i + 1.0));
  }
  const Clusters found = clustersOf(*set, {}, {});
  ASSERT_TRUE(found.clusters.at(0).orientation && found.clusters[0].orientation->mean);
  const host::OrientationSummary& summary = *found.clusters[0].orientation;
  EXPECT_EQ(summary.count, 20);
  expectNear(*summary.mean, {0, 0, 1}, 1e-12);
  double cosines = 0.0;
  for (int degrees = 1; degrees <= 10; ++degrees) {
    cosines += 2.0 * std::cos(degrees * std::acos(-1.0) / 180.0);
  }
  EXPECT_NEAR(summary.resultant, cosines / 20.0, 1e-12);
  EXPECT_NEAR(summary.cone, 10.0, 1e-9);  // the 19th smallest angle: one of the widest pair

  set->m_dipoles[19]->m_orientation[0] = 1.0;  // far out, on its own
  set->m_dipoles[19]->m_orientation[1] = 1.0;
  set->m_dipoles[19]->m_orientation[2] = -1.0;
  const host::OrientationSummary other = *clustersOf(*set, {}, {}).clusters.at(0).orientation;
  EXPECT_LT(other.cone, 20.0);  // without it
}

TEST(Clusters, OfFewDipolesTheConeHoldsAllAndOfOneNothing) {
  const Set set = emptySet();
  for (int i = 0; i < 4; ++i) {  // around z, all 45 degrees from it
    add(*set, {0, 0, 0}, {i % 2 == 0 ? i - 1.0 : 0.0, i % 2 == 1 ? i - 2.0 : 0.0, 1.0});
  }
  add(*set, {0, 0, 0}, {0, 0, 1});
  const Clusters found = clustersOf(*set, {}, ruleOf(5, 1.0));
  EXPECT_NEAR(found.clusters.at(0).orientation.value().cone, 45.0, 1e-9);

  for (int i = 0; i < 4; ++i) {
    set->m_dipoles[i]->m_orientation[2] = notANumber;
  }
  const host::OrientationSummary one = *clustersOf(*set, {}, ruleOf(5, 1.0)).clusters.at(0).orientation;
  EXPECT_EQ(one.count, 1);
  EXPECT_EQ(one.cone, 0.0);
  EXPECT_EQ(one.resultant, 1.0);
}

TEST(Clusters, OrientationsThatCancelHaveNoMean) {
  const Set set = emptySet();
  add(*set, {0, 0, 0}, {0.1, 0.2, 0.3});
  add(*set, {0, 0, 0}, {-0.1, -0.2, -0.3});
  const Clusters found = clustersOf(*set, {}, ruleOf(2, 1.0));
  ASSERT_TRUE(found.clusters.at(0).orientation);
  EXPECT_FALSE(found.clusters[0].orientation->mean);
  EXPECT_NEAR(found.clusters[0].orientation->resultant, 0.0, 1e-12);
}

TEST(Clusters, ValuesAreThoseThatAreKnown) {
  const Set set = emptySet();
  addRow(*set, 6, {0, 0, 0}, 1.0);
  const double latencies[] = {100.0, 90.0, notANumber, 120.0, 80.0, 7.0};
  for (int slot = 0; slot < 6; ++slot) {
    set->m_dipoles[slot]->m_latency = latencies[slot];
    set->m_dipoles[slot]->m_fitError = slot + 1.0;
    set->m_dipoles[slot]->m_moment = -slot;
  }
  host::UnknownValues values;
  values.mark(5, DipoleValue::latency);
  for (int slot = 0; slot < 6; ++slot) {
    values.mark(slot, DipoleValue::moment);
  }
  host::UnknownDipoles unknown;
  unknown.mark(*set, values);
  const Cluster cluster = clustersOf(*set, {}, {}, &unknown).clusters.at(0);
  EXPECT_EQ(cluster.latency, (host::ValueSummary{4, 80.0, 95.0, 120.0}));
  EXPECT_EQ(cluster.fitError, (host::ValueSummary{6, 1.0, 3.5, 6.0}));
  EXPECT_FALSE(cluster.moment);
}

TEST(Clusters, LimitsThatMeanNothingAreRefused) {
  const Set set = emptySet();
  EXPECT_THROW(clustersOf(*set, {}, ruleOf(1, 10.0)), std::invalid_argument);
  for (const double distance : {-1.0, 1000.1, notANumber, infinite}) {
    EXPECT_THROW(clustersOf(*set, {}, ruleOf(6, distance)), std::invalid_argument) << distance;
  }
  for (const double angle : {-1.0, 180.1, notANumber}) {
    EXPECT_THROW(clustersOf(*set, {}, ruleOf(6, 10.0, angle)), std::invalid_argument) << angle;
  }
  const Clusters none = clustersOf(*set, {}, ruleOf(2, 0.0));
  EXPECT_TRUE(none.clusters.empty() && none.bySlot.empty());
}

TEST(Clusters, EveryDipoleIsCountedOnce) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> coordinate(-60.0, 60.0);
  std::uniform_real_distribution<double> value(0.0, 100.0);
  const Set set = emptySet();
  for (int i = 0; i < 600; ++i) {
    CDipoleszq& dipole = add(*set, {coordinate(random), coordinate(random), i % 50 == 0 ? notANumber : 0.0},
                             {0, 0, i % 30 == 0 ? 0.0 : 1.0});
    dipole.m_fitError = value(random);
    dipole.m_moment = value(random);
    dipole.m_latency = value(random);
  }
  const host::DipoleFilter filter{{{}, 90.0}, {10.0, 95.0}, {5.0, {}}};
  const Clusters found = clustersOf(*set, filter, ruleOf(4, 8.0, 20.0));
  EXPECT_EQ(found.total, 600);
  EXPECT_EQ(sumOf(found), 600);
  for (const int part : {found.beyondFitError, found.beyondMoment, found.beyondLatency, found.nowhere,
                         found.withoutOrientation, found.scattered, found.clustered()}) {
    EXPECT_GT(part, 0);
  }
  int marked = 0;
  for (const int cluster : found.bySlot) {
    marked += cluster != Clusters::none ? 1 : 0;
  }
  EXPECT_EQ(marked, found.clustered());
}
