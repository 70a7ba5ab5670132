#include "tool/AtlasOptions.h"

#include <memory>
#include <stdexcept>
#include <string>

#include "host/head/AtlasFile.h"
#include "tool/ArgumentCheck.h"
#include "tool/TerminalOperator.h"

namespace tool {

namespace {

bool refuseEmpty(const std::string& text) {
  if (text.empty()) {
    throw std::invalid_argument("an empty name names no atlas");
  }
  return true;
}

}  // namespace

void AtlasOptions::addTo(CLI::App& command) {
  command
      .add_option(
          "--atlas", m_atlas,
          "Which part of the brain places lie in, by an image of labels in MNI space (NIfTI) and a text "
          "of their names; needs the fiducial points and --mni")
      ->check(argumentCheck(refuseEmpty))
      ->type_name("aal|brodmann|FILE[,NAMES]");
}

std::optional<host::PlaceNames> AtlasOptions::names(const host::KnownHead& head) const {
  if (!isGiven()) {
    return std::nullopt;
  }
  const auto atlas = std::make_shared<const host::Atlas>(host::readAtlas(host::atlasFilesOf(m_atlas)));
  host::PlaceNames names(atlas, head);
  if (const std::string doubt = names.doubt(); !doubt.empty()) {
    tell("warning: " + doubt);
  }
  return names;
}

}  // namespace tool
