// A button that shows a colour on its whole face, and on that the mark of the focus.
#pragma once

#include <afxwin.h>

#include "ui/WithoutMemory.h"

class ColorButton : public Guarded<CButton> {
 public:
  ColorButton();
  ~ColorButton() override;

  void show(COLORREF color);  // at once, and whenever the button is drawn again

 protected:
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void paint();
  bool showsFocus() const;

  bool m_hasColor = false;
  COLORREF m_color = 0;
};
