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
#include "host/exchange/SetFile.h"
#include "host/exchange/TableFile.h"
#include "host/head/HeadFile.h"
#include "host/head/Limits.h"
#include "host/session/ImportOne.h"
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

void addPatient(std::vector<std::string>& patients, const CDipoleFace& set) {
  std::string patient = patientOf(set);
  if (!patient.empty() && std::find(patients.begin(), patients.end(), patient) == patients.end())
    patients.push_back(std::move(patient));
}

ImportedFile importAny(CDipoleFace9File& set, const CString& path, UnknownValues& unknown) {
  if (!tableFormatOf(path))
    return importOne(set, path);
  try {
    const int dipoles = addTable(set, path, unknown);
    return {dipoles, dipoles == 0 ? "it holds no dipoles" : ""};
  } catch (const std::runtime_error& problem) {
    return {0, problem.what()};
  }
}

}  // namespace

Session::Session(CDipoleFace9File& dipoles)
    : m_dipoles(dipoles),
      m_head(phantomHead()),
      m_window(m_head.volume->window()),
      m_crosshair(amidTheBrain),
      m_history(dipoles),
      m_savedState(m_history.state()),
      m_recentSets(systemRule()) {
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
    OpenedHead opened = openHead(path);
    setHead(std::move(opened.head), std::move(opened.notice));
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

// All of them, or by an exception none.
Session::ImportResult Session::importAll(const std::vector<CString>& paths, const Progress& progress) {
  SetBackup before(m_dipoles);
  try {
    UnknownValues unknown;
    ImportResult result = importEach(paths, progress, unknown);
    m_history.unknown().mark(m_dipoles, unknown);
    return result;
  } catch (...) {
    before.restore();
    throw;
  }
}

Session::ImportResult Session::importEach(const std::vector<CString>& paths, const Progress& progress,
                                          UnknownValues& unknown) {
  const int total = static_cast<int>(paths.size());
  const int unitBefore = m_dipoles.m_momentInNAm;
  bool isInNAm = m_dipoles.m_totalDipoles == 0 || unitBefore != 0;
  ImportResult result;
  if (m_dipoles.m_totalDipoles > 0)
    addPatient(result.patients, m_dipoles);
  for (int done = 0; done < total; ++done) {
    const CString& path = paths[static_cast<std::size_t>(done)];
    if (progress && !progress(done, total, path)) {
      result.cancelled = true;
      break;
    }
    m_dipoles.m_momentInNAm = 0;  // a file that does not say nAm leaves this as it is
    ImportedFile file = importAny(m_dipoles, path, unknown);
    if (file.dipoles == 0) {
      result.failed.push_back({path, std::move(file.cause)});
      continue;
    }
    ++result.files;
    result.dipoles += file.dipoles;
    isInNAm = isInNAm && m_dipoles.m_momentInNAm != 0;
    addPatient(result.patients, m_dipoles);
  }
  m_dipoles.m_momentInNAm = result.files == 0 ? unitBefore : isInNAm ? 1 : 0;
  result.mixesPatients = result.patients.size() > 1;
  return result;
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
