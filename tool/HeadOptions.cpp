#include "tool/HeadOptions.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

#include "host/audit/HeadChecks.h"
#include "host/dipoles/SetFiducials.h"
#include "host/exchange/JoinedSet.h"
#include "host/head/HeadFile.h"
#include "host/text/PathText.h"
#include "tool/FileNames.h"
#include "tool/Output.h"
#include "tool/TerminalOperator.h"
#include "tool/UsageError.h"

namespace tool {

namespace {

// Those that the dipole file brings, for a head that has none. What they are called.
std::string takePointsOfSet(host::OpenedHead& opened, const ImportSession& session) {
  host::Head& head = opened.head;
  try {
    host::registerHead(head, host::fiducialsOfSet(session.collection(), *head.volume));
    if (!opened.notice.empty()) {
      tell("warning: " + opened.notice);
    }
    tellNote("fiducial points: those of the dipole file");
    return "by the fiducial points of the dipole file";
  } catch (const std::runtime_error& error) {
    throw std::runtime_error("no fiducial points: " + whyWithoutPoints(opened) + "; " + error.what() +
                             (head.source.unplaceable.empty() ? "; --fiducials gives them" : ""));
  }
}

std::string ownPoints(const std::string& mri) {
  const std::filesystem::path beside = host::fiducialsBeside(pathOf(mri));
  std::error_code error;
  return std::filesystem::exists(beside, error)
             ? "by the fiducial points of " + host::utf8Of(host::textOf(beside.filename())) +
                   ", beside the MRI"
             : "by the fiducial points that the MRI holds";
}

}  // namespace

void HeadOptions::addTo(CLI::App& command) {
  m_mriOption =
      command
          .add_option("--mri", m_mri,
                      "The MRI: NIfTI, CTF (.mri), MGH or MGZ, or a folder of DICOM files; none leaves "
                      "out the one that a dipole file names")
          ->type_name("HEAD|none");
  m_points.addTo(command);
}

host::CarryingHead HeadOptions::headFor(const std::vector<InputFile>& files,
                                        const ImportChoices& choices) const {
  if (!needsPoints(files) && !m_points.hasTransform()) {
    return {};
  }
  m_known = m_points.known(m_mri, choices);
  return headToImport(m_known->head, files);
}

std::vector<std::string> HeadOptions::files() const {
  std::vector<std::string> all = m_points.files();
  all.push_back(isGiven() ? m_mri : std::string());
  return all;
}

host::Head HeadOptions::readUnregistered() const {
  return m_known && m_known->mri ? *m_known->mri : host::openHead(pathTextOf(m_mri), m_points.reading()).head;
}

std::string HeadOptions::named(const ImportSession& session) const {
  std::filesystem::path found;
  std::string by;
  for (const ImportSession::NamedMri& mri : session.namedMris()) {
    std::error_code error;
    if (mri.path.empty()) {
      tellNote(mri.file + " names the MRI " + mri.name +
               ", which is not beside it, or several are that differ in their letters");
    } else if (found.empty()) {
      found = mri.path;
      by = mri.file;
    } else if (!std::filesystem::equivalent(found, mri.path, error)) {
      throw std::runtime_error(by + " and " + mri.file +
                               " name different MRIs; --mri says which one, or --mri none");
    }
  }
  if (found.empty()) {
    return {};
  }
  std::string name = host::utf8Of(host::textOf(found));
  tellNote("MRI: " + name + ", which " + by + " names");
  return name;
}

std::optional<host::Head> HeadOptions::read(ImportSession& session) const {
  if (isRefused()) {
    return std::nullopt;
  }
  const std::string mri = isGiven() ? m_mri : named(session);
  if (mri.empty()) {
    if (m_points.isGiven()) {
      throw UsageError("--fiducials needs --mri HEAD: no dipole file names an MRI that is beside it");
    }
    return std::nullopt;
  }
  host::Head head = readRegistered(session, mri);
  if (!head.volume->sidesStated()) {
    tell("warning: " + mri + " does not say which side of it is left: sides are assumed");
  }
  session.add(host::findingsOf(head, mri));
  session.add(host::findingsIn(head, session.joined()));
  return head;
}

host::Head HeadOptions::readRegistered(ImportSession& session, const std::string& mri) const {
  if (m_known && m_known->mri) {
    session.add(m_known->findings);
    m_registeredBy = m_points.isGiven() ? m_points.about() : ownPoints(mri);
    return *m_known->mri;
  }
  (void)m_points.points();  // a mistake in them is told before a large MRI is read
  host::OpenedHead opened = host::openHead(pathTextOf(mri), m_points.reading());
  if (m_points.isGiven()) {
    session.add(m_points.registerHead(opened.head));
    m_registeredBy = m_points.about();
  } else {
    takeUnusualPoints(opened, mri, session.accepts(host::FindingCode::mriPoints));
    m_registeredBy = opened.head.isRegistered() ? ownPoints(mri) : takePointsOfSet(opened, session);
  }
  return std::move(opened.head);
}

}  // namespace tool
