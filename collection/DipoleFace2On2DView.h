// Layer 3 of the dipole collection: the overlay on one slice of the host's volume.
//
// The volume is centred on the origin of the head frame (mm, x left, y up, z front) and is m_dimension voxels
// of m_space mm large. The host sets both when it loads a volume, before it draws.
#pragma once

#include "collection/DipoleFace1Process.h"

class AFX_EXT_CLASS CDipoleFace2On2DView : public CDipoleFace1Process {
 public:
  CDipoleFace2On2DView();  // 128 voxels of 3.0 mm along each axis
  CDipoleFace2On2DView(const CDipoleFace2On2DView&);
  CDipoleFace2On2DView& operator=(const CDipoleFace2On2DView&);
  ~CDipoleFace2On2DView() override;

  int setDimensionXYZ(int x, int y, int z);       // voxels; returns 1
  int setSpaceXYZ(double x, double y, double z);  // mm per voxel; returns 1

  // Let every dipole draw its glyph (record/Dipoles3Display2D.h tells where) on a slice of the volume, given
  // by its voxel index along y (axial), z (coronal) or x (sagittal). The coronal and the sagittal slab reach
  // half a voxel to both sides of the slice. The axial slab deliberately reaches from the origin plane, y =
  // 0, to the far edge of the slice, so slices below the origin show nothing; hosts rely on it. The switches
  // below are not consulted. Return 1.
  //
  // mode: pixels per voxel, and 1 is the only one that keeps the sides. A glyph's pixel ends at the volume's
  // voxels: with 2 every dipole of the patient's left lands on the midline, with 3 in the right half. For a
  // larger picture set more and smaller voxels; they need not be those of the MRI.
  int drawDipoleAxial(CDC* dc, int slice, int mode);
  int drawDipoleCoronal(CDC* dc, int slice, int mode);
  int drawDipoleSagittal(CDC* dc, int slice, int mode);

  // Switches for the host and the 3D view. The overlap's setter deliberately returns the previous value, the
  // other setters 1; a toggle makes 0 to 1, any other value to 0, and returns the new value.
  int getShowDipole2DOverlap() const;
  int setShowDipole2DOverlap(int show);
  int toggleShowDipole2DOverlap();
  int getShowDipoleLatencySelected() const;
  int setShowDipoleLatencySelected(int show);
  int toggleShowDipoleLatencySelected();
  int isShowDipoleArray() const;
  int setShowDipoleArray(int show);
  int toggleShowDipoleArray();
};
