// Where the points and frames of others lie in an MRI.
//
// The surface frame is that in which FreeSurfer keeps surfaces, "surface RAS": for a conformed MRI the
// scanner's directions around the middle of the volume, for any other the directions that the volume's axes
// would have if it were conformed. MNE calls it the MRI's frame.
#pragma once

#include <optional>

#include "host/head/Affine.h"
#include "host/head/FramedPoints.h"
#include "host/head/Head.h"

namespace host {

// From the surface frame of an MRI to its scanner mm. An MGH or MGZ file has one, unless it is stored as a
// mirror image of what surfaces are made from. So has a NIfTI file whose voxels are those of a conformed MRI:
// a cube of cubes, stored to the left, down and to the front. Throws std::invalid_argument when the head has
// none: what surfaces were made from then cannot be known.
Affine surfaceToScanner(const Head& head);

// Throws std::invalid_argument with the cause: surfaceToScanner's, points in the head frame, which a
// transform alone can place, or points around the middle of a volume for an MRI that has other millimetres.
Fiducials inScanner(const FramedPoints& points, const Head& head);

struct HeadPlacement {
  Fiducials points;             // scanner mm; their Neuromag frame is exactly that of the transform
  std::optional<double> apart;  // mm: how far the points that are known lie from these, at most
  bool arePointsKnown() const { return apart.has_value(); }
};

// Lays the Neuromag head frame into the MRI by a transform (fifHeadToSurface). The transform says where its
// axes run; where on them the ears and the nasion are, only points tell: each is taken at the place on its
// axis that is nearest to what is known. Without any they are made up, symmetric to the nasion: the frame of
// Neuromag's files is right then, that of others is not. Throws what inScanner throws.
HeadPlacement placedBy(const Affine& headToSurface, const std::optional<FramedPoints>& known,
                       const Head& head);

}  // namespace host
