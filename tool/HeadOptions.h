// The arguments that name an MRI and the fiducial points in it, with one meaning in every command.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/head/Head.h"
#include "module/dipole.h"

namespace tool {

class HeadOptions {
 public:
  // Adds the arguments to the command; this object has to live as long as the command.
  void addTo(CLI::App& command);

  bool isGiven() const { return !m_mri.empty(); }
  // What excludes the points, and what needs the MRI, may refer to them.
  CLI::Option* mri() const { return m_mriOption; }
  CLI::Option* fiducials() const { return m_fiducialsOption; }

  // For an import in another head frame: the points that are given, or come with the MRI, before it is known
  // what dipoles the files bring.
  std::optional<host::Fiducials> givenPoints() const;

  // The files that are named.
  std::vector<std::string> files() const;

  // With the points that are given, else those beside the MRI, else those that the dipole file brings. Warns
  // when the MRI does not state its sides. Throws std::exception with the cause.
  host::Head read(const CDipoleFace& set) const;

  // As it is, whether it has points or not.
  host::Head readUnregistered() const;

 private:
  std::string m_mri;
  std::string m_points;
  CLI::Option* m_mriOption = nullptr;
  CLI::Option* m_fiducialsOption = nullptr;
};

}  // namespace tool
