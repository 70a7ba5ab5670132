#include "host/head/HeadBox.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "host/head/Limits.h"

namespace host {

namespace {

constexpr int reach = static_cast<int>(headReach);  // mm to either side of the origin
constexpr double visible = 0.1;

// How many bright voxels lie in each mm along one axis.
class Profile {
 public:
  void add(double mm) {
    const double bin = std::floor(mm) + reach;
    if (bin >= 0.0 && bin < static_cast<double>(m_counts.size())) {
      ++m_counts[static_cast<std::size_t>(bin)];
    }
  }

  // First and last mm that hold more than a thousandth of what the fullest holds.
  void bounds(double& low, double& high) const {
    const std::size_t most = *std::max_element(m_counts.begin(), m_counts.end());
    const auto counts = [most](std::size_t count) { return count > most / 1000; };
    const auto first = std::find_if(m_counts.begin(), m_counts.end(), counts);
    const auto last = std::find_if(m_counts.rbegin(), m_counts.rend(), counts).base();
    if (first == m_counts.end()) {
      return;
    }
    low = static_cast<double>(first - m_counts.begin()) - reach;
    high = static_cast<double>(last - m_counts.begin()) - reach;
  }

 private:
  std::array<std::size_t, std::size_t{2} * reach> m_counts{};
};

}  // namespace

HeadBox findHead(const Volume& volume, const HeadFrame& frame) {
  const Affine toHead = frame.fromScanner().after(volume.toScanner());
  const GreyWindow& window = volume.window();
  const double threshold = window.low + visible * (window.high - window.low);
  const auto [width, height, depth] = volume.dimensions();
  // Large volumes are looked at in steps: the box needs no more than a mm or two.
  const int step = volume.voxels().size() > 16'000'000 ? 2 : 1;
  std::array<Profile, 3> profiles;
  for (int k = 0; k < depth; k += step) {
    for (int j = 0; j < height; j += step) {
      for (int i = 0; i < width; i += step) {
        if (static_cast<double>(volume.voxel(i, j, k)) < threshold) {
          continue;
        }
        const Vector3 mm = toHead({static_cast<double>(i), static_cast<double>(j), static_cast<double>(k)});
        for (int axis = 0; axis < 3; ++axis) {
          profiles[static_cast<std::size_t>(axis)].add(mm[axis]);
        }
      }
    }
  }
  HeadBox box;
  for (int axis = 0; axis < 3; ++axis) {
    profiles[static_cast<std::size_t>(axis)].bounds(box.low[axis], box.high[axis]);
  }
  return box;
}

}  // namespace host
