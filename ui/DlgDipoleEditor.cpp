#include "ui/DlgDipoleEditor.h"

#include <utility>

#include "collection/SelectedDipoles.h"
#include "ui/DipoleFacezq.h"
#include "ui/ListDipoleszq.h"
#include "ui/OpenBeside.h"
#include "ui/WindowTools.h"
#include "ui/resource.h"

namespace {

constexpr float leastMergeRadius = 1.0F;
constexpr float mostMergeRadius = 9000.0F;

CString caption(const CDipoleFace& face) {
  CString text;
  text.Format(_T("Current dipole (Total dipoles):%d(%d)"), face.getCurrentDipoleID(),
              static_cast<int>(face.getTotalDipoles()));
  return text;
}

}  // namespace

// While the fields are written they report changes that are not the user's: read then, those that are not yet
// written would come back as they were.
class CDlgDipoleEditor::Writing {
 public:
  Writing(CDlgDipoleEditor& editor, bool isWriting) : m_editor(editor) { m_editor.m_isWriting = isWriting; }
  ~Writing() { m_editor.m_isWriting = false; }
  Writing(const Writing&) = delete;
  Writing& operator=(const Writing&) = delete;

 private:
  CDlgDipoleEditor& m_editor;
};

BEGIN_MESSAGE_MAP(CDlgDipoleEditor, CDialog)
ON_BN_CLICKED(IDC_EDITOR_ADD, &CDlgDipoleEditor::OnAdd)
ON_BN_CLICKED(IDC_EDITOR_DELETE, &CDlgDipoleEditor::OnDelete)
ON_BN_CLICKED(IDC_EDITOR_NEXT, &CDlgDipoleEditor::OnNext)
ON_BN_CLICKED(IDC_EDITOR_PREVIOUS, &CDlgDipoleEditor::OnPrevious)
ON_BN_CLICKED(IDC_EDITOR_APPLY, &CDlgDipoleEditor::OnApply)
ON_BN_CLICKED(IDC_EDITOR_COLOR, &CDlgDipoleEditor::OnColor)
ON_BN_CLICKED(IDC_EDITOR_SHOW_ORIENTATION, &CDlgDipoleEditor::OnShowOrientation)
ON_EN_CHANGE(IDC_EDITOR_MERGE_RADIUS, &CDlgDipoleEditor::OnChangeMergeRadius)
ON_MESSAGE(WM_ACTIVATE, &CDlgDipoleEditor::OnActivation)
END_MESSAGE_MAP()

CDlgDipoleEditor::CDlgDipoleEditor(CWnd* parent) : Guarded(IDD_DIPOLE_EDITOR, parent) {}

CDlgDipoleEditor::~CDlgDipoleEditor() {
  DestroyWindow();  // while this class still answers
}

void CDlgDipoleEditor::DoDataExchange(CDataExchange* exchange) {
  const Writing writing(*this, exchange->m_bSaveAndValidate == FALSE);
  CDialog::DoDataExchange(exchange);
  m_texts.exchange(exchange, IDC_EDITOR_SIZE, m_size);
  m_texts.exchange(exchange, IDC_EDITOR_LOCATION_X, m_locationX);
  m_texts.exchange(exchange, IDC_EDITOR_LOCATION_Y, m_locationY);
  m_texts.exchange(exchange, IDC_EDITOR_LOCATION_Z, m_locationZ);
  DDX_Check(exchange, IDC_EDITOR_SHOW_ORIENTATION, m_showOrientation);
  m_texts.exchange(exchange, IDC_EDITOR_ORIENTATION_X, m_orientationX);
  m_texts.exchange(exchange, IDC_EDITOR_ORIENTATION_Y, m_orientationY);
  m_texts.exchange(exchange, IDC_EDITOR_ORIENTATION_Z, m_orientationZ);
  m_texts.exchange(exchange, IDC_EDITOR_ORIENTATION_LENGTH, m_orientationLength);
  m_texts.exchange(exchange, IDC_EDITOR_MERGE_RADIUS, m_mergeRadius);
  DDV_MinMaxFloat(exchange, m_mergeRadius, leastMergeRadius, mostMergeRadius);
  DDX_Control(exchange, IDC_EDITOR_COLOR, m_colorButton);
  m_texts.exchange(exchange, IDC_EDITOR_LABEL, m_label);
}

BOOL CDlgDipoleEditor::OnInitDialog() {
  CDialog::OnInitDialog();
  m_isPlaced = false;
  refresh();
  return TRUE;
}

int CDlgDipoleEditor::refresh() {
  if (m_pDipoleFace == nullptr) {
    return 0;
  }
  m_isBehind = true;
  const CDipoleszq* const dipole = m_pDipoleFace->getCurrentDipole();
  // What asks for memory first: without it all fields and the caption still tell of the same dipole.
  DipoleTable::Hold shown;
  if (dipole != nullptr) {
    shown = DipoleTable::Hold(m_pDipoleFace->m_dipoles, m_pDipoleFace->getCurrentDipoleID());
  }
  const CString text = caption(*m_pDipoleFace);
  m_shown = std::move(shown);
  SetWindowText(text);
  m_mergeRadius = m_pDipoleFace->m_mergeRadius;
  if (dipole != nullptr) {
    fillFrom(*dipole);
    m_colorButton.show(dipole->m_color);
  }
  UpdateData(FALSE);
  m_texts.remember(*this);
  m_isBehind = false;
  return 1;
}

void CDlgDipoleEditor::follow() {
  if (m_pDipoleFace == nullptr) {
    return;
  }
  if (!m_isBehind && m_pDipoleFace->getCurrentDipole() == m_shown.get() && m_texts.isAnyChanged(*this)) {
    SetWindowText(caption(*m_pDipoleFace));
  } else {
    refresh();
  }
}

void CDlgDipoleEditor::leaveCollection() {
  m_pDipoleFace = nullptr;
  m_pHostWnd = HostView();
  m_shown = DipoleTable::Hold();
  ShowWindow(SW_HIDE);
}

void CDlgDipoleEditor::placeBeside(HWND manager, HWND host) {
  if (!isOpen(this)) {
    moveBeside(*this, {manager, host}, m_isPlaced ? Move::whenNeeded : Move::always);
    m_isPlaced = true;
  }
}

void CDlgDipoleEditor::fillFrom(const CDipoleszq& dipole) {
  m_size = dipole.m_size;
  m_locationX = dipole.m_location[0];
  m_locationY = dipole.m_location[1];
  m_locationZ = dipole.m_location[2];
  m_orientationX = dipole.m_orientation[0];
  m_orientationY = dipole.m_orientation[1];
  m_orientationZ = dipole.m_orientation[2];
  m_orientationLength = dipole.m_orientationLength;
  m_label = dipole.m_label;
  m_showOrientation = dipole.m_showOrientation;
}

// The label first: it alone may run out of memory, and then nothing has been stored.
void CDlgDipoleEditor::storeInto(CDipoleszq& dipole) const {
  m_texts.store(IDC_EDITOR_LABEL, m_label, dipole.m_label);
  m_texts.store(IDC_EDITOR_SIZE, m_size, dipole.m_size);
  m_texts.store(IDC_EDITOR_ORIENTATION_LENGTH, m_orientationLength, dipole.m_orientationLength);
  m_texts.store(IDC_EDITOR_LOCATION_X, m_locationX, dipole.m_location[0]);
  m_texts.store(IDC_EDITOR_LOCATION_Y, m_locationY, dipole.m_location[1]);
  m_texts.store(IDC_EDITOR_LOCATION_Z, m_locationZ, dipole.m_location[2]);
  m_texts.store(IDC_EDITOR_ORIENTATION_X, m_orientationX, dipole.m_orientation[0]);
  m_texts.store(IDC_EDITOR_ORIENTATION_Y, m_orientationY, dipole.m_orientation[1]);
  m_texts.store(IDC_EDITOR_ORIENTATION_Z, m_orientationZ, dipole.m_orientation[2]);
  dipole.m_showOrientation = m_showOrientation;  // deliberately also an unchanged one
}

CDlgDipoleEditor::Applied CDlgDipoleEditor::apply() {
  if (m_pDipoleFace == nullptr) {
    return Applied::nothing;
  }
  if (m_isBehind) {
    refresh();  // which broke off; the current dipole must not get what is shown of another one
    return Applied::refused;
  }
  if (!UpdateData(TRUE)) {
    return Applied::refused;
  }
  if (CDipoleszq* dipole = m_pDipoleFace->getCurrentDipole()) {
    storeInto(*dipole);
  }
  m_pDipoleFace->m_showDipoleOrientationAll = m_showOrientation;  // deliberately also an unchanged one
  m_texts.store(IDC_EDITOR_MERGE_RADIUS, m_mergeRadius, m_pDipoleFace->m_mergeRadius);
  m_texts.remember(*this);
  const Lifetime::Watch watch = m_lifetime.watch();
  if (isOpen(m_pList)) {
    m_pList->refill();
  } else if (m_pList == nullptr) {
    m_pDipoleFace->updateDipoleList();  // the host's editor has no list of its own, the manager may be open
  }
  return watch.isOver() ? Applied::andGone : Applied::all;
}

void CDlgDipoleEditor::OnApply() {
  const Lifetime::Watch watch = m_lifetime.watch();
  Applied applied = Applied::all;  // without memory: perhaps
  tellWithoutMemory([&] { applied = apply(); });
  if (!watch.isOver() && applied == Applied::all) {
    m_pHostWnd.repaint();
  }
}

// Labelled "Exit". After a refusal, which was told, the dialog stays.
void CDlgDipoleEditor::OnOK() {
  const Applied applied = apply();
  if (applied != Applied::refused && applied != Applied::andGone) {
    CDialog::OnOK();
  }
}

// Changes that may show a message, during which the collection and this dialog may go.
template <typename Change>
void CDlgDipoleEditor::changeSet(Change change) {
  if (m_pDipoleFace == nullptr) {
    return;
  }
  const Lifetime::Watch watch = m_lifetime.watch();
  tellWithoutMemory([&] { change(*m_pDipoleFace); });
  if (!watch.isOver()) {
    tellWithoutMemory([this] { refresh(); });
  }
}

void CDlgDipoleEditor::OnAdd() {
  changeSet([](CDipoleFacezq& face) {
    if (face.addDipole() != 0) {
      face.updateDipoleList();
    }
  });
}

void CDlgDipoleEditor::OnDelete() {
  changeSet([](CDipoleFacezq& face) {
    face.deleteCurrentDipole();
    face.updateDipoleList();
  });
}

void CDlgDipoleEditor::step(CDipoleszq* (CDipoleFace::*direction)()) {
  const Lifetime::Watch watch = m_lifetime.watch();
  changeSet([&](CDipoleFacezq& face) { (face.*direction)(); });
  if (watch.isOver() || m_pDipoleFace == nullptr) {
    return;
  }
  m_pDipoleFace->updateDipoleEditor();  // the other editor too shows the dipole that it would change
  if (m_pList != nullptr) {
    m_pList->showCurrentDipole();
  }
}

void CDlgDipoleEditor::OnNext() {
  step(&CDipoleFace::getNextDipole);
}

void CDlgDipoleEditor::OnPrevious() {
  step(&CDipoleFace::getPreviousDipole);
}

void CDlgDipoleEditor::OnColor() {
  if (m_pDipoleFace == nullptr || m_pDipoleFace->getCurrentDipole() == nullptr) {
    return;
  }
  const Lifetime::Watch watch = m_lifetime.watch();
  tellWithoutMemory([&] { chooseColor(watch); });
  if (!watch.isOver()) {
    m_pHostWnd.repaint();
  }
}

// As the dipole's own setColor, but that the user may meanwhile delete the dipole, and the host the set.
void CDlgDipoleEditor::chooseColor(const Lifetime::Watch& watch) {
  const ChosenDipoles dipole(*m_pDipoleFace, {m_pDipoleFace->getCurrentDipoleID()});
  COLORREF color = 0;
  if (!CDipoles::chooseColor(color) || watch.isOver() || m_pDipoleFace == nullptr) {
    return;
  }
  if (const std::optional<DipoleSlots> slots = dipole.slotsIn(*m_pDipoleFace)) {
    colorDipoles(*m_pDipoleFace, *slots, color);
  }
}

void CDlgDipoleEditor::OnShowOrientation() {
  if (m_pDipoleFace != nullptr && UpdateData(TRUE)) {
    m_pDipoleFace->setShowDipoleOrientationAll(m_showOrientation);
    m_pHostWnd.repaint();
  }
}

void CDlgDipoleEditor::OnChangeMergeRadius() {
  if (!m_isWriting) {
    UpdateData(TRUE);
  }
}

// The host may have made another dipole the current one while the user was elsewhere.
LRESULT CDlgDipoleEditor::OnActivation(WPARAM state, LPARAM /*other*/) {
  const LRESULT result = Default();
  if (LOWORD(state) != WA_INACTIVE) {
    follow();
  }
  return result;
}
