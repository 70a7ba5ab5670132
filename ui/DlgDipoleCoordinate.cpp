#include "ui/DlgDipoleCoordinate.h"

#include "ui/DipoleFacezq.h"
#include "ui/WindowTools.h"
#include "ui/resource.h"

BEGIN_MESSAGE_MAP(CDlgDipoleCoordinate, CDialog)
ON_BN_CLICKED(IDC_COORDINATE_APPLY, &CDlgDipoleCoordinate::OnApply)
END_MESSAGE_MAP()

CDlgDipoleCoordinate::CDlgDipoleCoordinate(CWnd* parent) : Guarded(IDD_DIPOLE_COORDINATE, parent) {}

CDlgDipoleCoordinate::~CDlgDipoleCoordinate() {
  DestroyWindow();  // while this class still answers
}

void CDlgDipoleCoordinate::DoDataExchange(CDataExchange* exchange) {
  CDialog::DoDataExchange(exchange);
  m_texts.exchange(exchange, IDC_COORDINATE_LOCATION_X, m_locationX);
  m_texts.exchange(exchange, IDC_COORDINATE_LOCATION_Y, m_locationY);
  m_texts.exchange(exchange, IDC_COORDINATE_LOCATION_Z, m_locationZ);
  // y before x deliberately: the order in which a mistake is reported.
  m_texts.exchange(exchange, IDC_COORDINATE_ORIENTATION_Y, m_orientationY);
  m_texts.exchange(exchange, IDC_COORDINATE_ORIENTATION_X, m_orientationX);
  m_texts.exchange(exchange, IDC_COORDINATE_ORIENTATION_Z, m_orientationZ);
  m_texts.exchange(exchange, IDC_COORDINATE_ROTATION_X, m_rotationX);
  m_texts.exchange(exchange, IDC_COORDINATE_ROTATION_Y, m_rotationY);
  m_texts.exchange(exchange, IDC_COORDINATE_ROTATION_Z, m_rotationZ);
}

int CDlgDipoleCoordinate::refresh() {
  if (m_pDipoleFace == nullptr) {
    return 1;
  }
  m_pDipoleFace->getAllDipoleLocational(m_locationX, m_locationY, m_locationZ);
  m_pDipoleFace->getAllDipoleRotation(m_rotationX, m_rotationY, m_rotationZ);
  UpdateData(FALSE);
  m_texts.remember(*this);
  return 1;
}

void CDlgDipoleCoordinate::leaveCollection() {
  m_pDipoleFace = nullptr;
  m_pHostWnd = HostView();
  ShowWindow(SW_HIDE);
}

void CDlgDipoleCoordinate::OnApply() {
  if (m_pDipoleFace == nullptr || !UpdateData(TRUE)) {
    return;
  }
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  m_pDipoleFace->getAllDipoleLocational(x, y, z);
  m_texts.store(IDC_COORDINATE_LOCATION_X, m_locationX, x);
  m_texts.store(IDC_COORDINATE_LOCATION_Y, m_locationY, y);
  m_texts.store(IDC_COORDINATE_LOCATION_Z, m_locationZ, z);
  m_pDipoleFace->setAllDipoleLocational(x, y, z);
  m_pDipoleFace->getAllDipoleRotation(x, y, z);
  m_texts.store(IDC_COORDINATE_ROTATION_X, m_rotationX, x);
  m_texts.store(IDC_COORDINATE_ROTATION_Y, m_rotationY, y);
  m_texts.store(IDC_COORDINATE_ROTATION_Z, m_rotationZ, z);
  m_pDipoleFace->setAllDipoleRotation(x, y, z);
  m_pHostWnd.repaint();
  refresh();
}
