#include "ui/DipoleFacezq.h"

#include <utility>

#include "ui/DlgDipoleCoordinate.h"
#include "ui/DlgDipoleEditor.h"
#include "ui/DlgDipoleManagerzq.h"
#include "ui/WindowTools.h"
#include "ui/WithoutMemory.h"
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
  if (dialog->GetSafeHwnd() == nullptr) {
    AfxThrowMemoryException();
  }
  return *dialog;
}

template <typename Dialog>
void show(Dialog& dialog, CDipoleFacezq* face, CWnd* host) {
  face->m_pParentWnd = host;
  dialog.m_pDipoleFace = face;
  dialog.m_pHostWnd = HostView(host);
  dialog.ShowWindow(SW_SHOWNORMAL);
  dialog.refresh();
}

// Takes another dialog instead of this one; one that lives on in a copy shows this collection no longer.
template <typename Dialog>
void change(std::shared_ptr<Dialog>& dialog, const CDipoleFacezq* face, std::shared_ptr<Dialog> next) {
  if (dialog != next && dialog && dialog.use_count() > 1 && dialog->m_pDipoleFace == face) {
    dialog->leaveCollection();
  }
  dialog = std::move(next);
}

}  // namespace

CDipoleFacezq::CDipoleFacezq() = default;

CDipoleFacezq::CDipoleFacezq(const CDipoleFacezq&) = default;

CDipoleFacezq& CDipoleFacezq::operator=(const CDipoleFacezq& other) {
  if (this != &other) {
    CDipoleFace9File::operator=(other);
    change(m_dlgDipoleEditor, this, other.m_dlgDipoleEditor);
    change(m_dlgDipoleCoordinate, this, other.m_dlgDipoleCoordinate);
    change(m_dlgDipoleList, this, other.m_dlgDipoleList);
  }
  return *this;
}

CDipoleFacezq::~CDipoleFacezq() {
  change(m_dlgDipoleEditor, this, {});
  change(m_dlgDipoleCoordinate, this, {});
  change(m_dlgDipoleList, this, {});
}

CDialog* CDipoleFacezq::showDipoleList(CWnd* host, int (*cbf)(double, double, double, double)) {
  tellWithoutMemory([&] {
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
    manager.takeFocus();
  });
  return m_dlgDipoleList.get();
}

int CDipoleFacezq::dipoleEdit(CWnd* host) {
  tellWithoutMemory([&] {
    CDlgDipoleEditor& editor = provide(m_dlgDipoleEditor, IDD_DIPOLE_EDITOR);
    editor.placeBeside(m_dlgDipoleList ? m_dlgDipoleList->GetSafeHwnd() : nullptr,
                       host != nullptr ? host->GetSafeHwnd() : nullptr);
    show(editor, this, host);
  });
  return 1;
}

int CDipoleFacezq::setDipoleCoordinate(CWnd* host) {
  tellWithoutMemory([&] { show(provide(m_dlgDipoleCoordinate, IDD_DIPOLE_COORDINATE), this, host); });
  return 1;
}

CDialog* CDipoleFacezq::getDlgDipoleList() const {
  return m_dlgDipoleList.get();
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

int CDipoleFacezq::chooseDipole(int index) {
  const int slot = index == -1 ? m_currentDipole : index;
  if (slot < 0 || getDipole(slot) == nullptr) {
    return 0;
  }
  setCurrentDipole(slot);
  tellWithoutMemory([&] {
    updateDipoleEditor();
    if (isOpen(m_dlgDipoleList.get()) && m_dlgDipoleList->m_pDipoleFace == this) {  // else a copy's
      m_dlgDipoleList->m_listDipoles.showCurrentDipole();
    }
  });
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

CDipoleFacezq::OpenEditors CDipoleFacezq::openEditors() const {
  const auto openOrNone = [](CDlgDipoleEditor* editor) { return isOpen(editor) ? editor : nullptr; };
  return {openOrNone(m_dlgDipoleEditor.get()),
          openOrNone(m_dlgDipoleList ? m_dlgDipoleList->m_pDlgEditor.get() : nullptr)};
}

int CDipoleFacezq::updateDipoleEditor() {
  for (CDlgDipoleEditor* const editor : openEditors()) {
    if (editor != nullptr) {
      editor->follow();
    }
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
