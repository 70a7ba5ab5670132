// The files that a user chooses in a file dialog.
#pragma once

#include <afxdlgs.h>

#include <vector>

struct ChosenFiles {
  std::vector<CString> paths;  // in the order of the dialog; none when it was cancelled
  bool isLost = false;         // it gave none, and not because the user wanted none
};

// Shows a dialog that has room for so many characters of paths. For several files the framework asks for as
// many times a path, and a path has MAX_PATH characters and a closing 0. It does not tell what becomes of a
// choice without room: an error after a cancel, or an OK without files, counts as one.
ChosenFiles letChoose(CFileDialog& dialog, DWORD room);
