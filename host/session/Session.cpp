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
#include "host/head/HeadFile.h"
#include "host/head/Limits.h"
#include "host/session/OpenedFile.h"
#include "host/text/Failure.h"
#include "host/text/PathText.h"

namespace host {

namespace {

// How this system's file names are compared.
PathRule systemRule() {
  return std::filesystem::path::preferred_separator == '\\' ? PathRule::windows : PathRule::exact;
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

void Session::setWindow(const GreyWindow& window) {
  if (std::isfinite(window.low) && std::isfinite(window.high) && window.low < window.high) {
    m_window = window;
  }
}

void Session::resetWindow() {
  m_window = m_head.volume->window();
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

std::vector<std::string> Session::exportSet(const CString& path, ExportFormat format) {
  return withinMemory(
      [&] { return host::exportSet(m_dipoles, unknown().in(m_dipoles), format, path, knownHead()); });
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

const DipoleColors* Session::colours() {
  if (m_view.colourBy == ColourBy::own) {
    return nullptr;
  }
  const bool isByCluster = m_view.colourBy == ColourBy::cluster;
  const ColoursOf wanted{m_view.colourBy, isByCluster ? m_view.filter : DipoleFilter(), m_view.clusters};
  if (!m_colours || !(m_coloursOf == wanted)) {
    ViewSettings settings = m_view;
    settings.unknown = &unknown();
    withinMemory([&] { m_colours = colorsOf(m_dipoles, settings); });
    m_coloursOf = wanted;
  }
  return &*m_colours;
}

}  // namespace host
