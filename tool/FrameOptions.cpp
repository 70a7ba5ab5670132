#include "tool/FrameOptions.h"

#include <algorithm>
#include <map>

#include "tool/Choice.h"
#include "tool/FiducialPoints.h"

namespace tool {

bool needsPoints(const std::vector<InputFile>& files) {
  return std::any_of(files.begin(), files.end(), [](const InputFile& file) {
    return file.format == host::DipoleFormat::neuromag || file.format == host::DipoleFormat::bdip;
  });
}

namespace {

const std::map<std::string, host::FrameName>& frames() {
  static const std::map<std::string, host::FrameName> all = {{"host", host::FrameName::host},
                                                             {"ctf", host::FrameName::ctf},
                                                             {"neuromag", host::FrameName::neuromag},
                                                             {"scanner", host::FrameName::scanner},
                                                             {"mni", host::FrameName::mni}};
  return all;
}

}  // namespace

void FrameOptions::addTo(CLI::App& command, bool choosesFrame) {
  command.add_option("--mri", m_mri, "The MRI of the head, for its fiducial points")->type_name("HEAD");
  command
      .add_option("--fiducials", m_points,
                  "Fiducial points of the head: a file, or \"nx,ny,nz lx,ly,lz rx,ry,rz\"")
      ->type_name("FILE|POINTS");
  if (!choosesFrame) {
    return;
  }
  addChoice(command, "--frame", m_frame, "The frame that places and orientations are written in", frames());
  m_mni.addTo(command);
  m_atlas.addTo(command);
}

std::optional<host::FrameName> FrameOptions::name() const {
  return m_frame.empty() ? std::nullopt : std::optional(frames().at(m_frame));
}

host::KnownHead FrameOptions::head() const {
  return {points(), m_mni.map()};
}

host::SetFrame FrameOptions::frame() const {
  return isHost() ? host::frameNamed(host::FrameName::host, {}) : host::frameNamed(*name(), head());
}

std::optional<host::PlaceNames> FrameOptions::places() const {
  return m_atlas.isGiven() ? m_atlas.names(head()) : std::nullopt;
}

std::optional<host::Fiducials> FrameOptions::points() const {
  return givenFiducials(m_points, m_mri);
}

std::optional<host::Fiducials> FrameOptions::pointsFor(const std::vector<InputFile>& files) const {
  return needsPoints(files) ? points() : std::nullopt;
}

}  // namespace tool
