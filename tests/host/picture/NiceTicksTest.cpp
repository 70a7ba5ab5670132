// Ticks are round numbers, no more than asked for, and read as what they are.
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "host/picture/NiceTicks.h"

namespace {

using host::niceTicks;
using host::Tick;

std::vector<std::string> texts(double low, double high, int most) {
  std::vector<std::string> all;
  for (const Tick& tick : niceTicks(low, high, most)) {
    EXPECT_EQ(std::stod(tick.text), tick.value) << tick.text;
    all.push_back(tick.text);
  }
  return all;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(NiceTicks, AreRoundAndAsManyAsFit) {
  EXPECT_EQ(texts(0.0, 100.0, 6), (Texts{"0", "20", "40", "60", "80", "100"}));
  EXPECT_EQ(texts(0.0, 100.0, 5), (Texts{"0", "50", "100"}));
  EXPECT_EQ(texts(0.0, 100.0, 11), (Texts{"0", "10", "20", "30", "40", "50", "60", "70", "80", "90", "100"}));
  EXPECT_EQ(texts(83.0, 117.0, 5), (Texts{"90", "100", "110"}));
  EXPECT_EQ(texts(-7.0, 12.0, 5), (Texts{"-5", "0", "5", "10"}));
}

TEST(NiceTicks, HaveTheDecimalsOfTheirStep) {
  EXPECT_EQ(texts(0.1, 0.8, 8), (Texts{"0.1", "0.2", "0.3", "0.4", "0.5", "0.6", "0.7", "0.8"}));
  EXPECT_EQ(texts(-0.05, 0.06, 4), (Texts{"-0.05", "0.00", "0.05"}));
  EXPECT_EQ(texts(1.0, 1.0012, 4), (Texts{"1.0000", "1.0005", "1.0010"}));
  EXPECT_EQ(texts(1e8, 3e8, 3), (Texts{"1e+08", "2e+08", "3e+08"}));
  EXPECT_EQ(texts(0.0, 3e-9, 4), (Texts{"0", "1e-09", "2e-09", "3e-09"}));
}

TEST(NiceTicks, OfOneValueIsThatValue) {
  EXPECT_EQ(texts(83.25, 83.25, 5), (Texts{"83.25"}));
  EXPECT_EQ(texts(-0.0, 0.0, 5), (Texts{"0"}));
}

TEST(NiceTicks, NothingWithoutARange) {
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(niceTicks(1.0, 0.0, 5).empty());
  EXPECT_TRUE(niceTicks(0.0, infinite, 5).empty());
  EXPECT_TRUE(niceTicks(-infinite, 0.0, 5).empty());
  EXPECT_TRUE(niceTicks(std::nan(""), 0.0, 5).empty());
  EXPECT_TRUE(niceTicks(0.0, std::nan(""), 5).empty());
}

TEST(NiceTicks, OfAnyRangeLieInItAscendingAndNotTooMany) {
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    const double low = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
    const double width = std::pow(10.0, std::uniform_int_distribution<int>(-8, 12)(random));
    const double high = low + width * std::uniform_real_distribution<double>(0.1, 1.0)(random);
    const int most = std::uniform_int_distribution<int>(2, 12)(random);
    const std::vector<Tick> ticks = niceTicks(low, high, most);
    ASSERT_LE(ticks.size(), static_cast<std::size_t>(most));
    for (std::size_t t = 0; t < ticks.size(); ++t) {
      ASSERT_GE(ticks[t].value, low - 1e-8 * width);
      ASSERT_LE(ticks[t].value, high + 1e-8 * width);
      ASSERT_TRUE(t == 0 || ticks[t].value > ticks[t - 1].value);
    }
  }
}
