// A user in front of the module's dialogs: reads what the windows show, types, presses keys, and answers the
// message boxes of this thread.
#pragma once

#include <afxwin.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/platform/windows/Robot.h"

using Texts = std::vector<std::string>;

// Presses OK (or No) in every message box that comes up, and keeps what it said. What nobody took fails the
// test.
class Messages {
 public:
  Messages();
  ~Messages();
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;

  // What was said since the last time.
  Texts take();

  // What happens while the next message is on the screen, once.
  void meanwhile(std::function<void()> act) { m_act = std::move(act); }

 private:
  static void CALLBACK onTimer(HWND window, UINT message, UINT_PTR id, DWORD time);
  void answer(HWND box);

  Texts m_told;
  std::function<void()> m_act;
  UINT_PTR m_timer;
};

// The visible windows of this thread whose captions begin so, from the front to the back.
std::vector<HWND> openWindows(const std::string& captionBeginning);

// All windows of this thread, hidden ones too, but for the system's own helpers.
int threadWindows();

// The whole text of a control, however long.
std::string longTextOf(HWND window, int control);

// Through the message loop, as the keyboard does it, with the focus on the control.
void strike(HWND window, int control, UINT key);
void strikeKeys(HWND window, int control, const std::string& text);  // replaces what is there
void strikeMnemonic(HWND window, char letter);                       // with Alt

bool isChecked(HWND window, int control);
// The control of a dialog that has the focus, 0 when it is elsewhere.
int focusIn(HWND window);
// A pixel of what a control shows, from its upper left corner.
COLORREF pixelOf(HWND window, int control, int x, int y);
