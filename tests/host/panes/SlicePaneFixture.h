// What the tests of the slice panes share: panes of a view with a set in which nothing covers anything.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

#include "host/panes/SlicePane.h"
#include "tests/host/panes/PaneFixture.h"

inline constexpr host::View allViews[] = {host::View::axial, host::View::coronal, host::View::sagittal};
inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr host::Rgb orange{255, 128, 0};

inline int count(const host::Image& image, host::Rgb colour, host::PixelBox box) {
  int pixels = 0;
  for (int row = (std::max)(box.top, 0); row < (std::min)(box.bottom, image.height()); ++row) {
    for (int column = (std::max)(box.left, 0); column < (std::min)(box.right, image.width()); ++column) {
      pixels += image.pixel(column, row) == colour ? 1 : 0;
    }
  }
  return pixels;
}

inline int count(const host::Image& image, host::Rgb colour) {
  return count(image, colour, {0, 0, image.width(), image.height()});
}

struct SlicePaneFixture : testing::Test, PaneFixture {
  SlicePaneFixture() {
    settings.glyphPixels = 9;
    dipoles->m_currentDipole = -1;
  }

  host::SlicePane paneOf(host::View view, int width = 400, int height = 360) const {
    host::SlicePane pane(view);
    pane.resize(width, height);
    return pane;
  }

  // Without a current dipole: no ring covers the squares.
  CDipoleszq& put(const host::Vector3& place) {
    CDipoleszq& dipole = add(place.x, place.y, place.z);
    dipoles->m_currentDipole = -1;
    return dipole;
  }

  host::SliceAccount paintedAccount(host::View view) const {
    host::SlicePane pane = paneOf(view);
    pane.paint(contents());
    return pane.account();
  }
};
