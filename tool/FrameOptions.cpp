#include "tool/FrameOptions.h"

#include <algorithm>

#include "tool/FiducialPoints.h"

namespace tool {

bool needsPoints(const std::vector<InputFile>& files) {
  return std::any_of(files.begin(), files.end(), [](const InputFile& file) {
    return file.format == host::DipoleFormat::neuromag || file.format == host::DipoleFormat::bdip;
  });
}

void FrameOptions::addTo(CLI::App& command) {
  command.add_option("--mri", m_mri, "The MRI of the head, for its fiducial points")->type_name("HEAD");
  command
      .add_option("--fiducials", m_points,
                  "Fiducial points of the head: a file, or \"nx,ny,nz lx,ly,lz rx,ry,rz\"")
      ->type_name("FILE|POINTS");
}

std::optional<host::Fiducials> FrameOptions::points() const {
  return givenFiducials(m_points, m_mri);
}

std::optional<host::Fiducials> FrameOptions::pointsFor(const std::vector<InputFile>& files) const {
  return needsPoints(files) ? points() : std::nullopt;
}

}  // namespace tool
