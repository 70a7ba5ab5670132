#include "ui/ListDipoles.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "collection/WithinMemory.h"
#include "ui/DipoleFacezq.h"
#include "ui/DlgDipoleManagerzq.h"
#include "ui/OwnedIcon.h"
#include "ui/WindowTools.h"
#include "ui/resource.h"

namespace {

constexpr int columnWidth = 80;  // pixels at 96 dots per inch

class Flag {
 public:
  explicit Flag(bool& flag) : m_flag(flag), m_before(flag) { flag = true; }
  ~Flag() { m_flag = m_before; }
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;

 private:
  bool& m_flag;
  bool m_before;
};

// Holds the drawing of a window back, so that it changes at once.
class StillWindow {
 public:
  explicit StillWindow(CWnd& window) : m_window(window) { window.SetRedraw(FALSE); }
  ~StillWindow() {
    m_window.SetRedraw(TRUE);
    m_window.Invalidate();
  }
  StillWindow(const StillWindow&) = delete;
  StillWindow& operator=(const StillWindow&) = delete;

 private:
  CWnd& m_window;
};

std::unique_ptr<CImageList> makeImages(int size) {
  auto images = std::make_unique<CImageList>();
  images->Create(size, size, ILC_COLOR16 | ILC_MASK, 0, 1);
  images->Add(OwnedIcon(IDI_DIPOLE_SHOWN, size).get());   // DipoleRows::shownImage
  images->Add(OwnedIcon(IDI_DIPOLE_HIDDEN, size).get());  // DipoleRows::hiddenImage
  return images;
}

bool isControlDown() {
  return ::GetKeyState(VK_CONTROL) < 0;
}

}  // namespace

BEGIN_MESSAGE_MAP(CListDipoles, CListCtrl)
ON_NOTIFY_REFLECT(LVN_COLUMNCLICK, &CListDipoles::OnColumnClick)
ON_NOTIFY_REFLECT(LVN_GETDISPINFO, &CListDipoles::OnGetDispInfo)
ON_NOTIFY_REFLECT(LVN_ODFINDITEM, &CListDipoles::OnFindItem)
ON_NOTIFY_REFLECT(NM_HOVER, &CListDipoles::OnRestingPointer)
ON_NOTIFY_REFLECT_EX(LVN_ITEMCHANGED, &CListDipoles::OnOwnChange)
ON_NOTIFY_REFLECT_EX(LVN_ODSTATECHANGED, &CListDipoles::OnOwnChange)
ON_WM_KEYDOWN()
END_MESSAGE_MAP()

CListDipoles::CListDipoles() = default;

CListDipoles::~CListDipoles() = default;

void CListDipoles::initialize() {
  m_pNormalImages = makeImages(32);
  m_pSmallImages = makeImages(16);
  SetImageList(m_pNormalImages.get(), LVSIL_NORMAL);
  SetImageList(m_pSmallImages.get(), LVSIL_SMALL);
  setOneClickStyle();
  insertColumns();
  m_headings.take(*this);
}

void CListDipoles::insertColumns() {
  const int width = scaledToScreen(columnWidth);
  for (int column = DipoleRows::columns - 1; column >= 0; --column) {
    InsertColumn(0, DipoleRows::heading(column), LVCFMT_LEFT, width);
  }
}

void CListDipoles::setOneClickStyle() {
  SetExtendedStyle(LVS_EX_TRACKSELECT | LVS_EX_ONECLICKACTIVATE);
}

void CListDipoles::setRowStyle() {
  SetExtendedStyle(LVS_EX_TRACKSELECT | LVS_EX_FULLROWSELECT | LVS_EX_TWOCLICKACTIVATE);
}

int CListDipoles::refill() {
  if (m_pDipoleFace == nullptr) {
    return 0;
  }
  const Refilled refilled = fillRows();
  if (refilled == Refilled::refused) {
    AfxMessageBox(_T("Clean all items error"));  // meanwhile the host may end this list
    return 0;
  }
  if (refilled == Refilled::cutShort) {
    return 0;
  }
  setRowStyle();
  return 1;
}

CListDipoles::Refilled CListDipoles::fillRows() {
  const Flag changing(m_changing);
  DipoleRows rows(*m_pDipoleFace);  // while the old ones are still there, should memory run out
  const int top = GetTopIndex();
  const int focus = GetNextItem(-1, LVNI_FOCUSED);
  {
    const StillWindow still(*this);
    if (!DeleteAllItems()) {
      return Refilled::refused;
    }
    m_rows = std::move(rows);
    m_rows.giveItemIds(*m_pDipoleFace);
    SetItemCount(m_rows.count());
  }
  placeRows(top, focus);
  return m_rows.count() == m_pDipoleFace->m_totalDipoles ? Refilled::whole : Refilled::cutShort;
}

// After the rows were exchanged: the place in the list is the one before, unless the current dipole would not
// be in view then; its row has the focus mark, or, without one, the row that had it. The mark comes first: a
// list may bring it into view by itself. Then the end: a list that must not draw may not know yet how far it
// can scroll.
void CListDipoles::placeRows(int top, int focusBefore) {
  const int current = rowOfCurrentDipole();
  const int focus = m_rows.has(current) ? current : focusBefore;
  if (m_rows.has(focus)) {
    SetItemState(focus, LVIS_FOCUSED, LVIS_FOCUSED);
    SetSelectionMark(focus);  // where the next range starts
  }
  if (m_rows.has(top)) {
    EnsureVisible(m_rows.count() - 1, FALSE);
    EnsureVisible(top, FALSE);
  }
  if (m_rows.has(current)) {
    EnsureVisible(current, FALSE);
  }
}

DipoleSlots CListDipoles::selectedDipoles() const {
  if (m_pDipoleFace == nullptr) {
    return {};
  }
  const std::vector<bool> rows = selectedRows();
  return rows.empty() ? DipoleSlots() : dipolesOfRows(*m_pDipoleFace, rows);
}

DipoleSlots CListDipoles::markSelectedDipoles() {
  return m_pDipoleFace == nullptr ? DipoleSlots() : markRows(*m_pDipoleFace, selectedRows());
}

// Empty when none is selected. To find the next one the control looks at each row, so it is asked no more
// often than it must; mostly the row with the focus is the only one.
std::vector<bool> CListDipoles::selectedRows() const {
  UINT left = GetSelectedCount();
  std::vector<bool> rows(left == 0 ? 0 : static_cast<std::size_t>(GetItemCount()));
  const int focus = focusedRow();
  if (left == 1 && focus >= 0 && GetItemState(focus, LVIS_SELECTED) != 0) {
    rows[static_cast<std::size_t>(focus)] = true;
    return rows;
  }
  for (int row = -1; left > 0 && (row = GetNextItem(row, LVNI_SELECTED)) >= 0; --left) {
    rows[static_cast<std::size_t>(row)] = true;
  }
  return rows;
}

// -1 when there is none. The row from which a range would start mostly has the focus too, and to ask for it
// costs nothing, while the control looks at one row after the other for the focus.
int CListDipoles::focusedRow() const {
  const int mark = ListView_GetSelectionMark(m_hWnd);
  return mark >= 0 && GetItemState(mark, LVIS_FOCUSED) != 0 ? mark : GetNextItem(-1, LVNI_FOCUSED);
}

// -1 when there is none.
int CListDipoles::rowOfCurrentDipole() const {
  return m_pDipoleFace == nullptr ? -1
                                  : m_pDipoleFace->getDipoleListItemID(m_pDipoleFace->getCurrentDipoleID());
}

// A copied dipole has the row of its model until the list is filled again.
bool CListDipoles::showsCurrentDipoleAlone(int row) const {
  const CDipoleszq* const current = m_pDipoleFace->getCurrentDipole();
  if (!m_rows.isOf(row, current)) {
    return false;
  }
  int dipoles = 0;
  for (int slot = 0; slot < m_pDipoleFace->m_totalDipoles; ++slot) {
    dipoles += m_pDipoleFace->getDipoleListItemID(slot) == row ? 1 : 0;
  }
  return dipoles == 1;
}

void CListDipoles::showCurrentDipole() {
  if (m_pDipoleFace == nullptr) {
    return;
  }
  const Flag changing(m_changing);
  SetItemState(-1, 0, LVIS_SELECTED);
  const int row = rowOfCurrentDipole();
  if (showsCurrentDipoleAlone(row)) {
    SetItemState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    SetSelectionMark(row);
    EnsureVisible(row, FALSE);
  }
  markSelectedDipoles();
}

void CListDipoles::OnColumnClick(NMHDR* header, LRESULT* result) {
  *result = 0;
  if (m_pDipoleFace != nullptr) {
    m_pDipoleFace->sortDipoles(reinterpret_cast<const NMLISTVIEW*>(header)->iSubItem);
    m_pDipoleFace->updateDipoleEditor();  // another dipole may be current now
    refill();
  }
}

// The control draws whenever it likes, also while memory is short: a cell stays empty then.
void CListDipoles::OnGetDispInfo(NMHDR* header, LRESULT* result) {
  *result = 0;
  LVITEM& item = reinterpret_cast<NMLVDISPINFO*>(header)->item;
  if (!m_rows.has(item.iItem)) {
    return;
  }
  if ((item.mask & LVIF_TEXT) != 0 && item.cchTextMax > 0 && item.iSubItem < DipoleRows::columns) {
    item.pszText[0] = 0;
    isWithinMemory(
        [&] { ::lstrcpyn(item.pszText, m_rows.text(item.iItem, item.iSubItem), item.cchTextMax); });
  }
  if ((item.mask & LVIF_IMAGE) != 0) {
    item.iImage = m_rows.image(item.iItem);
  }
}

// A user types the beginning of a number to get to its row.
void CListDipoles::OnFindItem(NMHDR* header, LRESULT* result) {
  const auto& question = *reinterpret_cast<const NMLVFINDITEM*>(header);
  *result = -1;
  if ((question.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) != 0) {
    const bool whole = (question.lvfi.flags & LVFI_PARTIAL) == 0;
    *result = m_rows.find(question.lvfi.psz, whole, (std::max)(question.iStart, 0));
  }
}

BOOL CListDipoles::OnOwnChange(NMHDR* /*header*/, LRESULT* result) {
  *result = 0;
  return m_changing ? TRUE : FALSE;
}

// Under hot tracking the list would select the row on which the pointer rests, and take the focus. A user who
// only leaves the pointer there has chosen nothing: another result than 0 keeps the list from it.
void CListDipoles::OnRestingPointer(NMHDR* /*header*/, LRESULT* result) {
  *result = 1;
}

// The current dipole goes where the focus will go. Returns false when this list is gone.
bool CListDipoles::step(UINT key) {
  const Lifetime::Watch watch = m_lifetime.watch();
  const CDipoleszq* dipole =
      key == VK_UP ? m_pDipoleFace->getPreviousDipole() : m_pDipoleFace->getNextDipole();
  if (watch.isOver()) {
    return false;
  }
  if (dipole != nullptr) {
    m_pHostWnd.repaint();
  }
  const int focus = focusedRow();
  if (m_pDipoleFace != nullptr && (key == VK_UP ? focus <= 0 : focus >= m_rows.count() - 1)) {
    m_pDipoleFace->updateDipoleEditor();  // no row is going to change here, but the dipole has
  }
  return true;
}

// Returns false when this list is gone: choosing rows calls the host.
bool CListDipoles::selectAll() {
  const Lifetime::Watch watch = m_lifetime.watch();
  SetItemState(-1, LVIS_SELECTED, LVIS_SELECTED);
  return !watch.isOver();
}

void CListDipoles::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  if (m_pDipoleFace != nullptr && (key == VK_UP || key == VK_DOWN) && !step(key)) {
    return;
  }
  if (key == 'A' && isControlDown() && !selectAll()) {
    return;
  }
  const auto goOn = [&] { CListCtrl::OnKeyDown(key, repeat, flags); };
  if (m_pOwnerDlg != nullptr) {
    m_pOwnerDlg->asOneChoice(std::ref(goOn));  // by itself it would be copied, for which memory may be short
  } else {
    goOn();
  }
}
