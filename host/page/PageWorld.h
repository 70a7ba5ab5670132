// The frame in which a page has all places: that of the MRI, or without one the head frame with its axes
// turned to right, anterior, superior.
#pragma once

#include <string>
#include <vector>

#include "host/exchange/Json.h"
#include "host/exchange/SetFrame.h"
#include "host/page/PageSource.h"

namespace host {

struct PageFrame {
  std::string name;   // "host", "ctf", "neuromag", "scanner", "mri", "mni"
  std::string title;  // for people: "Head", "MNI152"
  SetFrame frame;
};

struct PageWorld {
  explicit PageWorld(const PageSource& source);

  Affine fromHost;
  bool hasHead = false;           // places are mm of an MRI
  Json json;                      // WorldData
  std::vector<PageFrame> frames;  // that are known, the host's own first

  // FrameData.
  Json framesJson() const;
};

// Three numbers with the digits of single precision: those of a place in mm tell 0.0001 mm.
Json jsonVector(const Vector3& vector);
// One of them.
double singleDigits(double value);

}  // namespace host
