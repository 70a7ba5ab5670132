// One slice of the head. Left button: crosshair, and a dipole that is clicked; right button: grey values;
// wheel: next slice; arrows and Page keys: crosshair and slice by 1 mm, with Shift by 10.
#pragma once

#include "host/panes/SlicePane.h"
#include "host/viewer/PaneWindow.h"

namespace host {

class SliceWindow final : public PaneWindow {
 public:
  SliceWindow(PaneOwner& owner, int number, View view)
      : PaneWindow(owner, number), m_pane(view), m_view(view) {}

  const Image& picture() override;
  void fit() override;

 private:
  void resize(int width, int height) override { m_pane.resize(width, height); }
  void pan(int columns, int rows) override { m_pane.pan(columns, rows); }
  void zoom(double factor, CPoint at) override { m_pane.zoom(factor, at.x, at.y); }
  void turnWheel(int notches) override;
  void press(CPoint at) override;
  void dragLeft(CPoint at, CPoint by) override;
  void dragRight(CPoint by) override;
  void click(CPoint at) override;
  void point(CPoint at) override;
  bool handleKey(UINT key, bool shift) override;

  void step(int axis, double mm);

  SlicePane m_pane;
  View m_view;
};

}  // namespace host
