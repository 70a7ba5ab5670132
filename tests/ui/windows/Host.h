// A small host: a window, a set of dipoles, two callbacks that keep what they were told, and the user's hands
// on the manager's list. It sees the module as any host does, through its library and module/dipole.h.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include <memory>
#include <string>
#include <vector>

#include "module/dipole.h"
#include "tests/platform/windows/Robot.h"

class HostWindow : public CWnd {
 public:
  HostWindow();

  int m_paints = 0;

 protected:
  afx_msg void OnPaint();
  DECLARE_MESSAGE_MAP()
};

struct Position {
  double x;
  double y;
  double z;
  double latency;
  bool operator==(const Position&) const = default;
};

class Host {
 public:
  // With so many dipoles: number n (from 1) at (n, 10 n, 100 n) mm, latency n / 2 ms, fit error n / 4, moment
  // n / 8, label "d<n>", and the first one current.
  explicit Host(int dipoles = 0);
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  void addDipoles(int count);

  // Opens the manager with the position callback and gives the host's update callback before.
  CDialog& openManager();
  HWND manager() const;
  HWND list() const;    // the manager's
  HWND editor() const;  // the visible dialog captioned "Current dipole ...", or null
  HWND coordinates() const;

  // What the user sees.
  int rows() const;
  std::string cell(int row, int column) const;
  int image(int row) const;
  std::string heading(int column) const;
  std::vector<int> selectedRows() const;
  int focusedRow() const;
  bool isInSight(int row) const;  // the whole row, below the headings
  std::vector<std::string> column(int column) const;

  // What the user does. Each waits until it has been handled.
  void click(int row, bool control = false, bool shift = false);  // the left button, on the row's number
  void doubleClick(int row);
  void rightClick(int row);  // opens the menu: give a Robot its step before
  void key(UINT key, bool control = false, bool shift = false);  // in the list
  void selectOnly(int row);                                      // as programs do, by the list's messages
  void clickHeading(int column);
  void typeInList(char character);
  void check(int box);        // clicks a check box or button of the manager
  void choose(UINT command);  // as a menu or button does

  // What the set says.
  std::vector<int> shown() const;     // m_show of each dipole
  std::vector<int> selected() const;  // slots whose selection flag is set
  std::vector<std::string> labels() const;
  std::vector<int> numbers() const;
  CDipoleszq& dipole(int slot) const { return *face->getDipole(slot); }

  // What the host was told since the last forget().
  std::vector<Position> positions() const;
  int updates() const;  // calls of the update-viewers callback; each argument must be false
  bool wasRepainted();  // whether the host's window has something to draw; it is drawn then
  void forget();

  std::unique_ptr<CDipoleFacezq> face;
  HostWindow window;
};

// The caption of the module's messages here, and the step that reads one and presses a button of it.
inline constexpr auto messageCaption = "dipole_ui_tests";
Robot::Step answer(std::string text, int button = IDOK);

int rememberPosition(double x, double y, double z, double latency);  // the callback that Host gives
int countUpdate(bool value);
