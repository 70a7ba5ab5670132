// The names of dipoles beside them.
#pragma once

#include <string>
#include <vector>

#include "host/paint/Image.h"
#include "host/panes/PaneMarks.h"
#include "host/picture/PictureMarks.h"
#include "module/dipole.h"

namespace host {

struct PaneLabel {
  PixelPoint at;
  std::string text;
  Rgb colour;
};

// The dipole's label, UTF-8; one that is long ends in "..."; "#7", its number, when it has none.
std::string labelOf(const CDipoleszq& dipole);

// Each beside its dipole, whose mark reaches `around` pixels to each side, where no mark and no other label
// is hidden and no letter of a side is near, which could be read as part of it. Returns how many found no
// room and are left out.
int drawLabels(Image& image, const std::vector<PaneLabel>& labels, int around, const SideLetters& letters,
               double scale = 1.0);
// Says so, when there are any, in the texts of the pane.
void noteLabelsLeftOut(PaneTexts& texts, int labels);

}  // namespace host
