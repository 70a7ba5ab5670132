// The arguments that say which dipoles count by their values, with one meaning in every command.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "host/dipoles/DipoleFilter.h"

namespace tool {

// "A:B", "A:" or ":B". Throws std::invalid_argument that names the text and the cause.
host::ValueLimits parseLimits(const std::string& text);

class FilterOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  host::DipoleFilter filter() const;

 private:
  std::optional<double> m_maxError;     // percent
  std::optional<double> m_minGoodness;  // percent
  std::string m_moment;
  std::string m_latency;
};

}  // namespace tool
