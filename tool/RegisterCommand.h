// `dipole register`: registers the dipoles of the files to an MRI, as a viewer does after an import, and
// writes what came out.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "tool/ImportOptions.h"
#include "tool/OutputOptions.h"
#include "tool/SetWriter.h"

namespace tool {

class RegisterCommand {
 public:
  // Adds the command to the program; this object has to live as long as the program's arguments.
  explicit RegisterCommand(CLI::App& program);
  RegisterCommand(const RegisterCommand&) = delete;
  RegisterCommand& operator=(const RegisterCommand&) = delete;

  bool isChosen() const { return m_command->parsed(); }

  // Returns an ExitCode. Throws std::runtime_error.
  int run() const;

 private:
  void registerBySphere(CDipoleFace9File& set) const;
  void registerByFiducials(CDipoleFace9File& set) const;
  CFiducialzq mriPoints(const CDipoleFace9File& set) const;

  CLI::App* m_command;
  ImportOptions m_import;
  OutputOptions m_output;
  std::string m_fiducials;                  // mm from the volume's corner; empty: those of the files
  std::string m_dimension = "256,256,256";  // voxels
  std::string m_voxel = "0.859375,0.859375,0.859375";  // mm
  bool m_rotate = false;
  bool m_bySphere = false;
};

}  // namespace tool
