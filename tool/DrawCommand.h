// `dipole draw`: slices through an MRI with the dipoles over them, or a 3D picture of them, as a PNG picture.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "host/head/Head.h"
#include "host/panes/DipolePicture.h"
#include "tool/HeadOptions.h"
#include "tool/ImportOptions.h"
#include "tool/ImportSession.h"
#include "tool/PictureOptions.h"
#include "tool/SceneOptions.h"

namespace tool {

class DrawCommand {
 public:
  // Adds the command to the program; this object has to live as long as the program's arguments.
  explicit DrawCommand(CLI::App& program);
  DrawCommand(const DrawCommand&) = delete;
  DrawCommand& operator=(const DrawCommand&) = delete;

  bool isChosen() const { return m_command->parsed(); }

  // Returns an ExitCode. Throws std::exception.
  int run() const;

 private:
  void checkArguments() const;
  void checkOutput() const;
  void writePicture(const host::Image& picture) const;
  std::vector<host::SliceRow> rows(const host::PaneContents& contents) const;
  host::PageTexts textsOf(const ImportSession& session, const host::PaneContents& contents) const;
  host::DipolePicture draw(const ImportSession& session, host::PaneContents& contents) const;

  CLI::App* m_command;
  ImportOptions m_import;
  HeadOptions m_head;
  PictureOptions m_picture;
  SceneOptions m_scene;
  std::vector<std::string> m_slices;
  std::string m_through;
  std::string m_output;
  bool m_force = false;
};

}  // namespace tool
