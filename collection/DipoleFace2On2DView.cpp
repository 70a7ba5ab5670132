#include "collection/DipoleFace2On2DView.h"

namespace {

// m_dimension holds y, x, z in this order.
enum DimensionIndex { dimensionY = 0, dimensionX = 1, dimensionZ = 2 };

// One axis of the volume.
struct VolumeAxis {
  int voxels;
  double spacing;  // mm

  double half() const { return static_cast<double>(voxels) * spacing * 0.5; }  // mm

  // Centre of a slice along this axis, mm. The index of the middle voxel is truncated.
  double sliceCentre(int slice) const {
    const int middle = voxels / 2;
    return static_cast<double>(LONGLONG{slice} - middle) * spacing;
  }
};

struct Slab {
  double min;  // mm
  double max;  // mm
};

Slab slabAround(const VolumeAxis& axis, int slice) {
  const double centre = axis.sliceCentre(slice);
  return {centre - axis.spacing * 0.5, centre + axis.spacing * 0.5};
}

// From the origin plane to the far edge of the slice: the axial view's slab, kept on purpose (see the
// header).
Slab slabFromOrigin(const VolumeAxis& axis, int slice) {
  return {0.0, axis.sliceCentre(slice) + axis.spacing * 0.5};
}

struct Volume {
  VolumeAxis x;
  VolumeAxis y;
  VolumeAxis z;

  explicit Volume(const CDipoleFace& face)
      : x{face.m_dimension[dimensionX], face.m_space[0]},
        y{face.m_dimension[dimensionY], face.m_space[1]},
        z{face.m_dimension[dimensionZ], face.m_space[2]} {}
};

using GlyphOperation = int (CDipoles3Display2D::*)(CDC*, double, double, int, double, double, double, double);

// Lets every dipole draw itself with the same slab and the same pair of in-plane axes.
int drawGlyphs(const CDipoleFace& face, GlyphOperation draw, CDC* dc, int mode, const Volume& volume,
               const Slab& slab, const VolumeAxis& first, const VolumeAxis& second) {
  const double half1 = first.half();
  const double half2 = second.half();
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    if (CDipoleszq* dipole = face.m_dipoles[slot]) {
      dipole->m_dimX = volume.x.voxels;
      dipole->m_dimY = volume.y.voxels;
      dipole->m_dimZ = volume.z.voxels;
      (dipole->*draw)(dc, slab.min, slab.max, mode, half1, first.spacing, half2, second.spacing);
    }
  }
  return 1;
}

int toggle(int& flag) {
  flag = flag == 0 ? 1 : 0;
  return flag;
}

}  // namespace

CDipoleFace2On2DView::CDipoleFace2On2DView() {
  setDimensionXYZ(128, 128, 128);
  setSpaceXYZ(3.0, 3.0, 3.0);
}

CDipoleFace2On2DView::CDipoleFace2On2DView(const CDipoleFace2On2DView&) = default;
CDipoleFace2On2DView& CDipoleFace2On2DView::operator=(const CDipoleFace2On2DView&) = default;
CDipoleFace2On2DView::~CDipoleFace2On2DView() = default;

int CDipoleFace2On2DView::setDimensionXYZ(int x, int y, int z) {
  m_dimension[dimensionX] = x;
  m_dimension[dimensionY] = y;
  m_dimension[dimensionZ] = z;
  return 1;
}

int CDipoleFace2On2DView::setSpaceXYZ(double x, double y, double z) {
  m_space[0] = x;
  m_space[1] = y;
  m_space[2] = z;
  return 1;
}

int CDipoleFace2On2DView::drawDipoleAxial(CDC* dc, int slice, int mode) {
  const Volume volume(*this);
  return drawGlyphs(*this, &CDipoles3Display2D::drawDipoleAxial, dc, mode, volume,
                    slabFromOrigin(volume.y, slice), volume.x, volume.z);
}

int CDipoleFace2On2DView::drawDipoleCoronal(CDC* dc, int slice, int mode) {
  const Volume volume(*this);
  return drawGlyphs(*this, &CDipoles3Display2D::drawDipoleCoronal, dc, mode, volume,
                    slabAround(volume.z, slice), volume.x, volume.y);
}

int CDipoleFace2On2DView::drawDipoleSagittal(CDC* dc, int slice, int mode) {
  const Volume volume(*this);
  return drawGlyphs(*this, &CDipoles3Display2D::drawDipoleSagittal, dc, mode, volume,
                    slabAround(volume.x, slice), volume.y, volume.z);
}

int CDipoleFace2On2DView::getShowDipole2DOverlap() const {
  return m_showDipole2DOverlap;
}

int CDipoleFace2On2DView::setShowDipole2DOverlap(int show) {
  const int previous = m_showDipole2DOverlap;
  m_showDipole2DOverlap = show;
  return previous;  // on purpose, unlike the other setters
}

int CDipoleFace2On2DView::toggleShowDipole2DOverlap() {
  return toggle(m_showDipole2DOverlap);
}

int CDipoleFace2On2DView::getShowDipoleLatencySelected() const {
  return m_showDipoleLatencySelected;
}

int CDipoleFace2On2DView::setShowDipoleLatencySelected(int show) {
  m_showDipoleLatencySelected = show;
  return 1;
}

int CDipoleFace2On2DView::toggleShowDipoleLatencySelected() {
  return toggle(m_showDipoleLatencySelected);
}

int CDipoleFace2On2DView::isShowDipoleArray() const {
  return m_showDipoleArray;
}

int CDipoleFace2On2DView::setShowDipoleArray(int show) {
  m_showDipoleArray = show;
  return 1;
}

int CDipoleFace2On2DView::toggleShowDipoleArray() {
  return toggle(m_showDipoleArray);
}
