// What the four panes ask of the window that holds them.
#pragma once

#include <string>

#include "host/panes/PaneContents.h"

namespace host {

class PaneOwner {
 public:
  virtual PaneContents paneContents() = 0;

  // The user points there (mm, head frame), or nowhere.
  virtual void showPointer(const Vector3& head) = 0;
  virtual void hidePointer() = 0;

  // The user moves the crosshair, or takes the dipole of a slot.
  virtual void moveCrosshair(const Vector3& head) = 0;
  virtual void takeDipole(int slot) = 0;

  // The user drags the grey values: to the right widens, down darkens; shares of the range.
  virtual void moveGreyWindow(double wider, double darker) = 0;

  // One pane alone, and all four again.
  virtual void toggleSinglePane(int pane) = 0;

 protected:
  PaneOwner() = default;
  ~PaneOwner() = default;
};

}  // namespace host
