#include "import/ChosenFiles.h"

#include <memory>

ChosenFiles letChoose(CFileDialog& dialog, DWORD room) {
  const auto names = std::make_unique_for_overwrite<TCHAR[]>(room);  // megabytes, which need not be cleared
  names[0] = 0;                                                      // nothing is chosen beforehand
  dialog.m_ofn.nFilterIndex = 1;
  dialog.m_ofn.lpstrFile = names.get();
  dialog.m_ofn.nMaxFile = room;
  ChosenFiles chosen;
  if (dialog.DoModal() != IDOK) {
    chosen.isLost = CommDlgExtendedError() != 0;
    return chosen;
  }
  if ((dialog.m_ofn.Flags & OFN_ALLOWMULTISELECT) == 0) {  // no list then
    chosen.paths.push_back(dialog.GetPathName());
    return chosen;
  }
  for (POSITION position = dialog.GetStartPosition(); position != nullptr;) {
    chosen.paths.push_back(dialog.GetNextPathName(position));
  }
  chosen.isLost = chosen.paths.empty();
  return chosen;
}
