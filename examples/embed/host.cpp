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

constexpr int voxels = 256;  // of 1 mm along each axis, centred on the head frame's origin
constexpr int zoom = 2;      // pixels per voxel
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

void HostWindow::show(LPCTSTR path, bool isOnce) {
  const RECT place = {40, 40, 60 + voxels * zoom, 80 + voxels * zoom};
  CreateEx(0, AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW)), _T("Host"),
           WS_OVERLAPPEDWINDOW | WS_VISIBLE, place, nullptr, 0);
  m_dipoles->setCbfUpdateViewers(&updateViewers);
  m_dipoles->setDimensionXYZ(voxels, voxels, voxels);
  m_dipoles->setSpaceXYZ(1.0, 1.0, 1.0);
  CString file = path;
  m_dipoles->importDipoleX(file, false);
  m_dipoles->showDipoleList(this, &moveCrosshair);
  if (isOnce)
    SetTimer(closing, 1000, nullptr);
}

// The slice of the current dipole. When the user chooses another one the module has this window repainted.
void HostWindow::OnPaint() {
  CPaintDC context(this);
  CRect all;
  GetClientRect(&all);
  context.FillSolidRect(&all, RGB(40, 40, 40));                  // where a true viewer draws its MRI
  if (const CDipoleszq* dipole = m_dipoles->getCurrentDipole())  // never kept: a command may delete it
    m_dipoles->drawDipoleCoronal(&context, voxels / 2 + static_cast<int>(std::lround(dipole->m_location[2])),
                                 zoom);
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
  CArchive archive(&file, CArchive::store);
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
  if (__argc < 3)
    return FALSE;
  m_isOnce = __argc > 3;
  m_window = std::make_unique<HostWindow>();
  m_pMainWnd = m_window.get();
  m_window->show(__wargv[1], m_isOnce);
  return TRUE;
}

int HostApp::ExitInstance() {
  try {
    if (m_window)
      m_window->save(__wargv[2]);
  } catch (CException* fault) {  // by pointer, as in MFC
    fault->ReportError();
    fault->Delete();
  }
  m_window.reset();  // the module's windows with it, while the program is still whole
  return CWinApp::ExitInstance();
}

// All messages of the module pass here. With --once nobody is there to answer: No, where there is a No.
int HostApp::DoMessageBox(LPCTSTR text, UINT type, UINT help) {
  if (!m_isOnce)
    return CWinApp::DoMessageBox(text, type, help);
  return (type & MB_TYPEMASK) == MB_OK ? IDOK : IDNO;
}

}  // namespace
