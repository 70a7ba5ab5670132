// Files of dipoles for other programs, in one place: what they are called, and a set as the bytes of one.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/dipoles/UnknownValues.h"
#include "host/exchange/SetFrame.h"
#include "host/exchange/SetPlaces.h"
#include "module/dipole.h"

namespace host {

enum class ForeignFormat { neuromag, bdip, ctf, slicer, slicerArrows, vtp };

struct ForeignFile {
  std::string bytes;
  std::vector<std::string> told;  // UTF-8, sentences: what the file cannot hold, what had to be assumed
};

// In the frame that is given, else in the format's own: for 3D Slicer and VTK the scanner's when the head is
// known, else the head's, which is told. Throws std::runtime_error when the format does not have that frame,
// or the head is not known well enough for it; also when there are places and it has no room for them.
ForeignFile foreignFile(ForeignFormat format, const CDipoleFace9File& set, const UnknownValues& unknown,
                        const KnownHead& head, std::optional<FrameName> frame = std::nullopt,
                        const SetPlaces* places = nullptr);

}  // namespace host
