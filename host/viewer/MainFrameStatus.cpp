// The status bar and the title of the main window.
#include <algorithm>
#include <cmath>
#include <string>

#include "host/dipoles/DipoleVisibility.h"
#include "host/dipoles/HeaderText.h"
#include "host/head/Limits.h"
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

// With the patient's sides instead of signs.
CString placeText(const Vector3& head) {
  const auto part = [](double mm, LPCTSTR positive, LPCTSTR negative) {
    return (mm < 0.0 ? negative : positive) + number(std::abs(mm), 1);
  };
  return part(head.x, _T("L "), _T("R ")) + part(head.y, _T("  S "), _T("  I ")) +
         part(head.z, _T("  A "), _T("  P ")) + _T(" mm");
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
  CString text = _T("Pointer  ") + placeText(head);
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
  const WPARAM which = static_cast<WPARAM>(part);
  const int length = LOWORD(m_statusBar.SendMessage(SB_GETTEXTLENGTHW, which));
  CString text;
  m_statusBar.SendMessage(SB_GETTEXTW, which, reinterpret_cast<LPARAM>(text.GetBuffer(length)));
  text.ReleaseBuffer();
  return text;
}

// The crosshair and the counts, with what they warn of, are always whole; the others share what is left.
void MainFrame::placeStatusParts() {
  CRect area;
  GetClientRect(&area);
  const HDC screen = ::GetDC(m_statusBar.m_hWnd);
  const auto font = reinterpret_cast<HGDIOBJ>(m_statusBar.SendMessage(WM_GETFONT));
  const HGDIOBJ before = font != nullptr ? ::SelectObject(screen, font) : nullptr;
  const auto widthOf = [&](const CString& text) {
    SIZE size = {};
    ::GetTextExtentPoint32W(screen, text, text.GetLength(), &size);
    return static_cast<int>(size.cx) + onScreen(14);  // with the part's edges
  };
  const int crosshair = widthOf(_T("Crosshair  ") + placeText({-188.8, -188.8, -188.8}));
  const int counts = widthOf(statusText(countPart)) + ::GetSystemMetrics(SM_CXVSCROLL);  // the grip
  if (before != nullptr) {
    ::SelectObject(screen, before);
  }
  ::ReleaseDC(m_statusBar.m_hWnd, screen);
  const int rest = (std::max)(0, area.Width() - crosshair - counts);
  const int pointer = rest * 2 / 5;
  const int edges[statusParts] = {pointer, pointer + crosshair, rest + crosshair, -1};
  m_statusBar.SendMessage(SB_SETPARTS, statusParts, reinterpret_cast<LPARAM>(edges));
}

void MainFrame::showStatus() {
  const auto show = [this](StatusPart part, const CString& text) {
    m_statusBar.SendMessage(SB_SETTEXTW, part, reinterpret_cast<LPARAM>(text.GetString()));
  };
  show(crosshairPart, _T("Crosshair  ") + placeText(m_session->crosshair()));

  CString dipole = _T("No current dipole");
  if (const CDipoleszq* const current = m_dipoles->getCurrentDipole()) {
    CString head;
    head.Format(_T("Dipole %d of %d  "), m_dipoles->m_currentDipole + 1, m_dipoles->m_totalDipoles);
    const auto value = [&](DipoleValue kind, double of, LPCTSTR unit) {
      return m_session->unknown().isUnknown(*current, kind) ? CString(_T("unknown")) : number(of, 1) + unit;
    };
    const bool isTimed = !m_session->unknown().isUnknown(*current, DipoleValue::latency);
    dipole =
        head + shortened(current->m_label) + (isTimed ? _T("   ") : _T("   latency ")) +
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
