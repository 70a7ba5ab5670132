#include "ui/DlgDipoleManagerzq.h"

#include <afxdlgs.h>

#include <algorithm>
#include <vector>

#include "collection/WithinMemory.h"
#include "ui/DipoleFacezq.h"
#include "ui/DlgNewName.h"
#include "ui/WindowTools.h"
#include "ui/resource.h"

namespace {

// Takes no keys and clicks while it exists; each window may go before it.
class DisabledEditors {
 public:
  explicit DisabledEditors(const std::vector<CDlgDipoleEditor*>& editors) {
    for (const CDlgDipoleEditor* const editor : editors) {
      m_windows.push_back(editor->GetSafeHwnd());
    }
    enable(FALSE);
  }
  ~DisabledEditors() { enable(TRUE); }
  DisabledEditors(const DisabledEditors&) = delete;
  DisabledEditors& operator=(const DisabledEditors&) = delete;

 private:
  void enable(BOOL on) const {
    for (const HWND window : m_windows) {
      ::EnableWindow(window, on);
    }
  }

  std::vector<HWND> m_windows;
};

constexpr int toolsPopup = 1;
constexpr int listMargin = 10;  // pixels, right of and below the list

}  // namespace

BEGIN_MESSAGE_MAP(CDlgDipoleManagerzq, CDialog)
ON_WM_SIZE()
ON_WM_CONTEXTMENU()
ON_WM_INITMENUPOPUP()
ON_WM_LBUTTONDBLCLK()
ON_COMMAND(IDOK, &CDlgDipoleManagerzq::OnEnter)
ON_COMMAND(ID_DIPOLE_EXIT, &CDlgDipoleManagerzq::OnExit)
ON_COMMAND(ID_DIPOLE_SHOW, &CDlgDipoleManagerzq::OnShow)
ON_COMMAND(ID_DIPOLE_HIDE, &CDlgDipoleManagerzq::OnHide)
ON_COMMAND(ID_DIPOLE_DELETE, &CDlgDipoleManagerzq::OnDelete)
ON_NOTIFY(LVN_ITEMCHANGED, IDC_MANAGER_LIST, &CDlgDipoleManagerzq::OnRowChanged)
ON_NOTIFY(LVN_ODSTATECHANGED, IDC_MANAGER_LIST, &CDlgDipoleManagerzq::OnRowsChanged)
ON_COMMAND(ID_DIPOLE_SHOW_ALL, &CDlgDipoleManagerzq::OnShowAll)
ON_COMMAND(ID_DIPOLE_HIDE_ALL, &CDlgDipoleManagerzq::OnHideAll)
ON_COMMAND(ID_DIPOLE_SHOW_CURRENT_ONLY, &CDlgDipoleManagerzq::OnShowCurrentOnly)
ON_UPDATE_COMMAND_UI(ID_DIPOLE_SHOW_CURRENT_ONLY, &CDlgDipoleManagerzq::OnUpdateShowCurrentOnly)
ON_COMMAND(ID_DIPOLE_EDIT, &CDlgDipoleManagerzq::OnEdit)
ON_COMMAND(ID_DIPOLE_IMPORT_CTF, &CDlgDipoleManagerzq::OnImportCtf)
ON_COMMAND(ID_DIPOLE_NAME_SELECTED, &CDlgDipoleManagerzq::OnNameSelected)
ON_COMMAND(ID_DIPOLE_COLOR_SELECTED, &CDlgDipoleManagerzq::OnColorSelected)
ON_COMMAND(ID_DIPOLE_AVERAGE_AS, &CDlgDipoleManagerzq::OnAverageAs)
ON_COMMAND(ID_DIPOLE_AVERAGE_ZIP, &CDlgDipoleManagerzq::OnAverageZip)
ON_COMMAND(ID_DIPOLE_EXPORT_EXCEL, &CDlgDipoleManagerzq::OnExportExcel)
ON_BN_CLICKED(IDC_MANAGER_DYNAMIC_UPDATE, &CDlgDipoleManagerzq::OnDynamicUpdate)
ON_BN_CLICKED(IDC_MANAGER_SHOW_ORIENTATION, &CDlgDipoleManagerzq::OnShowOrientation)
END_MESSAGE_MAP()

CDlgDipoleManagerzq::CDlgDipoleManagerzq(CWnd* parent) : CDialog(IDD_DIPOLE_MANAGER, parent) {
  m_customColors.fill(RGB(255, 255, 255));
}

CDlgDipoleManagerzq::~CDlgDipoleManagerzq() {
  DestroyWindow();  // while this class still answers
}

void CDlgDipoleManagerzq::DoDataExchange(CDataExchange* exchange) {
  CDialog::DoDataExchange(exchange);
  DDX_Control(exchange, IDC_MANAGER_LIST, m_listDipoles);
  DDX_Check(exchange, IDC_MANAGER_DYNAMIC_UPDATE, m_dynamicUpdate);
  DDX_Check(exchange, IDC_MANAGER_SHOW_ORIENTATION, m_showOrientation);
}

// A half-made list would stay half-made: without memory there is no window.
BOOL CDlgDipoleManagerzq::OnInitDialog() {
  if (!isWithinMemory([this] { initialize(); })) {
    DestroyWindow();
  }
  return TRUE;
}

void CDlgDipoleManagerzq::initialize() {
  CDialog::OnInitDialog();
  m_listDipoles.m_pOwnerDlg = this;
  m_listDipoles.ModifyStyle(LVS_SMALLICON, LVS_REPORT | LVS_ALIGNLEFT);
  m_listDipoles.SetExtendedStyle(LVS_EX_TRACKSELECT | LVS_EX_FULLROWSELECT | LVS_EX_TWOCLICKACTIVATE);
  m_listDipoles.initialize();
  SetWindowText(m_title);
  UpdateData(FALSE);
}

void CDlgDipoleManagerzq::PostNcDestroy() {
  m_pDlgEditor.reset();
  CDialog::PostNcDestroy();
}

void CDlgDipoleManagerzq::OnSize(UINT type, int width, int height) {
  CDialog::OnSize(type, width, height);
  if (m_listDipoles.GetSafeHwnd() == nullptr || type == SIZE_MINIMIZED) {
    return;
  }
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof placement;
  m_listDipoles.GetWindowPlacement(&placement);
  RECT& list = placement.rcNormalPosition;
  list.right = (std::max)(width - listMargin, static_cast<int>(list.left));  // else the system would turn it
  list.bottom = (std::max)(height - listMargin, static_cast<int>(list.top));
  m_listDipoles.SetWindowPlacement(&placement);
  m_listDipoles.Invalidate();
}

// Where a menu for the point belongs: the keyboard gives none, then it is the row with the focus, or the
// list's corner when that row is out of sight.
CPoint CDlgDipoleManagerzq::menuPoint(CPoint point) const {
  if (point.x != -1 || point.y != -1) {
    return point;
  }
  CRect list;
  CRect row;
  m_listDipoles.GetClientRect(&list);
  const int focus = m_listDipoles.GetNextItem(-1, LVNI_FOCUSED);
  CPoint corner(0, 0);
  if (focus >= 0 && m_listDipoles.GetItemRect(focus, &row, LVIR_LABEL) &&
      list.PtInRect(CPoint(row.left, row.bottom))) {
    corner = CPoint(row.left, row.bottom);
  }
  m_listDipoles.ClientToScreen(&corner);
  return corner;
}

void CDlgDipoleManagerzq::OnContextMenu(CWnd* /*window*/, CPoint point) {
  CMenu menu;
  if (!menu.LoadMenu(IDR_DIPOLE_MENU)) {
    return;
  }
  const CPoint corner = menuPoint(point);
  menu.GetSubMenu(toolsPopup)->TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON, corner.x, corner.y, this);
}

// Dialogs bring their menus up to date themselves: the framework asks the handlers below for frames only.
void CDlgDipoleManagerzq::OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu) {
  CDialog::OnInitMenuPopup(menu, index, systemMenu);
  if (systemMenu == FALSE && menu != nullptr) {
    const UINT check = m_showCurrentOnly != FALSE ? MF_CHECKED : MF_UNCHECKED;
    menu->CheckMenuItem(ID_DIPOLE_SHOW_CURRENT_ONLY, MF_BYCOMMAND | check);
  }
}

// For a host that sends the updates of its own menu or tool bar here (OnCmdMsg).
void CDlgDipoleManagerzq::OnUpdateShowCurrentOnly(CCmdUI* item) {
  if (m_showCurrentOnly != FALSE) {
    item->Enable(TRUE);
    item->SetCheck(1);
  } else {
    item->SetCheck(0);
  }
}

// List and editor show what the manager shows, also after a copy of the collection took the manager over.
void CDlgDipoleManagerzq::bindParts() {
  m_listDipoles.m_pHostWnd = m_pHostWnd;
  m_listDipoles.m_pDipoleFace = m_pDipoleFace;
  m_listDipoles.m_showCurrentOnly = m_showCurrentOnly;
  if (m_pDlgEditor) {
    m_pDlgEditor->m_pDipoleFace = m_pDipoleFace;
    m_pDlgEditor->m_pHostWnd = m_pHostWnd;
  }
}

void CDlgDipoleManagerzq::setHost(CWnd* host) {
  m_pHostWnd = host;
  bindParts();
}

void CDlgDipoleManagerzq::leaveCollection() {
  m_pDipoleFace = nullptr;
  m_pHostWnd = nullptr;
  m_cbfDipoleXYZ = nullptr;
  m_cbfUpdateViewers = nullptr;
  bindParts();
  if (m_pDlgEditor) {
    m_pDlgEditor->leaveCollection();
  }
  ShowWindow(SW_HIDE);
}

int CDlgDipoleManagerzq::refresh() {
  if (m_pDipoleFace == nullptr) {
    return 0;
  }
  bindParts();
  const Lifetime::Watch watch = m_lifetime.watch();
  const int result = refill();
  if (!watch.isOver()) {
    SetWindowText(m_title);
    UpdateData(FALSE);
  }
  return result;
}

int CDlgDipoleManagerzq::refill() {
  const Lifetime::Watch watch = m_lifetime.watch();
  const int result = m_listDipoles.refill();
  if (!watch.isOver() && m_pDipoleFace != nullptr) {
    m_pDipoleFace->updateDipoleEditor();
  }
  return result;
}

// The last thing that a command does: the host may end this object.
void CDlgDipoleManagerzq::notify() const {
  if (m_cbfUpdateViewers != nullptr) {
    m_cbfUpdateViewers(false);
  }
}

// A command: changes the set, shows it, tells the host. The change may show messages.
template <typename Change>
void CDlgDipoleManagerzq::change(Change command) {
  if (m_pDipoleFace == nullptr) {
    return;
  }
  const Lifetime::Watch watch = m_lifetime.watch();
  const bool inMemory = isWithinMemory([&] {
    command(*m_pDipoleFace);
    if (!watch.isOver()) {
      refill();
    }
  });
  if (!inMemory) {
    AfxMessageBox(_T("Not enough memory"));
  }
  if (!watch.isOver()) {
    notify();
  }
}

void CDlgDipoleManagerzq::OnExit() {
  OnOK();
}

// Enter, which no button takes: in the list it edits, as a double click does.
void CDlgDipoleManagerzq::OnEnter() {
  if (::GetFocus() == m_listDipoles.GetSafeHwnd()) {
    edit();
  } else {
    OnOK();
  }
}

void CDlgDipoleManagerzq::OnShow() {
  change([this](CDipoleFacezq& face) { showDipoles(face, m_listDipoles.selectedDipoles(), 1); });
}

void CDlgDipoleManagerzq::OnHide() {
  change([this](CDipoleFacezq& face) { showDipoles(face, m_listDipoles.selectedDipoles(), 0); });
}

void CDlgDipoleManagerzq::OnDelete() {
  change([this](CDipoleFacezq& face) { deleteDipoles(face, m_listDipoles.selectedDipoles()); });
}

void CDlgDipoleManagerzq::OnShowAll() {
  change([](CDipoleFacezq& face) { face.setShowAllDipole(1); });
}

void CDlgDipoleManagerzq::OnHideAll() {
  change([](CDipoleFacezq& face) { face.setShowAllDipole(0); });
}

// The editors rest meanwhile: a dipole deleted during one of the import's questions would leave a gap.
void CDlgDipoleManagerzq::OnImportCtf() {
  change([](CDipoleFacezq& face) {
    const DisabledEditors resting(face.openEditors());
    face.importCTFDipoles();
  });
}

void CDlgDipoleManagerzq::OnAverageAs() {
  change([this](CDipoleFacezq& face) { addAverage(face, m_listDipoles.selectedDipoles()); });
}

void CDlgDipoleManagerzq::OnAverageZip() {
  change([this](CDipoleFacezq& face) { replaceByAverage(face, m_listDipoles.selectedDipoles()); });
}

void CDlgDipoleManagerzq::OnNameSelected() {
  if (m_pDipoleFace == nullptr) {
    return;
  }
  if (m_pDipoleFace->getTotalDipoles() < 1) {
    notify();
    return;
  }
  CDlgNewName dialog(this);
  if (const CDipoleszq* current = m_pDipoleFace->getCurrentDipole()) {
    dialog.m_name = current->m_label;
  }
  const Lifetime::Watch watch = m_lifetime.watch();
  const INT_PTR answer = dialog.DoModal();
  if (watch.isOver() || (answer != IDOK && answer != IDCANCEL)) {
    return;
  }
  // Deliberately after Cancel too: then the selected dipoles get the label of the current one.
  change([&](CDipoleFacezq& face) { nameDipoles(face, m_listDipoles.selectedDipoles(), dialog.m_name); });
}

void CDlgDipoleManagerzq::OnColorSelected() {
  if (m_pDipoleFace == nullptr) {
    return;
  }
  if (m_pDipoleFace->getTotalDipoles() < 1) {
    notify();
    return;
  }
  const CDipoleszq* current = m_pDipoleFace->getCurrentDipole();
  std::array<COLORREF, 16> customColors = m_customColors;
  customColors[0] = current != nullptr ? current->m_color : CDipoleszq().m_color;
  CColorDialog dialog(customColors[0], 0, this);
  dialog.m_cc.lpCustColors = customColors.data();
  const Lifetime::Watch watch = m_lifetime.watch();
  const INT_PTR answer = dialog.DoModal();
  if (watch.isOver()) {
    return;
  }
  m_customColors = customColors;
  if (answer != IDOK) {
    notify();
    return;
  }
  change(
      [&](CDipoleFacezq& face) { colorDipoles(face, m_listDipoles.selectedDipoles(), dialog.GetColor()); });
}

void CDlgDipoleManagerzq::OnExportExcel() {
  if (m_pDipoleFace != nullptr) {
    m_pDipoleFace->exportExelFile();
  }
}

void CDlgDipoleManagerzq::edit() {
  if (m_pDipoleFace == nullptr) {
    return;
  }
  if (!m_pDlgEditor) {
    m_pDlgEditor = std::make_unique<CDlgDipoleEditor>();
  }
  if (m_pDlgEditor->GetSafeHwnd() == nullptr && !m_pDlgEditor->Create(IDD_DIPOLE_EDITOR)) {
    return;
  }
  m_pDlgEditor->m_pList = &m_listDipoles;
  bindParts();
  m_pDlgEditor->ShowWindow(SW_SHOWNORMAL);
  m_pDlgEditor->refresh();
}

void CDlgDipoleManagerzq::OnEdit() {
  edit();
}

void CDlgDipoleManagerzq::OnLButtonDblClk(UINT flags, CPoint point) {
  edit();
  CDialog::OnLButtonDblClk(flags, point);
}

void CDlgDipoleManagerzq::OnShowCurrentOnly() {
  m_showCurrentOnly = m_showCurrentOnly != FALSE ? FALSE : TRUE;
  refresh();
}

void CDlgDipoleManagerzq::OnDynamicUpdate() {
  UpdateData(TRUE);
  notify();
}

void CDlgDipoleManagerzq::OnShowOrientation() {
  UpdateData(TRUE);
  m_listDipoles.m_showCurrentOnly = m_showCurrentOnly;
  if (m_pDipoleFace != nullptr) {
    m_pDipoleFace->m_showDipoleOrientationAll = m_showOrientation;  // no dipole is touched
  }
  notify();
}
