// CImageList: pictures of one size, shown by lists. Sizes are pixels.
#pragma once

#include "platform/portable/Object.h"
#include "platform/windows/CommonControls.h"

class CBitmap;

class CImageList : public CObject {
 public:
  CImageList();
  ~CImageList() override;  // deletes the list

  // The object of a list: the one attached to it, else a temporary one.
  static CImageList* FromHandle(HIMAGELIST list);
  static CImageList* FromHandlePermanent(HIMAGELIST list);
  static void DeleteTempMap();  // ends the temporary objects; their lists stay
  BOOL Attach(HIMAGELIST list);
  HIMAGELIST Detach();
  HIMAGELIST GetSafeHandle() const { return m_hImageList; }
  operator HIMAGELIST() const { return m_hImageList; }  // implicit, as in MFC

  BOOL Create(int width, int height, UINT flags, int initial,
              int grow);  // ILC_COLOR16, ILC_MASK, ...
  BOOL DeleteImageList();
  int GetImageCount() const { return ::ImageList_GetImageCount(m_hImageList); }
  int Add(HICON icon) { return ::ImageList_AddIcon(m_hImageList, icon); }  // copies; the index, or -1
  int Add(CBitmap* image, COLORREF transparent);                           // likewise
  int Replace(int index, HICON icon) { return ::ImageList_ReplaceIcon(m_hImageList, index, icon); }
  BOOL Remove(int index) { return ::ImageList_Remove(m_hImageList, index); }
  HICON ExtractIcon(int index) { return ::ImageList_GetIcon(m_hImageList, index, ILD_NORMAL); }
  COLORREF SetBkColor(COLORREF color) { return ::ImageList_SetBkColor(m_hImageList, color); }

  HIMAGELIST m_hImageList = nullptr;
};
