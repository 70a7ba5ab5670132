// Pictures as PNG files, read here by the rules of the format.
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/paint/PngFile.h"
#include "tests/host/paint/PngReading.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Image;
using host::Rgb;

// Rows that change along themselves, from row to row, slantwise, or without order.
Image patterns() {
  Image image(97, 120, {});
  std::mt19937 random(7);
  for (int row = 0; row < image.height(); ++row) {
    for (int column = 0; column < image.width(); ++column) {
      const int kind = row / 20;
      const int value = kind == 0   ? static_cast<int>(random() % 256)
                        : kind == 1 ? column * 2
                        : kind == 2 ? row * 2 + column % 2 * 90
                        : kind == 3 ? (column + row) * 3 + static_cast<int>(random() % 4)
                        : kind == 4
                            ? static_cast<int>(100 + 80 * std::sin(column * 0.2) * std::sin(row * 0.2))
                            : 255 * (column / 40 % 2);
      image.setPixel(column, row,
                     {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value / 2),
                      static_cast<std::uint8_t>(255 - value)});
    }
  }
  return image;
}

}  // namespace

TEST(PngFile, GivesEveryPixelBackWhateverTheFilter) {
  const Image image = patterns();
  const Png png(host::pngBytes(image));
  EXPECT_EQ(png.width, 97U);
  EXPECT_EQ(png.height, 120U);
  EXPECT_EQ(png.kinds, (std::vector<std::string>{"IHDR", "sRGB", "IDAT", "IEND"}));
  EXPECT_EQ(png.pixels, image.pixels());
  EXPECT_GE(png.filters.size(), 4U);
}

TEST(PngFile, PacksWhatRepeats) {
  EXPECT_LT(host::pngBytes(Image(1000, 1000, {10, 20, 30})).size(), 20000U);
  EXPECT_EQ(Png(host::pngBytes(Image(1, 1, {10, 20, 30}))).pixels, (std::vector<Rgb>{{10, 20, 30}}));
}

TEST(PngFile, ReplacesAFileAsAWhole) {
  const TempFolder folder;
  const CString path = folder.write("a.png", "old");
  const Image image = patterns();
  host::writePng(image, path);
  EXPECT_EQ(folder.read("a.png"), host::pngBytes(image));
  EXPECT_EQ(folder.names(), std::vector<std::string>{"a.png"});
  EXPECT_NE(failureOf([&] { host::writePng(image, folder.path("gone/a.png")); }).find("a.png: "),
            std::string::npos);
}
