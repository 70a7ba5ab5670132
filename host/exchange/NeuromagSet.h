// Dipoles of Neuromag's files as a set of the module, and back: between the two head frames, from goodness of
// fit to fit error, and what of the one the other has no room for.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/audit/Finding.h"
#include "host/dipoles/UnknownValues.h"
#include "host/exchange/Losses.h"
#include "host/exchange/NeuromagText.h"
#include "host/exchange/SetTable.h"
#include "host/head/HeadFrame.h"
#include "module/dipole.h"

namespace host {

// What is known of the head of dipoles that are to be carried from the Neuromag head frame.
struct CarryingHead {
  CarryingHead() = default;
  CarryingHead(const std::optional<Fiducials>& known, bool isInMri = false)
      : points(known), isPlaced(isInMri) {}
  CarryingHead(const Fiducials& known) : points(known) {}

  std::optional<Fiducials> points;  // in any frame that HeadFrame takes
  bool isPlaced = false;            // without points: a transform tells where the frame lies in the MRI
};

struct NeuromagImport {
  TableSet set;                   // locations mm in the head frame (x left, y up, z front), moments nAm
  std::vector<Finding> findings;  // about slots of the set, the file named `name`
};

// Without points of the head the ears are taken as symmetric, which is a finding. The fit error is 100 minus
// the goodness of fit. The direction is the moment over its amplitude, of another length than 1 when the
// file rounds them so; a moment that contradicts its amplitude gives the direction alone. The name of the
// file becomes the label of each dipole. Throws what an allocation throws, and TableFault when there are more
// dipoles than a set holds.
NeuromagImport importNeuromag(const NeuromagDipoles& file, const std::string& name, const CarryingHead& head);

// What is known of a file that is written in the Neuromag head frame.
struct NeuromagExport {
  NeuromagDipoles file;
  Losses losses;
};

// The way back, for text or, when it `isBinary`, for records. An import that nobody has changed comes back to
// the last digit. A label that all dipoles have is the name of the file. What is unknown is nan, but for a
// moment in text: MNE divides by it, so it is 0 beside a direction of length 1, which importNeuromag
// understands. An orientation of another length than 1 gets it.
NeuromagExport exportNeuromag(const CDipoleFace& set, const UnknownValues& unknown,
                              const std::optional<Fiducials>& points, bool isBinary);

}  // namespace host
