// A head for tests whose sides cannot be confused: a ball of grey, darker to one side, with one white blob
// where the test wants it. Head mm: x left, y up, z front.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "host/head/HeadFrame.h"
#include "host/head/Volume.h"

// A head tilted and turned a little in the scanner, its origin away from the scanner's.
inline host::HeadFrame tiltedFrame() {
  return host::HeadFrame({{9, 92, -10}, {-72, -12, -22}, {74, 8, -26}});
}

// The ball, of radius 60 mm, lies around the head's origin; the blob, of radius 12 mm, at a point of the
// head. Dark specks in the ball pull down the low end of the grey window, as the dark parts of a real head
// do. Voxels of 2 mm; their axes run to the left, to the back and up, as no picture does.
inline host::Volume phantom(const host::HeadFrame& frame, const host::Vector3& blob) {
  constexpr int extent = 100;
  const host::Affine toScanner({-2, 0, 0}, {0, -2, 0}, {0, 0, 2}, {100, 100, -110});
  std::vector<float> voxels;
  voxels.reserve(static_cast<std::size_t>(extent) * extent * extent);
  for (int k = 0; k < extent; ++k) {
    for (int j = 0; j < extent; ++j) {
      for (int i = 0; i < extent; ++i) {
        const host::Vector3 index{static_cast<double>(i), static_cast<double>(j), static_cast<double>(k)};
        const host::Vector3 head = frame.fromScanner(toScanner(index));
        const bool inBall = length(head) < 60.0;
        const bool inBlob = length(head - blob) < 12.0;
        const float ball = (i + j + k) % 10 == 0 ? 20.0F : static_cast<float>(300.0 + head.x);
        voxels.push_back(inBlob ? 600.0F : inBall ? ball : 0.0F);
      }
    }
  }
  return {{extent, extent, extent}, std::move(voxels), toScanner};
}
