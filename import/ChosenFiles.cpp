#include "import/ChosenFiles.h"

ChosenFiles letChoose(CFileDialog& dialog, DWORD room) {
  std::vector<TCHAR> names(room);
  dialog.m_ofn.nFilterIndex = 1;
  dialog.m_ofn.lpstrFile = names.data();
  dialog.m_ofn.nMaxFile = room;
  ChosenFiles chosen;
  if (dialog.DoModal() != IDOK) {
    chosen.isLost = CommDlgExtendedError() != 0;
    return chosen;
  }
  for (POSITION position = dialog.GetStartPosition(); position != nullptr;) {
    chosen.paths.push_back(dialog.GetNextPathName(position));
  }
  chosen.isLost = chosen.paths.empty();
  return chosen;
}
