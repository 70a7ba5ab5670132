#include "host/viewer/SliceWindow.h"

namespace host {

const Image& SliceWindow::picture() {
  return m_pane.paint(owner().paneContents());
}

void SliceWindow::fit() {
  m_pane.fit();
  Invalidate(FALSE);
}

void SliceWindow::step(int axis, double mm) {
  Vector3 crosshair = owner().paneContents().crosshair;
  crosshair[axis] += mm;
  owner().moveCrosshair(crosshair);
}

void SliceWindow::turnWheel(int notches) {
  step(axesOf(m_view).slab, notches);
}

// Beside the slice, on the legend, there is no head.
void SliceWindow::press(CPoint at) {
  if (m_pane.isInPicture(at.x, at.y)) {
    owner().moveCrosshair(m_pane.headPoint(at.x, at.y));
  }
}

void SliceWindow::dragLeft(CPoint at, CPoint /*by*/) {
  owner().moveCrosshair(m_pane.headPoint(at.x, at.y));
}

void SliceWindow::dragRight(CPoint by) {
  CRect area;
  GetClientRect(&area);
  owner().moveGreyWindow(static_cast<double>(by.x) / area.Width(), static_cast<double>(by.y) / area.Height());
}

void SliceWindow::click(CPoint at) {
  const int slot = m_pane.pick(owner().paneContents(), at.x, at.y);
  if (slot >= 0) {
    owner().takeDipole(slot);
  }
}

void SliceWindow::point(CPoint at) {
  if (!m_pane.isInPicture(at.x, at.y)) {
    owner().hidePointer();
  } else {
    owner().showPointer(m_pane.headPoint(at.x, at.y));
  }
}

bool SliceWindow::handleKey(UINT key, bool shift) {
  const double mm = shift ? 10.0 : 1.0;
  const ViewAxes axes = axesOf(m_view);
  // Columns run to higher coordinates, rows to lower ones.
  switch (key) {
    case VK_LEFT:
      step(axes.column, -mm);
      return true;
    case VK_RIGHT:
      step(axes.column, mm);
      return true;
    case VK_UP:
      step(axes.row, mm);
      return true;
    case VK_DOWN:
      step(axes.row, -mm);
      return true;
    case VK_PRIOR:
      step(axes.slab, mm);
      return true;
    case VK_NEXT:
      step(axes.slab, -mm);
      return true;
    default:
      return false;
  }
}

}  // namespace host
