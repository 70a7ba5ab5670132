// What all panes of a window show. Places are mm in the head frame (x left, y up, z front).
#pragma once

#include <array>
#include <optional>

#include "host/dipoles/DipoleColors.h"
#include "host/dipoles/ViewSettings.h"
#include "host/exchange/PlaceNames.h"
#include "host/head/Head.h"
#include "host/head/Vector3.h"
#include "host/head/Volume.h"
#include "module/dipole.h"

namespace host {

struct PaneContents {
  CDipoleFace9File& dipoles;  // drawing changes members while it lasts; all are as before afterwards
  const Head& head;
  const ViewSettings& settings;
  Vector3 crosshair;  // the slices go through it
  GreyWindow window;
  // null: each dipole has its own colour, m_colorF, on slices too, so that it looks the same in all panes
  const DipoleColors* colours = nullptr;
  // Points that the user has placed for a registration to come: nasion, left ear, right ear.
  std::array<std::optional<Vector3>, 3> marks{};
  bool showCursor = true;   // the crosshair, and the ring around the current dipole
  bool showCaption = true;  // title, counts and warnings over the picture; without them see texts()
  double scale = 1.0;       // of texts and marks, see host/paint/PictureText.h
  const PlaceNames* places = nullptr;  // what places are called; null: nobody knows
};

// The colour of a dipole in all panes.
Rgb colourOf(const PaneContents& contents, const CDipoles& dipole);
// Throws std::invalid_argument when a coordinate of the crosshair is not within longestLength.
void checkCrosshair(const PaneContents& contents);

}  // namespace host
