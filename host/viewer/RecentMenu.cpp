#include "host/viewer/RecentMenu.h"

#include <cstddef>
#include <vector>

namespace host {

namespace {

CString entryOf(std::size_t number) {
  CString entry;
  entry.Format(_T("File%u"), static_cast<unsigned>(number + 1));
  return entry;
}

}  // namespace

void RecentMenu::show(CMenu& menu, const RecentFiles& files) const {
  while (menu.GetMenuItemCount() > 0) {
    menu.DeleteMenu(0, MF_BYPOSITION);
  }
  UINT id = firstId;
  for (const CString& path : files.paths()) {
    CString text;
    text.Format(_T("&%u  "), id - firstId + 1);
    CString shown = path;
    shown.Replace(_T("&"), _T("&&"));
    menu.AppendMenu(MF_STRING, id++, text + shown);
  }
  if (files.paths().empty()) {
    menu.AppendMenu(MF_STRING | MF_GRAYED, emptyId, _T("(none)"));
  }
}

void RecentMenu::read(RecentFiles& files) const {
  for (std::size_t number = RecentFiles::most; number-- > 0;) {
    files.add(AfxGetApp()->GetProfileString(section, entryOf(number)));
  }
}

void RecentMenu::write(const RecentFiles& files) const {
  const std::vector<CString>& paths = files.paths();
  for (std::size_t number = 0; number < RecentFiles::most; ++number) {
    AfxGetApp()->WriteProfileString(section, entryOf(number),
                                    number < paths.size() ? paths[number].GetString() : nullptr);
  }
}

}  // namespace host
