// One slice of the MRI as a plane in a 3D picture: the grey values of the head, without the air around it. mm
// in the head frame (x left, y up, z front).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/head/HeadBox.h"
#include "host/head/HeadFrame.h"
#include "host/head/Volume.h"
#include "host/paint/DepthPicture.h"
#include "host/paint/SceneCamera.h"
#include "host/picture/View.h"

namespace host {

class SlicePlane {
 public:
  // Samples the volume once, a texel per mm inside of the box. What is air goes by the volume's own grey
  // window, whatever window it is shown with. Throws std::invalid_argument when the position (mm along the
  // view's slab axis) is not a number.
  SlicePlane(const Volume& volume, const HeadFrame& frame, const HeadBox& head, View view, double position,
             const GreyWindow& window);
  SlicePlane(const Volume& volume, const HeadFrame& frame, const HeadBox& head, View view, double position)
      : SlicePlane(volume, frame, head, view, position, volume.window()) {}

  View view() const { return m_view; }
  double position() const { return m_position; }

  // The plane hides what is behind it and is hidden by what is before it. Seen from its edge it has no width.
  void draw(DepthPicture& picture, const SceneCamera& camera) const;

  // The depth at which a place of the picture (pixels, see ScreenPoint) shows the plane; infinite where it
  // does not.
  double depthAt(const SceneCamera& camera, double column, double row) const;

 private:
  struct Mapping;
  Mapping mappingTo(const SceneCamera& camera) const;
  std::size_t texel(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
           static_cast<std::size_t>(column);
  }
  // Between the centres of four texels: the first of them, and how far to the next in each direction.
  struct Between {
    std::size_t texel;
    float du;
    float dv;
  };
  Between between(double u, double v) const;
  // The border between head and air runs smoothly between the texels.
  bool isSolid(const Between& at) const;
  void sample(const Volume& volume, const HeadFrame& frame);
  void cutAirAway(const GreyWindow& window);
  void showWith(const GreyWindow& window);

  View m_view;
  double m_position;
  Vector3 m_corner;  // of the first texel: lowest column and row coordinate
  int m_columns = 0;
  int m_rows = 0;
  std::vector<float> m_values;        // grey, whole numbers 0 to 255
  std::vector<std::uint8_t> m_solid;  // 0: air
};

}  // namespace host
