// The pixels of a slice pane: a window on the grid of SliceGeometry that reaches 300 mm to each side of the
// head's origin, so that the module's drawing, moved by whole pixels, falls into the pane's own pixels.
#pragma once

#include <optional>

#include "host/head/Vector3.h"
#include "host/paint/Image.h"
#include "host/picture/SliceGeometry.h"
#include "host/picture/SliceSampler.h"
#include "host/picture/View.h"

namespace host {

class PaneGrid {
 public:
  // The pane shows `middle` (mm, head frame) as nearly in its middle as whole pixels allow; the coordinate
  // along the view's slab axis is that of the plane. mmPerPixel: 0.1 to 5.
  PaneGrid(View view, int width, int height, double mmPerPixel, const Vector3& middle);

  [[nodiscard]] View view() const { return m_view; }
  [[nodiscard]] double position() const { return m_position; }
  [[nodiscard]] double mmPerPixel() const { return m_geometry.mmPerPixel(); }
  [[nodiscard]] const SliceGeometry& geometry() const { return m_geometry; }
  // The pixel of the geometry's grid that is the pane's first.
  [[nodiscard]] PixelPoint origin() const { return m_origin; }

  [[nodiscard]] SampleGrid samples() const;
  // The head point at the centre of a pixel, which may lie outside of the pane.
  [[nodiscard]] Vector3 headPoint(int column, int row) const;
  // The pixel that shows a place (within 100 m), by the module's own arithmetic; it may lie outside of the
  // pane.
  [[nodiscard]] PixelPoint pixelAt(const Vector3& head) const;
  [[nodiscard]] bool isInPane(const PixelPoint& pixel) const;
  // Whether the module can draw there: less than 300 mm from the origin along both axes of the picture.
  [[nodiscard]] bool holds(const Vector3& head) const { return m_geometry.holds(m_view, head); }

 private:
  View m_view;
  int m_width;
  int m_height;
  SliceGeometry m_geometry;
  double m_position;
  PixelPoint m_origin;
};

}  // namespace host
