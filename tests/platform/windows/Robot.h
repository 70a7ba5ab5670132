// A user who operates dialogs, messages and menus of this thread: step after step, each as soon as a window
// with the expected caption is on the screen. It works while those windows handle messages themselves.
//
// A step that does not come within ten seconds fails the test; whatever is open then is closed, so that the
// test ends.
#pragma once

#include <afxwin.h>

#include <deque>
#include <functional>
#include <string>

class Robot {
 public:
  using Step = std::function<void(HWND window)>;

  Robot();
  ~Robot();  // fails the test when steps are left
  Robot(const Robot&) = delete;
  Robot& operator=(const Robot&) = delete;

  // Next, when a visible window has this caption.
  Robot& when(std::string caption, Step step);
  // Next, when a menu is on the screen; the step gets the menu's window.
  Robot& whenMenu(Step step);
  std::size_t stepsLeft() const { return m_steps.size(); }

 private:
  struct Planned {
    std::string caption;
    bool menu;
    Step step;
  };

  static void CALLBACK onTimer(HWND window, UINT message, UINT_PTR id, DWORD time);
  void tick();
  void giveUp();

  std::deque<Planned> m_steps;
  ULONGLONG m_since;
  UINT_PTR m_timer;
};

// What a step does. Texts are UTF-8.
std::string captionOf(HWND window);
std::string textOf(HWND window, int control);
std::string messageOf(HWND messageBox);                        // the text of a message box
void type(HWND window, int control, const std::string& text);  // in place of what is there
void press(HWND window, int button);
// Handles the messages that are waiting, and then is idle.
void pump();
