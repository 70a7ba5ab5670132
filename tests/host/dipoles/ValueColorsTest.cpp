// Colours tell values apart by even steps, on grey pictures and without red and green too.
#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <numeric>

#include "host/dipoles/ValueColors.h"

namespace {

using host::DipoleValue;
using host::noValueColor;
using host::Oklab;
using host::oklabOf;
using host::Rgb;
using host::robustRange;
using host::scaleColor;
using host::ValueColors;
using host::ValueRange;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

double distance(const Oklab& p, const Oklab& q) {
  return std::hypot(p.lightness - q.lightness, p.a - q.a, p.b - q.b);
}

std::vector<Rgb> scale(int steps) {
  std::vector<Rgb> colours;
  for (int i = 0; i <= steps; ++i) {
    colours.push_back(scaleColor(static_cast<double>(i) / steps));
  }
  return colours;
}

// What an eye without red cones or without green cones sees: linear light mixed as F. Vienot, H. Brettel and
// J. D. Mollon measured ("Digital video colourmaps for checking the legibility of displays by dichromats",
// 1999).
Rgb dichromatic(Rgb colour, double ofRed, double ofGreen, double ofDifference) {
  const auto linear = [](int value) { return std::pow(value / 255.0, 2.2); };
  const auto byte = [](double value) {
    return static_cast<std::uint8_t>(std::lround(255.0 * std::pow(std::clamp(value, 0.0, 1.0), 1.0 / 2.2)));
  };
  const double red = linear(colour.red);
  const double green = linear(colour.green);
  const double blue = linear(colour.blue);
  const double mixed = ofRed * red + ofGreen * green;
  return {byte(mixed), byte(mixed), byte(blue + ofDifference * (red - green))};
}

Rgb withoutRedCones(Rgb colour) {
  return dichromatic(colour, 0.1124, 0.8876, 0.0040);
}

Rgb withoutGreenCones(Rgb colour) {
  return dichromatic(colour, 0.2927, 0.7073, -0.0223);
}

std::vector<double> upTo(int count) {
  std::vector<double> values(static_cast<std::size_t>(count));
  std::iota(values.begin(), values.end(), 1.0);
  return values;
}

}  // namespace

// The published pairs of the colour space.
TEST(ColorScale, KnowsItsColourSpace) {
  const Oklab white = oklabOf({255, 255, 255});
  EXPECT_NEAR(white.lightness, 1.0, 1e-4);
  EXPECT_NEAR(white.a, 0.0, 1e-4);
  EXPECT_NEAR(white.b, 0.0, 1e-4);
  const Oklab red = oklabOf({255, 0, 0});
  EXPECT_NEAR(red.lightness, 0.6280, 1e-4);
  EXPECT_NEAR(red.a, 0.2249, 1e-4);
  EXPECT_NEAR(red.b, 0.1258, 1e-4);
  const Oklab blue = oklabOf({0, 0, 255});
  EXPECT_NEAR(blue.lightness, 0.4520, 1e-4);
  EXPECT_NEAR(blue.a, -0.0325, 1e-4);
  EXPECT_NEAR(blue.b, -0.3115, 1e-4);
}

TEST(ColorScale, EqualStepsAreEqualDistances) {
  const std::vector<Rgb> colours = scale(16);
  std::vector<double> steps;
  for (std::size_t i = 1; i < colours.size(); ++i) {
    steps.push_back(distance(oklabOf(colours[i - 1]), oklabOf(colours[i])));
  }
  const auto [least, most] = std::minmax_element(steps.begin(), steps.end());
  EXPECT_GT(*least, 0.035);
  EXPECT_LT(*most / *least, 1.1);  // rounded to bytes
}

TEST(ColorScale, GrowsLighterAllTheWay) {
  const std::vector<Rgb> colours = scale(100);
  for (std::size_t i = 1; i < colours.size(); ++i) {
    EXPECT_GT(oklabOf(colours[i]).lightness, oklabOf(colours[i - 1]).lightness) << i;
  }
}

TEST(ColorScale, IsFarFromEveryGrey) {
  for (const Rgb colour : scale(100)) {
    for (int grey = 0; grey < 256; ++grey) {
      const auto level = static_cast<std::uint8_t>(grey);
      ASSERT_GT(distance(oklabOf(colour), oklabOf({level, level, level})), 0.14);
    }
  }
}

TEST(ColorScale, TellsItsOrderWithoutRedOrGreenCones) {
  for (const auto& see : {withoutRedCones, withoutGreenCones}) {
    const std::vector<Rgb> colours = scale(8);
    for (std::size_t i = 1; i < colours.size(); ++i) {
      EXPECT_GT(oklabOf(see(colours[i])).lightness, oklabOf(see(colours[i - 1])).lightness + 0.02) << i;
    }
  }
}

TEST(ColorScale, NoValueIsOnNoPartOfTheScale) {
  const auto asItIs = [](Rgb colour) { return colour; };
  for (const Rgb colour : scale(100)) {
    EXPECT_GT(distance(oklabOf(asItIs(colour)), oklabOf(asItIs(noValueColor))), 0.2);
    EXPECT_GT(distance(oklabOf(withoutRedCones(colour)), oklabOf(withoutRedCones(noValueColor))), 0.08);
    EXPECT_GT(distance(oklabOf(withoutGreenCones(colour)), oklabOf(withoutGreenCones(noValueColor))), 0.08);
  }
}

TEST(ColorScale, EndsAreKept) {
  EXPECT_EQ(scaleColor(-1.0), scaleColor(0.0));
  EXPECT_EQ(scaleColor(2.0), scaleColor(1.0));
  EXPECT_EQ(scaleColor(infinite), scaleColor(1.0));
  EXPECT_EQ(scaleColor(notANumber), noValueColor);
}

TEST(ValueRange, UpToFiftyValuesNoneIsCut) {
  EXPECT_EQ(robustRange(upTo(50)), (ValueRange{1.0, 50.0, false, false}));
  EXPECT_EQ(robustRange({3.0}), (ValueRange{3.0, 3.0, false, false}));
  EXPECT_EQ(robustRange({9.0, 3.0}), (ValueRange{3.0, 9.0, false, false}));
}

TEST(ValueRange, TwoOfAHundredAreCutAtEachEnd) {
  EXPECT_EQ(robustRange(upTo(51)), (ValueRange{2.0, 50.0, true, true}));
  EXPECT_EQ(robustRange(upTo(101)), (ValueRange{3.0, 99.0, true, true}));
  std::vector<double> stray(101, 5.0);
  stray[7] = 1e9;
  EXPECT_EQ(robustRange(stray), (ValueRange{5.0, 5.0, false, true}));
}

TEST(ValueRange, OnlyFiniteValuesCount) {
  EXPECT_EQ(robustRange({notANumber, 2.0, infinite, 4.0, -infinite}), (ValueRange{2.0, 4.0, false, false}));
  EXPECT_EQ(robustRange({notANumber, infinite}), std::nullopt);
  EXPECT_EQ(robustRange({}), std::nullopt);
}

TEST(ValueColors, RunAlongTheRange) {
  const ValueColors colors(DipoleValue::latency, "latency (ms)", ValueRange{80.0, 120.0, false, false});
  EXPECT_EQ(colors.colorOf(80.0), scaleColor(0.0));
  EXPECT_EQ(colors.colorOf(90.0), scaleColor(0.25));
  EXPECT_EQ(colors.colorOf(120.0), scaleColor(1.0));
  EXPECT_EQ(colors.colorOf(70.0), scaleColor(0.0));
  EXPECT_EQ(colors.colorOf(infinite), scaleColor(1.0));
  EXPECT_EQ(colors.colorOf(notANumber), noValueColor);
}

TEST(ValueColors, OfOneValueAreTheMiddle) {
  const ValueColors colors(DipoleValue::latency, "", ValueRange{80.0, 80.0, false, true});
  EXPECT_EQ(colors.colorOf(80.0), scaleColor(0.5));
  EXPECT_EQ(colors.colorOf(79.0), scaleColor(0.0));
  EXPECT_EQ(colors.colorOf(81.0), scaleColor(1.0));
}

TEST(ValueColors, OfTheWidestRangeDoNotOverflow) {
  const double largest = std::numeric_limits<double>::max();
  const ValueColors colors(DipoleValue::latency, "", ValueRange{-largest, largest, false, false});
  EXPECT_EQ(colors.colorOf(0.0), scaleColor(0.5));
}

TEST(ValueColors, TakeTheirValueFromTheDipole) {
  auto set = std::make_unique<CDipoleFace>();
  for (const double value : {1.0, 2.0}) {
    set->addDipole();
    set->getCurrentDipole()->m_latency = value;
    set->getCurrentDipole()->m_fitError = 10.0 * value;
    set->getCurrentDipole()->m_moment = 100.0 * value;
  }
  set->addDipole();
  set->deleteDipole(2, 0);  // an empty slot
  EXPECT_EQ(ValueColors(*set, DipoleValue::latency).range(), (ValueRange{1.0, 2.0, false, false}));
  EXPECT_EQ(ValueColors(*set, DipoleValue::fitError).range(), (ValueRange{10.0, 20.0, false, false}));
  EXPECT_EQ(ValueColors(*set, DipoleValue::moment).range(), (ValueRange{100.0, 200.0, false, false}));
  EXPECT_EQ(ValueColors(*set, DipoleValue::moment).colorOf(*set->m_dipoles[1]), scaleColor(1.0));
  set->cleanDipoles();
  EXPECT_EQ(ValueColors(*set, DipoleValue::moment).colorOf(5.0), noValueColor);
}

TEST(ValueColors, TitlesNameTheUnit) {
  auto set = std::make_unique<CDipoleFace>();
  EXPECT_EQ(titleOf(DipoleValue::latency, *set), "latency (ms)");
  EXPECT_EQ(titleOf(DipoleValue::fitError, *set), "fit error (%)");
  EXPECT_EQ(titleOf(DipoleValue::moment, *set), "moment");
  set->m_momentInNAm = 1;
  EXPECT_EQ(titleOf(DipoleValue::moment, *set), "moment (nAm)");
}
