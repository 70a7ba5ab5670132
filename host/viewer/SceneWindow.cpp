#include "host/viewer/SceneWindow.h"

#include <cmath>

namespace host {

const Image& SceneWindow::picture() {
  return m_pane.paint(owner().paneContents());
}

void SceneWindow::fit() {
  m_pane.fit();
  Invalidate(FALSE);
}

void SceneWindow::lookFrom(Standpoint standpoint) {
  m_pane.lookFrom(standpoint);
  Invalidate(FALSE);
}

void SceneWindow::zoom(double factor, CPoint /*at*/) {
  m_pane.zoom(factor);
}

void SceneWindow::turnWheel(int notches) {
  constexpr double perNotch = 1.1;
  m_pane.zoom(std::pow(perNotch, notches));
  Invalidate(FALSE);
}

void SceneWindow::press(CPoint /*at*/) {}

void SceneWindow::dragLeft(CPoint /*at*/, CPoint by) {
  m_pane.turn(by.x, by.y);
  Invalidate(FALSE);
}

void SceneWindow::dragRight(CPoint by) {
  constexpr double perPixel = 1.01;
  m_pane.zoom(std::pow(perPixel, -by.y));
  Invalidate(FALSE);
}

void SceneWindow::click(CPoint at) {
  const int slot = m_pane.pick(owner().paneContents(), at.x, at.y);
  if (slot >= 0) {
    owner().takeDipole(slot);
  }
}

void SceneWindow::point(CPoint /*at*/) {
  owner().hidePointer();  // a place of the picture is a line through the head, not a point of it
}

bool SceneWindow::handleKey(UINT key, bool shift) {
  const int pixels = shift ? 30 : 10;  // half a degree each
  switch (key) {
    case VK_LEFT:
      m_pane.turn(-pixels, 0);
      return true;
    case VK_RIGHT:
      m_pane.turn(pixels, 0);
      return true;
    case VK_UP:
      m_pane.turn(0, -pixels);
      return true;
    case VK_DOWN:
      m_pane.turn(0, pixels);
      return true;
    default:
      return false;
  }
}

}  // namespace host
