#include "host/dipoles/NearParts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>
#include <utility>

namespace host {

namespace {

constexpr int mostInLeaf = 8;
// Of the square of a chord: beyond it rounding decides nothing. Nearer ones are told by their angle.
constexpr double chordRounding = 1e-12;

struct Box {
  Vector3 low;
  Vector3 high;

  void add(const Vector3& point) {
    for (int axis = 0; axis < 3; ++axis) {
      low[axis] = (std::min)(low[axis], point[axis]);
      high[axis] = (std::max)(high[axis], point[axis]);
    }
  }
  bool isPoint() const { return low == high; }
};

// From a point of one box to one of the other, along each axis: the least, and the most. Differences are
// rounded as those of the points are, so that what holds of boxes holds of their points to the last bit.
Vector3 gapBetween(const Box& one, const Box& other) {
  Vector3 gap;
  for (int axis = 0; axis < 3; ++axis) {
    gap[axis] = (std::max)({one.low[axis] - other.high[axis], other.low[axis] - one.high[axis], 0.0});
  }
  return gap;
}
Vector3 spanOf(const Box& one, const Box& other) {
  Vector3 span;
  for (int axis = 0; axis < 3; ++axis) {
    span[axis] = (std::max)(one.high[axis] - other.low[axis], other.high[axis] - one.low[axis]);
  }
  return span;
}

// Numbers 0 to n - 1 in parts that grow together.
class Union {
 public:
  explicit Union(std::size_t size) : m_parents(size) { std::iota(m_parents.begin(), m_parents.end(), 0); }

  int rootOf(int number) {
    while (m_parents[at(number)] != number) {
      m_parents[at(number)] = m_parents[at(m_parents[at(number)])];  // halves the way for the next one
      number = m_parents[at(number)];
    }
    return number;
  }
  // The smaller root stays: the first of its part.
  void unite(int one, int other) {
    const auto [least, most] = std::minmax({rootOf(one), rootOf(other)});
    m_parents[at(most)] = least;
  }
  bool isOne(int one, int other) { return rootOf(one) == rootOf(other); }

 private:
  static std::size_t at(int number) { return static_cast<std::size_t>(number); }

  std::vector<int> m_parents;
};

class NearTree {
 public:
  NearTree(const std::vector<DirectedPlace>& places, const NearRule& rule)
      : m_places(places), m_rule(rule), m_order(places.size()), m_parts(places.size()) {
    const double chord = 2.0 * std::sin(rule.angle.value_or(0.0) * std::numbers::pi / 360.0);
    m_chord = chord;
    m_chordSquare = chord * chord;
    std::iota(m_order.begin(), m_order.end(), 0);
    m_nodes.reserve(places.size() / 2 + 1);
  }

  std::vector<int> parts() {
    connectWithin(build(0, static_cast<int>(m_order.size())));
    std::vector<int> numbers(m_places.size());
    int next = 0;
    for (int i = 0; i < static_cast<int>(numbers.size()); ++i) {
      const int root = m_parts.rootOf(i);
      numbers[at(i)] = root == i ? next++ : numbers[at(root)];
    }
    return numbers;
  }

 private:
  struct Node {
    int begin = 0;  // in the order
    int end = 0;
    Box places;
    Box directions;  // only with an angle
    int left = -1;   // a leaf has no children: it is small, or all of it is one and the same
    int right = -1;
    bool isWhole = false;  // all of it is known to be one part

    bool isLeaf() const { return left < 0; }
    bool isPoint() const { return places.isPoint() && directions.isPoint(); }
    int size() const { return end - begin; }
    // Behind those that stand for all of it in pairs with others.
    int endOfPairs() const { return isPoint() ? begin + 1 : end; }
  };

  static std::size_t at(int index) { return static_cast<std::size_t>(index); }
  Node& node(int index) { return m_nodes[at(index)]; }
  int first(int index) { return m_order[at(node(index).begin)]; }
  const DirectedPlace& placeAt(int position) const { return m_places[at(m_order[at(position)])]; }
  Vector3 directionAt(int position) const { return m_rule.angle ? placeAt(position).direction : Vector3(); }

  int build(int begin, int end) {
    Node made;
    made.begin = begin;
    made.end = end;
    made.places = {placeAt(begin).place, placeAt(begin).place};
    made.directions = {directionAt(begin), directionAt(begin)};
    for (int i = begin + 1; i < end; ++i) {
      made.places.add(placeAt(i).place);
      made.directions.add(directionAt(i));
    }
    const int index = static_cast<int>(m_nodes.size());
    m_nodes.push_back(made);
    if (made.size() > mostInLeaf && !made.isPoint()) {
      const int middle = split(made);
      const int left = build(begin, middle);
      const int right = build(middle, end);
      node(index).left = left;
      node(index).right = right;
    }
    return index;
  }

  // In halves, along the axis in which the box is the longest, as the rule measures places and directions.
  int split(const Node& whole) {
    int widest = 0;
    double most = 0.0;
    const auto compare = [&](const Box& box, double unit, int axes) {
      for (int axis = 0; axis < 3; ++axis) {
        if (const double width = (box.high[axis] - box.low[axis]) / unit; width > most) {
          most = width;
          widest = axes + axis;
        }
      }
    };
    compare(whole.places, m_rule.distance, 0);
    if (m_rule.angle) {
      compare(whole.directions, m_chord, 3);
    }
    const auto coordinate = [&](int number) {
      const DirectedPlace& place = m_places[at(number)];
      return widest < 3 ? place.place[widest] : place.direction[widest - 3];
    };
    const int middle = whole.begin + whole.size() / 2;
    std::nth_element(m_order.begin() + whole.begin, m_order.begin() + middle, m_order.begin() + whole.end,
                     [&](int one, int other) { return coordinate(one) < coordinate(other); });
    return middle;
  }

  bool areApart(int one, int other) {
    if (length(gapBetween(node(one).places, node(other).places)) > m_rule.distance) {
      return true;
    }
    if (!m_rule.angle) {
      return false;
    }
    const Vector3 gap = gapBetween(node(one).directions, node(other).directions);
    return dot(gap, gap) > m_chordSquare + chordRounding;
  }
  // All pairs; of one node also its own.
  bool areAllNear(int one, int other) {
    if (length(spanOf(node(one).places, node(other).places)) > m_rule.distance) {
      return false;
    }
    if (!m_rule.angle) {
      return true;
    }
    const Vector3 span = spanOf(node(one).directions, node(other).directions);
    const double square = dot(span, span);
    return square == 0.0 || square <= m_chordSquare - chordRounding;
  }

  bool isWhole(int index) {
    Node& asked = node(index);
    if (!asked.isWhole) {
      const auto isWithFirst = [&](int number) { return m_parts.isOne(number, first(index)); };
      asked.isWhole = asked.isLeaf() ? std::all_of(m_order.begin() + asked.begin, m_order.begin() + asked.end,
                                                   isWithFirst)
                                     : m_parts.isOne(first(asked.left), first(asked.right)) &&
                                           isWhole(asked.left) && isWhole(asked.right);
    }
    return asked.isWhole;
  }
  bool areOnePart(int one, int other) {
    return m_parts.isOne(first(one), first(other)) && isWhole(one) && isWhole(other);
  }

  void uniteAll(int index, int with) {
    Node& united = node(index);
    for (int i = united.begin; i < (united.isWhole ? united.begin + 1 : united.end); ++i) {
      m_parts.unite(m_order[at(i)], with);
    }
    united.isWhole = true;
  }

  void connectWithin(int index) {
    if (areAllNear(index, index)) {
      uniteAll(index, first(index));
    } else if (node(index).isLeaf()) {
      connectPairs(index, index);
    } else {
      const int left = node(index).left;
      const int right = node(index).right;
      connectWithin(left);
      connectWithin(right);
      connect(left, right);
    }
  }

  void connect(int one, int other) {
    if (areApart(one, other) || areOnePart(one, other)) {
      return;
    }
    if (areAllNear(one, other)) {
      uniteAll(one, first(other));
      uniteAll(other, first(one));
    } else if (node(one).isLeaf() && node(other).isLeaf()) {
      connectPairs(one, other);
    } else {
      const bool isFirstSplit =
          !node(one).isLeaf() && (node(other).isLeaf() || node(one).size() >= node(other).size());
      const auto [parent, stays] = isFirstSplit ? std::pair(one, other) : std::pair(other, one);
      const int right = node(parent).right;
      connect(node(parent).left, stays);
      connect(right, stays);
    }
  }

  void connectPairs(int one, int other) {
    for (int i = node(one).begin; i < node(one).endOfPairs(); ++i) {
      for (int j = one == other ? i + 1 : node(other).begin; j < node(other).endOfPairs(); ++j) {
        if (isEdge(placeAt(i), placeAt(j))) {
          m_parts.unite(m_order[at(i)], m_order[at(j)]);
        }
      }
    }
  }

  // As areNear; most angles are told by their chords, without an arc tangent.
  bool isEdge(const DirectedPlace& one, const DirectedPlace& other) const {
    if (m_rule.angle) {
      const Vector3 chord = one.direction - other.direction;
      const double square = dot(chord, chord);
      if (square > m_chordSquare + chordRounding) {
        return false;
      }
      if (square <= m_chordSquare - chordRounding) {
        return length(one.place - other.place) <= m_rule.distance;
      }
    }
    return areNear(one, other, m_rule);
  }

  const std::vector<DirectedPlace>& m_places;
  const NearRule& m_rule;
  double m_chord = 0.0;  // between directions that are the angle apart
  double m_chordSquare = 0.0;
  std::vector<int> m_order;  // of the places: those of a node stand together
  std::vector<Node> m_nodes;
  Union m_parts;
};

}  // namespace

// The arc tangent, which is exact at both ends, where cosine and chord are not; equal directions are apart by
// nothing, however their products are rounded.
double degreesBetween(const Vector3& one, const Vector3& other) {
  if (one == other) {
    return 0.0;
  }
  return std::atan2(length(cross(one, other)), dot(one, other)) * 180.0 / std::numbers::pi;
}

bool areNear(const DirectedPlace& one, const DirectedPlace& other, const NearRule& rule) {
  return length(one.place - other.place) <= rule.distance &&
         (!rule.angle || degreesBetween(one.direction, other.direction) <= *rule.angle);
}

std::vector<int> nearParts(const std::vector<DirectedPlace>& places, const NearRule& rule) {
  return places.empty() ? std::vector<int>() : NearTree(places, rule).parts();
}

}  // namespace host
