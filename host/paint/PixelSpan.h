// The part of a row of pixels that lies inside several straight borders.
#pragma once

#include <algorithm>

#include "host/paint/Rounding.h"

namespace host {

// A border whose slope is the same in all rows: the places x with slope * x + start >= 0 lie inside.
class RowBorder {
 public:
  explicit RowBorder(double slope) : m_slope(slope), m_crossing(slope != 0.0 ? -1.0 / slope : 0.0) {}

  double slope() const { return m_slope; }
  double crossing(double start) const { return m_crossing * start; }

 private:
  double m_slope;
  double m_crossing;
};

class PixelSpan {
 public:
  // All of a row of that many pixels.
  explicit PixelSpan(int width) : m_to(width) {}

  // Keeps what lies inside of the border; x counts pixels from the left edge of the row.
  void keep(const RowBorder& border, double start) {
    if (border.slope() > 0.0) {
      m_from = (std::max)(m_from, border.crossing(start));
    } else if (border.slope() < 0.0) {
      m_to = (std::min)(m_to, border.crossing(start));
    } else if (!(start >= 0.0)) {
      m_to = m_from - 1.0;
    }
  }
  void keepBetween(double from, double to) {
    m_from = (std::max)(m_from, from);
    m_to = (std::min)(m_to, to);
  }

  // The pixels whose centres lie inside: first <= column < end; none when first >= end.
  int first() const { return isEmpty() ? 0 : roundedUp(m_from - 0.5); }
  int end() const { return isEmpty() ? 0 : 1 - roundedUp(0.5 - m_to); }

 private:
  bool isEmpty() const { return !(m_from <= m_to); }

  double m_from = 0.0;
  double m_to;
};

}  // namespace host
