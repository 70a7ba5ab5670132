// The filter lets pass what lies within every limit that is set, and nothing that cannot be judged.
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <vector>

#include "host/dipoles/DipoleFilter.h"

namespace {

using host::DipoleFilter;
using host::ValueLimits;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

const ValueLimits any;

ValueLimits atMost(double limit) {
  return {std::nullopt, limit};
}

ValueLimits atLeast(double limit) {
  return {limit, std::nullopt};
}

// Fit error, moment and latency of each dipole; an empty slot behind the second one.
std::unique_ptr<CDipoleFace> set() {
  auto face = std::make_unique<CDipoleFace>();
  const double values[][3] = {{2.0, 10.0, 80.0},       {5.0, 20.0, 100.0},       {0.0, 0.0, 0.0},
                              {5.5, 30.0, 120.0},      {notANumber, 20.0, 90.0}, {5.0, notANumber, 90.0},
                              {5.0, 20.0, notANumber}, {-1.0, -20.0, -infinite}};
  for (const auto& [fitError, moment, latency] : values) {
    face->addDipole();
    face->getCurrentDipole()->m_fitError = fitError;
    face->getCurrentDipole()->m_moment = moment;
    face->getCurrentDipole()->m_latency = latency;
  }
  face->deleteDipole(2, 0);
  return face;
}

std::vector<int> passingSlots(const CDipoleFace& face, const DipoleFilter& filter) {
  std::vector<int> slots;
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = face.m_dipoles[slot];
    if (dipole != nullptr && filter.passes(*dipole)) {
      slots.push_back(slot);
    }
  }
  return slots;
}

}  // namespace

TEST(DipoleFilter, WithoutALimitEveryDipolePasses) {
  EXPECT_EQ(passingSlots(*set(), {}), (std::vector{0, 1, 3, 4, 5, 6, 7}));
  EXPECT_FALSE(DipoleFilter().isSet());
}

TEST(DipoleFilter, TheLargestFitErrorPassesAndWhatIsNoNumberDoesNot) {
  const DipoleFilter filter{atMost(5.0), any, any};
  EXPECT_TRUE(filter.isSet());
  EXPECT_EQ(passingSlots(*set(), filter), (std::vector{0, 1, 5, 6, 7}));
}

TEST(DipoleFilter, TheSmallestMomentPasses) {
  const DipoleFilter filter{any, atLeast(20.0), any};
  EXPECT_EQ(passingSlots(*set(), filter), (std::vector{1, 3, 4, 6}));
}

TEST(DipoleFilter, BothEndsOfTheLatencyWindowPass) {
  const DipoleFilter filter{any, any, {80.0, 100.0}};
  EXPECT_EQ(passingSlots(*set(), filter), (std::vector{0, 1, 4, 5}));
}

TEST(DipoleFilter, AllLimitsMustHold) {
  const DipoleFilter filter{atMost(5.0), {15.0, 25.0}, {80.0, 120.0}};
  EXPECT_EQ(passingSlots(*set(), filter), (std::vector{1}));
}

TEST(DipoleFilter, InfinityIsANumber) {
  EXPECT_EQ(passingSlots(*set(), {any, any, atMost(0.0)}), (std::vector{7}));
  EXPECT_EQ(passingSlots(*set(), {any, any, atLeast(-infinite)}), (std::vector{0, 1, 3, 4, 5, 7}));
}

TEST(DipoleFilter, ALimitThatIsNoNumberLetsNothingPass) {
  EXPECT_TRUE(passingSlots(*set(), {any, atLeast(notANumber), any}).empty());
  EXPECT_TRUE(passingSlots(*set(), {any, atMost(notANumber), any}).empty());
}

TEST(DipoleFilter, AWindowWithItsEndsExchangedLetsNothingPass) {
  EXPECT_TRUE(passingSlots(*set(), {any, any, {100.0, 80.0}}).empty());
}

TEST(DipoleFilter, BehindTheCountNothingPasses) {
  const auto face = set();
  face->m_totalDipoles = 2;
  EXPECT_EQ(passingSlots(*face, {}), (std::vector{0, 1}));
}

TEST(ValueLimits, OneEndIsEnoughToBeSet) {
  EXPECT_FALSE(ValueLimits().isSet());
  EXPECT_TRUE(atLeast(0.0).isSet());
  EXPECT_TRUE(atMost(0.0).isSet());
}
