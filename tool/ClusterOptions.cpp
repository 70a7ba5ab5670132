#include "tool/ClusterOptions.h"

#include <algorithm>
#include <array>

#include "host/head/Limits.h"
#include "tool/ArgumentCheck.h"

namespace tool {

namespace {

constexpr std::array<const char*, 3> names = {"--distance", "--angle", "--members"};

}  // namespace

void ClusterOptions::addTo(CLI::App& command) {
  m_command = &command;
  const auto add = [&](const char* name, auto& value, const char* type, const char* text) {
    return command.add_option(name, value, text)->type_name(type);
  };
  add(names[0], m_rule.distance, "MM", "Neighbours in a cluster are at most MM apart")
      ->check(numberBetween(0.0, host::longestLength))
      ->capture_default_str();
  add(names[1], m_rule.angle, "DEGREES",
      "and their orientations at most DEGREES: opposite ones are 180 apart; any angle unless given")
      ->check(numberBetween(0.0, host::mostDegrees));
  add(names[2], m_rule.members, "N", "A cluster has at least N dipoles")
      ->check(numberBetween(host::fewestMembers, DipoleTable::capacity, true))
      ->capture_default_str();
}

bool ClusterOptions::isGiven() const {
  return std::any_of(names.begin(), names.end(),
                     [this](const char* name) { return m_command->count(name) > 0; });
}

}  // namespace tool
