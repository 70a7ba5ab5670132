// A font in which the headings of a list fit into their columns: the columns have a fixed width, and a
// heading that is cut off loses the letter of its axis.
#pragma once

#include <afxcmn.h>

class HeadingFont {
 public:
  HeadingFont() = default;
  ~HeadingFont();
  HeadingFont(const HeadingFont&) = delete;
  HeadingFont& operator=(const HeadingFont&) = delete;

  // Gives the list's headings the font of the list, made narrower only as far as they need it. This object
  // must outlive the list's window.
  void fit(CListCtrl& list);

 private:
  void take(HFONT font);

  HFONT m_font = nullptr;
};
