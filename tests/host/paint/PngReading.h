// PNG files of 8 bits RGB, read by the rules of the format.
#pragma once

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>
#include <zlib.h>

#include "host/paint/Image.h"

inline std::uint32_t numberAt(const std::string& bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value << 8U | static_cast<unsigned char>(bytes.at(at + i));
  }
  return value;
}

// What a filter foretells from the bytes to the left, above, and above to the left.
inline int foretold(int filter, int left, int up, int corner) {
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
      const int filter = static_cast<unsigned char>(raw[y * (stride + 1)]);
      filters.insert(filter);
      std::vector<int> row(stride);
      for (std::size_t i = 0; i < stride; ++i) {
        const int stored = static_cast<unsigned char>(raw[y * (stride + 1) + 1 + i]);
        const int left = i < 3 ? 0 : row[i - 3];
        row[i] = (stored + foretold(filter, left, above[i], i < 3 ? 0 : above[i - 3])) & 255;
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
  std::vector<host::Rgb> pixels;
};
