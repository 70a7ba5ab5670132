// The arguments that tell where the head of the dipoles lies, in the commands that draw nothing.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/exchange/SetFrame.h"
#include "host/head/HeadFrame.h"
#include "tool/AtlasOptions.h"
#include "tool/InputFile.h"
#include "tool/MniOptions.h"

namespace tool {

// Whether positions of a file are in a head frame that takes fiducial points to carry to the host's.
bool needsPoints(const std::vector<InputFile>& files);

class FrameOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command. `choosesFrame`: also
  // what tells in which frame places are written.
  void addTo(CLI::App& command, bool choosesFrame = true);

  // The fiducial points of the head, scanner mm: those that are given, else those that come with the MRI.
  // Throws std::runtime_error with the cause.
  std::optional<host::Fiducials> points() const;
  // The same for an import; nothing when none of the files needs them.
  std::optional<host::Fiducials> pointsFor(const std::vector<InputFile>& files) const;

  // --frame; nothing when it is not given.
  std::optional<host::FrameName> name() const;
  bool isHost() const { return name().value_or(host::FrameName::host) == host::FrameName::host; }
  // What the arguments tell of the head. Throws std::runtime_error with the cause.
  host::KnownHead head() const;
  // --frame, else the host's. Throws std::runtime_error when the head is not known well enough for it.
  host::SetFrame frame() const;
  // --atlas, see AtlasOptions::names.
  std::optional<host::PlaceNames> places() const;

 private:
  std::string m_mri;
  std::string m_points;
  std::string m_frame;
  MniOptions m_mni;
  AtlasOptions m_atlas;
};

}  // namespace tool
