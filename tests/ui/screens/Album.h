// The pictures of a run: what a window of this thread looks like on the screen, as <name>.bmp in one folder.
#pragma once

#include <string>
#include <windows.h>

class Album {
 public:
  explicit Album(std::string folder) : m_folder(std::move(folder)) {}

  // Moves the window to the corner of the screen and in front of the others.
  void take(HWND window, const std::string& name);
  // As it is, with what stands over it and beside it.
  void takeInPlace(HWND window, const std::string& name);
  // A part of the screen, with whatever stands there.
  void takeArea(const RECT& area, const std::string& name);
  // The same, and the pointer, if it is there.
  void takeWithPointer(const RECT& area, const std::string& name);
  // A menu that is open, and the window that it belongs to.
  void takeMenu(HWND menu, HWND owner, const std::string& name);

  bool isComplete() const { return m_isComplete; }  // false: a picture could not be written

 private:
  void save(const RECT& place, const std::string& name, bool withPointer = false);

  std::string m_folder;
  bool m_isComplete = true;
};
