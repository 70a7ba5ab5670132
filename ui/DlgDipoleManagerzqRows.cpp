// What the manager does when the user chooses rows of its list.
#include "ui/DipoleFacezq.h"
#include "ui/DlgDipoleManagerzq.h"
#include "ui/WindowTools.h"

namespace {

// A row that only loses selection or focus has been left, not chosen.
bool isChoice(const NMLISTVIEW& change) {
  const UINT lost = change.uOldState & ~change.uNewState;
  const UINT gained = change.uNewState & ~change.uOldState;
  return gained != 0 || lost == 0;
}

}  // namespace

void CDlgDipoleManagerzq::OnRowChanged(NMHDR* header, LRESULT* result) {
  *result = 0;
  const auto& row = *reinterpret_cast<const NMLISTVIEW*>(header);
  chooseRow(row.iItem, isChoice(row));
}

// A whole range of rows at once.
void CDlgDipoleManagerzq::OnRowsChanged(NMHDR* header, LRESULT* result) {
  *result = 0;
  const auto& rows = *reinterpret_cast<const NMLVODSTATECHANGE*>(header);
  chooseRow(rows.iTo, (rows.uNewState & ~rows.uOldState) != 0);
}

// The manager may go meanwhile, as in everything that the list handles.
class CDlgDipoleManagerzq::Gathering {
 public:
  explicit Gathering(CDlgDipoleManagerzq& manager) : m_manager(manager), m_watch(manager.m_lifetime.watch()) {
    m_manager.m_isGathering = true;
  }
  ~Gathering() {
    if (!m_watch.isOver()) {
      m_manager.m_isGathering = false;
      m_manager.m_gathered.reset();
    }
  }
  Gathering(const Gathering&) = delete;
  Gathering& operator=(const Gathering&) = delete;

  // What was reported, if anything was.
  std::optional<Choice> choice() const { return m_watch.isOver() ? std::nullopt : m_manager.m_gathered; }

 private:
  CDlgDipoleManagerzq& m_manager;
  Lifetime::Watch m_watch;
};

bool CDlgDipoleManagerzq::answersToEachRow() const {
  return m_showCurrentOnly != FALSE || (m_dynamicUpdate != FALSE && m_cbfDipoleXYZ != nullptr);
}

void CDlgDipoleManagerzq::asOneChoice(const std::function<void()>& changeRows) {
  UpdateData(TRUE);
  if (m_isGathering || answersToEachRow()) {
    changeRows();
    return;
  }
  std::optional<Choice> choice;
  {
    const Gathering gathering(*this);
    changeRows();
    choice = gathering.choice();
  }
  if (choice) {
    chooseRow(choice->row, choice->isChosen);
  }
}

void CDlgDipoleManagerzq::chooseRow(int row, bool isChosen) {
  if (m_isGathering) {
    m_gathered = Choice{row, isChosen || (m_gathered && m_gathered->isChosen)};
    return;
  }
  UpdateData(TRUE);
  if (m_pDipoleFace == nullptr) {
    return;
  }
  // All rows at once are one choice, that of the last.
  const int chosen = row >= 0 ? row : m_listDipoles.GetItemCount() - 1;
  const Lifetime::Watch watch = m_lifetime.watch();
  bool isOtherDipole = isChosen;
  if (m_showCurrentOnly == FALSE) {
    tellWithoutMemory([&] { isOtherDipole = takeSelection() || isChosen; });
  } else if (isChosen) {
    showOnlyDipoleOfRow(chosen);
  }
  if (!watch.isOver() && isChosen && m_dynamicUpdate != FALSE && m_cbfDipoleXYZ != nullptr) {
    tellPositionOfRow(chosen);
  }
  if (!watch.isOver() && m_pDipoleFace != nullptr && isOtherDipole) {
    showChosenInEditors();
  }
}

// The manager's editor shows the choice whatever has been typed there.
void CDlgDipoleManagerzq::showChosenInEditors() {
  for (CDlgDipoleEditor* const editor : m_pDipoleFace->openEditors()) {
    if (editor == nullptr) {
      continue;
    }
    if (editor == m_pDlgEditor.get()) {
      editor->refresh();
    } else {
      editor->follow();
    }
  }
}

// The dipoles' selection flags become those of their rows; the last one selected becomes the current one.
// Returns false when none is selected.
bool CDlgDipoleManagerzq::takeSelection() {
  const DipoleSlots selected = m_listDipoles.markSelectedDipoles();
  if (!selected.empty()) {
    m_pDipoleFace->setCurrentDipole(selected.back());
  }
  m_pHostWnd.repaint();
  return !selected.empty();
}

void CDlgDipoleManagerzq::showOnlyDipoleOfRow(int row) {
  for (int slot = 0; slot < m_pDipoleFace->m_totalDipoles; ++slot) {
    m_pDipoleFace->setShowDipole(slot, m_pDipoleFace->getDipoleListItemID(slot) == row ? 1 : 0);
  }
  const Lifetime::Watch watch = m_lifetime.watch();
  m_listDipoles.setOneClickStyle();
  tellWithoutMemory([this] { m_listDipoles.refill(); });  // the dipole is current without it too
  if (!watch.isOver() && m_dynamicUpdate == FALSE) {
    m_pHostWnd.repaint();
  }
}

int CDlgDipoleManagerzq::dipoleOfRow(int row) const {
  int slot = m_pDipoleFace->m_totalDipoles - 1;
  while (slot >= 0 && m_pDipoleFace->getDipoleListItemID(slot) != row) {
    --slot;
  }
  return slot;
}

void CDlgDipoleManagerzq::tellPositionOfRow(int row) {
  const int slot = dipoleOfRow(row);
  if (row < 0 || slot < 0) {
    return;
  }
  m_pDipoleFace->setCurrentDipole(slot);
  m_pDipoleFace->setShowDipole(slot, 1);
  // The display coordinates are inert: these values are what the host gets.
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  if (m_pDipoleFace->getCurrentDipoleXYZ(x, y, z) != 0) {
    m_cbfDipoleXYZ(x, y, z, m_pDipoleFace->getCurrentDipole()->m_latency);
  }
}
