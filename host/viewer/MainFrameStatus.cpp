// The status bar and the title of the main window.
#include <algorithm>
#include <cmath>
#include <string>

#include "host/dipoles/DipoleVisibility.h"
#include "host/dipoles/HeaderText.h"
#include "host/head/Limits.h"
#include "host/session/PlaceTexts.h"
#include "host/text/PathText.h"
#include "host/text/Utf8.h"
#include "host/viewer/MainFrame.h"
#include "host/viewer/ScreenScale.h"

namespace host {

namespace {

CString number(double value, int decimals) {
  CString text;
  text.Format(_T("%.*f"), decimals, value);
  return text;
}

// A label may be longer than any status bar, and than its length can tell.
CString shortened(const CString& label) {
  constexpr int most = 200;
  return label.GetLength() > most ? label.Left(most) + _T("...") : label;
}

// Whether the crosshair can go there.
bool hasPlace(const CDipoleszq& dipole) {
  for (const double mm : dipole.m_location) {
    if (!(std::abs(mm) <= headReach)) {
      return false;
    }
  }
  return true;
}

}  // namespace

void MainFrame::showPointer(const Vector3& head) {
  const Volume& volume = *m_session->head().volume;
  const Vector3 index = volume.fromScanner()(m_session->head().frame.toScanner(head));
  CString text = _T("Pointer  ") + fromUtf8(headPlaceText(head));
  const auto& size = volume.dimensions();
  const int voxel[3] = {static_cast<int>(std::lround(index.x)), static_cast<int>(std::lround(index.y)),
                        static_cast<int>(std::lround(index.z))};
  bool isInside = true;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    isInside = isInside && voxel[axis] >= 0 && voxel[axis] < size[axis];
  }
  if (isInside) {
    CString place;
    place.Format(_T("   voxel %d %d %d = %g"), voxel[0], voxel[1], voxel[2],
                 static_cast<double>(volume.voxel(voxel[0], voxel[1], voxel[2])));
    text += place;
  }
  m_statusBar.SendMessage(SB_SETTEXTW, pointerPart, reinterpret_cast<LPARAM>(text.GetString()));
}

void MainFrame::hidePointer() {
  m_statusBar.SendMessage(SB_SETTEXTW, pointerPart, reinterpret_cast<LPARAM>(_T("")));
}

CString MainFrame::statusText(int part) const {
  const CWnd& bar = part < statusParts ? m_statusBar : m_placeBar;
  const WPARAM which = static_cast<WPARAM>(part < statusParts ? part : part - crosshairPart);
  const int length = LOWORD(bar.SendMessage(SB_GETTEXTLENGTHW, which));
  CString text;
  bar.SendMessage(SB_GETTEXTW, which, reinterpret_cast<LPARAM>(text.GetBuffer(length)));
  text.ReleaseBuffer();
  return text;
}

int MainFrame::widthOfText(const CString& text) const {
  const HDC screen = ::GetDC(m_statusBar.m_hWnd);
  const auto font = reinterpret_cast<HGDIOBJ>(m_statusBar.SendMessage(WM_GETFONT));
  const HGDIOBJ before = font != nullptr ? ::SelectObject(screen, font) : nullptr;
  SIZE size = {};
  ::GetTextExtentPoint32W(screen, text, text.GetLength(), &size);
  if (before != nullptr) {
    ::SelectObject(screen, before);
  }
  ::ReleaseDC(m_statusBar.m_hWnd, screen);
  return static_cast<int>(size.cx) + onScreen(14);
}

// The counts, with what they warn of, are always whole; the others share what is left.
void MainFrame::placeStatusParts() {
  CRect area;
  GetClientRect(&area);
  const int counts = widthOfText(statusText(countPart)) + ::GetSystemMetrics(SM_CXVSCROLL);  // the grip
  const int rest = (std::max)(0, area.Width() - counts);
  const int edges[statusParts] = {rest * 2 / 5, rest, -1};
  m_statusBar.SendMessage(SB_SETPARTS, statusParts, reinterpret_cast<LPARAM>(edges));
}

void MainFrame::showStatus() {
  const auto show = [this](StatusPart part, const CString& text) {
    m_statusBar.SendMessage(SB_SETTEXTW, part, reinterpret_cast<LPARAM>(text.GetString()));
  };
  showPlaces();

  CString dipole = _T("No current dipole");
  if (const CDipoleszq* const current = m_dipoles->getCurrentDipole()) {
    CString head;
    head.Format(_T("Dipole %d of %d  "), m_dipoles->m_currentDipole + 1, m_dipoles->m_totalDipoles);
    const auto value = [&](DipoleValue kind, double of, LPCTSTR unit) {
      return m_session->unknown().isUnknown(*current, kind) ? CString(_T("unknown")) : number(of, 1) + unit;
    };
    const bool isLabelled = !m_session->unknown().isUnknown(*current, DipoleValue::label);
    const bool isTimed = !m_session->unknown().isUnknown(*current, DipoleValue::latency);
    dipole =
        head + (isLabelled ? shortened(current->m_label) : CString(_T("label unknown"))) +
        (isTimed ? _T("   ") : _T("   latency ")) +
        value(DipoleValue::latency, current->m_latency, _T(" ms")) + _T("   error ") +
        value(DipoleValue::fitError, current->m_fitError, _T(" %")) + _T("   moment ") +
        value(DipoleValue::moment, current->m_moment, m_dipoles->m_momentInNAm != 0 ? _T(" nAm") : _T("")) +
        (hasPlace(*current) ? _T("") : _T("   NO PLACE IN THE HEAD"));
  }
  show(dipolePart, dipole);

  const VisibleCount count = countVisible(*m_dipoles, m_session->view());
  CString dipoles;
  dipoles.Format(_T("Dipoles shown: %d of %d"), count.shown, count.total);
  if (count.filtered > 0) {
    dipoles += _T(" (filter)");
  }
  if (!m_session->head().isRegistered()) {
    dipoles += _T("   MRI NOT REGISTERED");
  }
  if (dipoles != statusText(countPart)) {
    show(countPart, dipoles);
    placeStatusParts();
  }
}

void MainFrame::showTitle() {
  const CString& path = m_session->setPath();
  const CString patient = m_dipoles->m_totalDipoles > 0 ? fromUtf8(patientOf(*m_dipoles)) : CString();
  SetWindowText((path.IsEmpty() ? CString(_T("Untitled")) : fileNameOf(path)) +
                (m_session->isUnsaved() ? _T(" *") : _T("")) +
                (patient.IsEmpty() ? _T("") : _T(" - Patient ")) + shortened(patient) + _T(" - ") +
                fromUtf8(m_session->head().name) + _T(" - Dipole Viewer"));
}

void MainFrame::tellOfDroppedSteps() {
  const std::size_t dropped = m_session->history().droppedSteps();
  if (dropped > m_droppedSteps) {
    m_statusBar.SendMessage(SB_SETTEXTW, pointerPart,
                            reinterpret_cast<LPARAM>(_T("The oldest steps can no longer be undone")));
  }
  m_droppedSteps = dropped;
}

}  // namespace host
