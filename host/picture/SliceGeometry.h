// The grid that the slice pictures and the module's dipole overlay share. It is centred on the head's origin
// (mm; x left, y up, z front) and has cells of the same size along all three axes. Along an axis of n cells
// of P mm, cell i runs from i * P - n * P / 2 to one P further; slice k is centred on (k - n / 2) * P. The
// number of cells is even, so that both agree with what the module works out from setDimensionXYZ and
// setSpaceXYZ when it draws with zoom 1.
#pragma once

#include <array>

#include "host/head/Vector3.h"
#include "host/picture/View.h"

namespace host {

// From and to in mm, both ends included.
struct Slab {
  double from = 0.0;
  double to = 0.0;

  [[nodiscard]] bool holds(double mm) const { return mm >= from && mm <= to; }
};

class SliceGeometry {
 public:
  // mmPerPixel 0.1 to 5. reach: the farthest mm from the origin along each axis that the grid is to hold; it
  // is cut to 300 mm. Throws std::invalid_argument for another mmPerPixel or a reach that is not a number.
  SliceGeometry(double mmPerPixel, const Vector3& reach);

  [[nodiscard]] double mmPerPixel() const { return m_spacing; }
  [[nodiscard]] int pixels(int axis) const { return m_pixels[static_cast<std::size_t>(axis)]; }
  [[nodiscard]] int columns(View view) const { return pixels(axesOf(view).column); }
  [[nodiscard]] int rows(View view) const { return pixels(axesOf(view).row); }
  // mm from the origin to either end of the axis.
  [[nodiscard]] double halfExtent(int axis) const { return pixels(axis) * m_spacing * 0.5; }

  // The slice whose centre is nearest to a position in mm along the view's slab axis; it may lie outside of
  // the grid. Throws std::invalid_argument for a position beyond 1000 mm or not a number.
  [[nodiscard]] int sliceAt(View view, double mm) const;
  [[nodiscard]] double slicePosition(View view, int slice) const;
  // Where the module looks for the dipoles of one slice. Coronal and sagittal: half a cell to either side of
  // the slice. Axial: everything from the origin plane up to the slice's upper face, and nothing when the
  // slice lies below the origin.
  [[nodiscard]] Slab slab(View view, int slice) const;

  // The head point at the centre of a pixel of the slice at that position.
  [[nodiscard]] Vector3 headPoint(View view, double position, int column, int row) const;
  // The pixel where the module begins a dipole's square. A point beyond the grid gets the pixel at its
  // border, as in the module, which may lie one beyond the last.
  struct Pixel {
    int column = 0;
    int row = 0;
  };
  [[nodiscard]] Pixel pixelOf(View view, const Vector3& head) const;
  // Whether the grid holds the point in the view's plane; else its dipole is drawn at the border, not in its
  // place.
  [[nodiscard]] bool holds(View view, const Vector3& head) const;

 private:
  double m_spacing;
  std::array<int, 3> m_pixels{};
};

}  // namespace host
