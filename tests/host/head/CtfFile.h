// The bytes of a CTF MRI 2.2 for tests: 16 voxels of 10 mm along each axis, the left darker than the right.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/host/head/NiftiFile.h"

struct CtfFile {
  using Numbers = std::array<std::int16_t, 3>;  // sagittal, coronal, axial, from 1
  static constexpr int size = 16;

  std::string version = "2.2";
  std::int16_t orientation = 0;  // left on left
  std::array<float, 3> spacing = {10, 10, 10};
  Numbers nasion = {9, 2, 8};
  Numbers left = {2, 9, 9};
  Numbers right = {15, 9, 9};

  // A voxel has the value of its sagittal number.
  std::string bytes() const {
    constexpr std::size_t headerSize = 1028;
    const std::endian order = std::endian::big;
    std::string result(headerSize, '\0');
    const std::string name = "CTF_MRI_FORMAT VER " + version;
    result.replace(0, name.size(), name);
    put(result, 32, std::int16_t{size}, order);
    put(result, 34, std::int16_t{1}, order);
    put(result, 38, orientation, order);
    for (std::size_t i = 0; i < 3; ++i) {
      put(result, 40 + 4 * i, spacing[i], order);
      put(result, 52 + 2 * i, nasion[i], order);
      put(result, 58 + 2 * i, left[i], order);
      put(result, 64 + 2 * i, right[i], order);
    }
    for (int sagittal = 1; sagittal <= size; ++sagittal) {
      result += std::string(std::size_t{size} * std::size_t{size}, static_cast<char>(sagittal));
    }
    return result;
  }
};
