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

void HeadOptions::addTo(CLI::App& command) {
  m_mriOption =
      command
          .add_option("--mri", m_mri,
                      "The MRI: NIfTI, CTF (.mri), MGH or MGZ, or a folder of DICOM files; none leaves "
                      "out the one that a dipole file names")
          ->type_name("HEAD|none");
  m_points.addTo(command);
  addCtf21(command, m_takesCtf21);
}

void addCtf21(CLI::App& command, bool& isTaken) {
  command.add_flag("--ctf-2.1", isTaken,
                   "Read a CTF MRI of version 2.1 too, whose layout is known less well");
}

std::optional<host::Fiducials> HeadOptions::pointsFor(const std::vector<InputFile>& files,
                                                      const ImportChoices& choices) const {
  if (!needsPoints(files) && !m_points.hasTransform()) {
    return std::nullopt;
  }
  return pointsToImport(m_points.known(m_mri, choices).head, files);
}

std::vector<std::string> HeadOptions::files() const {
  std::vector<std::string> all = m_points.files();
  all.push_back(isGiven() ? m_mri : std::string());
  return all;
}

host::Head HeadOptions::readUnregistered() const {
  return host::openHead(pathTextOf(m_mri), {m_takesCtf21}).head;
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
  return readRegistered(session, mri);
}

void HeadOptions::noteOwnPoints(const std::string& mri) const {
  const std::filesystem::path beside = host::fiducialsBeside(pathOf(mri));
  std::error_code error;
  m_registeredBy =
      std::filesystem::exists(beside, error)
          ? "by the fiducial points of " + host::utf8Of(host::textOf(beside.filename())) + ", beside the MRI"
          : "by the fiducial points that the MRI holds";
}

host::Head HeadOptions::readRegistered(ImportSession& session, const std::string& mri) const {
  (void)m_points.points();  // a mistake in them is told before a large MRI is read
  host::OpenedHead opened = host::openHead(pathTextOf(mri), {m_takesCtf21});
  host::Head& head = opened.head;
  if (!m_points.isGiven()) {
    takeUnusualPoints(opened, mri, session.accepts(host::FindingCode::mriPoints));
  }
  if (m_points.isGiven()) {
    session.add(m_points.registerHead(head));
    m_registeredBy = m_points.about();
  } else if (!head.isRegistered()) {
    try {
      host::registerHead(head, host::fiducialsOfSet(session.collection(), *head.volume));
      if (!opened.notice.empty()) {
        tell("warning: " + opened.notice);
      }
      tellNote("fiducial points: those of the dipole file");
      m_registeredBy = "by the fiducial points of the dipole file";
    } catch (const std::runtime_error& error) {
      throw std::runtime_error("no fiducial points: " + whyWithoutPoints(opened) + "; " + error.what() +
                               (head.source.unplaceable.empty() ? "; --fiducials gives them" : ""));
    }
  } else {
    noteOwnPoints(mri);
  }
  if (!head.volume->sidesStated()) {
    tell("warning: " + mri + " does not say which side of it is left: sides are assumed");
  }
  session.add(host::findingsOf(head, mri));
  session.add(host::findingsIn(head, session.joined()));
  return std::move(opened.head);
}

}  // namespace tool
