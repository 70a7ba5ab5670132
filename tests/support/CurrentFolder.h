// The process' current folder, which an import by path changes.
#pragma once

#include <afx.h>

#include <stdexcept>

inline CString currentFolder() {
  TCHAR text[4096];
  if (GetCurrentDirectory(4096, text) == 0) {
    throw std::runtime_error("no current folder");
  }
  return text;
}

// Puts the current folder back at its end. Declared behind a TempFolder: Windows removes no current folder.
class KeptCurrentFolder {
 public:
  KeptCurrentFolder() = default;
  KeptCurrentFolder(const KeptCurrentFolder&) = delete;
  KeptCurrentFolder& operator=(const KeptCurrentFolder&) = delete;
  ~KeptCurrentFolder() { SetCurrentDirectory(m_before); }

 private:
  CString m_before = currentFolder();
};
