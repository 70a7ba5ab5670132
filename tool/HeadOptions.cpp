#include "tool/HeadOptions.h"

#include <optional>
#include <stdexcept>
#include <utility>

#include "host/dipoles/SetFiducials.h"
#include "host/head/HeadFile.h"
#include "tool/FiducialPoints.h"
#include "tool/FileNames.h"
#include "tool/TerminalOperator.h"

namespace tool {

void HeadOptions::addTo(CLI::App& command) {
  m_mriOption =
      command.add_option("--mri", m_mri, "The MRI: a NIfTI file (.nii, .nii.gz)")->type_name("HEAD");
  m_fiducialsOption =
      command
          .add_option("--fiducials", m_points, "Fiducial points: a file, or \"nx,ny,nz lx,ly,lz rx,ry,rz\"")
          ->type_name("FILE|POINTS")
          ->needs(m_mriOption);
}

std::optional<host::Fiducials> HeadOptions::givenPoints() const {
  return givenFiducials(m_points, m_mri);
}

std::vector<std::string> HeadOptions::files() const {
  return {m_mri, m_points};
}

host::Head HeadOptions::readUnregistered() const {
  return host::openHead(pathTextOf(m_mri)).head;
}

host::Head HeadOptions::read(const CDipoleFace& set) const {
  std::optional<host::Fiducials> points;
  if (!m_points.empty()) {
    points = readFiducials(m_points);
    (void)host::HeadFrame(*points);  // a mistake in them is told before a large MRI is read
  }
  host::OpenedHead opened = host::openHead(pathTextOf(m_mri));
  host::Head& head = opened.head;
  if (!points && !head.isRegistered()) {
    try {
      points = host::fiducialsOfSet(set, *head.volume);
      tellNote("fiducial points: those of the dipole file");
    } catch (const std::runtime_error& error) {
      const std::string beside = opened.notice.empty() ? "no file of them is beside the MRI" : opened.notice;
      throw std::runtime_error("no fiducial points: " + beside + "; " + error.what() +
                               "; --fiducials gives them");
    }
  }
  if (points) {
    head.frame = host::frameIn(*head.volume, *points);
    head.fiducials = points;
  }
  if (!head.volume->sidesStated()) {
    tell("warning: " + m_mri + " does not say which side of it is left: sides are assumed");
  }
  return std::move(opened.head);
}

}  // namespace tool
