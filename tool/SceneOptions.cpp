#include "tool/SceneOptions.h"

#include <cmath>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "host/head/Limits.h"
#include "host/text/Numbers.h"
#include "tool/ArgumentCheck.h"
#include "tool/Choice.h"

namespace tool {
namespace {

constexpr double mostYaw = 360.0;   // degrees
constexpr double mostPitch = 90.0;  // degrees

const std::vector<std::pair<std::string, host::ViewAngles>>& sides() {
  static const auto all = [] {
    std::vector<std::pair<std::string, host::ViewAngles>> named;
    named.reserve(host::allStandpoints.size());
    for (const host::Standpoint standpoint : host::allStandpoints) {
      named.emplace_back(host::nameOf(standpoint), host::anglesOf(standpoint));
    }
    return named;
  }();
  return all;
}

[[noreturn]] void fail(const std::string& text, const std::string& cause) {
  throw std::invalid_argument("angles \"" + text + "\": " + cause);
}

double degreesOf(const std::string& text, std::string_view part, double most) {
  const std::optional<double> value = host::numberOf(part);
  if (!value) {
    fail(text, "write YAW,PITCH in degrees, such as 60,20");
  }
  if (std::abs(*value) > most) {
    fail(text, "yaw lies between -360 and 360, pitch between -90 and 90 degrees");
  }
  return *value;
}

}  // namespace

host::ViewAngles parseAngles(const std::string& text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string::npos) {
    fail(text, "write YAW,PITCH in degrees, such as 60,20");
  }
  const std::string_view all = text;
  return {degreesOf(text, all.substr(0, comma), mostYaw), degreesOf(text, all.substr(comma + 1), mostPitch)};
}

void SceneOptions::addTo(CLI::App& command) {
  CLI::Option* is3d = command.add_flag("--3d", m_is3d, "Draw a 3D picture; --mri may be left out");
  CLI::Option* view = addChoice(command, "--view", m_view,
                                "With --3d: from this side; else from where the dipoles lie", sides())
                          ->needs(is3d);
  command
      .add_option("--angles", m_angles, "With --3d: yaw and pitch in degrees: 0,0 front, 90,0 left, 0,90 top")
      ->type_name("YAW,PITCH")
      ->check(argumentCheck(parseAngles))
      ->needs(is3d)
      ->excludes(view);
  command.add_option("--ball", m_ballMm, "With --3d: radius of a dipole's ball in mm; 0.1 to 50")
      ->type_name("MM")
      ->check(numberBetween(host::smallestBall, host::largestBall))
      ->capture_default_str()
      ->needs(is3d);
}

std::optional<host::ViewAngles> SceneOptions::angles() const {
  if (!m_angles.empty()) {
    return parseAngles(m_angles);
  }
  return m_view.empty() ? std::nullopt : std::optional(chosen(sides(), m_view));
}

}  // namespace tool
