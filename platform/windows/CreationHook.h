// Attaches an object to the window that is made while the hook lives, before that window gets its first
// message. Not an MFC name.
#pragma once

#include <exception>

#include "platform/windows/Wnd.h"

class CreationHook {
 public:
  explicit CreationHook(CWnd* object);
  ~CreationHook();
  CreationHook(const CreationHook&) = delete;
  CreationHook& operator=(const CreationHook&) = delete;

  // Throws what attaching threw: the window was not made then.
  void rethrow() const;

 private:
  static LRESULT CALLBACK onHook(int code, WPARAM wParam, LPARAM lParam);

  CWnd* m_object;  // null once it has its window
  HHOOK m_hook;
  CreationHook* m_outer;
  std::exception_ptr m_failure;
};
