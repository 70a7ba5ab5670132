// Dipoles that lie together: those that pass the user's filter are joined to groups of neighbours, of which
// the large ones are clusters. Nothing is deleted; what belongs to none is counted, each dipole once.
//
// A cluster tells where dipoles are many and near each other, and nothing else: not what they mean.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/dipoles/DipoleFilter.h"
#include "host/dipoles/UnknownDipoles.h"
#include "host/head/Vector3.h"
#include "module/dipole.h"

namespace host {

// Neighbours are at most `distance` apart and, with an angle, their orientations at most that: signs count,
// so opposite ones are 180 degrees apart.
struct ClusterRule {
  double distance = 10.0;       // mm, 0 to longestLength
  std::optional<double> angle;  // degrees, 0 to mostDegrees
  int members = 6;              // at least fewestMembers: fewer are no cluster

  friend bool operator==(const ClusterRule&, const ClusterRule&) = default;
};

inline constexpr int fewestMembers = 2;
inline constexpr double mostDegrees = 180.0;

// "6 or more within 10 mm", "6 or more within 10 mm and 30 degrees".
std::string ruleText(const ClusterRule& rule);

// Of the values of a cluster's dipoles that are known and finite.
struct ValueSummary {
  int count = 0;  // at least 1
  double least = 0.0;
  double median = 0.0;  // the mean of the middle two of an even number
  double most = 0.0;

  friend bool operator==(const ValueSummary&, const ValueSummary&) = default;
};

// Directional statistics of orientations as unit vectors: mean direction and mean resultant length as in
// N. I. Fisher, T. Lewis, B. J. J. Embleton, "Statistical Analysis of Spherical Data", 1987, and
// K. V. Mardia, P. E. Jupp, "Directional Statistics", 2000. The cone is that of the dipoles themselves: it
// takes no model, and is no confidence cone of the mean.
struct OrientationSummary {
  static constexpr double coneShare = 0.95;  // of the orientations, at least

  int count = 0;           // dipoles with an orientation, at least 1
  double resultant = 0.0;  // length of the mean of the unit vectors, 0 (all around) to 1 (all alike)
  // Of length 1, in the head frame as the set; nothing when the vectors cancel each other, and then no cone.
  std::optional<Vector3> mean;
  // Degrees, 0 to 180: between the mean and the edge of the smallest cone around it that holds coneShare of
  // the orientations; a cone through one of them, so of fewer than 20 the one that holds all.
  double cone = 0.0;
};

struct Cluster {
  std::vector<int> slots;        // ascending
  Vector3 centroid;              // mean of the places, mm, head frame (x left, y up, z front)
  double rmsDistance = 0.0;      // of the dipoles from the centroid, root mean square, mm
  double largestDistance = 0.0;  // from the centroid, mm
  std::optional<OrientationSummary> orientation;  // nothing: no dipole of it has one
  std::optional<ValueSummary> latency;            // ms; nothing: of no dipole known
  std::optional<ValueSummary> fitError;           // percent
  std::optional<ValueSummary> moment;             // nAm, or the unit of the set's file; signs count

  int count() const { return static_cast<int>(slots.size()); }
};

struct Clusters {
  static constexpr int none = -1;

  DipoleFilter filter;            // with which they were found
  ClusterRule rule;               // likewise
  std::vector<Cluster> clusters;  // the largest first; of equal ones that with the first slot
  // By slot, the place in `clusters`, or none. As long as the set has slots.
  std::vector<int> bySlot;

  // The dipoles of the set are those of the clusters and the following, each in one number alone: in the
  // first that holds. Empty slots are no dipoles.
  int total = 0;
  // Removed by the filter, by its first limit that does; what is unknown is beyond a limit that is set.
  int beyondFitError = 0;
  int beyondMoment = 0;
  int beyondLatency = 0;
  int nowhere = 0;             // a coordinate is no number, or beyond 100 m
  int withoutOrientation = 0;  // with an angle: unknown, without length, or no number
  int scattered = 0;           // in groups of neighbours that are too small, most of one dipole

  int clustered() const;
  int of(int slot) const { return bySlot.at(static_cast<std::size_t>(slot)); }
};

// Of all dipoles of the set, shown or not, that pass the filter. Clusters are the connected parts of the
// graph whose edges are the pairs that are neighbours (see ClusterRule, both ends count): so a cluster may be
// longer than the distance, as a chain is longer than its links. The result depends on nothing but the
// arguments; unknown orientations count as none. Throws std::invalid_argument when the rule is not within
// what it says, and what an allocation throws.
Clusters clustersOf(const CDipoleFace& set, const DipoleFilter& filter, const ClusterRule& rule,
                    const UnknownDipoles* unknown = nullptr);

}  // namespace host
