// Squares on a slice are what one after the other would leave, though the module draws only those that can be
// seen.
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>

#include "host/panes/SliceSquares.h"
#include "tests/host/panes/PaneFixture.h"
#include "tests/host/undo/WholeSet.h"

namespace {

using host::Image;
using host::PaneGrid;
using host::PixelPoint;
using host::Rgb;
using host::SliceSquare;
using host::Vector3;
using host::View;

constexpr int width = 70;
constexpr int height = 50;
constexpr Rgb black{0, 0, 0};

struct SliceSquares : testing::Test, PaneFixture {
  // By chance, in and around the pane; many are covered by others.
  std::vector<SliceSquare> squaresOn(const PaneGrid& grid, int count, std::mt19937& random) {
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    dipoles->cleanDipoles();
    std::vector<SliceSquare> squares;
    for (int slot = 0; slot < count; ++slot) {
      const PixelPoint at{below(width + 20) - 10, below(height + 20) - 10};
      const Vector3 place = grid.headPoint(at.column, at.row);
      add(place.x, place.y - (slot % 3 == 0 ? 30.0 : 0.0) * (grid.view() == View::axial ? 1 : 0), place.z);
      squares.push_back({slot, at, {static_cast<std::uint8_t>(30 + below(220)), 40, 200}});
    }
    return squares;
  }

  static void lay(Image& image, const SliceSquare& square, int size, Rgb colour) {
    const int left = square.at.column - host::pixelsBefore(size);
    const int top = square.at.row - host::pixelsBefore(size);
    image.fill({left, top, left + size, top + size}, colour);
  }

  // All edges, then all squares, the current one last.
  static Image oneAfterTheOther(std::vector<SliceSquare> squares, int current, int size, int edge) {
    Image image(width, height, {9, 9, 9});
    std::stable_partition(squares.begin(), squares.end(),
                          [&](const SliceSquare& square) { return square.slot != current; });
    for (const SliceSquare& square : squares) {
      lay(image, square, size + 2 * edge, black);
    }
    for (const SliceSquare& square : squares) {
      lay(image, square, size, square.colour);
    }
    return image;
  }
};

}  // namespace

TEST_F(SliceSquares, AreWhatOneAfterTheOtherWouldLeave) {
  std::mt19937 random(12);
  for (int round = 0; round < 12; ++round) {
    for (const View view : host::allViews) {
      const PaneGrid grid(view, width, height, 1.0, {3, 4, 5});
      const int count = 1 + static_cast<int>(random() % 200);
      const std::vector<SliceSquare> squares = squaresOn(grid, count, random);
      const int size = 1 + static_cast<int>(random() % 12);
      dipoles->m_currentDipole = static_cast<int>(random() % static_cast<unsigned>(2 * count));
      const WholeSet before = wholeSet(*dipoles);
      Image image(width, height, {9, 9, 9});
      drawSquares(image, *dipoles, grid, squares, size, 1);
      ASSERT_TRUE(image.pixels() == oneAfterTheOther(squares, dipoles->m_currentDipole, size, 1).pixels())
          << nameOf(view) << " " << round << " " << size;
      ASSERT_TRUE(isSame(wholeSet(*dipoles), before));
    }
  }
}
