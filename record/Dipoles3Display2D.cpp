#include "record/Dipoles3Display2D.h"

#include <cmath>

#include "record/Truncation.h"

namespace {

// One axis of the picture: the dipole's coordinate, the volume's extent and the image's.
struct PictureAxis {
  double coordinate;  // mm
  double half;        // half extent of the volume, mm
  double spacing;     // mm per voxel
  int extent;         // pixels
};

bool isInSlab(double coordinate, double slabMin, double slabMax) {
  return slabMin <= coordinate && coordinate <= slabMax;  // false for NaN
}

// Upper bound first, then the lower one, so that a negative half extent ends at its negative.
double clampToVolume(const PictureAxis& axis) {
  double coordinate = axis.coordinate;
  if (coordinate > axis.half) {
    coordinate = axis.half;
  }
  if (coordinate < -axis.half) {
    coordinate = -axis.half;
  }
  return coordinate;
}

// The upper bound is the extent itself, not the extent minus one: the host's contract.
int clampToImage(double pixel, int extent) {
  if (pixel < static_cast<double>(extent)) {
    return pixel > 0.0 ? static_cast<int>(pixel) : 0;
  }
  return extent > 0 ? extent : 0;
}

void drawGlyph(CDC* dc, const CDipoles& dipole, int zoom, const PictureAxis& right, const PictureAxis& up) {
  if (dipole.m_display != 1) {
    return;
  }
  const double px = (clampToVolume(right) + right.half) / right.spacing * zoom;
  const double py = (up.half - clampToVolume(up)) / up.spacing * zoom;
  if (std::isnan(px) || std::isnan(py)) {
    return;  // nobody knows where such a dipole lies: no place on the picture is right for it
  }
  const int size = truncateToInt(dipole.m_size);
  dc->FillSolidRect(clampToImage(px, right.extent), clampToImage(py, up.extent), size, size, dipole.m_color);
}

}  // namespace

CDipoles3Display2D::CDipoles3Display2D() {
  setDimensionXYZ(128, 128, 128);
}

CDipoles3Display2D::CDipoles3Display2D(const CDipoles3Display2D&) = default;
CDipoles3Display2D& CDipoles3Display2D::operator=(const CDipoles3Display2D&) = default;
CDipoles3Display2D::~CDipoles3Display2D() = default;

int CDipoles3Display2D::setDimensionXYZ(int x, int y, int z) {
  m_dimX = x;
  m_dimY = y;
  m_dimZ = z;
  return 1;
}

int CDipoles3Display2D::drawDipoleAxial(CDC* dc, double slabMin, double slabMax, int zoom, double half1,
                                        double spacing1, double half2, double spacing2) {
  if (isInSlab(m_location[1], slabMin, slabMax)) {
    drawGlyph(dc, *this, zoom, {m_location[0], half1, spacing1, m_dimX},
              {m_location[2], half2, spacing2, m_dimZ});
  }
  return 1;
}

int CDipoles3Display2D::drawDipoleCoronal(CDC* dc, double slabMin, double slabMax, int zoom, double half1,
                                          double spacing1, double half2, double spacing2) {
  if (isInSlab(m_location[2], slabMin, slabMax)) {
    drawGlyph(dc, *this, zoom, {m_location[0], half1, spacing1, m_dimX},
              {m_location[1], half2, spacing2, m_dimY});
  }
  return 1;
}

int CDipoles3Display2D::drawDipoleSagittal(CDC* dc, double slabMin, double slabMax, int zoom, double half1,
                                           double spacing1, double half2, double spacing2) {
  if (isInSlab(m_location[0], slabMin, slabMax)) {
    drawGlyph(dc, *this, zoom, {m_location[2], half2, spacing2, m_dimZ},
              {m_location[1], half1, spacing1, m_dimY});
  }
  return 1;
}
