// `dipole register`: registers the dipoles of the files to an MRI, as a viewer does after an import, and
// writes what came out.
#pragma once

#include <CLI/CLI.hpp>

#include "tool/HeadOptions.h"
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
  void registerByFiducials(CDipoleFace9File& set, const host::Head& head) const;

  CLI::App* m_command;
  ImportOptions m_import;
  OutputOptions m_output;
  HeadOptions m_head;
  bool m_rotate = false;
  bool m_bySphere = false;
};

}  // namespace tool
