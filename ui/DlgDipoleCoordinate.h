// "Dipole coordinate settings": the translation (mm) and rotation (degrees) of the whole set.
#pragma once

#include <afxwin.h>

#include "ui/EditTexts.h"
#include "ui/HostView.h"
#include "ui/WithoutMemory.h"

class CDipoleFacezq;

class CDlgDipoleCoordinate : public Guarded<CDialog> {
 public:
  explicit CDlgDipoleCoordinate(CWnd* parent = nullptr);
  ~CDlgDipoleCoordinate() override;

  // Shows what the collection holds. Returns 1, also without a collection. The orientation is never filled
  // in.
  int refresh();

  void leaveCollection();  // hides

  double m_locationX = 0.0;
  double m_locationY = 0.0;
  double m_locationZ = 0.0;
  double m_orientationY = 0.0;
  double m_orientationX = 0.0;
  double m_orientationZ = 0.0;
  double m_rotationX = 0.0;
  double m_rotationY = 0.0;
  double m_rotationZ = 0.0;
  CDipoleFacezq* m_pDipoleFace = nullptr;
  HostView m_pHostWnd;  // the window to repaint

 protected:
  void DoDataExchange(CDataExchange* exchange) override;
  afx_msg void OnApply();
  DECLARE_MESSAGE_MAP()

 private:
  EditTexts m_texts;
};
