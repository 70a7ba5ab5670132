#include "platform/windows/ImageList.h"

#include "platform/portable/Gdi.h"
#include "platform/windows/HandleMap.h"

namespace {

bool isAlive(HIMAGELIST list) {
  int width = 0;
  int height = 0;
  return ::ImageList_GetIconSize(list, &width, &height) != FALSE;
}

struct TemporaryImageList : CImageList {
  explicit TemporaryImageList(HIMAGELIST list) { m_hImageList = list; }
  ~TemporaryImageList() override { loseHandle(); }
  void loseHandle() { m_hImageList = nullptr; }
};

using ImageLists = HandleMap<HIMAGELIST, CImageList, TemporaryImageList, &isAlive>;

}  // namespace

CImageList::CImageList() = default;

CImageList::~CImageList() {
  DeleteImageList();
}

CImageList* CImageList::FromHandle(HIMAGELIST list) {
  return ImageLists::the().find(list);
}

CImageList* CImageList::FromHandlePermanent(HIMAGELIST list) {
  return ImageLists::the().findPermanent(list);
}

void CImageList::DeleteTempMap() {
  ImageLists::the().drop();
}

BOOL CImageList::Attach(HIMAGELIST list) {
  if (list == nullptr || m_hImageList != nullptr) {
    return FALSE;
  }
  ImageLists::the().add(list, this);
  m_hImageList = list;
  return TRUE;
}

HIMAGELIST CImageList::Detach() {
  const HIMAGELIST list = m_hImageList;
  if (list != nullptr) {
    ImageLists::the().remove(list);
  }
  m_hImageList = nullptr;
  return list;
}

BOOL CImageList::Create(int width, int height, UINT flags, int initial, int grow) {
  return Attach(::ImageList_Create(width, height, flags, initial, grow));
}

BOOL CImageList::DeleteImageList() {
  const HIMAGELIST list = Detach();
  return list != nullptr && ::ImageList_Destroy(list) != FALSE ? TRUE : FALSE;
}

int CImageList::Add(CBitmap* image, COLORREF transparent) {
  return ::ImageList_AddMasked(m_hImageList, static_cast<HBITMAP>(image->m_hObject), transparent);
}
