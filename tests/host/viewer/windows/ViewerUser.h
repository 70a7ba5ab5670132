// The viewer on the screen, and the hands of its user: commands, keys, mouse, the module's manager.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include <string>
#include <vector>

#include "host/viewer/ViewerApp.h"
#include "host/viewer/resource.h"

class ViewerUser {
 public:
  ViewerUser();   // the viewer as it starts: a phantom, no dipoles
  ~ViewerUser();  // closes it, whatever has changed
  ViewerUser(const ViewerUser&) = delete;
  ViewerUser& operator=(const ViewerUser&) = delete;

  host::MainFrame& frame() { return *m_app.frame(); }
  bool isOpen() const { return m_app.frame() != nullptr; }
  host::Session& session() { return frame().session(); }
  CDipoleFacezq& dipoles() { return frame().dipoles(); }

  // Each waits until the viewer has nothing left to do.
  void wait();
  void waitQuiet();  // also until changes that the module did not tell of have been noted
  void run();        // as waitQuiet, but with the program's own message handling, keys included
  void postKey(HWND window, UINT key, bool control);
  void choose(UINT command);
  void close();
  void key(int pane, UINT key);
  void wheel(int pane, int notches, bool control = false);
  void press(int pane, CPoint at);  // the left button, down and up
  void drag(int pane, CPoint from, CPoint to, bool rightButton = false);
  void drop(const std::vector<std::string>& files);
  void setField(int field, const std::string& text);  // of the view panel
  void setSlider(int slider, int position);
  void clickPanel(int button);
  void chooseColourBy(int entry);

  // What the user sees.
  std::string title();
  std::string status(int part);
  HWND panel();
  std::string field(int control);
  bool isChecked(UINT command);  // in the menu, as it opens
  bool isEnabled(UINT command);
  std::string menuText(UINT command);

  // The module's manager.
  HWND manager();
  HWND list();
  void chooseRow(int row);
  std::vector<int> selectedRows();

  CPoint middleOf(int pane);

 private:
  UINT menuState(UINT command);
  HMENU menuOf(HMENU menu, UINT command);  // opened as by the user; null: it has no such command

  host::ViewerApp m_app;
};
