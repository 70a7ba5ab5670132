// Pictures as PNG files, read here by the rules of the format.
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>
#include <zlib.h>

#include "host/paint/PngFile.h"
#include "tests/host/text/Failing.h"
#include "tests/support/TempFolder.h"

namespace {

using host::Image;
using host::Rgb;

std::uint32_t numberAt(const std::string& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value << 8U | static_cast<unsigned char>(bytes.at(at + i));
  }
  return value;
}

// What a filter foretells from the bytes to the left, above, and above to the left.
int foretold(int filter, int left, int up, int corner) {
  const int guess = left + up - corner;
  const int distances[] = {std::abs(guess - left), std::abs(guess - up), std::abs(guess - corner)};
  const int nearest = distances[0] <= distances[1] && distances[0] <= distances[2] ? left
                      : distances[1] <= distances[2]                               ? up
                                                                                   : corner;
  const int all[] = {0, left, up, (left + up) / 2, nearest};
  return all[filter];
}

struct Png {
  explicit Png(const std::string& file) {
    EXPECT_EQ(file.substr(0, 8), "\x89PNG\r\n\x1A\n");
    std::string data;
    for (std::size_t at = 8; at < file.size();) {
      const std::size_t length = numberAt(file, at);
      const std::string kind = file.substr(at + 4, 4);
      const std::string body = file.substr(at + 8, length);
      const std::string checked = kind + body;
      EXPECT_EQ(numberAt(file, at + 8 + length),
                crc32(0, reinterpret_cast<const Bytef*>(checked.data()), static_cast<uInt>(checked.size())));
      kinds.push_back(kind);
      data += kind == "IDAT" ? body : "";
      if (kind == "IHDR") {
        width = numberAt(body, 0);
        height = numberAt(body, 4);
        EXPECT_EQ(body.substr(8), std::string("\x08\x02\0\0\0", 5));
      }
      at += 12 + length;
    }
    unpack(data);
  }

  void unpack(const std::string& data) {
    const std::size_t stride = 3 * std::size_t{width};
    std::string raw(height * (stride + 1), '\0');
    auto size = static_cast<uLongf>(raw.size());
    ASSERT_EQ(uncompress(reinterpret_cast<Bytef*>(raw.data()), &size,
                         reinterpret_cast<const Bytef*>(data.data()), static_cast<uLong>(data.size())),
              Z_OK);
    ASSERT_EQ(size, raw.size());
    std::vector<int> above(stride);
    for (std::size_t y = 0; y < height; ++y) {
      const int filter = raw[y * (stride + 1)];
      filters.insert(filter);
      std::vector<int> row(stride);
      for (std::size_t i = 0; i < stride; ++i) {
        const int byte = static_cast<unsigned char>(raw[y * (stride + 1) + 1 + i]);
        const int left = i < 3 ? 0 : row[i - 3];
        row[i] = (byte + foretold(filter, left, above[i], i < 3 ? 0 : above[i - 3])) & 255;
      }
      for (std::size_t x = 0; x < width; ++x) {
        pixels.push_back({static_cast<std::uint8_t>(row[3 * x]), static_cast<std::uint8_t>(row[3 * x + 1]),
                          static_cast<std::uint8_t>(row[3 * x + 2])});
      }
      above = row;
    }
  }

  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::vector<std::string> kinds;
  std::set<int> filters;
  std::vector<Rgb> pixels;
};

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
