// A submenu with the files that were opened last, and where they are kept between two runs of the program.
#pragma once

#include <afxwin.h>

#include "host/text/RecentFiles.h"

namespace host {

struct RecentMenu {
  LPCTSTR section;  // of the program's settings
  UINT firstId;     // of the commands, one for each file
  UINT emptyId;     // of the item that says that there are none

  bool beginsWith(UINT firstItem) const { return firstItem == firstId || firstItem == emptyId; }
  // The files stand in the menu only while it is open: it is filled anew each time.
  void show(CMenu& menu, const RecentFiles& files) const;
  void read(RecentFiles& files) const;
  void write(const RecentFiles& files) const;
};

}  // namespace host
