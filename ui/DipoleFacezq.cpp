#include "ui/DipoleFacezq.h"

#include "ui/DlgDipoleCoordinate.h"
#include "ui/DlgDipoleEditor.h"
#include "ui/DlgDipoleManagerzq.h"
#include "ui/WindowTools.h"
#include "ui/resource.h"

namespace {

// Makes a dialog on first use, and its window again when the host's closing took it away. It has no parent.
template <typename Dialog>
Dialog& provide(std::shared_ptr<Dialog>& dialog, UINT templateId) {
  if (!dialog) {
    dialog = std::make_shared<Dialog>();
  }
  if (dialog->GetSafeHwnd() == nullptr) {
    dialog->Create(templateId);
  }
  return *dialog;
}

template <typename Dialog>
void show(Dialog& dialog, CDipoleFacezq* face, CWnd* host) {
  dialog.m_pDipoleFace = face;
  dialog.m_pHostWnd = host;
  dialog.ShowWindow(SW_SHOWNORMAL);
  dialog.refresh();
}

// Lets go of a dialog; one that lives on in a copy shows this collection no longer.
template <typename Dialog>
void leave(std::shared_ptr<Dialog>& dialog, const CDipoleFacezq* face) {
  if (dialog && dialog.use_count() > 1 && dialog->m_pDipoleFace == face) {
    dialog->leaveCollection();
  }
  dialog.reset();
}

}  // namespace

CDipoleFacezq::CDipoleFacezq() = default;

CDipoleFacezq::CDipoleFacezq(const CDipoleFacezq&) = default;

CDipoleFacezq& CDipoleFacezq::operator=(const CDipoleFacezq& other) {
  if (this != &other) {
    CDipoleFace9File::operator=(other);
    leaveDialogs();
    m_dlgDipoleList = other.m_dlgDipoleList;
    m_dlgDipoleEditor = other.m_dlgDipoleEditor;
    m_dlgDipoleCoordinate = other.m_dlgDipoleCoordinate;
  }
  return *this;
}

CDipoleFacezq::~CDipoleFacezq() {
  leaveDialogs();
}

void CDipoleFacezq::leaveDialogs() {
  leave(m_dlgDipoleEditor, this);
  leave(m_dlgDipoleCoordinate, this);
  leave(m_dlgDipoleList, this);
}

CDialog* CDipoleFacezq::showDipoleList(CWnd* host, int (*cbf)(double, double, double, double)) {
  CDlgDipoleManagerzq& manager = provide(m_dlgDipoleList, IDD_DIPOLE_MANAGER);
  manager.m_title = m_managerTitle;
  if (cbf != nullptr) {
    m_cbfDipoleXYZ = cbf;
    manager.m_cbfDipoleXYZ = cbf;
  } else if (manager.m_cbfDipoleXYZ == nullptr) {
    manager.m_cbfDipoleXYZ = m_cbfDipoleXYZ;
  }
  if (manager.m_cbfUpdateViewers == nullptr) {
    manager.m_cbfUpdateViewers = m_cbfUpdateViewers;
  }
  show(manager, this, host);
  m_pParentWnd = host;
  manager.SetFocus();
  return &manager;
}

CDialog* CDipoleFacezq::getDlgDipoleList() const {
  return m_dlgDipoleList.get();
}

int CDipoleFacezq::dipoleEdit(CWnd* host) {
  show(provide(m_dlgDipoleEditor, IDD_DIPOLE_EDITOR), this, host);
  m_pParentWnd = host;
  return 1;
}

int CDipoleFacezq::setDipoleCoordinate(CWnd* host) {
  show(provide(m_dlgDipoleCoordinate, IDD_DIPOLE_COORDINATE), this, host);
  m_pParentWnd = host;
  return 1;
}

int CDipoleFacezq::setCbfDipoleXYZ(int (*cbf)(double, double, double, double)) {
  m_cbfDipoleXYZ = cbf;
  if (m_dlgDipoleList) {
    m_dlgDipoleList->m_cbfDipoleXYZ = cbf;
  }
  return 0;
}

int CDipoleFacezq::setCbfUpdateViewers(int (*cbf)(bool)) {
  m_cbfUpdateViewers = cbf;
  return 1;
}

int CDipoleFacezq::updateDipoleList() {
  if (isOpen(m_dlgDipoleList.get())) {
    m_dlgDipoleList->refill();  // and the editors
  } else {
    updateDipoleEditor();
  }
  return 1;
}

int CDipoleFacezq::updateDipoleEditor() {
  if (isOpen(m_dlgDipoleEditor.get())) {
    m_dlgDipoleEditor->refresh();
  }
  if (m_dlgDipoleList && isOpen(m_dlgDipoleList->m_pDlgEditor.get())) {
    m_dlgDipoleList->m_pDlgEditor->refresh();
  }
  return 1;
}

int CDipoleFacezq::updateDipoleSettings() {
  if (!m_dlgDipoleCoordinate) {
    return 0;
  }
  if (isOpen(m_dlgDipoleCoordinate.get())) {
    m_dlgDipoleCoordinate->refresh();
  }
  return 1;
}
