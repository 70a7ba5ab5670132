// The head in 3D. Left button: turns it, and takes the dipole that is clicked; right button and wheel: zoom;
// arrows turn by 5 degrees, with Shift by 15.
#pragma once

#include "host/panes/ScenePane.h"
#include "host/viewer/PaneWindow.h"

namespace host {

class SceneWindow final : public PaneWindow {
 public:
  SceneWindow(PaneOwner& owner, int number) : PaneWindow(owner, number) {}

  const Image& picture() override;
  void fit() override;
  void lookFrom(Standpoint standpoint);

 private:
  void resize(int width, int height) override { m_pane.resize(width, height); }
  void pan(int columns, int rows) override { m_pane.pan(columns, rows); }
  void zoom(double factor, CPoint at) override;
  void turnWheel(int notches) override;
  void press(CPoint at) override;
  void dragLeft(CPoint at, CPoint by) override;
  void dragRight(CPoint by) override;
  void click(CPoint at) override;
  void point(CPoint at) override;
  bool handleKey(UINT key, bool shift) override;

  ScenePane m_pane;
};

}  // namespace host
