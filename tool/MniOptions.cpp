#include "tool/MniOptions.h"

#include <map>

#include "tool/Choice.h"
#include "tool/FileNames.h"
#include "tool/TerminalOperator.h"

namespace tool {
namespace {

constexpr const char* identity = "identity";

// As they are written into files.
const std::map<std::string, std::string>& spaces() {
  static const std::map<std::string, std::string> all = {
      {"mni305", "MNI305"}, {"mni152", "MNI152"}, {"colin27", "Colin27"}};
  return all;
}

}  // namespace

void MniOptions::addTo(CLI::App& command) {
  command
      .add_option("--mni", m_way,
                  "The way from the scanner to MNI: a file (.xfm, 4x4 text, ITK/ANTs text), or that the head "
                  "is there")
      ->type_name("FILE|identity");
  addChoice(command, "--mni-space", m_space, "Which MNI space that is", spaces());
}

std::optional<host::MniMap> MniOptions::map() const {
  if (m_way.empty()) {
    return std::nullopt;
  }
  host::MniMap map = m_way == identity ? host::MniMap() : host::readMniMap(pathOf(m_way));
  if (!map.assumed.empty() && !m_isTold) {
    tell("warning: " + m_way + ": " + map.assumed);
    m_isTold = true;
  }
  if (!m_space.empty()) {
    map.space = spaces().at(m_space);
  }
  return map;
}

std::string MniOptions::file() const {
  return m_way == identity ? std::string() : m_way;
}

}  // namespace tool
