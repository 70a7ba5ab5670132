// Looks over the shoulder of a window: which messages the module sends to it, and which it is kept from
// getting. One of each kind at a time.
#pragma once

#include <functional>
#include <vector>
#include <windows.h>

// Counts what this thread sends (not: posts) to a window, or with null to any window.
class SentMessages {
 public:
  explicit SentMessages(HWND window);
  ~SentMessages();
  SentMessages(const SentMessages&) = delete;
  SentMessages& operator=(const SentMessages&) = delete;

  int count(UINT message) const;
  std::vector<LPARAM> parameters(UINT message) const;  // the second ones, in order

 private:
  static LRESULT CALLBACK hear(int code, WPARAM wParam, LPARAM lParam);

  HWND m_window;
  HHOOK m_hook;
  std::vector<CWPSTRUCT> m_messages;
};

// Keeps messages from a window: those for which the function returns true; the window then answers 0.
class KeptMessages {
 public:
  using Filter = std::function<bool(UINT message, WPARAM wParam, LPARAM lParam)>;

  KeptMessages(HWND window, Filter filter);
  ~KeptMessages();
  KeptMessages(const KeptMessages&) = delete;
  KeptMessages& operator=(const KeptMessages&) = delete;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND m_window;
  WNDPROC m_behind;
  Filter m_filter;
};
