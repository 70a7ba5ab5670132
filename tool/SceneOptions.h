// The arguments of `dipole draw` that make a 3D picture of it.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "host/paint/SceneCamera.h"

namespace tool {

class SceneOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  bool isWanted() const { return m_is3d; }
  double ballRadius() const { return m_ballMm; }
  // Nothing: the side where the dipoles lie.
  std::optional<host::ViewAngles> angles() const;

 private:
  bool m_is3d = false;
  std::string m_view;
  std::string m_angles;
  double m_ballMm = 2.5;
};

// "YAW,PITCH" in degrees, as host::ViewAngles has them: yaw -360 to 360, pitch -90 to 90. Throws
// std::invalid_argument that names the text and the cause.
host::ViewAngles parseAngles(const std::string& text);

}  // namespace tool
