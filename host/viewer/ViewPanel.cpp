#include "host/viewer/ViewPanel.h"

#include <afxcmn.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

#include "host/dipoles/SetSwitches.h"
#include "host/text/Numbers.h"
#include "host/viewer/ColorChoices.h"
#include "host/viewer/ScreenScale.h"

namespace host {

namespace {

// Where the tolerance slider stops, mm; the first is the slice alone, behind the last come all depths.
constexpr std::array tolerances{0.0, 1.0, 2.0, 3.0, 5.0, 7.5, 10.0, 15.0, 20.0, 30.0, 50.0};
constexpr int allDepths = static_cast<int>(tolerances.size());

constexpr int smallestGlyph = 3;  // pixels
constexpr int largestGlyph = 31;
constexpr int smallestBall = 2;  // half mm
constexpr int largestBall = 16;

constexpr int lineHeight = 16;  // pixels at 96 dots per inch, of a step of the scroll bar

CString textOf(double value) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  return CString(std::string(digits.data(), end.ptr).c_str());
}

enum class Typed { nothing, number, mistake };

// A number with a point or a comma, and blanks around it.
Typed readNumber(const CString& text, double& value) {
  std::string digits;
  for (int i = 0; i < text.GetLength(); ++i) {
    const TCHAR unit = text[i];
    if (unit == _T(',')) {
      digits += '.';
    } else if (unit != _T(' ')) {
      digits += unit < 128 ? static_cast<char>(unit) : '?';
    }
  }
  if (digits.empty()) {
    return Typed::nothing;
  }
  const std::optional<double> number = numberOf(digits);
  value = number.value_or(value);
  return number ? Typed::number : Typed::mistake;
}

CString toleranceText(const ViewSettings& view) {
  if (!view.toleranceMm) {
    return _T("in all depths");
  }
  if (*view.toleranceMm == 0.0) {
    return _T("on this slice only");
  }
  return _T("within ") + textOf(*view.toleranceMm) + _T(" mm of the slice");
}

int sliderStop(const std::optional<double>& tolerance) {
  if (!tolerance) {
    return allDepths;
  }
  int nearest = 0;
  for (int stop = 1; stop < allDepths; ++stop) {
    if (std::abs(tolerances[static_cast<std::size_t>(stop)] - *tolerance) <
        std::abs(tolerances[static_cast<std::size_t>(nearest)] - *tolerance)) {
      nearest = stop;
    }
  }
  return nearest;
}

// The limit of the filter that a field holds, null for another field.
std::optional<double>* limitOf(DipoleFilter& filter, UINT field) {
  switch (field) {
    case IDC_FILTER_ERROR_LEAST:
      return &filter.fitError.least;
    case IDC_FILTER_ERROR_MOST:
      return &filter.fitError.most;
    case IDC_FILTER_MOMENT_LEAST:
      return &filter.moment.least;
    case IDC_FILTER_MOMENT_MOST:
      return &filter.moment.most;
    case IDC_FILTER_LATENCY_LEAST:
      return &filter.latency.least;
    case IDC_FILTER_LATENCY_MOST:
      return &filter.latency.most;
    default:
      return nullptr;
  }
}

}  // namespace

BEGIN_MESSAGE_MAP(ViewPanel, CDialog)
ON_WM_SIZE()
ON_WM_HSCROLL()
ON_WM_VSCROLL()
ON_WM_MOUSEWHEEL()
ON_CBN_SELCHANGE(IDC_COLOR_BY, &ViewPanel::OnColorBy)
ON_BN_CLICKED(IDC_FILTER_CLEAR, &ViewPanel::OnClearFilter)
ON_CONTROL_RANGE(BN_CLICKED, ID_VIEW_SHOW_DIPOLES, ID_VIEW_LEGEND, &ViewPanel::OnSwitch)
ON_CONTROL_RANGE(EN_CHANGE, IDC_LATENCY_FROM, IDC_FILTER_LATENCY_MOST, &ViewPanel::OnLimit)
ON_CONTROL_RANGE(EN_KILLFOCUS, IDC_LATENCY_FROM, IDC_FILTER_LATENCY_MOST, &ViewPanel::OnLeaveField)
END_MESSAGE_MAP()

BOOL ViewPanel::createIn(CWnd* frame) {
  return Create(IDD_VIEW_PANEL, frame);
}

BOOL ViewPanel::OnInitDialog() {
  CDialog::OnInitDialog();
  GetClientRect(&m_whole);
  SendDlgItemMessage(IDC_TOLERANCE, TBM_SETRANGE, TRUE, MAKELPARAM(0, allDepths));
  SendDlgItemMessage(IDC_GLYPH_SIZE, TBM_SETRANGE, TRUE, MAKELPARAM(smallestGlyph, largestGlyph));
  SendDlgItemMessage(IDC_BALL_SIZE, TBM_SETRANGE, TRUE, MAKELPARAM(smallestBall, largestBall));
  for (const LPCTSTR choice :
       {_T("Each dipole's own"), _T("Latency"), _T("Fit error"), _T("Moment"), _T("Cluster")}) {
    SendDlgItemMessage(IDC_COLOR_BY, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choice));
  }
  refresh();
  return FALSE;  // the focus stays where it is
}

int ViewPanel::widthFor(int height) const {
  return m_whole.Width() + (height < m_whole.Height() ? ::GetSystemMetrics(SM_CXVSCROLL) : 0);
}

// The system takes the scroll bar away when everything is in sight.
void ViewPanel::OnSize(UINT /*type*/, int /*width*/, int height) {
  const SCROLLINFO info = {
      sizeof info, SIF_RANGE | SIF_PAGE, 0, m_whole.Height() - 1, static_cast<UINT>(height), 0, 0};
  ::SetScrollInfo(m_hWnd, SB_VERT, &info, TRUE);
  scrollTo(m_top);
}

void ViewPanel::scrollTo(int top) {
  CRect area;
  GetClientRect(&area);
  const int wanted = std::clamp(top, 0, (std::max)(0, m_whole.Height() - area.Height()));
  if (wanted == m_top) {
    return;
  }
  ::ScrollWindow(m_hWnd, 0, m_top - wanted, nullptr, nullptr);
  m_top = wanted;
  const SCROLLINFO info = {sizeof info, SIF_POS, 0, 0, 0, m_top, 0};
  ::SetScrollInfo(m_hWnd, SB_VERT, &info, TRUE);
}

void ViewPanel::OnVScroll(UINT code, UINT /*position*/, CScrollBar* /*control*/) {
  SCROLLINFO info = {sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
  ::GetScrollInfo(m_hWnd, SB_VERT, &info);
  const int page = static_cast<int>(info.nPage);
  switch (code) {
    case SB_LINEUP:
      return scrollTo(m_top - onScreen(lineHeight));
    case SB_LINEDOWN:
      return scrollTo(m_top + onScreen(lineHeight));
    case SB_PAGEUP:
      return scrollTo(m_top - page);
    case SB_PAGEDOWN:
      return scrollTo(m_top + page);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return scrollTo(info.nTrackPos);
    case SB_TOP:
      return scrollTo(0);
    case SB_BOTTOM:
      return scrollTo(m_whole.Height());
    default:
      return;
  }
}

BOOL ViewPanel::OnMouseWheel(UINT /*flags*/, short delta, CPoint /*at*/) {
  constexpr int linesPerNotch = 3;
  scrollTo(m_top - linesPerNotch * onScreen(lineHeight) * delta / WHEEL_DELTA);
  return TRUE;
}

void ViewPanel::bringFocusIntoView() {
  const HWND focus = ::GetFocus();
  if (focus == m_focus) {
    return;
  }
  m_focus = focus;
  if (focus == nullptr || ::IsChild(m_hWnd, focus) == FALSE) {
    return;
  }
  CRect area;
  GetClientRect(&area);
  CRect place;
  ::GetWindowRect(focus, &place);
  ScreenToClient(&place);
  if (place.top < 0) {
    scrollTo(m_top + place.top);
  } else if (place.bottom > area.bottom) {
    scrollTo(m_top + place.bottom - area.bottom);
  }
}

void ViewPanel::refresh() {
  m_isFilling = true;
  showSwitches();
  showSliders();
  showColourChoice();
  showLimits();
  m_isFilling = false;
}

void ViewPanel::showSwitches() {
  const CDipoleFace9File& set = m_session.dipoles();
  const auto show = [this](int box, bool isOn) { CheckDlgButton(box, isOn ? BST_CHECKED : BST_UNCHECKED); };
  show(ID_VIEW_SHOW_DIPOLES, set.isShowDipoleArray() != 0);
  show(ID_VIEW_CURRENT_ONLY, set.m_showCurrentDipoleOnly != 0);
  show(ID_VIEW_ARROWS, areArrowsShown(set));
  show(ID_VIEW_FIDUCIALS, set.getShowFiducialPt() != 0);
  show(ID_VIEW_OVERLAP, set.getShowDipole2DOverlap() != 0);
  show(ID_VIEW_LATENCY_WINDOW, set.getShowDipoleLatencySelected() != 0);
  show(ID_VIEW_LEGEND, m_session.view().showLegend);
}

void ViewPanel::showSliders() {
  const ViewSettings& view = m_session.view();
  const auto set = [this](int slider, int position) {
    SendDlgItemMessage(slider, TBM_SETPOS, TRUE, position);
  };
  set(IDC_TOLERANCE, sliderStop(view.toleranceMm));
  set(IDC_GLYPH_SIZE, view.glyphPixels);
  set(IDC_BALL_SIZE, static_cast<int>(std::lround(view.ballRadius * 2.0)));
  const bool overlaps = m_session.dipoles().getShowDipole2DOverlap() != 0;
  GetDlgItem(IDC_TOLERANCE)->EnableWindow(overlaps ? TRUE : FALSE);
  SetDlgItemText(IDC_TOLERANCE_TEXT, overlaps ? toleranceText(view) : CString(_T("on this slice only")));
}

void ViewPanel::showColourChoice() {
  const auto chosen = std::find(colorChoices.begin(), colorChoices.end(), m_session.view().colourBy);
  SendDlgItemMessage(IDC_COLOR_BY, CB_SETCURSEL, static_cast<WPARAM>(chosen - colorChoices.begin()));
  GetDlgItem(ID_VIEW_LEGEND)->EnableWindow(m_session.view().colourBy != ColourBy::own ? TRUE : FALSE);
}

// What the user is typing stays; another field is written only when it does not say the number already.
void ViewPanel::showLimits() {
  ViewSettings& view = m_session.view();
  CString mistake;
  const auto show = [&](int field, const std::optional<double>& value) {
    CString text;
    GetDlgItemText(field, text);
    double number = 0.0;
    const Typed typed = readNumber(text, number);
    if (typed == Typed::mistake) {
      mistake = text;
    }
    if (GetFocus() == GetDlgItem(field)) {
      return;
    }
    const bool isShown = value ? typed == Typed::number && number == *value : typed != Typed::number;
    if (!isShown) {
      SetDlgItemText(field, value ? textOf(*value) : CString());
    }
  };
  show(IDC_LATENCY_FROM, view.latency.from);
  show(IDC_LATENCY_TO, view.latency.to);
  for (int field = IDC_FILTER_ERROR_LEAST; field <= IDC_FILTER_LATENCY_MOST; ++field) {
    show(field, *limitOf(view.filter, static_cast<UINT>(field)));
  }
  if (!mistake.IsEmpty()) {
    SetDlgItemText(IDC_FILTER_TEXT, _T("Not a number: ") + mistake);
  } else {
    SetDlgItemText(IDC_FILTER_TEXT, view.filter.isSet() ? _T("Filter is on") : _T(""));
  }
}

void ViewPanel::changed() {
  refresh();
  m_onChange();
}

void ViewPanel::OnSwitch(UINT id) {
  GetParent()->SendMessage(WM_COMMAND, id);
}

void ViewPanel::OnHScroll(UINT /*code*/, UINT /*position*/, CScrollBar* control) {
  if (control == nullptr) {
    return;
  }
  ViewSettings& view = m_session.view();
  const int position = static_cast<int>(control->SendMessage(TBM_GETPOS));
  switch (control->GetDlgCtrlID()) {
    case IDC_TOLERANCE:
      view.toleranceMm.reset();
      if (position < allDepths) {
        view.toleranceMm = tolerances[static_cast<std::size_t>(position)];
      }
      break;
    case IDC_GLYPH_SIZE:
      view.glyphPixels = position;
      break;
    default:
      view.ballRadius = position * 0.5;
      break;
  }
  changed();
}

void ViewPanel::OnColorBy() {
  const LRESULT chosen = SendDlgItemMessage(IDC_COLOR_BY, CB_GETCURSEL);
  if (chosen >= 0) {
    m_session.view().colourBy = colorChoices[static_cast<std::size_t>(chosen)];
  }
  changed();
}

void ViewPanel::OnLimit(UINT id) {
  if (m_isFilling) {
    return;
  }
  CString text;
  GetDlgItemText(static_cast<int>(id), text);
  double number = 0.0;
  const Typed typed = readNumber(text, number);
  ViewSettings& view = m_session.view();
  if (std::optional<double>* const limit = limitOf(view.filter, id)) {
    // What is not a number limits nothing, and the panel says so.
    *limit = typed == Typed::number ? std::optional(number) : std::nullopt;
  } else if (typed == Typed::number) {
    (id == IDC_LATENCY_FROM ? view.latency.from : view.latency.to) = number;
  }
  changed();
}

// A latency window that was left without a number shows again what counts.
void ViewPanel::OnLeaveField(UINT /*id*/) {
  if (!m_isFilling) {
    refresh();
  }
}

void ViewPanel::OnClearFilter() {
  m_session.view().filter = DipoleFilter();
  for (int field = IDC_FILTER_ERROR_LEAST; field <= IDC_FILTER_LATENCY_MOST; ++field) {
    SetDlgItemText(field, _T(""));
  }
  changed();
}

}  // namespace host
