#include "host/dipoles/ClusterColors.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace host {

namespace {

// Orange, sky blue, bluish green, yellow, reddish purple, vermilion, blue.
constexpr std::array<Rgb, 7> palette{{{230, 159, 0},
                                      {86, 180, 233},
                                      {0, 158, 115},
                                      {240, 228, 66},
                                      {204, 121, 167},
                                      {213, 94, 0},
                                      {0, 114, 178}}};

std::string counted(const std::string& name, int dipoles) {
  return name + " (" + std::to_string(dipoles) + ")";
}

std::vector<ClusterColors::Line> linesOf(const Clusters& found) {
  std::vector<ClusterColors::Line> lines;
  const std::size_t own = (std::min)(found.clusters.size(), palette.size());
  for (std::size_t i = 0; i < own; ++i) {
    lines.push_back({palette.at(i), counted(std::to_string(i + 1), found.clusters[i].count())});
  }
  int further = 0;
  for (std::size_t i = own; i < found.clusters.size(); ++i) {
    further += found.clusters[i].count();
  }
  if (further > 0) {
    const std::string last =
        found.clusters.size() > own + 1 ? " to " + std::to_string(found.clusters.size()) : "";
    lines.push_back({furtherClustersColor, counted(std::to_string(own + 1) + last, further)});
  }
  lines.push_back({noClusterColor, counted("in none", found.scattered + found.withoutOrientation)});
  return lines;
}

}  // namespace

std::span<const Rgb> clusterPalette() {
  return palette;
}

Rgb clusterColor(int cluster) {
  if (cluster < 0) {
    return noClusterColor;
  }
  const auto place = static_cast<std::size_t>(cluster);
  return place < palette.size() ? palette.at(place) : furtherClustersColor;
}

ClusterColors::ClusterColors(const CDipoleFace& set, const Clusters& clusters)
    : m_rule(ruleText(clusters.rule)), m_lines(linesOf(clusters)) {
  for (std::size_t i = 0; i < clusters.clusters.size(); ++i) {
    for (const int slot : clusters.clusters[i].slots) {
      m_clusters.emplace(set.m_dipoles[slot], static_cast<int>(i));
    }
  }
}

Rgb ClusterColors::colorOf(const CDipoles& dipole) const {
  const auto found = m_clusters.find(&dipole);
  return clusterColor(found == m_clusters.end() ? Clusters::none : found->second);
}

}  // namespace host
