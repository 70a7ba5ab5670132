// One 3D picture of a head and its dipoles, for a surgeon: it says from where it is seen, which side is
// which, how long the scale bar is, and which dipoles it shows and which not.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/head/HeadFrame.h"
#include "host/head/Volume.h"
#include "host/paint/Image.h"
#include "host/paint/SceneCamera.h"
#include "host/picture/ScenePainter.h"
#include "host/picture/SlicePicture.h"
#include "module/dipole.h"

namespace host {

// The head around the dipoles.
struct SceneHead {
  const Volume& volume;
  const HeadFrame& frame;
};

struct ScenePictureOptions {
  ViewAngles angles;
  double mmPerPixel = 0.5;           // 0.1 to 5
  std::vector<SliceRequest> slices;  // none: one for each view, just behind dipoles and arrows
  SceneStyle style;
  std::string title;      // UTF-8, such as the dipole file's name
  std::string patientId;  // UTF-8; left out when empty
};

struct SceneReport {
  int total = 0;        // dipoles in the set
  int drawn = 0;        // dipoles with a ball, some of which may be behind others
  int switchedOff = 0;  // see DipoleScene
  int nowhere = 0;      // see DipoleScene
  int outside = 0;      // of those drawn: farther than 300 mm from the middle, outside of the picture
  int behindSlice = 0;  // of those drawn: hidden by a slice
};

// Such as "dipoles: 118 of 120".
[[nodiscard]] std::string countText(const SceneReport& report);
// What a reader must know besides, one sentence each; empty when every dipole of the set is drawn in the
// open.
[[nodiscard]] std::vector<std::string> warningTexts(const SceneReport& report);

struct ScenePicture {
  Image image;
  SceneReport report;
};

// The picture is as large as what it shows: head, head sphere, dipoles, fiducials. Throws
// std::invalid_argument when a number is out of its range.
[[nodiscard]] ScenePicture drawScene(const CDipoleFace3On3DView& dipoles,
                                     const std::optional<SceneHead>& head,
                                     const ScenePictureOptions& options);

}  // namespace host
