// Layer 2 of the dipole record: its glyph on a slice of the host's volume.
//
// The glyph is a filled square in the dipole's colour. The volume is centred on the origin of the head frame
// (mm, x to the left ear, y up, z to the nose) and spans plus and minus a half extent along each axis.
#pragma once

#include <afxwin.h>

#include "record/Dipoles.h"

class AFX_EXT_CLASS CDipoles3Display2D : public CDipoles {
 public:
  CDipoles3Display2D();
  CDipoles3Display2D(const CDipoles3Display2D&);
  CDipoles3Display2D& operator=(const CDipoles3Display2D&);
  ~CDipoles3Display2D() override;

  // Each fills a square of m_size pixels when the dipole lies in the slab and m_display is 1; a coordinate
  // beyond the volume is drawn at the border of the image, one that is not a number nowhere. Returns 1 in
  // every case.
  //   slabMin, slabMax   the slab in mm along the axis that the view slices, both ends inclusive
  //   zoom               pixels per voxel: 1, or places are lost, see below
  //   half1, spacing1    half extent (mm) and voxel spacing (mm) of the first in-plane axis
  //   half2, spacing2    the same for the second; the pairs come in the order x, y, z of the axes
  //
  //   view      slices along  right on the picture  up on the picture  pair 1  pair 2
  //   axial     y             x                     z                  x       z
  //   coronal   z             x                     y                  x       y
  //   sagittal  x             z                     y                  y       z
  //
  // The pixel is cut to 0 .. the image's extent (m_dimX, m_dimY, m_dimZ), which the collection sets to the
  // volume's voxels: the zoom does not enlarge it, and hosts rely on that. So zoom 1 alone holds the volume.
  // With zoom 2 whatever lies right of or below the middle of the picture (x, z > 0 or y, z < 0: half of the
  // dipoles, all those of the patient's left) stands on its middle lines; with zoom 3 these lines stand for
  // -H/3, two thirds into the other half, and dipoles of the left appear there. A larger picture takes a
  // finer grid: more and smaller voxels.
  //
  // The square hangs to the right of and below the dipole's pixel: hosts place it by their viewport origin.
  int drawDipoleAxial(CDC* dc, double slabMin, double slabMax, int zoom, double half1, double spacing1,
                      double half2, double spacing2);
  int drawDipoleCoronal(CDC* dc, double slabMin, double slabMax, int zoom, double half1, double spacing1,
                        double half2, double spacing2);
  int drawDipoleSagittal(CDC* dc, double slabMin, double slabMax, int zoom, double half1, double spacing1,
                         double half2, double spacing2);

  // Sets the extents of the slice images, pixels. Returns 1.
  int setDimensionXYZ(int x, int y, int z);
};
