// The pixels of a slice pane: a window on a grid that reaches headReach to each side of the head's origin,
// which is the module's volume too, so that its drawing, moved by whole pixels, falls into the pane's own.
#pragma once

#include "host/head/Vector3.h"
#include "host/paint/Image.h"
#include "host/picture/SliceSampler.h"
#include "host/picture/View.h"

namespace host {

class PaneGrid {
 public:
  // The pane shows `middle` (mm, head frame) as nearly in its middle as whole pixels allow; the coordinate
  // along the view's slab axis is that of the plane. Throws std::invalid_argument for pixels that are not
  // from finestPixel to coarsestPixel.
  PaneGrid(View view, int width, int height, double mmPerPixel, const Vector3& middle);

  View view() const { return m_view; }
  double position() const { return m_position; }
  double mmPerPixel() const { return m_mmPerPixel; }
  // Cells of the grid along each axis, an even number, and mm from the origin to its ends.
  int cells() const { return m_cells; }
  double halfExtent() const { return m_cells * m_mmPerPixel * 0.5; }
  // The pixel of the grid that is the pane's first.
  PixelPoint origin() const { return m_origin; }

  SampleGrid samples() const;
  // The head point at the centre of a pixel, which may lie outside of the pane.
  Vector3 headPoint(int column, int row) const;
  // The pixel that shows a place (within 100 m), by the module's own arithmetic; it may lie outside of the
  // pane.
  PixelPoint pixelAt(const Vector3& head) const;
  bool isInPane(const PixelPoint& pixel) const;
  // Whether the module can draw there: less than headReach from the origin along both axes of the picture.
  bool holds(const Vector3& head) const;

 private:
  View m_view;
  int m_width;
  int m_height;
  double m_mmPerPixel;
  int m_cells;
  double m_position;
  PixelPoint m_origin;
};

}  // namespace host
