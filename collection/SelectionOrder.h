// The order of a selection sort, found without its quadratic time.
//
// The sort: pass i takes slot i's key, rounded to the type Minimum, as the running minimum and slot i as the
// choice; it scans the slots from i on, and each whose exact key lies strictly below the running minimum
// becomes the choice, its rounded key the running minimum. Then slots i and choice are exchanged.
//
// What a pass chooses. Let F be the smallest rounded key of the slots from i on.
//  - Rounding keeps order, so a key below the running minimum rounds to no more than it: the minimum never
//    rises, and it ends at F. (A slot that rounds to F either lowers the minimum to F, or its key is not
//    below a minimum that then is F already.)
//  - A key strictly below F is below every running minimum, so each such slot becomes the choice when it is
//    met, and the minimum is F from there on. If there are any, the last one is chosen.
//  - If there is none, the first slot that rounds to F lowers the minimum to F, and no later key is below
//    it: it is chosen.
//  - A NaN is never below anything: in slot i it stays the choice, elsewhere it is never chosen. Zeros of
//    both signs are equal; infinities need no rule of their own.
// So a pass needs F, the last slot below F and the first slot that rounds to F among the remaining slots: a
// binary tree over the slots keeps the three for every range, and each pass changes two of its leaves.
#pragma once

#include <cmath>
#include <cstddef>
#include <type_traits>
#include <vector>

template <typename Key, typename Minimum>
class SelectionOrder {
 public:
  explicit SelectionOrder(int slots) {
    while (m_leaves < slots) {
      m_leaves *= 2;
    }
    m_nodes.resize(static_cast<std::size_t>(m_leaves) * 2);
  }

  // Gives a slot its key. Slots without one, like those with NaN, are never chosen by another slot's pass.
  void setKey(int slot, Key key) {
    const auto rounded = static_cast<Minimum>(key);
    if (isNumber(rounded)) {
      leaf(slot) = {rounded, slot, key < static_cast<Key>(rounded) ? slot : none};
    }
  }

  // To be called once when every key is set.
  void build() {
    for (int node = m_leaves - 1; node > 0; --node) {
      join(node);
    }
  }

  // The slot that the pass of `slot` exchanges with it: slots must be asked for in order, from 0 on. Keys
  // follow the exchange.
  int takeNext(int slot) {
    const Node own = leaf(slot);
    const Node& best = m_nodes[1];
    const int choice = own.first == none ? slot : best.lastBelow != none ? best.lastBelow : best.first;
    leaf(slot) = {};
    update(slot);
    if (choice != slot) {
      leaf(choice) = {own.minimum, choice, own.lastBelow != none ? choice : none};
      update(choice);
    }
    return choice;
  }

 private:
  static constexpr int none = -1;

  struct Node {
    Minimum minimum = {};  // smallest rounded key of the range; only when there is a slot
    int first = none;      // the first slot that rounds to it
    int lastBelow = none;  // the last slot whose exact key is below it
  };

  static bool isNumber(Minimum value) {
    if constexpr (std::is_floating_point_v<Minimum>) {
      return !std::isnan(value);
    } else {
      return true;
    }
  }

  Node& leaf(int slot) {
    return m_nodes[static_cast<std::size_t>(m_leaves) + static_cast<std::size_t>(slot)];
  }

  void join(int node) {
    const Node& left = m_nodes[static_cast<std::size_t>(node) * 2];
    const Node& right = m_nodes[static_cast<std::size_t>(node) * 2 + 1];
    Node& joined = m_nodes[static_cast<std::size_t>(node)];
    if (right.first == none || (left.first != none && left.minimum < right.minimum)) {
      joined = left;
    } else if (left.first == none || right.minimum < left.minimum) {
      joined = right;
    } else {
      joined = {left.minimum, left.first, right.lastBelow != none ? right.lastBelow : left.lastBelow};
    }
  }

  void update(int slot) {
    for (int node = (m_leaves + slot) / 2; node > 0; node /= 2) {
      join(node);
    }
  }

  int m_leaves = 1;           // a power of two, at least the number of slots
  std::vector<Node> m_nodes;  // the root is 1, the children of a node are twice it and the next
};
