// Each of the first clusters has a colour of its own, which eyes of all kinds tell apart; no other dipole has
// it.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <variant>
#include <vector>

#include "host/dipoles/ColorScale.h"
#include "host/dipoles/DipoleColors.h"

namespace {

using host::ClusterColors;
using host::Rgb;
using Set = std::unique_ptr<CDipoleFace>;

// Pairs far from each other, the first `clusters` of them near enough to be clusters; the others stand alone.
Set pairs(int count, int clusters) {
  auto set = std::make_unique<CDipoleFace>();
  for (int i = 0; i < 2 * count; ++i) {
    set->addDipole();
    const double step = i / 2 < clusters ? 1.0 : 20.0;
    const double place[] = {i / 2 * 100.0 + i % 2 * step, 0.0, 0.0};
    std::copy(place, place + 3, set->m_dipoles[i]->m_location);
  }
  return set;
}

ClusterColors colorsOf(const CDipoleFace& set) {
  return {set, host::clustersOf(set, {}, {10.0, {}, 2})};
}

double distance(const host::Oklab& one, const host::Oklab& other) {
  return std::hypot(one.lightness - other.lightness, one.a - other.a, one.b - other.b);
}

// As an eye without the long or the middle cones sees it: F. Vienot, H. Brettel, J. D. Mollon, "Digital video
// colourmaps for checking the legibility of displays by dichromats", 1999, on linear values.
Rgb asSeen(Rgb colour, bool withoutLong) {
  const auto linear = [](std::uint8_t value) { return std::pow(value / 255.0, 2.2); };
  const double red = linear(colour.red);
  const double green = linear(colour.green);
  const double blue = linear(colour.blue);
  const double yellow = withoutLong ? 0.11238 * red + 0.88762 * green : 0.29275 * red + 0.70725 * green;
  const double rest =
      withoutLong ? 0.00401 * red - 0.00401 * green + blue : -0.02234 * red + 0.02234 * green + blue;
  const auto byte = [](double value) {
    const double part = value < 0.0 ? 0.0 : value > 1.0 ? 1.0 : value;
    return static_cast<std::uint8_t>(std::lround(255.0 * std::pow(part, 1.0 / 2.2)));
  };
  return {byte(yellow), byte(yellow), byte(rest)};
}

std::vector<Rgb> allColours() {
  const auto palette = host::clusterPalette();
  std::vector<Rgb> all(palette.begin(), palette.end());
  all.push_back(host::furtherClustersColor);
  all.push_back(host::noClusterColor);
  return all;
}

}  // namespace

TEST(ClusterColors, AreThoseOfTheClusterAndGreyForTheRest) {
  const Set set = pairs(4, 2);
  const ClusterColors colors = colorsOf(*set);
  const auto palette = host::clusterPalette();
  for (int slot = 0; slot < 8; ++slot) {
    const Rgb expected = slot < 4 ? palette[static_cast<std::size_t>(slot / 2)] : host::noClusterColor;
    EXPECT_EQ(colors.colorOf(*set->m_dipoles[slot]), expected) << slot;
  }
  EXPECT_EQ(colors.rule(), "2 or more within 10 mm");
  EXPECT_EQ(colors.lines(),
            (std::vector<ClusterColors::Line>{
                {palette[0], "1 (2)"}, {palette[1], "2 (2)"}, {host::noClusterColor, "in none (4)"}}));
}

TEST(ClusterColors, ADipoleThatCameLaterIsInNone) {
  const Set set = pairs(1, 1);
  const ClusterColors colors = colorsOf(*set);
  set->addDipole();
  EXPECT_EQ(colors.colorOf(*set->m_dipoles[2]), host::noClusterColor);
}

TEST(ClusterColors, FurtherClustersShareOneThatNoOtherHas) {
  const auto own = static_cast<int>(host::clusterPalette().size());
  const Set eight = pairs(own + 1, own + 1);
  const ClusterColors one = colorsOf(*eight);
  EXPECT_EQ(one.lines()[static_cast<std::size_t>(own)],
            (ClusterColors::Line{host::furtherClustersColor, "8 (2)"}));
  const Set ten = pairs(own + 3, own + 3);
  const ClusterColors three = colorsOf(*ten);
  EXPECT_EQ(three.lines()[static_cast<std::size_t>(own)],
            (ClusterColors::Line{host::furtherClustersColor, "8 to 10 (6)"}));
  EXPECT_EQ(three.lines().size(), static_cast<std::size_t>(own) + 2);
  EXPECT_EQ(three.colorOf(*ten->m_dipoles[2 * own + 5]), host::furtherClustersColor);
}

TEST(ClusterColors, AreTellableWithoutRedOrGreenConesToo) {
  const std::vector<Rgb> all = allColours();
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_GT(distance(host::oklabOf(all[i]), host::oklabOf(all[j])), 0.1) << i << ", " << j;
      for (const bool withoutLong : {true, false}) {
        EXPECT_GT(distance(oklabOf(asSeen(all[i], withoutLong)), oklabOf(asSeen(all[j], withoutLong))), 0.05)
            << i << ", " << j;
      }
    }
  }
}

TEST(DipoleColors, AreByTheSettings) {
  const Set set = pairs(3, 3);
  host::ViewSettings settings;
  EXPECT_FALSE(host::colorsOf(*set, settings));
  settings.colourBy = host::ColourBy::moment;
  EXPECT_TRUE(std::holds_alternative<host::ValueColors>(host::colorsOf(*set, settings).value()));
  settings.colourBy = host::ColourBy::cluster;
  settings.clusters.members = 2;
  const auto inClusters = [&] {
    const host::DipoleColors colors = host::colorsOf(*set, settings).value();
    int count = 0;
    for (int slot = 0; slot < 6; ++slot) {
      count += colorOf(colors, *set->m_dipoles[slot]) != host::noClusterColor ? 1 : 0;
    }
    return count;
  };
  EXPECT_EQ(inClusters(), 6);
  set->m_dipoles[0]->m_fitError = 50.0;
  settings.filter.fitError.most = 20.0;
  EXPECT_EQ(inClusters(), 4);  // the filter takes a dipole, and its neighbour stands alone
  settings.clusters.members = 3;
  EXPECT_EQ(inClusters(), 0);
}
