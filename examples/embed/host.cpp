// A viewer in small: one coronal slice with the module's dipoles on it, the Dipole Manager beside it.
//
//   host FILE.dip SET.dipset [--once]
//
// Imports the file, shows it, and saves the set when its window is closed. With --once it closes at once.
#include <afxwin.h>

#include <cmath>
#include <memory>
#include <shellapi.h>

#include "module/dipole.h"

namespace {

constexpr int voxels = 256;  // of 1 mm along each axis, centred on the head frame's origin
constexpr int zoom = 2;      // pixels per voxel
constexpr UINT_PTR closing = 1;

class HostWindow : public CWnd {
 public:
  void show(LPCTSTR path, bool isOnce);
  void goToCurrentDipole();
  void save(LPCTSTR path);

 private:
  void OnPaint();
  void OnTimer(UINT_PTR id);
  void OnDestroy();
  DECLARE_MESSAGE_MAP()

  std::unique_ptr<CDipoleFacezq> m_dipoles = std::make_unique<CDipoleFacezq>();  // large: on the heap
  int m_slice = voxels / 2;
};

BEGIN_MESSAGE_MAP(HostWindow, CWnd)
ON_WM_PAINT()
ON_WM_TIMER()
ON_WM_DESTROY()
END_MESSAGE_MAP()

// The module's callbacks are plain functions: they find the host by its main window.
HostWindow& host() {
  return *static_cast<HostWindow*>(AfxGetMainWnd());
}

int updateViewers(bool /*unused*/) {  // after every command that changed the set
  host().Invalidate(FALSE);
  return 1;
}

int moveCrosshair(double, double, double, double) {  // zeros on purpose: the dipole itself knows its place
  host().goToCurrentDipole();
  return 1;
}

void HostWindow::show(LPCTSTR path, bool isOnce) {
  const RECT place = {40, 40, 60 + voxels * zoom, 80 + voxels * zoom};
  CreateEx(0, _T("DipoleHost"), _T("Host"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, place, nullptr, 0);
  m_dipoles->setCbfUpdateViewers(&updateViewers);
  m_dipoles->setDimensionXYZ(voxels, voxels, voxels);
  m_dipoles->setSpaceXYZ(1.0, 1.0, 1.0);
  CString file = path;
  m_dipoles->importDipoleX(file, false);
  m_dipoles->showDipoleList(this, &moveCrosshair);
  goToCurrentDipole();
  if (isOnce)
    SetTimer(closing, 1000, nullptr);
}

void HostWindow::goToCurrentDipole() {
  if (const CDipoleszq* dipole = m_dipoles->getCurrentDipole())  // never kept: a command may delete it
    m_slice = voxels / 2 + static_cast<int>(std::lround(dipole->m_location[2]));
  Invalidate(FALSE);
}

void HostWindow::OnPaint() {
  CPaintDC context(this);
  CRect all;
  GetClientRect(&all);
  context.FillSolidRect(&all, RGB(40, 40, 40));  // where a true viewer draws its MRI
  m_dipoles->drawDipoleCoronal(&context, m_slice, zoom);
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

// The messages of the module. With --once nobody is there to answer: No, where there is a No.
class HostApp : public CWinApp {
 public:
  explicit HostApp(bool isOnce) : CWinApp(_T("Host")), m_isOnce(isOnce) {}

  int DoMessageBox(LPCTSTR text, UINT type, UINT help) override {
    if (!m_isOnce)
      return CWinApp::DoMessageBox(text, type, help);
    return (type & MB_TYPEMASK) == MB_OK ? IDOK : IDNO;
  }

 private:
  bool m_isOnce;
};

void registerWindowClass() {
  WNDCLASS description = {};
  description.lpfnWndProc = &::DefWindowProc;  // the framework's, once an object takes over
  description.hInstance = AfxGetInstanceHandle();
  description.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
  description.lpszClassName = _T("DipoleHost");
  ::RegisterClass(&description);
}

void run(LPCTSTR file, LPCTSTR set, bool isOnce) {
  HostApp app(isOnce);
  HostWindow window;
  app.m_pMainWnd = &window;
  try {
    registerWindowClass();
    window.show(file, isOnce);
    MSG message = {};
    while (::GetMessage(&message, nullptr, 0, 0) > 0) {
      if (AfxPreTranslateMessage(&message))  // so that Tab, Enter and Escape work in the module's dialogs
        continue;
      ::TranslateMessage(&message);
      ::DispatchMessage(&message);
    }
    window.save(set);
  } catch (CException* fault) {  // by pointer, as in MFC
    fault->ReportError();
    fault->Delete();
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  int count = 0;
  LPTSTR* const arguments = ::CommandLineToArgvW(::GetCommandLine(), &count);
  if (count < 3)
    return 2;
  run(arguments[1], arguments[2], count > 3);
  ::LocalFree(arguments);
  return 0;
}
