#include "platform/windows/Idle.h"

#include "platform/LeastPromise.h"
#include "platform/windows/ImageList.h"
#include "platform/windows/Menu.h"
#include "platform/windows/Wnd.h"

void dropTemporaries() {
  if (isLeastPromised()) {
    CWnd::DeleteTempMap();
    CMenu::DeleteTempMap();
    CImageList::DeleteTempMap();
  }
}
