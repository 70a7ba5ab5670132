// Which dipoles a pane shows and which not.
#pragma once

#include <string>
#include <vector>

#include "host/dipoles/DipoleVisibility.h"
#include "host/picture/View.h"

namespace host {

// On slices total = onSlice + away + withheld + outside + switchedOff + filtered + nowhere + unregistered.
struct SliceAccount : VisibleCount {
  View view = View::axial;
  double position = 0.0;  // mm along the view's slab axis
  int onSlice = 0;        // within the tolerance; drawn where the pane reaches
  int offPane = 0;        // of those on the slice: beyond the borders of the pane
  int away = 0;           // visible, but farther from the slice than the tolerance
  int withheld = 0;       // within the tolerance, but not shown by the module's rule for axial slices
  int outside = 0;        // near the slice, but farther from the origin than headReach: not drawn
  int unregistered = 0;   // visible, but the head is not registered: none is drawn
  bool isRegistered = true;
};

// In 3D every visible dipole is drawn.
struct SceneAccount : VisibleCount {
  int offPane = 0;      // beyond the borders of the pane
  int behindSlice = 0;  // seen through a slice before them
};

// Such as "dipoles: 3 of 120 on this slice".
std::string countText(const SliceAccount& account);
// Such as "dipoles: 118 of 120".
std::string countText(const SceneAccount& account);
// What was chosen and hides dipoles, such as "12 switched off, 3 filtered out"; empty when nothing does.
std::string choiceText(const VisibleCount& count);
// "2 dipoles behind a slice, seen through it"; empty when there are none.
std::string behindText(const SceneAccount& account);
// What a reader must know besides, one sentence each.
std::vector<std::string> warningTexts(const SliceAccount& account);
std::vector<std::string> warningTexts(const SceneAccount& account);

}  // namespace host
