// What the windows do when memory runs out: the user is told, and nothing is thrown at the framework, which
// need not survive an exception that leaves a handler.
#pragma once

#include <afxwin.h>

#include "collection/WithinMemory.h"

// Says "Not enough memory", unless it is being said or there is no memory for that either: the window that
// comes to the front when the message is closed may ask for memory again.
void tellOfMemory();

// Runs a piece of work and tells when memory ran out in it. Returns whether it did not.
template <typename Work>
bool tellWithoutMemory(Work work) {
  if (isWithinMemory(work)) {
    return true;
  }
  tellOfMemory();
  return false;
}

// A window of the module, around all of whose handlers this stands. A handler that breaks off has no result
// but 0, and its window may be gone.
template <typename Window>
class Guarded : public Window {
 public:
  using Window::Window;

 protected:
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
    LRESULT result = 0;
    tellWithoutMemory([&] { result = Window::WindowProc(message, wParam, lParam); });
    return result;
  }
};
