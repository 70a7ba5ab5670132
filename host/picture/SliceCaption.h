// The words of a slice picture.
#pragma once

#include <string>
#include <vector>

#include "host/picture/DipoleOverlay.h"
#include "host/picture/View.h"

namespace host {

// The letters at the edges of a view: R and L for the patient's right and left, A and P for front (anterior)
// and back (posterior), S and I for up (superior) and down (inferior).
struct SideLetters {
  char left;
  char right;
  char top;
  char bottom;
};
[[nodiscard]] SideLetters sideLetters(View view);

// mm with one decimal, or two where the second is not 0; never "-0.0".
[[nodiscard]] std::string formatMm(double mm);
// Such as "y = 58.0 mm (up)"; the word says on which side of the origin the slice lies.
[[nodiscard]] std::string positionText(View view, double position);
// Which dipoles are seen, such as "dipoles z 6.75 .. 17.25 mm: 2 of 2".
[[nodiscard]] std::string countText(const OverlayReport& report);
// What a reader must know besides, one sentence each; empty when all dipoles near the slice are seen in their
// places.
[[nodiscard]] std::vector<std::string> warningTexts(const OverlayReport& report);

}  // namespace host
