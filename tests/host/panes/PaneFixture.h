// What the tests of the panes share: a head that casts no doubt on its sides, dipoles, and a window's
// contents.
#pragma once

#include <afxwin.h>

#include <array>
#include <memory>
#include <optional>

#include "host/panes/PaneContents.h"
#include "tests/host/head/Phantom.h"

struct PaneFixture {
  std::unique_ptr<CDipoleFace9File> dipoles = std::make_unique<CDipoleFace9File>();
  host::Head head{"phantom", std::make_shared<host::Volume>(phantom(tiltedFrame(), {30, 10, 20})),
                  tiltedFrame(), points()};
  host::ViewSettings settings;
  host::Vector3 crosshair;
  host::GreyWindow window{0.0, 1000.0};
  const host::DipoleColors* colours = nullptr;
  std::array<std::optional<host::Vector3>, 3> marks;

  static host::Fiducials points() { return {{9, 92, -10}, {-72, -12, -22}, {74, 8, -26}}; }

  // Orange, without an arrow; the current one is the last one that was added.
  CDipoleszq& add(double x, double y, double z) {
    dipoles->addDipoleF(0, 0, 0);
    CDipoleszq& dipole = *dipoles->getDipole(dipoles->m_totalDipoles - 1);
    dipole.m_location[0] = x;
    dipole.m_location[1] = y;
    dipole.m_location[2] = z;
    dipole.m_showOrientation = 0;
    dipole.setColorValue(RGB(255, 128, 0));
    return dipole;
  }

  host::PaneContents contents() const {
    return {*dipoles, head, settings, crosshair, window, colours, marks};
  }
};

// The phantom is grey: what is much redder than blue is a dipole's own.
inline bool isOrange(const host::Rgb& pixel) {
  return pixel == host::Rgb{255, 128, 0};
}
inline bool isColoured(const host::Rgb& pixel, const host::Rgb& colour) {
  return pixel == colour;
}
