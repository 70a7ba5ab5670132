// The arguments of `dipole draw` that make a 3D picture of it.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "host/picture/ScenePicture.h"

namespace tool {

class SceneOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  bool isWanted() const { return m_is3d; }

  // Angles, balls and arrows; all else as it is by default.
  host::ScenePictureOptions picture() const;

 private:
  bool m_is3d = false;
  std::string m_view = "front";
  std::string m_angles;  // empty: m_view tells
  double m_ballMm = 2.5;
  bool m_noArrows = false;
};

// "YAW,PITCH" in degrees, as host::ViewAngles has them: yaw -360 to 360, pitch -90 to 90. Throws
// std::invalid_argument that names the text and the cause.
host::ViewAngles parseAngles(const std::string& text);

}  // namespace tool
