// What the tests of whole pictures share: dipoles that stand out in them, and where their letters stand.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "host/paint/PictureText.h"
#include "host/panes/DipolePicture.h"
#include "tests/host/paint/SceneShapes.h"
#include "tests/host/panes/PaneFixture.h"

struct PictureFixture : testing::Test, PaneFixture {
  static constexpr host::Rgb magenta{255, 0, 255};

  PictureFixture() { dipoles->m_currentDipole = -1; }

  CDipoleszq& put(const host::Vector3& place, COLORREF colour = RGB(255, 0, 255)) {
    CDipoleszq& dipole = add(place.x, place.y, place.z);
    dipole.setColorValue(colour);
    dipoles->m_currentDipole = -1;
    return dipole;
  }

  host::DipolePicture slices(const std::vector<host::SliceRequest>& wanted, double mmPerPixel = 0.5,
                             host::PageTexts texts = {}) const {
    return host::slicesPicture(contents(), {{"", wanted}}, mmPerPixel, std::move(texts));
  }

  // The middle of a side letter, found by its white strokes; the axes' letters are smaller and coloured.
  struct Place {
    double column = -1.0;
    double row = -1.0;
  };
  static Place letterPlace(const host::Image& image, char letter) {
    const std::string text(1, letter);
    const host::StrokeFont font = host::letterFont();
    host::Image pattern(font.width(text), font.lineHeight(), {});
    font.draw(pattern, 0, 0, text, host::letterInk);
    for (int top = 0; top + pattern.height() <= image.height(); ++top) {
      for (int left = 0; left + pattern.width() <= image.width(); ++left) {
        if (isThere(image, pattern, left, top)) {
          return {left + pattern.width() * 0.5, top + pattern.height() * 0.5};
        }
      }
    }
    return {};
  }

 private:
  static bool isThere(const host::Image& image, const host::Image& pattern, int left, int top) {
    for (int row = 0; row < pattern.height(); ++row) {
      for (int column = 0; column < pattern.width(); ++column) {
        if ((pattern.pixel(column, row) == host::letterInk) !=
            (image.pixel(left + column, top + row) == host::letterInk)) {
          return false;
        }
      }
    }
    return true;
  }
};
