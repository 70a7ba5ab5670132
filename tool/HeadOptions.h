// The arguments that name an MRI and the fiducial points in it, with one meaning in every command.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/head/Head.h"
#include "tool/ImportSession.h"
#include "tool/PointOptions.h"

namespace tool {

class HeadOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  bool isGiven() const { return !m_mri.empty() && m_mri != noMri; }
  // Whether none is wanted, though a file names one.
  bool isRefused() const { return m_mri == noMri; }
  // What excludes the points, and what needs the MRI, may refer to them.
  CLI::Option* mri() const { return m_mriOption; }
  CLI::Option* fiducials() const { return m_points.fiducials(); }

  // For an import of the files: the points that are given, or come with the MRI, before it is known what
  // dipoles the files bring; none when none of them needs points. An MRI that this opens is not read again.
  host::CarryingHead headFor(const std::vector<InputFile>& files, const ImportChoices& choices) const;

  // The files that are named.
  std::vector<std::string> files() const;

  // The MRI that is given, else the one that dipole files name and that lies beside them; nothing when
  // there is none, or none is wanted. It is registered by the points that are given, else by those beside
  // or in the MRI, else by those that the dipole file brings. Warns when the MRI does not state its sides,
  // and tells the session what else is to be said of it. Throws std::exception with the cause, also when
  // the files name different MRIs.
  std::optional<host::Head> read(ImportSession& session) const;

  // By which points the head was registered that was read last: "by the fiducial points of a.fiducials".
  const std::string& registeredBy() const { return m_registeredBy; }

  // As it is, whether it has points or not; it is given.
  host::Head readUnregistered() const;

 private:
  std::string named(const ImportSession& session) const;
  host::Head readRegistered(ImportSession& session, const std::string& mri) const;

  std::string m_mri;
  PointOptions m_points;
  mutable std::optional<PointOptions::Known> m_known;  // of the MRI that is given, when an import needed it
  CLI::Option* m_mriOption = nullptr;
  mutable std::string m_registeredBy;
};

}  // namespace tool
