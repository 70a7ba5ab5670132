// From where a 3D picture of the head is seen. Head points are mm in the head frame (x left, y up, z front).
// The projection keeps lengths (orthographic): one mm across the view is as many pixels near as far, so that
// the scale bar holds everywhere.
#pragma once

#include <array>
#include <string_view>

#include "host/head/Vector3.h"

namespace host {

// The sides from which a head is looked at, the patient's own: `left` sees the left ear.
enum class Standpoint { left, right, front, back, top, bottom };

constexpr std::array<Standpoint, 6> allStandpoints{Standpoint::left, Standpoint::right, Standpoint::front,
                                                   Standpoint::back, Standpoint::top,   Standpoint::bottom};

std::string_view nameOf(Standpoint standpoint);

// Degrees. yaw carries the viewer around the head's vertical axis: 0 is in front of the face, 90 at the
// patient's left, 180 behind, -90 at the right. pitch lifts the viewer: 90 is above the head, -90 below.
struct ViewAngles {
  double yaw = 0.0;
  double pitch = 0.0;

  friend bool operator==(const ViewAngles&, const ViewAngles&) = default;
};

// Front and back stand upright; top has the front of the head up, the patient's left on the left; bottom has
// the front up as well, the patient's left on the right, like an axial slice.
ViewAngles anglesOf(Standpoint standpoint);

// A point of the picture: pixels from its upper left corner (the centre of the first pixel is 0.5, 0.5), and
// mm away from the viewer, 0 at the point around which the camera turns.
struct ScreenPoint {
  double column = 0.0;
  double row = 0.0;
  double depth = 0.0;
};

class SceneCamera {
 public:
  // Looks at the face, 2 pixels per mm.
  SceneCamera(int width, int height);

  void resize(int width, int height);
  int width() const { return m_width; }
  int height() const { return m_height; }

  // Each throws std::invalid_argument for a number that is not finite. yaw is brought into -180 .. 180, pitch
  // stops at -90 and 90.
  void lookFrom(const ViewAngles& angles);
  void lookFrom(Standpoint standpoint) { lookFrom(anglesOf(standpoint)); }
  void turn(double yaw, double pitch) { lookFrom({m_angles.yaw + yaw, m_angles.pitch + pitch}); }
  const ViewAngles& angles() const { return m_angles; }

  // The head point that stays in its place when the camera turns, and that is in the middle of the picture
  // until it is moved.
  void setCentre(const Vector3& head);
  const Vector3& centre() const { return m_centre; }

  // Pixels per mm, 0.05 to 20: beyond, the nearer end.
  void setScale(double pixelsPerMm);
  double scale() const { return m_scale; }
  // Enlarges; what is in the middle of the picture stays there.
  void zoom(double factor) { setScale(m_scale * factor); }
  // Moves the picture to the right and down by pixels; by no more than 1000 mm in all.
  void pan(double columns, double rows);

  // Unit vectors in the head frame.
  const Vector3& right() const { return m_right; }
  const Vector3& up() const { return m_up; }
  const Vector3& toViewer() const { return m_toViewer; }

  ScreenPoint project(const Vector3& head) const {
    const Vector3 from = head - m_centre;
    return {m_width * 0.5 + (dot(from, m_right) + m_panRight) * m_scale,
            m_height * 0.5 - (dot(from, m_up) + m_panUp) * m_scale, -dot(from, m_toViewer)};
  }
  // Whether a point of the screen is one of the picture.
  bool shows(const ScreenPoint& at) const {
    return at.column >= 0.0 && at.row >= 0.0 && at.column < m_width && at.row < m_height;
  }
  // The head point at a place of the picture, in the plane of depth 0.
  Vector3 unproject(double column, double row) const;

  // Of the same size, and every place is seen at the same place.
  friend bool operator==(const SceneCamera&, const SceneCamera&) = default;

 private:
  int m_width;
  int m_height;
  ViewAngles m_angles;
  Vector3 m_centre;
  double m_scale = 2.0;
  double m_panRight = 0.0;  // mm
  double m_panUp = 0.0;     // mm
  Vector3 m_right{1, 0, 0};
  Vector3 m_up{0, 1, 0};
  Vector3 m_toViewer{0, 0, 1};
};

}  // namespace host
