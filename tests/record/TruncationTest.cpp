// Conversion of a coordinate to a whole number: defined for every double.
#include <climits>
#include <gtest/gtest.h>
#include <limits>

#include "record/Truncation.h"

namespace {

using Limits = std::numeric_limits<double>;

}  // namespace

TEST(TruncateToInt, GoesTowardZeroOnBothSides) {
  EXPECT_EQ(truncateToInt(0.999), 0);
  EXPECT_EQ(truncateToInt(-0.999), 0);
  EXPECT_EQ(truncateToInt(7.5), 7);
  EXPECT_EQ(truncateToInt(-7.5), -7);
  EXPECT_EQ(truncateToInt(3.0), 3);
  EXPECT_EQ(truncateToInt(-0.0), 0);
  EXPECT_EQ(truncateToInt(Limits::denorm_min()), 0);
}

TEST(TruncateToInt, KeepsTheOutermostNumbersWithTheirFractions) {
  EXPECT_EQ(truncateToInt(2147483646.9), INT_MAX - 1);
  EXPECT_EQ(truncateToInt(2147483647.0), INT_MAX);
  EXPECT_EQ(truncateToInt(2147483647.5), INT_MAX);
  EXPECT_EQ(truncateToInt(-2147483647.9), INT_MIN + 1);
  EXPECT_EQ(truncateToInt(-2147483648.0), INT_MIN);
  EXPECT_EQ(truncateToInt(-2147483648.5), INT_MIN);
}

TEST(TruncateToInt, EndsAtTheNearestIntForWhatNoneHolds) {
  for (const double tooHigh : {2147483648.0, 1e300, (Limits::max)(), Limits::infinity()}) {
    EXPECT_EQ(truncateToInt(tooHigh), INT_MAX) << tooHigh;
  }
  for (const double tooLow : {-2147483649.0, -1e300, Limits::lowest(), -Limits::infinity()}) {
    EXPECT_EQ(truncateToInt(tooLow), INT_MIN) << tooLow;
  }
}

TEST(TruncateToInt, OfNoNumberIsTheLowest) {
  EXPECT_EQ(truncateToInt(Limits::quiet_NaN()), INT_MIN);
  EXPECT_EQ(truncateToInt(-Limits::quiet_NaN()), INT_MIN);
}
