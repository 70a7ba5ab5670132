#include "tool/FrameOptions.h"

#include <algorithm>
#include <map>

#include "tool/Choice.h"
#include "tool/FiducialPoints.h"
#include "tool/FileNames.h"

namespace tool {

bool needsPoints(const std::vector<InputFile>& files) {
  return std::any_of(files.begin(), files.end(), [](const InputFile& file) {
    return file.format == host::DipoleFormat::neuromag || file.format == host::DipoleFormat::bdip;
  });
}

namespace {

constexpr const char* identity = "identity";

const std::map<std::string, host::FrameName>& frames() {
  static const std::map<std::string, host::FrameName> all = {{"host", host::FrameName::host},
                                                             {"ctf", host::FrameName::ctf},
                                                             {"neuromag", host::FrameName::neuromag},
                                                             {"scanner", host::FrameName::scanner},
                                                             {"mni", host::FrameName::mni}};
  return all;
}

// As they are written into files.
const std::map<std::string, std::string>& spaces() {
  static const std::map<std::string, std::string> all = {
      {"mni305", "MNI305"}, {"mni152", "MNI152"}, {"colin27", "Colin27"}};
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
  command
      .add_option("--mni", m_mni,
                  "The way from the scanner to MNI: a file (.xfm, 4x4 text, ITK/ANTs text), or that the head "
                  "is there")
      ->type_name("FILE|identity");
  addChoice(command, "--mni-space", m_space, "Which MNI space that is", spaces());
}

std::optional<host::FrameName> FrameOptions::name() const {
  return m_frame.empty() ? std::nullopt : std::optional(frames().at(m_frame));
}

host::KnownHead FrameOptions::head() const {
  host::KnownHead head{points(), {}};
  if (!m_mni.empty()) {
    head.mni = m_mni == identity ? host::MniMap() : host::readMniMap(pathOf(m_mni));
    if (!m_space.empty()) {
      head.mni->space = spaces().at(m_space);
    }
  }
  return head;
}

host::SetFrame FrameOptions::frame() const {
  return isHost() ? host::frameNamed(host::FrameName::host, {}) : host::frameNamed(*name(), head());
}

std::optional<host::Fiducials> FrameOptions::points() const {
  return givenFiducials(m_points, m_mri);
}

std::optional<host::Fiducials> FrameOptions::pointsFor(const std::vector<InputFile>& files) const {
  return needsPoints(files) ? points() : std::nullopt;
}

}  // namespace tool
