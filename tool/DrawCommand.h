// `dipole draw`: slices through an MRI with the dipoles over them, or a 3D picture of them, as a PNG picture.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/picture/SlicePicture.h"
#include "tool/ImportOptions.h"
#include "tool/ImportSession.h"
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
  void drawSlices(ImportSession& session, const host::Fiducials& fiducials) const;
  void drawScene(const ImportSession& session, const std::optional<host::Fiducials>& fiducials) const;
  host::Volume readMri() const;
  std::vector<host::SliceRequest> requests(const ImportSession& session) const;
  bool wouldOverwriteInput() const;

  CLI::App* m_command;
  ImportOptions m_import;
  SceneOptions m_scene;
  std::string m_mri;
  std::string m_fiducials;
  std::string m_slices;
  std::string m_output;
  double m_overlapMm = 5.0;
  int m_glyph = 7;  // pixels
  double m_mmPerPixel = 0.5;
};

}  // namespace tool
