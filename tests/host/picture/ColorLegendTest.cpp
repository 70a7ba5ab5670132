// The legend shows each value's colour at its tick, and the colour of dipoles without a value.
#include <gtest/gtest.h>
#include <optional>

#include "host/paint/StrokeFont.h"
#include "host/picture/ColorLegend.h"

namespace {

using host::DipoleValue;
using host::Image;
using host::legendPicture;
using host::noValueColor;
using host::Rgb;
using host::scaleColor;
using host::ValueColors;
using host::ValueRange;

constexpr int line = 16;
constexpr int barMiddle = 16;  // half a line from the left edge, and half of its width of one line
constexpr Rgb white{255, 255, 255};
constexpr Rgb black{0, 0, 0};

Image legend(std::optional<ValueRange> range, int height = 320) {
  return legendPicture(ValueColors(DipoleValue::latency, "latency (ms)", range), height, line);
}

// The first row with a colour in the middle of the bar, from the top.
int firstRow(const Image& image, Rgb colour) {
  int row = 0;
  while (row < image.height() && image.pixel(barMiddle, row) != colour) {
    ++row;
  }
  return row;
}

// Rows in which the mark of a tick begins at the bar's right edge.
std::vector<int> tickRows(const Image& image) {
  std::vector<int> rows;
  for (int row = 0; row < image.height() - 2 * line; ++row) {
    if (image.pixel(line / 2 + line, row) == white &&
        image.pixel(line / 2 + line + line / 2 - 1, row) == white && image.pixel(barMiddle, row) != black &&
        row > 2 * line) {
      rows.push_back(row);
    }
  }
  return rows;
}

}  // namespace

TEST(ColorLegend, HasTheLargestValueOnTop) {
  const Image image = legend(ValueRange{80.0, 120.0, false, false});
  const int top = firstRow(image, scaleColor(1.0));
  const int bottom = firstRow(image, scaleColor(0.0));
  EXPECT_LT(top, bottom);
  EXPECT_EQ(image.height(), 320);
}

TEST(ColorLegend, TicksStandAtTheirColours) {
  const ValueColors colors(DipoleValue::latency, "latency (ms)", ValueRange{80.0, 120.0, false, false});
  const Image image = legendPicture(colors, 320, line);
  const std::vector<int> rows = tickRows(image);
  // Seven fit: from 80 to 120 by 10.
  ASSERT_EQ(rows.size(), 5U);
  const double values[] = {120.0, 110.0, 100.0, 90.0, 80.0};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Rgb shown = image.pixel(barMiddle, rows[i]);
    const Rgb wanted = colors.colorOf(values[i]);
    EXPECT_NEAR(shown.red, wanted.red, 2) << values[i];
    EXPECT_NEAR(shown.green, wanted.green, 2) << values[i];
    EXPECT_NEAR(shown.blue, wanted.blue, 2) << values[i];
  }
}

TEST(ColorLegend, PointsWhereValuesLieBeyondAnEnd) {
  const Image flat = legend(ValueRange{80.0, 120.0, false, false});
  const Image high = legend(ValueRange{80.0, 120.0, false, true});
  const Image low = legend(ValueRange{80.0, 120.0, true, false});
  const int top = firstRow(flat, scaleColor(1.0));
  EXPECT_LT(firstRow(high, scaleColor(1.0)), top);
  EXPECT_EQ(firstRow(low, scaleColor(1.0)), top);
  const auto rowsOfLowEnd = [](const Image& image) {
    int rows = 0;
    for (int row = 0; row < image.height(); ++row) {
      rows += image.pixel(barMiddle, row) == scaleColor(0.0) ? 1 : 0;
    }
    return rows;
  };
  EXPECT_GT(rowsOfLowEnd(low), rowsOfLowEnd(flat));
  EXPECT_EQ(rowsOfLowEnd(high), rowsOfLowEnd(flat));
}

TEST(ColorLegend, ShowsTheColourOfNoValue) {
  for (const auto& range : {std::optional<ValueRange>(), std::optional(ValueRange{1.0, 2.0, false, false})}) {
    const Image image = legend(range);
    EXPECT_EQ(image.pixel(barMiddle, image.height() - line), noValueColor);
  }
}

TEST(ColorLegend, WithoutValuesHasNoScale) {
  const Image image = legend(std::nullopt);
  for (int row = 2 * line; row < image.height() - 2 * line; ++row) {
    ASSERT_EQ(image.pixel(barMiddle, row), black) << row;
  }
}

TEST(ColorLegend, OfOneValueHasOneTickAndTheMiddleColour) {
  const Image image = legend(ValueRange{83.5, 83.5, false, false});
  ASSERT_EQ(tickRows(image).size(), 1U);
  EXPECT_EQ(image.pixel(barMiddle, tickRows(image)[0]), scaleColor(0.5));
}

TEST(ColorLegend, IsWideEnoughForItsTexts) {
  const host::StrokeFont font(line);
  EXPECT_EQ(legend(std::nullopt).width(), line / 2 + font.width("latency (ms)") + line / 2);
  const Image wide = legend(ValueRange{-1e-300, 1e300, false, false});
  for (int row = 0; row < wide.height(); ++row) {
    ASSERT_EQ(wide.pixel(wide.width() - 1, row), black);
  }
}

TEST(ColorLegend, IsNeverTooLowForItsParts) {
  EXPECT_EQ(legend(ValueRange{1.0, 2.0, true, true}, 1).height(), 8 * line);
}

TEST(ColorLegend, OfClustersHasALineForEachColour) {
  CDipoleFace set;
  for (int i = 0; i < 5; ++i) {
    set.addDipole();
    set.m_dipoles[i]->m_location[0] = i < 4 ? i / 2 * 50.0 : 200.0;
  }
  const host::ClusterColors colors(set, host::clustersOf(set, {}, {1.0, {}, 2}));
  ASSERT_EQ(colors.lines().size(), 3U);  // two clusters and none
  const Image image = legendPicture(colors, line);
  int row = 0;
  for (const host::ClusterColors::Line& shown : colors.lines()) {
    const int next = firstRow(image, shown.color);
    EXPECT_GT(next, row) << shown.text;
    EXPECT_LT(next, image.height() - line / 2) << shown.text;
    row = next;
  }
  const host::StrokeFont font(line);
  EXPECT_GE(image.width(), line / 2 + font.width("cluster (dipoles)") + line / 2);
  const host::ClusterColors turned(set, host::clustersOf(set, {}, {1.0, 30.0, 2}));
  EXPECT_EQ(legendPicture(turned, line).height(), image.height() + font.lineHeight());  // "and 30 degrees"
  EXPECT_EQ(legendPicture(turned, line).width(), image.width());
  EXPECT_EQ(legendPicture(host::DipoleColors(colors), 320, line).height(), image.height());
}
