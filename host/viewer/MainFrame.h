// The viewer's window: four panes with one crosshair, the view panel, the status bar, and the menu's
// commands. It is the module's host: it owns the collection, gives it its two callbacks, and repaints when
// the module asks for it.
//
// What the commands do is host/session/Session's business; here they get their dialogs and messages. The
// commands stand in a source for each menu.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include <array>
#include <memory>
#include <vector>

#include "host/panes/PicturePage.h"
#include "host/session/Session.h"
#include "host/viewer/FindingsWindow.h"
#include "host/viewer/PaneOwner.h"
#include "host/viewer/SceneWindow.h"
#include "host/viewer/SliceWindow.h"
#include "host/viewer/ViewPanel.h"
#include "host/viewer/WarningBar.h"
#include "host/viewer/resource.h"
#include "module/dipole.h"

namespace host {

class MainFrame : public CFrameWnd, private PaneOwner {
 public:
  MainFrame();
  ~MainFrame() override;

  // Makes the window with its panes. FALSE: the system has no room for it.
  BOOL create();

  // See host/exchange/FileKind.h: heads, dipole sets, everything else as dipole files. What cannot be opened
  // is told, the others are opened.
  void openFiles(const std::vector<CString>& paths);
  bool openMri(const CString& path);
  bool registerFromFile(const CString& path);
  void exportSet(const CString& path, ExportFormat format);  // tells what the file cannot hold

  // When no message waits: the crosshair follows the module's current dipole.
  void onIdle();
  // Input went to another window of the program: what the module does with it may come without a word.
  void noteLater();
  // Whether a window of the program waits for an answer or the import runs: the set must stay as it is.
  static bool isBusy();

  // For those who drive the viewer from a program.
  Session& session() { return *m_session; }
  CDipoleFacezq& dipoles() { return *m_dipoles; }
  FindingsWindow& findingsWindow() { return m_findings; }
  WarningBar& warningBar() { return m_warningBar; }
  PaneWindow& pane(int number) { return *m_panes[static_cast<std::size_t>(number)]; }
  CString statusText(int part) const;
  Image currentPicture();    // what the panes show, with what a reader of the picture must know,
  PageTexts pictureTexts();  // which is this

  static constexpr int paneCount = 4;  // axial, coronal, sagittal, 3D
  // Of the status bar, and of the bar of places above it.
  enum StatusPart { pointerPart, dipolePart, countPart, statusParts };
  enum PlacePart { crosshairPart = statusParts, scannerPart, mniPart, labelPart, endOfParts };
  static constexpr int placeParts = endOfParts - crosshairPart;

 protected:
  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

 private:
  static MainFrame* theFrame;  // whom the module's callbacks reach: they are plain functions
  static int onPosition(double x, double y, double z, double latency);
  static int onSetChanged(bool unused);

  PaneContents paneContents() override;
  void showPointer(const Vector3& head) override;
  void hidePointer() override;
  void moveCrosshair(const Vector3& head) override;
  void takeDipole(int slot) override;
  void moveGreyWindow(double wider, double darker) override;
  void toggleSinglePane(int pane) override;

  void layOut();
  void repaintPanes();
  void showEverywhere();  // after a change: panes, panel, status bar, title
  void showStatus();
  void placeStatusParts();
  void showPlaces();
  void placePlaceParts();
  int placeWidth(int part) const;
  int widthOfText(const CString& text) const;  // in the bars' font, with a part's edges
  template <typename Statement>
  void stateFrame(Statement statement);
  void showTitle();
  void takeBackActivation();
  void followCurrentDipole();
  void noteQuietChange();  // what the module changed without telling
  void afterCommand(const CString& name);
  void refreshModuleWindows();
  bool tell(const std::exception& problem);  // always false
  void warnOfOtherHead();
  void tellOfDroppedSteps();

  // File.
  bool mayDropChanges();
  bool save(const CString& path);
  bool saveAsked();
  void openSet(const CString& path);
  void importFiles(const std::vector<CString>& paths);
  void tellOfImport(const Session::ImportResult& result);
  CString askForName(bool isOpen, LPCTSTR extension, LPCTSTR filter, LPCTSTR proposal = nullptr);
  std::vector<CString> askForNames(LPCTSTR filter);
  static Ask asker();  // by a message box; No is what Enter answers
  void openNewDoubts(const std::vector<StandingFinding>& before);
  afx_msg void OnNewSet();
  afx_msg void OnOpenMri();
  afx_msg void OnPhantom();
  afx_msg void OnOpenSet();
  afx_msg void OnImport();
  afx_msg void OnSaveSet();
  afx_msg void OnSaveSetAs();
  afx_msg void OnExport();
  afx_msg void OnMniFile();
  afx_msg void OnIsInMni(UINT id);
  afx_msg void OnNoMni();
  afx_msg void OnUpdateMni(CCmdUI* item);
  afx_msg void OnAtlas(UINT id);
  afx_msg void OnUpdateAtlas(CCmdUI* item);
  afx_msg void OnSavePicture();
  afx_msg void OnRecent(UINT id);
  afx_msg void OnRecentMri(UINT id);
  afx_msg void OnExit();
  void readRecent();
  void writeRecent();

  // Findings.
  void showFindings();
  void repairFindings(const std::vector<StandingFinding>& chosen, std::optional<LengthUnit> unit);
  void takeOverManager();
  void importCtf();
  static LRESULT CALLBACK onManagerMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                           UINT_PTR id, DWORD_PTR unused);
  afx_msg void OnFindings();

  // Dipoles.
  void step(UndoHistory::Moved (Session::*move)());
  void stepDipole(CDipoleszq* (CDipoleFace::*next)());
  template <class Registration>
  bool registerBy(Registration registration);
  afx_msg void OnUndo();
  afx_msg void OnRedo();
  afx_msg void OnManager();
  afx_msg void OnEditor();
  afx_msg void OnCoordinates();
  afx_msg void OnNextDipole();
  afx_msg void OnPreviousDipole();
  afx_msg void OnGoToDipole();
  afx_msg void OnRegisterFromSet();
  afx_msg void OnRegisterFromFile();
  afx_msg void OnPlaceFiducial(UINT id);
  afx_msg void OnRegisterPlaced();
  afx_msg void OnRegisterNone();
  afx_msg void OnUpdateUndo(CCmdUI* item);
  afx_msg void OnUpdateRedo(CCmdUI* item);
  afx_msg void OnUpdateWithDipoles(CCmdUI* item);
  afx_msg void OnUpdatePlace(CCmdUI* item);
  afx_msg void OnUpdateRegisterPlaced(CCmdUI* item);
  afx_msg void OnUpdateRegisterNone(CCmdUI* item);

  // View.
  afx_msg void OnSwitch(UINT id);
  afx_msg void OnShowAll();
  afx_msg void OnColorBy(UINT id);
  afx_msg void OnLegend();
  afx_msg void OnPanel();
  afx_msg void OnFit();
  afx_msg void OnResetGrey();
  afx_msg void OnLookFrom(UINT id);
  afx_msg void OnKeys();
  afx_msg void OnAbout();
  afx_msg void OnUpdateSwitch(CCmdUI* item);
  afx_msg void OnUpdateColorBy(CCmdUI* item);
  afx_msg void OnUpdateLegend(CCmdUI* item);
  afx_msg void OnUpdatePanel(CCmdUI* item);

  afx_msg LRESULT OnActivate(WPARAM state, LPARAM other);
  afx_msg void OnPaint();
  afx_msg void OnSize(UINT type, int width, int height);
  afx_msg void OnGetMinMaxInfo(MINMAXINFO* info);
  afx_msg void OnClose();
  afx_msg BOOL OnQueryEndSession();
  afx_msg void OnDestroy();
  afx_msg void OnDropFiles(HDROP files);
  afx_msg void OnTimer(UINT_PTR id);
  afx_msg void OnSetFocus(CWnd* before);
  afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint at);
  afx_msg void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu);
  DECLARE_MESSAGE_MAP()

  std::unique_ptr<CDipoleFacezq> m_dipoles;
  std::unique_ptr<Session> m_session;
  std::array<std::unique_ptr<PaneWindow>, paneCount> m_panes;
  SceneWindow* m_scene = nullptr;  // the last of the panes
  ViewPanel m_panel;
  ViewSettings m_viewOnScreen;  // the session's, in pixels of this screen
  WarningBar m_warningBar;
  FindingsWindow m_findings;
  CWnd m_statusBar;
  CWnd m_placeBar;
  HWND m_focusBefore = nullptr;            // in this window, when another one was activated
  HWND m_lastActive = nullptr;             // of the windows of the program
  int m_singlePane = -1;                   // the pane that is shown alone
  const CDipoleszq* m_followed = nullptr;  // the current dipole that the crosshair went to
  int m_followedSlot = -1;
  DWORD m_exportFilter = 1;        // the format that was written last, by its number in the dialog
  std::size_t m_droppedSteps = 0;  // that the user has been told of
};

}  // namespace host
