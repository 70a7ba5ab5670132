// Colours of dipoles by the cluster that they belong to.
//
// The first clusters have those of M. Okabe and K. Ito ("Color Universal Design", 2008), which eyes tell
// apart that miss red, green or blue; without their black, which no dark ground shows. More colours would be
// told apart by nobody, so all further clusters share white. What is in no cluster is grey.
#pragma once

#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/dipoles/Clusters.h"
#include "host/paint/Image.h"
#include "module/dipole.h"

namespace host {

// Of the first clusters, in order.
std::span<const Rgb> clusterPalette();
inline constexpr Rgb furtherClustersColor{255, 255, 255};
inline constexpr Rgb noClusterColor{190, 190, 190};

// Of a place in Clusters::clusters, or of Clusters::none.
Rgb clusterColor(int cluster);

class ClusterColors {
 public:
  // Of the clusters of the set as it is: a dipole that comes later is in none.
  ClusterColors(const CDipoleFace& set, const Clusters& clusters);

  Rgb colorOf(const CDipoles& dipole) const;

  // What a legend says: the rule by which clusters were found, then each cluster by its number, the largest
  // is 1, with the count of its dipoles ("1 (34)"), further ones in one line ("8 to 12 (60)"), and those that
  // pass the filter and belong to none ("in none (20)").
  struct Line {
    Rgb color;
    std::string text;

    friend bool operator==(const Line&, const Line&) = default;
  };
  const std::string& rule() const { return m_rule; }
  const std::vector<Line>& lines() const { return m_lines; }

 private:
  std::unordered_map<const CDipoles*, int> m_clusters;  // only compared: dipoles may go
  std::string m_rule;
  std::vector<Line> m_lines;
};

}  // namespace host
