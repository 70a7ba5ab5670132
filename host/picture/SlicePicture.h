// One picture of one to three slices through a head, with the module's dipoles over them: for a surgeon, so
// every view says which side is which, where it lies, how long 50 mm are, and which dipoles it shows and
// which not.
#pragma once

#include <string>
#include <vector>

#include "host/head/HeadFrame.h"
#include "host/head/Volume.h"
#include "host/paint/Image.h"
#include "host/picture/DipoleOverlay.h"
#include "host/picture/View.h"
#include "module/dipole.h"

namespace host {

struct SliceRequest {
  View view = View::axial;
  double position = 0.0;  // mm in the head frame along the view's slab axis: y axial, z coronal, x sagittal
};

struct SlicePictureOptions {
  double mmPerPixel = 0.5;  // 0.1 to 5
  double overlapMm = 5.0;   // see drawDipoles
  std::string title;        // UTF-8, such as the dipole file's name
  std::string patientId;    // UTF-8; left out when empty
};

struct SlicePicture {
  Image image;
  std::vector<OverlayReport> views;  // one for each request, in its order
};

// Draws the slices side by side at one scale. The side of the squares is each dipole's m_size in pixels; give
// all the same, so that they are centred on their dipoles. A slice's position is moved to the nearest
// multiple of mmPerPixel; the report says where it lies. The module's volume geometry (setDimensionXYZ,
// setSpaceXYZ) is set for the pictures and stays so. Throws std::invalid_argument when there is no request or
// a number is out of its range, and what drawDipoles throws.
[[nodiscard]] SlicePicture drawSlices(CDipoleFace8Import01_CTF& dipoles, const Volume& volume,
                                      const HeadFrame& frame, const std::vector<SliceRequest>& requests,
                                      const SlicePictureOptions& options);

}  // namespace host
