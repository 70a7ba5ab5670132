#include "host/session/Session.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/dipoles/SetFiducials.h"
#include "host/exchange/SetFile.h"
#include "host/exchange/TableFile.h"
#include "host/head/HeadFile.h"
#include "host/head/Limits.h"
#include "host/text/Failure.h"
#include "host/text/PathText.h"

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

// Opens a file; one that cannot be opened because it is not there any more leaves the recent ones.
template <typename Open>
void forgettingWhatIsGone(RecentFiles& recent, const CString& path, Open open) {
  try {
    open();
  } catch (const std::runtime_error&) {
    if (!isThere(path)) {
      recent.remove(path);
    }
    throw;
  }
}

}  // namespace

Session::Session(CDipoleFace9File& dipoles)
    : m_dipoles(dipoles),
      m_head(phantomHead()),
      m_window(m_head.volume->window()),
      m_crosshair(amidTheBrain),
      m_history(dipoles),
      m_audited(dipoles),
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
  if (std::any_of(unused.begin(), unused.end(), [](const auto& point) { return point.has_value(); })) {
    notice += std::string(notice.empty() ? "" : "\n") + "The fiducial points that were set are forgotten";
  }
  const bool staysRegistered = m_head.isRegistered() && head.isRegistered();
  m_head = std::move(head);
  m_notice = std::move(notice);
  m_placed = {};
  m_findings.reset();
  if (!staysRegistered) {
    m_crosshair = m_head.isRegistered() ? amidTheBrain : Vector3{};
  }
  resetWindow();
}

void Session::openMri(const CString& path) {
  withinMemory([&] {
    const CString full = fullPath(path);
    forgettingWhatIsGone(m_recentHeads, full, [&] {
      RecentFiles recent = m_recentHeads;
      recent.add(full);
      OpenedHead opened = openHead(full);
      std::string notice = std::move(opened.notice);
      if (!opened.question.empty()) {
        notice += (notice.empty() ? "" : "\n") + opened.question + ", so they were not taken";
      }
      setHead(std::move(opened.head), std::move(notice));
      m_recentHeads = std::move(recent);
    });
  });
}

void Session::usePhantom() {
  withinMemory([&] { setHead(phantomHead(), {}); });
}

void Session::setWindow(const GreyWindow& window) {
  if (std::isfinite(window.low) && std::isfinite(window.high) && window.low < window.high) {
    m_window = window;
  }
}

void Session::resetWindow() {
  m_window = m_head.volume->window();
}

void Session::registerHead(const Fiducials& points) {
  const Vector3 place = m_head.frame.toScanner(m_crosshair);
  withinMemory([&] { host::registerHead(m_head, points); });
  m_findings.reset();
  setCrosshair(m_head.frame.fromScanner(place));
}

void Session::unregister() {
  const Vector3 place = m_head.frame.toScanner(m_crosshair);
  m_head.frame = provisionalFrame(*m_head.volume);
  m_head.fiducials.reset();
  m_findings.reset();
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
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (points.at(i) == own.at(i)) {
        points.at(i).reset();
      }
    }
  }
  for (std::optional<Vector3>& point : points) {
    if (point) {
      point = m_head.frame.fromScanner(*point);
    }
  }
  return points;
}

void Session::registerPlaced() {
  constexpr std::array<const char*, 3> missing = {"the nasion has not been placed yet",
                                                  "the left ear has not been placed yet",
                                                  "the right ear has not been placed yet"};
  withinMemory([&] {
    for (std::size_t i = 0; i < missing.size(); ++i) {
      if (!m_placed.at(i)) {
        throw std::invalid_argument(missing.at(i));
      }
    }
  });
  registerHead({*m_placed[0], *m_placed[1], *m_placed[2]});
}

std::string Session::headMismatch() const {
  if (!m_head.isRegistered() || m_head.isPhantom) {
    return {};
  }
  return withinMemory([&] { return host::headMismatch(m_dipoles, *m_head.fiducials); });
}

void Session::setCrosshair(const Vector3& point) {
  if (!isFinite(point)) {
    return;
  }
  for (int axis = 0; axis < 3; ++axis) {
    m_crosshair[axis] = std::clamp(point[axis], -headReach, headReach);
  }
}

bool Session::goToCurrentDipole() {
  const CDipoleszq* dipole = m_dipoles.getCurrentDipole();
  if (dipole == nullptr) {
    return false;
  }
  const Vector3 place{dipole->m_location[0], dipole->m_location[1], dipole->m_location[2]};
  for (int axis = 0; axis < 3; ++axis) {
    if (!(std::abs(place[axis]) <= headReach)) {
      return false;
    }
  }
  m_crosshair = place;
  return true;
}

// The set becomes that of another collection, and has no history.
void Session::replaceSet(CDipoleFace9File& source, CString path) {
  RecentFiles recent = m_recentSets;
  recent.add(path);
  m_history.startFrom(imageOf(source));
  m_recentSets = std::move(recent);
  m_setPath = std::move(path);
  m_colours.reset();
  m_audited.startAnew();
  m_findings.reset();
  markSaved();
}

void Session::openSet(const CString& path) {
  withinMemory([&] {
    const CString full = fullPath(path);
    forgettingWhatIsGone(m_recentSets, full, [&] { replaceSet(*readSet(full), full); });
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
  m_findings.reset();
  if (!m_isUncertain) {
    m_audited.noteState(m_history);
  }
  return true;
}

UndoHistory::Moved Session::moveBy(UndoHistory::Moved (UndoHistory::*move)()) {
  m_colours.reset();
  m_findings.reset();
  const UndoHistory::Moved moved = (m_history.*move)();
  if (moved == UndoHistory::Moved::done) {
    m_audited.noteMove(m_history);
  }
  return moved;
}

const ValueColors* Session::colours() {
  if (!m_view.colourBy) {
    return nullptr;
  }
  if (!m_colours || m_coloursOf != m_view.colourBy) {
    withinMemory([&] { m_colours.emplace(m_dipoles, *m_view.colourBy, &unknown()); });
    m_coloursOf = m_view.colourBy;
  }
  return &*m_colours;
}

}  // namespace host
