// The connected parts of a graph whose edges are the pairs of places that are near each other.
//
// Parts at a distance D are what single linkage gives when its tree is cut at D: places of one part can be
// reached from each other by steps of at most D, places of two parts are farther apart than D.
#pragma once

#include <optional>
#include <vector>

#include "host/head/Vector3.h"

namespace host {

struct DirectedPlace {
  Vector3 place;      // mm, any frame; every coordinate within 100 m
  Vector3 direction;  // of length 1; only read when an angle counts
};

struct NearRule {
  double distance = 0.0;        // mm
  std::optional<double> angle;  // degrees, 0 to 180; nothing: directions do not count
};

// Between two directions of length 1, degrees, 0 to 180: opposite ones are 180 apart.
double degreesBetween(const Vector3& one, const Vector3& other);

// At most the distance apart, and at most the angle between the directions; both ends count.
bool areNear(const DirectedPlace& one, const DirectedPlace& other, const NearRule& rule);

// For each place the number of its part; parts are numbered from 0 by their first place. The same as areNear
// of all pairs gives, by a tree of boxes: pairs of boxes that are apart, near all over, or of one part
// already are not looked into. So it takes about n log n however the places lie, also when all of them are in
// one point. Throws what an allocation throws.
std::vector<int> nearParts(const std::vector<DirectedPlace>& places, const NearRule& rule);

}  // namespace host
