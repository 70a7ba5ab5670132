// Layer 8 of the dipole collection, the last: what a host creates, on the heap, and talks to.
//
// It adds the windows: the Dipole Manager, the Dipole Edit dialog and the Dipole coordinate settings, each
// modeless, made on first use, then shown and refreshed. Closing one only hides it. They exist on Windows
// only; elsewhere this class is declared, and the layers below it are what is there.
//
// Everything runs on the host's user-interface thread. Results are 1 unless an operation says otherwise. Of
// this layer, copies and, with a window open, the update operations may run out of memory; else nothing
// throws.
//
// Copies show the same dialogs. A dialog is destroyed with the last collection that has it; one whose own
// collection goes before is hidden until another one shows it. A host may destroy a collection while its
// dialogs are open, from the update-viewers callback, and while the module's name or colour dialog runs. It
// must not from the position callback, where the list is in the middle of its own work, and not while a
// message or a file dialog of the module is on the screen.
#pragma once

#include <array>
#include <memory>

#include "file/DipoleFace9File.h"

class CDialog;
class CDlgDipoleCoordinate;
class CDlgDipoleEditor;
class CDlgDipoleManagerzq;

class AFX_EXT_CLASS CDipoleFacezq : public CDipoleFace9File {
 public:
  CDipoleFacezq();
  CDipoleFacezq(const CDipoleFacezq&);
  CDipoleFacezq& operator=(const CDipoleFacezq&);
  ~CDipoleFacezq() override;

  // Show a dialog. `host` is the window that this dialog, and no other, asks to repaint; null: none. A window
  // that is destroyed needs no word: the dialogs keep its handle, and which CWnd was attached to it, and ask
  // the framework for both before they use it; they never follow the pointer. So give the object to which the
  // window is attached: of a temporary one the handle alone is known, which the system may use again.
  // m_pParentWnd is the one given last, for the host to read: the module does not follow that one either.
  // Without memory they say "Not enough memory". showDipoleList returns the manager, its list with the focus,
  // or null when there is none; its callback gets the position (mm) and latency (ms) of a dipole that the
  // user picks, null leaves it to the one set before.
  CDialog* showDipoleList(CWnd* host, int (*cbf)(double x, double y, double z, double latency));
  int dipoleEdit(CWnd* host);
  int setDipoleCoordinate(CWnd* host);
  CDialog* getDlgDipoleList() const;  // null before the first showDipoleList

  // Returns 0, deliberately not 1: hosts know it.
  int setCbfDipoleXYZ(int (*cbf)(double x, double y, double z, double latency));
  // Deliberately unlike the one above: an open manager keeps what it has, and gets this one with the next
  // showDipoleList if it has none.
  int setCbfUpdateViewers(int (*cbf)(bool));

  // Makes a dipole the current one, for a host whose user has picked it elsewhere, and shows it in the
  // windows that are open: in the manager's list its row alone is selected and in sight, the editors show
  // it. After a change of the set updateDipoleList comes first: a dipole that the list does not have yet is
  // not selected, and no other one then; nor is one that addDipolex has copied, whose row would stand for
  // both. A manager that a copy has taken over is left alone. No callback is called, no window of the host
  // repainted, and no dipole shown or hidden, also while the manager shows the current one only. -1: the
  // current one as it is. Returns 0, and changes nothing, when there is no such dipole.
  int chooseDipole(int index);

  // Bring visible windows up to date with the collection. A host that changes the current dipole, or makes
  // another one current without chooseDipole, calls updateDipoleEditor; what a user has typed stays while the
  // same dipole is current.
  int updateDipoleList() override;  // the manager's list, and the editors
  int updateDipoleEditor();         // the manager's too
  int updateDipoleSettings();       // 0 when the coordinate dialog was never made

 private:
  friend class CDlgDipoleManagerzq;

  using OpenEditors = std::array<CDlgDipoleEditor*, 2>;

  OpenEditors openEditors() const;  // null: not open; asks for no memory

  std::shared_ptr<CDlgDipoleManagerzq> m_dlgDipoleList;
  std::shared_ptr<CDlgDipoleEditor> m_dlgDipoleEditor;
  std::shared_ptr<CDlgDipoleCoordinate> m_dlgDipoleCoordinate;
};
