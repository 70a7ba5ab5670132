// The arguments that tell what a picture or a page is made of: dipole files, the MRI, the way to MNI and an
// atlas.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/exchange/PlaceNames.h"
#include "host/exchange/SetFrame.h"
#include "host/head/Head.h"
#include "tool/AtlasOptions.h"
#include "tool/HeadOptions.h"
#include "tool/ImportOptions.h"
#include "tool/ImportSession.h"
#include "tool/InputFile.h"
#include "tool/MniOptions.h"

namespace tool {

class PictureInput {
 public:
  // Add the arguments to the command, in the order of its help; this object has to live as long as the
  // command.
  void addFilesTo(CLI::App& command) { m_import.addTo(command); }
  void addHeadTo(CLI::App& command) { m_head.addTo(command); }
  void addAtlasTo(CLI::App& command);

  const std::vector<std::string>& names() const { return m_import.names(); }
  const HeadOptions& head() const { return m_head; }

  // "spikes.dip and 2 more"
  std::string title() const;
  // Throws UsageError when what is to be written is one of the files that are read; `what` it is: "picture".
  void refuseToOverwrite(const std::string& output, const std::string& what) const;

  std::vector<InputFile> files() const { return m_import.files(); }
  ImportSession import(const std::vector<InputFile>& files) const;

  // What is known of a head that HeadOptions::read gave. Throws std::runtime_error with the cause.
  host::KnownHead known(const host::Head& head) const;
  // See AtlasOptions::names.
  std::optional<host::PlaceNames> places(const host::Head& head) const;

 private:
  ImportOptions m_import;
  HeadOptions m_head;
  MniOptions m_mni;
  AtlasOptions m_atlas;
};

}  // namespace tool
