// The arguments that tell where the head of the dipoles lies, in the commands that draw nothing.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/head/HeadFrame.h"
#include "tool/InputFile.h"

namespace tool {

// Whether positions of a file are in a head frame that takes fiducial points to carry to the host's.
bool needsPoints(const std::vector<InputFile>& files);

class FrameOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  // The fiducial points of the head, scanner mm: those that are given, else those that come with the MRI.
  // Throws std::runtime_error with the cause.
  std::optional<host::Fiducials> points() const;
  // The same for an import; nothing when none of the files needs them.
  std::optional<host::Fiducials> pointsFor(const std::vector<InputFile>& files) const;

 private:
  std::string m_mri;
  std::string m_points;
};

}  // namespace tool
