#include "ui/DlgDipoleManagerzq.h"

#include <afxdlgs.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "collection/WithinMemory.h"
#include "ui/DipoleFacezq.h"
#include "ui/DlgNewName.h"
#include "ui/WindowTools.h"
#include "ui/resource.h"

namespace {

// They take no keys and clicks while it exists; each window may go before it.
class DisabledEditors {
 public:
  template <typename Editors>
  explicit DisabledEditors(const Editors& editors) {
    m_windows.reserve(editors.size());
    for (const CDlgDipoleEditor* const editor : editors) {
      // One that rests already does so for another reason, which may last longer.
      if (editor != nullptr && ::EnableWindow(editor->GetSafeHwnd(), FALSE) == FALSE) {
        m_windows.push_back(editor->GetSafeHwnd());
      }
    }
  }
  ~DisabledEditors() {
    for (const HWND window : m_windows) {
      ::EnableWindow(window, TRUE);
    }
  }
  DisabledEditors(const DisabledEditors&) = delete;
  DisabledEditors& operator=(const DisabledEditors&) = delete;

 private:
  std::vector<HWND> m_windows;
};

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

CDlgDipoleManagerzq::CDlgDipoleManagerzq(CWnd* parent) : Guarded(IDD_DIPOLE_MANAGER, parent) {
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
  showIcon();
  SetWindowText(m_title);
  UpdateData(FALSE);
}

void CDlgDipoleManagerzq::showIcon() {
  m_bigIcon.load(IDI_DIPOLE_SHOWN, ::GetSystemMetrics(SM_CXICON));
  m_smallIcon.load(IDI_DIPOLE_SHOWN, ::GetSystemMetrics(SM_CXSMICON));
  SetIcon(m_bigIcon.get(), TRUE);
  SetIcon(m_smallIcon.get(), FALSE);
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

// List and editor show what the manager shows. When a copy of the collection took the manager over, the
// editor goes along to the copy's window; else it keeps the one with which it was opened.
void CDlgDipoleManagerzq::bindParts() {
  m_listDipoles.m_pHostWnd = m_pHostWnd;
  m_listDipoles.m_pDipoleFace = m_pDipoleFace;
  m_listDipoles.m_showCurrentOnly = m_showCurrentOnly;
  if (m_pDlgEditor && m_pDlgEditor->m_pDipoleFace != m_pDipoleFace) {
    bindEditor();
  }
}

void CDlgDipoleManagerzq::bindEditor() {
  m_pDlgEditor->m_pDipoleFace = m_pDipoleFace;
  m_pDlgEditor->m_pHostWnd = m_pHostWnd;
  m_pDlgEditor->m_pList = &m_listDipoles;
}

// To the dialog, then to its list in the way of dialogs, which see to the look of their buttons.
void CDlgDipoleManagerzq::takeFocus() {
  SetFocus();
  SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(m_listDipoles.GetSafeHwnd()), TRUE);
}

void CDlgDipoleManagerzq::leaveCollection() {
  m_pDipoleFace = nullptr;
  m_pHostWnd = HostView();
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

// The editors first: without memory for the list they must not show a dipole that is current no longer.
int CDlgDipoleManagerzq::refill() {
  if (m_pDipoleFace != nullptr) {
    m_pDipoleFace->updateDipoleEditor();
  }
  return m_listDipoles.refill();
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
  tellWithoutMemory([&] { command(*m_pDipoleFace); });
  if (!watch.isOver()) {
    tellWithoutMemory([this] { refill(); });
  }
  if (!watch.isOver()) {
    notify();
  }
}

// Runs a dialog about the selected dipoles, then what follows from its answer. Meanwhile the editors rest,
// and whatever becomes of list and set, the command stays with the dipoles for which it was given.
template <typename Dialog, typename Follow>
void CDlgDipoleManagerzq::ask(Dialog& dialog, Follow follow) {
  const Lifetime::Watch watch = m_lifetime.watch();
  std::optional<ChosenDipoles> chosen;
  INT_PTR answer = IDABORT;
  const bool inMemory = tellWithoutMemory([&] {
    chosen.emplace(*m_pDipoleFace, m_listDipoles.selectedDipoles());
    const DisabledEditors resting(m_pDipoleFace->openEditors());
    answer = dialog.DoModal();
  });
  if (watch.isOver()) {
    return;
  }
  if (inMemory) {
    follow(answer, *chosen);
  } else {
    notify();
  }
}

// Nothing changes when one of the dipoles is gone.
template <typename Change>
void CDlgDipoleManagerzq::changeChosen(const ChosenDipoles& chosen, Change command) {
  change([&](CDipoleFacezq& face) {
    if (const std::optional<DipoleSlots> dipoles = chosen.slotsIn(face)) {
      command(face, *dipoles);
    }
  });
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
  ask(dialog, [&](INT_PTR answer, const ChosenDipoles& chosen) {
    // Deliberately after Cancel too: then the chosen dipoles get the label of the current one.
    if (answer != IDOK && answer != IDCANCEL) {  // there was no dialog
      notify();
      return;
    }
    changeChosen(chosen, [&](CDipoleFacezq& face, const DipoleSlots& dipoles) {
      nameDipoles(face, dipoles, dialog.m_name);
    });
  });
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
  ask(dialog, [&](INT_PTR answer, const ChosenDipoles& chosen) {
    m_customColors = customColors;
    if (answer != IDOK) {
      notify();
      return;
    }
    changeChosen(chosen, [&](CDipoleFacezq& face, const DipoleSlots& dipoles) {
      colorDipoles(face, dipoles, dialog.GetColor());
    });
  });
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
  bindEditor();
  m_pDlgEditor->placeBeside(GetSafeHwnd(), m_pHostWnd.window());
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
