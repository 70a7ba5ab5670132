#include "host/viewer/FindingsWindow.h"

#include <algorithm>
#include <string>

#include "host/text/Utf8.h"

namespace host {

namespace {

enum Columns { fileColumn, severityColumn, codeColumn, lineColumn, sentenceColumn };

bool asksForUnit(const StandingFinding& finding) {
  return finding.finding.asksForUnit && !finding.finding.remedy.empty();
}

bool hasRemedy(const StandingFinding& finding) {
  return !finding.finding.asksForUnit && !finding.finding.remedy.empty();
}

CString fileOf(const StandingFinding& finding) {
  return finding.finding.file.empty() ? CString(_T("(dipole set)")) : fromUtf8(finding.finding.file);
}

}  // namespace

BEGIN_MESSAGE_MAP(FindingsWindow, CDialog)
ON_BN_CLICKED(IDC_FINDING_REPAIR, &FindingsWindow::OnRepair)
ON_BN_CLICKED(IDC_FINDING_CM, &FindingsWindow::OnCentimetre)
ON_BN_CLICKED(IDC_FINDING_MM, &FindingsWindow::OnMillimetre)
ON_NOTIFY(LVN_ITEMCHANGED, IDC_FINDING_LIST, &FindingsWindow::OnChosen)
END_MESSAGE_MAP()

BOOL FindingsWindow::createIn(CWnd* frame) {
  return Create(IDD_FINDINGS, frame);
}

BOOL FindingsWindow::OnInitDialog() {
  CDialog::OnInitDialog();
  m_list.Attach(::GetDlgItem(m_hWnd, IDC_FINDING_LIST));
  m_list.SetExtendedStyle(LVS_EX_FULLROWSELECT);
  addColumns();
  showChosen();
  return TRUE;
}

void FindingsWindow::addColumns() {
  CRect area;
  m_list.GetClientRect(&area);
  const int rest = area.Width() - ::GetSystemMetrics(SM_CXVSCROLL);
  m_list.InsertColumn(fileColumn, _T("File"), LVCFMT_LEFT, rest * 28 / 100);
  m_list.InsertColumn(severityColumn, _T("Severity"), LVCFMT_LEFT, rest * 9 / 100);
  m_list.InsertColumn(codeColumn, _T("Kind"), LVCFMT_LEFT, rest * 14 / 100);
  m_list.InsertColumn(lineColumn, _T("Line"), LVCFMT_RIGHT, rest * 6 / 100);
  m_list.InsertColumn(sentenceColumn, _T("What was found"), LVCFMT_LEFT, rest * 43 / 100);
}

void FindingsWindow::open() {
  refresh();
  const auto wrong = std::find_if(m_shown.begin(), m_shown.end(), [](const StandingFinding& finding) {
    return finding.finding.severity == Severity::wrong;
  });
  if (!m_shown.empty()) {
    choose(wrong != m_shown.end() ? static_cast<int>(wrong - m_shown.begin()) : 0);
  }
  ShowWindow(SW_SHOW);
  ::BringWindowToTop(m_hWnd);
  m_list.SetFocus();
}

void FindingsWindow::choose(int row) {
  m_list.SetItemState(-1, 0, LVIS_SELECTED);
  m_list.SetItemState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  m_list.EnsureVisible(row, FALSE);
}

void FindingsWindow::refresh() {
  if (m_session.findings() == m_shown) {
    return;
  }
  const int before = m_list.GetNextItem(-1, LVNI_SELECTED);
  m_shown = m_session.findings();
  m_isFilling = true;
  m_list.DeleteAllItems();
  for (int row = 0; row < static_cast<int>(m_shown.size()); ++row) {
    const StandingFinding& shown = m_shown[static_cast<std::size_t>(row)];
    m_list.InsertItem(row, fileOf(shown));
    m_list.SetItemText(row, severityColumn, fromUtf8(std::string(nameOf(shown.finding.severity))));
    m_list.SetItemText(row, codeColumn, fromUtf8(std::string(nameOf(shown.finding.code))));
    m_list.SetItemText(row, lineColumn,
                       shown.finding.line > 0 ? fromUtf8(std::to_string(shown.finding.line)) : CString());
    m_list.SetItemText(row, sentenceColumn, fromUtf8(shown.finding.sentence));
  }
  m_isFilling = false;
  if (!m_shown.empty()) {
    choose((std::min)((std::max)(before, 0), static_cast<int>(m_shown.size()) - 1));
  }
  showChosen();
}

std::vector<StandingFinding> FindingsWindow::chosen() const {
  std::vector<StandingFinding> chosen;
  for (int row = m_list.GetNextItem(-1, LVNI_SELECTED); row >= 0;
       row = m_list.GetNextItem(row, LVNI_SELECTED)) {
    chosen.push_back(m_shown.at(static_cast<std::size_t>(row)));
  }
  return chosen;
}

// The dipoles by their numbers and labels, as the manager's list has them.
CString FindingsWindow::textOf(const StandingFinding& finding) const {
  constexpr std::size_t most = 12;
  CString text = fromUtf8(lineOf(finding.finding));
  const std::vector<int>& slots = finding.finding.slots;
  if (!slots.empty()) {
    CString dipoles;
    dipoles.Format(_T("\r\n\r\nDipoles concerned: %u:"), static_cast<unsigned>(slots.size()));
    for (std::size_t i = 0; i < (std::min)(slots.size(), most); ++i) {
      if (const CDipoleszq* const dipole = m_session.dipoles().m_dipoles[slots[i]]) {
        CString one;
        one.Format(_T("%s %d "), i == 0 ? _T("") : _T(","), dipole->m_number);
        dipoles += one + dipole->m_label.Left(40);
      }
    }
    text += dipoles + (slots.size() > most ? _T(", ...") : _T("."));
  }
  const CString remedy =
      finding.finding.remedy.empty()
          ? CString(
                _T("There is none that would be certain: compare with the file, or have it written anew."))
          : fromUtf8(finding.finding.remedy);
  return text + _T("\r\n\r\nRemedy: ") + remedy;
}

void FindingsWindow::showChosen() {
  const std::vector<StandingFinding> now = chosen();
  CString text;
  for (const StandingFinding& finding : now) {
    text += (text.IsEmpty() ? CString() : CString(_T("\r\n\r\n"))) + textOf(finding);
  }
  if (m_shown.empty()) {
    text = _T("Nothing is to be said of the files that the dipoles came from.");
  }
  SetDlgItemText(IDC_FINDING_TEXT, text);
  const auto enable = [this](int button, bool isOn) {
    GetDlgItem(button)->EnableWindow(isOn ? TRUE : FALSE);
  };
  const bool isUnit = std::any_of(now.begin(), now.end(), asksForUnit);
  enable(IDC_FINDING_REPAIR, std::any_of(now.begin(), now.end(), hasRemedy));
  enable(IDC_FINDING_CM, isUnit);
  enable(IDC_FINDING_MM, isUnit);
}

void FindingsWindow::OnChosen(NMHDR* /*notice*/, LRESULT* /*result*/) {
  if (!m_isFilling) {
    showChosen();
  }
}

void FindingsWindow::repair(std::optional<LengthUnit> unit) {
  std::vector<StandingFinding> wanted = chosen();
  std::erase_if(wanted, [&](const StandingFinding& finding) {
    return !(unit ? asksForUnit(finding) : hasRemedy(finding));
  });
  m_repair(wanted, unit);
}

}  // namespace host
