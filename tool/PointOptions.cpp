#include "tool/PointOptions.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "host/audit/HeadChecks.h"
#include "host/head/FiducialFile.h"
#include "host/head/FifFile.h"
#include "host/head/HeadPlacement.h"
#include "host/head/NeuromagFrame.h"
#include "host/text/PathText.h"
#include "tool/FileNames.h"
#include "tool/UsageError.h"

namespace tool {
namespace {

bool isNeuromag(const InputFile& file) {
  return file.format == host::DipoleFormat::neuromag || file.format == host::DipoleFormat::bdip;
}

std::optional<host::Fiducials> triples(const std::string& argument) {
  std::istringstream stream(argument);
  std::vector<host::Vector3> points;
  for (std::string word; stream >> word;) {
    const std::optional<host::Vector3> point = host::readCoordinates(word, ',');
    if (!point) {
      return std::nullopt;
    }
    points.push_back(*point);
  }
  if (points.size() != 3) {
    return std::nullopt;
  }
  return host::Fiducials{points[0], points[1], points[2]};
}

// What does not fit the head is told with the name of what was given.
template <typename Work>
void naming(const std::string& what, Work work) {
  try {
    work();
  } catch (const std::invalid_argument& error) {
    throw std::runtime_error(what + ": " + error.what());
  }
}

}  // namespace

bool needsPoints(const std::vector<InputFile>& files) {
  return std::any_of(files.begin(), files.end(), isNeuromag);
}

void addCtf21(CLI::App& command, bool& isTaken) {
  command.add_flag("--ctf-2.1", isTaken,
                   "Read a CTF MRI of version 2.1 too, whose layout is known less well");
}

void PointOptions::addTo(CLI::App& command) {
  m_option = command
                 .add_option("--fiducials", m_points,
                             "Fiducial points of the head: a file (text, or MNE's *-fiducials.fif), or "
                             "\"nx,ny,nz lx,ly,lz rx,ry,rz\"")
                 ->type_name("FILE|POINTS");
  command
      .add_option("--trans", m_transform,
                  "The way between the Neuromag head frame and the MRI of --mri: MNE's *-trans.fif")
      ->type_name("FILE");
  addCtf21(command, m_takesCtf21);
}

std::string PointOptions::about() const {
  const auto fileName = [](const std::string& name) {
    return host::utf8Of(host::fileNameOf(pathTextOf(name)));
  };
  const std::string points = !hasPoints()        ? std::string()
                             : triples(m_points) ? "by the fiducial points that were given as numbers"
                                                 : "by the fiducial points of " + fileName(m_points);
  if (!hasTransform()) {
    return points;
  }
  return (points.empty() ? "by" : points + " and") + " the transform " + fileName(m_transform);
}

std::optional<host::FramedPoints> PointOptions::points() const {
  if (!hasPoints()) {
    return std::nullopt;
  }
  host::FramedPoints given;
  if (const auto points = triples(m_points)) {
    given.points = *points;
  } else if (!std::ifstream(pathOf(m_points))) {
    throw std::runtime_error("fiducial points " + m_points + ": cannot be opened (" + std::strerror(errno) +
                             "), and is not three triples nx,ny,nz lx,ly,lz rx,ry,rz either");
  } else {
    given = host::readFiducialFile(pathOf(m_points));
  }
  (void)host::HeadFrame(given.points);  // a mistake in them is told before a large MRI is read
  return given;
}

std::vector<host::Finding> PointOptions::registerHead(host::Head& head) const {
  std::optional<host::FramedPoints> known = points();
  if (!hasTransform()) {
    naming("fiducial points " + m_points,
           [&] { host::registerHead(head, host::inScanner(known.value(), head)); });
    return {};
  }
  if (!known && head.fiducials) {
    known = {*head.fiducials};
  }
  const host::Affine transform = host::readHeadToSurface(pathOf(m_transform));
  std::vector<host::Finding> findings;
  naming("transform " + m_transform, [&] {
    const host::HeadPlacement placement = host::placedBy(transform, known, head);
    host::registerHead(head, placement.points);
    head.arePointsAssumed = !placement.arePointsKnown();
    findings.push_back(host::findingOf(placement, m_transform));
  });
  return findings;
}

PointOptions::Known PointOptions::known(const std::string& mri, const ImportChoices& choices) const {
  Known result;
  const bool hasMri = !mri.empty() && mri != noMri;
  if (!hasMri && hasTransform()) {
    throw UsageError("--trans needs --mri HEAD, the MRI that it leads to");
  }
  const std::optional<host::FramedPoints> given = points();
  if (!hasMri) {
    if (given) {
      result.head.points = given->points;
      result.head.space = given->space.value_or(host::MriSpace::scanner);
      result.head.arePointsUnplaced = given->frame != host::PointFrame::scanner;
    }
    return result;
  }
  host::OpenedHead opened = host::openHead(pathTextOf(mri), reading());
  host::Head& head = opened.head;
  result.head.space = head.source.space;
  if (isGiven()) {
    result.findings = registerHead(head);
  } else {
    takeUnusualPoints(opened, mri, choices.accepted.contains(host::FindingCode::mriPoints));
    if (!head.isRegistered()) {
      throw std::runtime_error(mri + ": no fiducial points: " + whyWithoutPoints(opened));
    }
  }
  if (head.arePointsAssumed) {
    result.head.neuromagToScanner = host::neuromagToScanner(head.fiducials.value());
  } else {
    result.head.points = head.fiducials;
  }
  result.mri = std::move(head);
  return result;
}

std::string whyWithoutPoints(const host::OpenedHead& opened) {
  const std::string& why = opened.head.source.unplaceable;
  return !why.empty() ? why : opened.notice.empty() ? "no file of them is beside the MRI" : opened.notice;
}

void takeUnusualPoints(host::OpenedHead& opened, const std::string& mri, bool takesUnusual) {
  if (opened.question.empty()) {
    return;
  }
  if (!takesUnusual) {
    throw std::runtime_error(mri + ": " + opened.question +
                             "; --accept mri-points takes them, --fiducials gives others");
  }
  host::takeOwnPoints(opened);
}

host::CarryingHead headToImport(const host::KnownHead& head, const std::vector<InputFile>& files) {
  if (head.neuromagToScanner && !std::all_of(files.begin(), files.end(), isNeuromag)) {
    throw std::runtime_error(
        "--trans alone places Neuromag's dipoles (.dip, .bdip) and no others, whose head frame it does not "
        "know: --fiducials gives the points");
  }
  return needsPoints(files) ? host::CarryingHead(head.points, head.neuromagToScanner.has_value())
                            : host::CarryingHead();
}

}  // namespace tool
