#include "host/dipoles/Clusters.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "host/dipoles/DipoleScene.h"
#include "host/dipoles/NearParts.h"
#include "host/head/Limits.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

// Mean resultant lengths below it are rounding.
constexpr double leastResultant = 1e-12;

// Asked so that what is no number is not within.
bool isWithin(double value, double most) {
  return value >= 0.0 && value <= most;
}

void check(const ClusterRule& rule) {
  if (!isWithin(rule.distance, longestLength)) {
    throw std::invalid_argument("the distance of neighbours is 0 to " + shortest(longestLength) + " mm");
  }
  if (rule.angle && !isWithin(*rule.angle, mostDegrees)) {
    throw std::invalid_argument("the angle between neighbours is 0 to " + shortest(mostDegrees) + " degrees");
  }
  if (rule.members < fewestMembers) {
    throw std::invalid_argument("a cluster has at least " + std::to_string(fewestMembers) + " members");
  }
}

// A dipole that may belong to a cluster.
struct Candidate {
  int slot = 0;
  const CDipoleszq* dipole = nullptr;
  std::uint8_t unknown = 0;
  std::optional<Vector3> direction;

  bool isKnown(DipoleValue value) const { return (unknown & static_cast<std::uint8_t>(value)) == 0; }
  Vector3 place() const { return placeOf(*dipole); }
};
using Candidates = std::vector<Candidate>;

// Counts a dipole that may not, and returns false then.
bool mayBelong(const Candidate& candidate, Clusters& counts) {
  const std::optional<DipoleValue> removedBy = counts.filter.removedBy(*candidate.dipole, candidate.unknown);
  if (removedBy == DipoleValue::fitError) {
    ++counts.beyondFitError;
  } else if (removedBy == DipoleValue::moment) {
    ++counts.beyondMoment;
  } else if (removedBy) {
    ++counts.beyondLatency;
  } else if (!isPlace(candidate.place())) {
    ++counts.nowhere;
  } else if (counts.rule.angle && !candidate.direction) {
    ++counts.withoutOrientation;
  } else {
    return true;
  }
  return false;
}

Candidates candidatesOf(const CDipoleFace& set, const UnknownDipoles* unknown, Clusters& counts) {
  Candidates candidates;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    const CDipoleszq* dipole = set.m_dipoles[slot];
    if (dipole == nullptr) {
      continue;
    }
    ++counts.total;
    Candidate candidate{slot, dipole, unknown == nullptr ? std::uint8_t{0} : unknown->of(*dipole), {}};
    if (candidate.isKnown(DipoleValue::orientation)) {
      candidate.direction = directionOf(*dipole);
    }
    if (mayBelong(candidate, counts)) {
      candidates.push_back(candidate);
    }
  }
  return candidates;
}

double medianOf(const std::vector<double>& sorted) {
  const std::size_t middle = sorted.size() / 2;
  return sorted.size() % 2 == 1 ? sorted[middle] : std::midpoint(sorted[middle - 1], sorted[middle]);
}

std::optional<ValueSummary> summaryOf(const Candidates& members, DipoleValue kind, double CDipoles::*member) {
  std::vector<double> values;
  for (const Candidate& candidate : members) {
    if (const double value = candidate.dipole->*member; candidate.isKnown(kind) && std::isfinite(value)) {
      values.push_back(value);
    }
  }
  if (values.empty()) {
    return std::nullopt;
  }
  std::sort(values.begin(), values.end());
  return ValueSummary{static_cast<int>(values.size()), values.front(), medianOf(values), values.back()};
}

// The angle that at least a share of them does not exceed.
double angleOfShare(std::vector<double> angles, double share) {
  std::sort(angles.begin(), angles.end());
  const auto enough = static_cast<std::size_t>(std::ceil(share * static_cast<double>(angles.size())));
  return angles[enough - 1];
}

std::optional<OrientationSummary> meanOrientationOf(const Candidates& members) {
  OrientationSummary summary;
  Vector3 sum;
  for (const Candidate& candidate : members) {
    if (candidate.direction) {
      ++summary.count;
      sum = sum + *candidate.direction;
    }
  }
  if (summary.count == 0) {
    return std::nullopt;
  }
  summary.resultant = (std::min)(length(sum) / summary.count, 1.0);
  if (summary.resultant < leastResultant) {
    return summary;
  }
  summary.mean = sum * (1.0 / length(sum));
  std::vector<double> angles;
  for (const Candidate& candidate : members) {
    if (candidate.direction) {
      angles.push_back(degreesBetween(*candidate.direction, *summary.mean));
    }
  }
  summary.cone = angleOfShare(std::move(angles), OrientationSummary::coneShare);
  return summary;
}

void measurePlaces(Cluster& cluster, const Candidates& members) {
  const auto count = static_cast<double>(members.size());
  for (const Candidate& candidate : members) {
    cluster.centroid = cluster.centroid + candidate.place();
  }
  cluster.centroid = cluster.centroid * (1.0 / count);
  double squares = 0.0;
  for (const Candidate& candidate : members) {
    const Vector3 away = candidate.place() - cluster.centroid;
    squares += dot(away, away);
    cluster.largestDistance = (std::max)(cluster.largestDistance, length(away));
  }
  cluster.rmsDistance = std::sqrt(squares / count);
}

Cluster clusterOf(const Candidates& members) {
  Cluster cluster;
  for (const Candidate& candidate : members) {
    cluster.slots.push_back(candidate.slot);
  }
  measurePlaces(cluster, members);
  cluster.orientation = meanOrientationOf(members);
  cluster.latency = summaryOf(members, DipoleValue::latency, &CDipoles::m_latency);
  cluster.fitError = summaryOf(members, DipoleValue::fitError, &CDipoles::m_fitError);
  cluster.moment = summaryOf(members, DipoleValue::moment, &CDipoles::m_moment);
  return cluster;
}

// By the parts that neighbours join to, in the order of their first members; those of a part too.
std::vector<Candidates> groupsOf(const Candidates& candidates, const ClusterRule& rule) {
  std::vector<DirectedPlace> places;
  places.reserve(candidates.size());
  for (const Candidate& candidate : candidates) {
    places.push_back({candidate.place(), candidate.direction.value_or(Vector3())});
  }
  const std::vector<int> parts = nearParts(places, {rule.distance, rule.angle});
  std::vector<Candidates> groups;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto part = static_cast<std::size_t>(parts[i]);
    if (part == groups.size()) {
      groups.emplace_back();
    }
    groups[part].push_back(candidates[i]);
  }
  return groups;
}

}  // namespace

std::string ruleText(const ClusterRule& rule) {
  return std::to_string(rule.members) + " or more within " + shortest(rule.distance) + " mm" +
         (rule.angle ? " and " + shortest(*rule.angle) + " degrees" : "");
}

int Clusters::clustered() const {
  return std::accumulate(clusters.begin(), clusters.end(), 0,
                         [](int sum, const Cluster& cluster) { return sum + cluster.count(); });
}

Clusters clustersOf(const CDipoleFace& set, const DipoleFilter& filter, const ClusterRule& rule,
                    const UnknownDipoles* unknown) {
  check(rule);
  Clusters result;
  result.filter = filter;
  result.rule = rule;
  const Candidates candidates = candidatesOf(set, unknown, result);
  for (const Candidates& group : groupsOf(candidates, rule)) {
    if (group.size() >= static_cast<std::size_t>(rule.members)) {
      result.clusters.push_back(clusterOf(group));
    } else {
      result.scattered += static_cast<int>(group.size());
    }
  }
  std::stable_sort(result.clusters.begin(), result.clusters.end(),
                   [](const Cluster& one, const Cluster& other) { return one.count() > other.count(); });
  result.bySlot.assign(static_cast<std::size_t>((std::max)(set.m_totalDipoles, 0)), Clusters::none);
  for (std::size_t i = 0; i < result.clusters.size(); ++i) {
    for (const int slot : result.clusters[i].slots) {
      result.bySlot[static_cast<std::size_t>(slot)] = static_cast<int>(i);
    }
  }
  return result;
}

}  // namespace host
