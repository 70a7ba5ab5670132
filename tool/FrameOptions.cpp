#include "tool/FrameOptions.h"

#include <map>

#include "tool/Choice.h"

namespace tool {

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

void FrameOptions::addTo(CLI::App& command, const ImportOptions& input, bool choosesFrame) {
  m_import = &input;
  command.add_option("--mri", m_mri, "The MRI of the head, for its fiducial points")->type_name("HEAD");
  m_points.addTo(command);
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
  host::KnownHead head = known().head;
  head.mni = m_mni.map();
  return head;
}

host::SetFrame FrameOptions::frame() const {
  return isHost() ? host::frameNamed(host::FrameName::host, {}) : host::frameNamed(*name(), head());
}

std::optional<host::PlaceNames> FrameOptions::places() const {
  return m_atlas.isGiven() ? m_atlas.names(head()) : std::nullopt;
}

const PointOptions::Known& FrameOptions::known() const {
  if (!m_known) {
    m_known = m_points.known(m_mri, m_import->choices());
  }
  return *m_known;
}

host::CarryingHead FrameOptions::headFor(const std::vector<InputFile>& files) const {
  const bool isNeeded = needsPoints(files) || m_points.hasTransform();
  return isNeeded ? headToImport(known().head, files) : host::CarryingHead();
}

std::vector<host::Finding> FrameOptions::findings(const host::JoinedSet& joined) const {
  if (m_mri.empty() && !m_points.hasTransform()) {
    return {};
  }
  std::vector<host::Finding> findings = known().findings;
  if (known().mri) {
    const std::vector<host::Finding> more = host::findingsIn(*known().mri, joined);
    findings.insert(findings.end(), more.begin(), more.end());
  }
  return findings;
}

}  // namespace tool
