// The arguments that tell where the head of the dipoles lies, in the commands that draw nothing.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/exchange/JoinedSet.h"
#include "host/exchange/SetFrame.h"
#include "host/head/HeadFrame.h"
#include "tool/AtlasOptions.h"
#include "tool/ImportOptions.h"
#include "tool/InputFile.h"
#include "tool/MniOptions.h"
#include "tool/PointOptions.h"

namespace tool {

class FrameOptions {
 public:
  // Adds the arguments to the command; this object and the options of the import have to live as long as the
  // command. `choosesFrame`: also what tells in which frame places are written.
  void addTo(CLI::App& command, const ImportOptions& input, bool choosesFrame = true);

  // For an import of the files: the fiducial points that are given, else those that come with the MRI; none
  // when none of the files needs them. Throws std::runtime_error with the cause.
  host::CarryingHead headFor(const std::vector<InputFile>& files) const;

  // What is to be said of a transform that is given, and of dipoles in the MRI that is given: whether their
  // files have its points. Throws std::runtime_error with the cause.
  std::vector<host::Finding> findings(const host::JoinedSet& joined) const;

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
  const PointOptions::Known& known() const;

  const ImportOptions* m_import = nullptr;
  std::string m_mri;
  PointOptions m_points;
  mutable std::optional<PointOptions::Known> m_known;  // read once
  std::string m_frame;
  MniOptions m_mni;
  AtlasOptions m_atlas;
};

}  // namespace tool
