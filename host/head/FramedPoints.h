// Fiducial points of a head in any of the frames that files give them in.
#pragma once

#include <optional>

#include "host/head/HeadFrame.h"
#include "host/head/MriSpace.h"

namespace host {

enum class PointFrame {
  scanner,
  surface,  // that of the surfaces made from an MRI (host/head/HeadPlacement.h)
  head      // Neuromag's (host/head/NeuromagFrame.h)
};

// mm. Distances between them are the same in all.
struct FramedPoints {
  Fiducials points;
  PointFrame frame = PointFrame::scanner;
  std::optional<MriSpace> space = std::nullopt;  // what the file calls the scanner's mm; most say nothing
};

}  // namespace host
