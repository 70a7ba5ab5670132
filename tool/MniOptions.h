// The arguments that tell how the scanner's frame becomes an MNI space, with one meaning in every command.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "host/exchange/SetFrame.h"

namespace tool {

class MniOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  // Nothing when --mni is not given. Throws std::runtime_error with the cause.
  std::optional<host::MniMap> map() const;

  // The file that is named; empty when none is.
  std::string file() const;

 private:
  std::string m_way;
  std::string m_space;
  mutable bool m_isTold = false;  // what the file leaves open
};

}  // namespace tool
