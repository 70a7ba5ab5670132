// The argument that names an atlas, with one meaning in every command.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "host/exchange/PlaceNames.h"

namespace tool {

class AtlasOptions {
 public:
  // Adds the argument to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  bool isGiven() const { return !m_atlas.empty(); }
  // Nothing when no atlas is given. Warns when the atlas is in another MNI space than the places. Throws
  // std::runtime_error with the cause, also when the head is not known well enough.
  std::optional<host::PlaceNames> names(const host::KnownHead& head) const;

 private:
  std::string m_atlas;
};

}  // namespace tool
