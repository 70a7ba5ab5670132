#include "ui/OwnedIcon.h"

OwnedIcon::OwnedIcon(int id, int size) {
  load(id, size);
}

OwnedIcon::~OwnedIcon() {
  if (m_icon != nullptr) {
    ::DestroyIcon(m_icon);
  }
}

void OwnedIcon::load(int id, int size) {
  const LPCTSTR name = MAKEINTRESOURCE(id);
  const HANDLE icon =
      ::LoadImage(AfxFindResourceHandle(name, RT_GROUP_ICON), name, IMAGE_ICON, size, size, LR_DEFAULTCOLOR);
  if (m_icon != nullptr) {
    ::DestroyIcon(m_icon);
  }
  m_icon = static_cast<HICON>(icon);
}
