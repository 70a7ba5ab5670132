// The arguments that say what a cluster is, with one meaning in every command.
#pragma once

#include <CLI/CLI.hpp>

#include "host/dipoles/Clusters.h"

namespace tool {

class ClusterOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  // Whether one of them is given.
  bool isGiven() const;
  const host::ClusterRule& rule() const { return m_rule; }

 private:
  CLI::App* m_command = nullptr;
  host::ClusterRule m_rule;
};

}  // namespace tool
