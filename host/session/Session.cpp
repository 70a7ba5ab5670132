#include "host/session/Session.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/dipoles/HeaderText.h"
#include "host/dipoles/SetFiducials.h"
#include "host/exchange/ImportFile.h"
#include "host/exchange/JoinedSet.h"
#include "host/exchange/SetFile.h"
#include "host/exchange/TableFile.h"
#include "host/head/HeadFile.h"
#include "host/head/Limits.h"
#include "host/text/Failure.h"
#include "host/text/PathText.h"
#include "host/undo/SetBackup.h"

namespace host {

namespace {

// Where a registered head is looked at first: off the midline.
constexpr Vector3 amidTheBrain{15.0, 45.0, 0.0};

// How this system's file names are compared.
PathRule systemRule() {
  return std::filesystem::path::preferred_separator == '\\' ? PathRule::windows : PathRule::exact;
}

CString fullPath(const CString& path) {
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(pathOf(path), error);
  return error ? path : textOf(full);
}

bool isThere(const CString& path) {
  std::error_code error;
  return std::filesystem::exists(pathOf(path), error) || error;
}

}  // namespace

Session::Session(CDipoleFace9File& dipoles)
    : m_dipoles(dipoles),
      m_head(phantomHead()),
      m_window(m_head.volume->window()),
      m_crosshair(amidTheBrain),
      m_history(dipoles),
      m_savedState(m_history.state()),
      m_recentSets(systemRule()),
      m_recentHeads(systemRule()) {
  resetView();
}

void Session::resetView() {
  m_view = ViewSettings();
  m_view.unknown = &m_history.unknown();
}

void Session::setHead(Head head, std::string notice) {
  const std::array<std::optional<Vector3>, 3> unused = placedPoints();
  if (std::any_of(unused.begin(), unused.end(), [](const auto& point) { return point.has_value(); }))
    notice += std::string(notice.empty() ? "" : "\n") + "The fiducial points that were set are forgotten";
  const bool staysRegistered = m_head.isRegistered() && head.isRegistered();
  m_head = std::move(head);
  m_notice = std::move(notice);
  m_placed = {};
  if (!staysRegistered)
    m_crosshair = m_head.isRegistered() ? amidTheBrain : Vector3{};
  resetWindow();
}

void Session::openMri(const CString& path) {
  withinMemory([&] {
    const CString full = fullPath(path);
    try {
      RecentFiles recent = m_recentHeads;
      recent.add(full);
      OpenedHead opened = openHead(full);
      setHead(std::move(opened.head), std::move(opened.notice));
      m_recentHeads = std::move(recent);
    } catch (const std::runtime_error&) {
      if (!isThere(full))
        m_recentHeads.remove(full);
      throw;
    }
  });
}

void Session::usePhantom() {
  withinMemory([&] { setHead(phantomHead(), {}); });
}

void Session::setWindow(const GreyWindow& window) {
  if (std::isfinite(window.low) && std::isfinite(window.high) && window.low < window.high)
    m_window = window;
}

void Session::resetWindow() {
  m_window = m_head.volume->window();
}

void Session::registerHead(const Fiducials& points) {
  const HeadFrame frame = withinMemory([&] { return frameIn(*m_head.volume, points); });
  const Vector3 place = m_head.frame.toScanner(m_crosshair);
  m_head.frame = frame;
  m_head.fiducials = points;
  setCrosshair(frame.fromScanner(place));
}

void Session::unregister() {
  const Vector3 place = m_head.frame.toScanner(m_crosshair);
  m_head.frame = provisionalFrame(*m_head.volume);
  m_head.fiducials.reset();
  setCrosshair(m_head.frame.fromScanner(place));
}

Fiducials Session::fiducialsOfSet() const {
  return withinMemory([&] { return host::fiducialsOfSet(m_dipoles, *m_head.volume); });
}

void Session::placeFiducial(FiducialName name) {
  m_placed.at(static_cast<std::size_t>(name)) = m_head.frame.toScanner(m_crosshair);
}

std::array<bool, 3> Session::placedFiducials() const {
  return {m_placed[0].has_value(), m_placed[1].has_value(), m_placed[2].has_value()};
}

std::array<std::optional<Vector3>, 3> Session::placedPoints() const {
  std::array<std::optional<Vector3>, 3> points = m_placed;
  if (const std::optional<Fiducials>& used = m_head.fiducials) {
    const std::array<Vector3, 3> own = {used->nasion, used->leftEar, used->rightEar};
    for (std::size_t i = 0; i < points.size(); ++i)
      if (points.at(i) == own.at(i))
        points.at(i).reset();
  }
  for (std::optional<Vector3>& point : points)
    if (point)
      point = m_head.frame.fromScanner(*point);
  return points;
}

void Session::registerPlaced() {
  constexpr std::array<const char*, 3> missing = {"the nasion has not been placed yet",
                                                  "the left ear has not been placed yet",
                                                  "the right ear has not been placed yet"};
  withinMemory([&] {
    for (std::size_t i = 0; i < missing.size(); ++i)
      if (!m_placed.at(i))
        throw std::invalid_argument(missing.at(i));
  });
  registerHead({*m_placed[0], *m_placed[1], *m_placed[2]});
}

std::string Session::headMismatch() const {
  if (!m_head.isRegistered() || m_head.isPhantom)
    return {};
  return withinMemory([&] { return host::headMismatch(m_dipoles, *m_head.fiducials); });
}

void Session::setCrosshair(const Vector3& point) {
  if (!isFinite(point))
    return;
  for (int axis = 0; axis < 3; ++axis)
    m_crosshair[axis] = std::clamp(point[axis], -headReach, headReach);
}

bool Session::goToCurrentDipole() {
  const CDipoleszq* dipole = m_dipoles.getCurrentDipole();
  if (dipole == nullptr)
    return false;
  const Vector3 place{dipole->m_location[0], dipole->m_location[1], dipole->m_location[2]};
  for (int axis = 0; axis < 3; ++axis)
    if (!(std::abs(place[axis]) <= headReach))
      return false;
  m_crosshair = place;
  return true;
}

Session::ImportResult Session::importFiles(const std::vector<CString>& paths, const Progress& progress) {
  noteChange();
  CString name;
  ImportResult result = withinMemory([&] {
    name = _T("Import");
    return importAll(paths, progress);
  });
  noteChange(name);
  return result;
}

Session::ImportResult Session::importAll(const std::vector<CString>& paths, const Progress& progress) {
  ImportResult result;
  JoinedSet joined(m_dipoles.m_totalDipoles);
  const int total = static_cast<int>(paths.size());
  for (int done = 0; done < total && !result.cancelled; ++done) {
    const CString& path = paths[static_cast<std::size_t>(done)];
    if (progress && !progress(done, total, path)) {
      result.cancelled = true;
    } else {
      importNext(path, joined, result);
    }
  }
  result.files = static_cast<int>(joined.parts().size());
  result.dipoles = joined.set().m_totalDipoles;
  result.findings = joined.findings();
  for (const Finding& finding : result.findings) {
    if (finding.severity == Severity::wrong) {
      result.told.push_back(lineOf(finding));
    }
  }
  for (const std::string& warning : joined.warnings()) {
    result.told.push_back(warning);
  }
  if (m_dipoles.m_totalDipoles > 0) {
    addPatient(result.patients, patientOf(m_dipoles));
  }
  for (const std::string& patient : joined.patients()) {
    addPatient(result.patients, patient);
  }
  result.mixesPatients = result.patients.size() > 1;
  takeOver(joined);
  return result;
}

void Session::importNext(const CString& path, JoinedSet& joined, ImportResult& result) {
  const std::optional<DipoleFormat> format = dipoleFormatOf(path);
  if (!format || *format == DipoleFormat::set) {
    result.failed.push_back({path, "its name ends neither in .dip, .txt, .csv, .tsv nor .json"});
    return;
  }
  ImportedFile file = importFile(path, *format, utf8Of(fileNameOf(path)));
  for (const ModuleMessage& message : file.messages) {
    if (!message.isQuestion && !message.text.starts_with("Total imported dipoles")) {
      result.told.push_back(message.text);
    }
  }
  if (file.dipoles() == 0) {
    result.failed.push_back({path, file.failure.empty() ? "it holds no dipoles" : file.failure});
    return;
  }
  if (file.set->m_totalDipoles > joined.room()) {
    result.failed.push_back({path, "the set has room for " + std::to_string(joined.room()) +
                                       " more dipoles, the file holds " +
                                       std::to_string(file.set->m_totalDipoles)});
    return;
  }
  if (result.headMismatch.empty() && m_head.isRegistered() && !m_head.isPhantom) {
    result.headMismatch = host::headMismatch(*file.set, *m_head.fiducials);
  }
  joined.add(std::move(file));
}

// All of them, or by an exception none.
void Session::takeOver(const JoinedSet& joined) {
  if (joined.parts().empty()) {
    return;
  }
  SetBackup before(m_dipoles);
  try {
    appendTo(m_dipoles, joined.set());
    m_history.unknown().mark(m_dipoles, joined.unknown());
  } catch (...) {
    before.restore();
    throw;
  }
}

// The set becomes that of another collection, and has no history.
void Session::replaceSet(CDipoleFace9File& source, CString path) {
  RecentFiles recent = m_recentSets;
  recent.add(path);
  m_history.startFrom(imageOf(source));
  m_recentSets = std::move(recent);
  m_setPath = std::move(path);
  m_colours.reset();
  markSaved();
}

void Session::openSet(const CString& path) {
  withinMemory([&] {
    const CString full = fullPath(path);
    try {
      replaceSet(*readSet(full), full);
    } catch (const std::runtime_error&) {
      if (!isThere(full))
        m_recentSets.remove(full);
      throw;
    }
  });
}

void Session::newSet() {
  withinMemory([&] { replaceSet(*std::make_unique<CDipoleFace9File>(), CString()); });
}

void Session::saveSet(const CString& path) {
  noteChange();
  withinMemory([&] {
    CString full = fullPath(path);
    RecentFiles recent = m_recentSets;
    recent.add(full);
    writeSet(m_dipoles, full);
    m_recentSets = std::move(recent);
    m_setPath = std::move(full);
  });
  markSaved();
}

void Session::exportText(const CString& path) {
  withinMemory([&] { writeSpreadsheetText(m_dipoles, path); });
}

void Session::exportTable(const CString& path) {
  withinMemory([&] { writeTable(m_dipoles, unknown().in(m_dipoles), path); });
}

std::string Session::lossOfSaving() const {
  return withinMemory([&] { return lossOf(unknown().in(m_dipoles)); });
}

void Session::markUnknown(const UnknownValues& values) {
  withinMemory([&] { m_history.unknown().mark(m_dipoles, values); });
  m_colours.reset();
}

void Session::markSaved() {
  m_savedState = m_history.state();
  m_isUncertain = false;
}

bool Session::isUnsaved() const {
  return m_isUncertain || m_history.state() != m_savedState;
}

bool Session::noteChange(const CString& command) {
  const UndoHistory::Recorded recorded = m_history.record(command);
  if (recorded == UndoHistory::Recorded::nothing) {
    m_isUncertain = false;
    return false;
  }
  m_isUncertain = recorded == UndoHistory::Recorded::noMemory;
  m_colours.reset();
  return true;
}

UndoHistory::Moved Session::undo() {
  m_colours.reset();
  return m_history.undo();
}

UndoHistory::Moved Session::redo() {
  m_colours.reset();
  return m_history.redo();
}

const ValueColors* Session::colours() {
  if (!m_view.colourBy)
    return nullptr;
  if (!m_colours || m_coloursOf != m_view.colourBy) {
    withinMemory([&] { m_colours.emplace(m_dipoles, *m_view.colourBy, &unknown()); });
    m_coloursOf = m_view.colourBy;
  }
  return &*m_colours;
}

}  // namespace host
