// A viewer in small: one coronal slice with the module's dipoles on it, the Dipole Manager beside it.
//
//   host FILE.dip SET.dipset [--once]
//
// Imports the file, shows it, and saves the set when its window is closed. With --once it closes at once.
#include <afxwin.h>

#include <cmath>
#include <memory>

#include "module/dipole.h"

namespace {

// The module draws one pixel per voxel and must: with a larger zoom dipoles of the left leave their side. So
// its voxels need not be those of the MRI: half a millimetre in the picture, slices of one millimetre.
constexpr int pixels = 512;  // along x and y, 256 mm centred on the head frame's origin
constexpr int slices = 256;  // along z
constexpr int zoom = 1;
constexpr UINT_PTR closing = 1;

class HostWindow : public CWnd {
 public:
  void show(LPCTSTR path, bool isOnce);
  void save(LPCTSTR path);

 private:
  void OnPaint();
  void OnTimer(UINT_PTR id);
  void OnDestroy();
  DECLARE_MESSAGE_MAP()

  std::unique_ptr<CDipoleFacezq> m_dipoles = std::make_unique<CDipoleFacezq>();  // large: on the heap
};

BEGIN_MESSAGE_MAP(HostWindow, CWnd)
ON_WM_PAINT()
ON_WM_TIMER()
ON_WM_DESTROY()
END_MESSAGE_MAP()

// The module's callbacks are plain functions: they find the host by its main window.
int updateViewers(bool /*unused*/) {  // after a command that changed the set
  AfxGetMainWnd()->Invalidate(FALSE);
  return 1;
}

int moveCrosshair(double, double, double, double) {  // zeros on purpose: the current dipole knows its place
  AfxGetMainWnd()->Invalidate(FALSE);
  return 1;
}

// Nothing else on the picture tells the sides apart: the patient's left is on the right.
void writeSide(const CDC& context, int left, LPCTSTR letter) {
  ::SetBkMode(context.m_hDC, TRANSPARENT);
  ::SetTextColor(context.m_hDC, RGB(255, 255, 255));
  ::TextOut(context.m_hDC, left, 8, letter, 1);
}

void HostWindow::show(LPCTSTR path, bool isOnce) {
  const RECT place = {40, 40, 60 + pixels, 80 + pixels};
  CreateEx(0, AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW)), _T("Host"),
           WS_OVERLAPPEDWINDOW | WS_VISIBLE, place, nullptr, 0);
  m_dipoles->setCbfUpdateViewers(&updateViewers);
  m_dipoles->setDimensionXYZ(pixels, pixels, slices);
  m_dipoles->setSpaceXYZ(0.5, 0.5, 1.0);
  CString file = path;
  m_dipoles->importDipoleX(file, false);
  m_dipoles->showDipoleList(this, &moveCrosshair);
  if (isOnce) {
    SetTimer(closing, 1000, nullptr);
  }
}

// The slice of the current dipole. When the user chooses another one the module has this window repainted.
void HostWindow::OnPaint() {
  CPaintDC context(this);
  CRect all;
  GetClientRect(&all);
  context.FillSolidRect(&all, RGB(40, 40, 40));                      // where a true viewer draws its MRI
  context.FillSolidRect(pixels / 2, 0, 1, pixels, RGB(90, 90, 90));  // the midline, between the ears
  if (const CDipoleszq* dipole = m_dipoles->getCurrentDipole()) {    // never kept: a command may delete it
    const int slice = slices / 2 + static_cast<int>(std::lround(dipole->m_location[2]));
    context.SetViewportOrg(-1, -1);  // squares of 3 pixels, which hang right of and below the dipole's own
    m_dipoles->drawDipoleCoronal(&context, slice, zoom);
    context.SetViewportOrg(0, 0);
  }
  writeSide(context, 8, _T("R"));
  writeSide(context, pixels - 20, _T("L"));
}

void HostWindow::OnTimer(UINT_PTR id) {
  KillTimer(id);
  DestroyWindow();
}

void HostWindow::OnDestroy() {
  ::PostQuitMessage(0);
}

void HostWindow::save(LPCTSTR path) {
  CFile file(path, CFile::modeCreate | CFile::modeWrite);  // a true viewer: another name first, then rename
  CArchive archive(&file, CArchive::store, CDipoleFace9File::archiveBuffer);
  m_dipoles->serializeDipolesFace(archive);
  archive.Close();
  file.Close();
}

class HostApp : public CWinApp {
 public:
  HostApp() : CWinApp(_T("Host")) {}
  BOOL InitInstance() override;
  int ExitInstance() override;
  int DoMessageBox(LPCTSTR text, UINT type, UINT help) override;

 private:
  std::unique_ptr<HostWindow> m_window;
  bool m_isOnce = false;
};

HostApp theApp;  // the program's life: AfxWinMain calls InitInstance, Run and ExitInstance

BOOL HostApp::InitInstance() {
  if (__argc < 3) {
    return FALSE;
  }
  m_isOnce = __argc > 3;
  m_window = std::make_unique<HostWindow>();
  m_pMainWnd = m_window.get();
  m_window->show(__wargv[1], m_isOnce);
  return TRUE;
}

int HostApp::ExitInstance() {
  try {
    if (m_window) {
      m_window->save(__wargv[2]);
    }
  } catch (CException* fault) {  // by pointer, as in MFC
    fault->ReportError();
    fault->Delete();
  }
  m_window.reset();  // the module's windows with it, while the program is still whole
  return CWinApp::ExitInstance();
}

// All messages of the module pass here. With --once nobody is there to answer: No, where there is a No.
int HostApp::DoMessageBox(LPCTSTR text, UINT type, UINT help) {
  if (!m_isOnce) {
    return CWinApp::DoMessageBox(text, type, help);
  }
  return (type & MB_TYPEMASK) == MB_OK ? IDOK : IDNO;
}

}  // namespace
