// An icon of the module's resources, for as long as this object lives.
#pragma once

#include <afxwin.h>

class OwnedIcon {
 public:
  OwnedIcon() = default;
  OwnedIcon(int id, int size);  // pixels
  ~OwnedIcon();
  OwnedIcon(const OwnedIcon&) = delete;
  OwnedIcon& operator=(const OwnedIcon&) = delete;

  void load(int id, int size);  // instead of the one before
  HICON get() const { return m_icon; }

 private:
  HICON m_icon = nullptr;
};
