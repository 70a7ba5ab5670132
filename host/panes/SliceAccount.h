// Which dipoles a slice pane shows and which not.
#pragma once

#include <string>
#include <vector>

#include "host/picture/View.h"

namespace host {

// total = onSlice + away + outside + switchedOff + filtered + nowhere + unregistered.
struct SliceAccount {
  View view = View::axial;
  double position = 0.0;  // mm along the view's slab axis
  int total = 0;          // dipoles in the set
  int onSlice = 0;        // within the tolerance; drawn where the pane reaches
  int offPane = 0;        // of those on the slice: beyond the borders of the pane
  int away = 0;           // visible, but farther from the slice than the tolerance
  int outside = 0;        // near the slice, but more than 300 mm from the origin: not drawn
  int switchedOff = 0;    // see Visibility
  int filtered = 0;
  int nowhere = 0;
  int unregistered = 0;  // visible, but the head is not registered: none is drawn
  bool isRegistered = true;
};

// Such as "dipoles: 3 of 120 on this slice".
[[nodiscard]] std::string countText(const SliceAccount& account);
// What was chosen and hides dipoles, such as "12 switched off, 3 filtered out"; empty when nothing does.
[[nodiscard]] std::string choiceText(const SliceAccount& account);
// What a reader must know besides, one sentence each.
[[nodiscard]] std::vector<std::string> warningTexts(const SliceAccount& account);

}  // namespace host
