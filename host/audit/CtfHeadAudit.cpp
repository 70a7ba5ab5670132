// Header, head sphere and fiducial points of a CTF file beside what the set holds.
#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <utility>

#include "host/audit/CtfAudit.h"

namespace host {

namespace {

// The value behind a key, as the import cuts it: as many characters as the key has go from the line's front.
CString valueOf(const CString& line, const CString& key) {
  CString text = line;
  const CString version(_T("VERSION:"));
  if (key == CString(_T("PATIENT:")) && text.Find(version) >= 0) {
    text.Delete(0, version.GetLength());
  }
  text.Delete(0, key.GetLength());
  return text;
}

using Points = std::array<Place, 3>;

constexpr int pointIndex[3] = {CFiducial::nasion, CFiducial::leftEar, CFiducial::rightEar};

// Voxels counted from the other end, in the order sagittal, axial, coronal.
Points storedPoints(const CtfPoints& points) {
  Points stored = {};
  for (std::size_t i = 0; i < stored.size(); ++i) {
    const std::array<float, 3>& voxel = *points.points[i];
    stored[i] = {256.0 - static_cast<double>(voxel[0]), 256.0 - static_cast<double>(voxel[2]),
                 256.0 - static_cast<double>(voxel[1])};
  }
  return stored;
}

bool holds(const CFiducialzq& set, const Points& points) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    Place place = {};
    if (set.m_points[pointIndex[i]].getPosition(place[0], place[1], place[2]) == 0 || place != points[i]) {
      return false;
    }
  }
  return true;
}

// Whether two accounts of the same differ in something that both have.
template <typename Values>
bool contradict(const Values& a, const Values& b) {
  return !std::equal(a.begin(), a.end(), b.begin(),
                     [](const auto& one, const auto& other) { return !one || !other || one == other; });
}

// Makes the head-frame points as an import does, without the message that it shows when there is no sphere.
void setHeadPoints(CDipoleFace9File& set) {
  if (set.m_bCtfSphereSet != 0 && !set.m_skipFiducialSetup) {
    set.setCtfFiducial();
  }
}

}  // namespace

void CtfAudit::lookAtHead() {
  lookAtHeader(m_reading.version, _T("VERSION:"), &CDipoleFace::m_fileVersion, "version");
  lookAtHeader(m_reading.patient, _T("PATIENT:"), &CDipoleFace::m_patient, "patient");
  lookAtHeader(m_reading.mriFile, _T("MRI_FILE:"), &CDipoleFace::m_mriFile, "name of the MRI file");
  lookAtPatients();
  lookAtSphere();
  lookAtFiducials();
  lookAtRepeated();
  lookAtUnread();
}

void CtfAudit::lookAtHeader(const CtfHeaderLine& line, const CString& key, CString CDipoleFace::*member,
                            std::string_view what) {
  if (line.line == 0 || (line.isRead && TextBytes(line.text).areAscii)) {
    return;
  }
  const CString meant = valueOf(m_encoding.asMeant(line.text), key);
  if (m_pass.settleHeader(member, meant, what)) {
    return;
  }
  std::string whose("The ");
  whose.append(what);
  if (line.isRead && m_encoding.isUtf8()) {
    m_pass.add(
        {FindingCode::encoding,
         Severity::note,
         {},
         line.line,
         "File_Info",
         {},
         whose + " is written in UTF-8 and was read otherwise: letters with accents are shown as signs.",
         "It is decoded."});
  } else if (!line.isRead) {
    m_unreadLeft.push_back(line.line);
  }
}

// Sections of several files in one.
void CtfAudit::lookAtPatients() {
  if (m_reading.otherPatientLine != 0) {
    sayProblem(FindingCode::severalPatients, Severity::doubtful, m_reading.otherPatientLine, "File_Info",
               "The file itself names different patients; the last name stays.");
  }
}

void CtfAudit::lookAtSphere() {
  const CtfSphere& sphere = m_reading.sphere;
  const bool isWhole = std::all_of(sphere.meant.begin(), sphere.meant.end(),
                                   [](const std::optional<float>& value) { return value.has_value(); });
  if (sphere.line == 0) {
    return;
  }
  if (!isWhole) {
    sayProblem(FindingCode::sphere, Severity::doubtful, sphere.line, "MEG_Sphere",
               "The head sphere is not given whole; what is missing was taken as 0.");
    return;
  }
  const auto place = [](const auto& value) { return scaledPlace({value(0), value(1), value(2)}, 10.0F); };
  const Place meant = place([&](std::size_t i) { return *sphere.meant[i]; });
  const Place taken = place([&](std::size_t i) { return sphere.taken[i]; });
  const auto radius = static_cast<double>(*sphere.meant[3] * 10.0F);
  const auto takenRadius = static_cast<double>(sphere.taken[3] * 10.0F);
  const CSpherezq& current = m_pass.set().m_sphereCtf;
  const Place centre = {current.m_center[0], current.m_center[1], current.m_center[2]};
  const bool isSet = m_pass.set().m_bCtfSphereSet != 0;
  const bool isMeant = isSet && centre == meant && current.m_radius == radius;
  const bool isOwn = isSet && centre == taken && current.m_radius == takenRadius;
  const bool isLost = !sphere.isRead && !isSet;
  const FindingCode code = isLost ? FindingCode::encoding : FindingCode::sphere;
  if (!isMeant && (isLost || isOwn)) {
    if (m_pass.repairs(code)) {
      CDipoleFace9File& set = m_pass.target();
      std::copy(meant.begin(), meant.end(), set.m_sphereCtf.m_center);
      set.m_sphereCtf.m_radius = radius;
      set.m_sphereLocational = set.m_sphereCtf;
      set.m_bCtfSphereSet = 1;
      setHeadPoints(set);
      m_pass.tell("The head sphere was taken as the file gives it.");
    } else if (isLost) {
      m_unreadLeft.push_back(sphere.line);
    } else {
      m_pass.add({FindingCode::sphere,
                  Severity::wrong,
                  {},
                  sphere.line,
                  "MEG_Sphere",
                  {},
                  "The head sphere was not read as it stands in the file.",
                  "The sphere is taken as the file gives it."});
    }
  }
  constexpr double smallest = 30.0;  // mm
  constexpr double largest = 150.0;
  if (radius < smallest || radius > largest) {
    sayProblem(FindingCode::sphere, Severity::doubtful, sphere.line, "MEG_Sphere",
               "The head sphere has a radius that no head has; it may be given in another unit than cm.");
  }
}

void CtfAudit::lookAtFiducials() {
  const CtfPoints& own = m_reading.fiducials;
  const CtfPoints& other = m_reading.mriFiducials;
  const CtfPoints& points = own.isComplete() ? own : other;
  const bool isTaken = own.isRead && own.areTaken[0] && own.areTaken[1] && own.areTaken[2];
  if (own.line == 0 && other.line == 0) {
    return;
  }
  if (!points.isComplete()) {
    if (!isTaken) {
      sayProblem(FindingCode::fiducials, Severity::doubtful, own.line != 0 ? own.line : other.line,
                 own.line != 0 ? "Fid_Points" : "MRI_Fid_Points",
                 "The fiducial points are not given whole; the head points were taken from the sphere.");
    }
    return;
  }
  const Points meant = storedPoints(points);
  if (isTaken && other.isComplete() && own.isComplete() && storedPoints(other) != meant) {
    sayProblem(FindingCode::fiducials, Severity::doubtful, other.line, "MRI_Fid_Points",
               "The file gives two sets of fiducial points that differ; those of Fid_Points were taken.");
  }
  if (isTaken || holds(m_pass.set().m_fiducialMri, meant)) {
    return;
  }
  const bool isLost = own.line != 0 && !own.isRead && own.isComplete();
  const FindingCode code = isLost ? FindingCode::encoding : FindingCode::fiducials;
  if (m_pass.repairs(code)) {
    CFiducialzq& set = m_pass.target().m_fiducialMri;
    set.resetAllFiducialPt();
    set.setNasionf(meant[0][0], meant[0][1], meant[0][2]);
    set.setLeftEarf(meant[1][0], meant[1][1], meant[1][2]);
    set.setRightEarf(meant[2][0], meant[2][1], meant[2][2]);
    setHeadPoints(m_pass.target());
    m_pass.tell("The fiducial points were taken as the file gives them.");
  } else if (isLost) {
    m_unreadLeft.push_back(own.line);
  } else {
    m_pass.add({FindingCode::fiducials,
                Severity::doubtful,
                {},
                points.line,
                own.isComplete() ? "Fid_Points" : "MRI_Fid_Points",
                {},
                "The fiducial points of the file were not read; the head points were taken from the sphere, "
                "which says nothing about this head.",
                "The points are taken from the file."});
  }
}

// A section of the head that comes again and says something else: which of them is right is open.
void CtfAudit::lookAtRepeated() {
  const auto say = [this](int line, std::string_view section, const std::string& what) {
    sayProblem(FindingCode::sections, Severity::wrong, line, section,
               "The file gives " + what + " more than once, and differently; which is right is open.");
  };
  for (const CtfPoints& points : m_reading.earlierPoints) {
    const CtfPoints& last = points.isOfMri ? m_reading.mriFiducials : m_reading.fiducials;
    if (contradict(points.points, last.points)) {
      say(points.line, points.isOfMri ? "MRI_Fid_Points" : "Fid_Points", "the fiducial points");
    }
  }
  for (const CtfSphere& sphere : m_reading.moreSpheres) {
    if (contradict(sphere.meant, m_reading.sphere.meant)) {
      say(sphere.line, "MEG_Sphere", "the head sphere");
    }
  }
}

// What a byte order mark or another encoding hid from the import.
void CtfAudit::lookAtUnread() {
  if (!m_encoding.hasMark()) {
    return;
  }
  const bool hidesRows = !isRepairedByRows();
  const auto hidden = std::find_if(
      m_reading.sections.begin(), m_reading.sections.end(),
      [](const CtfSection& section) { return !section.isRead && section.kind == CtfKind::moving; });
  const bool hidesMoving = hidden != m_reading.sections.end();
  if (m_unreadLeft.empty() && !hidesRows && !hidesMoving) {
    return;
  }
  const std::string what = m_encoding.isUtf16()
                               ? "The file is written in UTF-16, which the import cannot read"
                               : "The file begins with a byte order mark, which hides its "
                                 "first section from the import";
  const bool canRepair = !m_unreadLeft.empty() || (hidesRows && !unreadDipoles().empty());
  m_pass.add({FindingCode::encoding,
              Severity::wrong,
              {},
              1,
              {},
              {},
              what + "; what stands there did not come.",
              canRepair ? "What stands there is decoded and taken." : ""});
}

}  // namespace host
