#include "host/head/CtfMriVolume.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

#include "host/head/ByteReader.h"

namespace host {

std::size_t CtfMriVolume::sliceBytes(const CtfMri& mri) {
  const auto size = static_cast<std::size_t>(mri.size);
  return size * size * static_cast<std::size_t>(mri.bytesPerVoxel);
}

void CtfMriVolume::append(std::span<const std::byte> slice) {
  const std::size_t first = m_voxels.size();
  const auto bytes = static_cast<std::size_t>(m_mri.bytesPerVoxel);
  m_voxels.resize(first + slice.size() / bytes);
  float* target = m_voxels.data() + first;
  if (bytes == 1) {
    std::transform(slice.begin(), slice.end(), target,
                   [](std::byte value) { return static_cast<float>(std::to_integer<int>(value)); });
    return;
  }
  // Two bytes are a number without sign: the readers that take one with a sign differ above 32767 only.
  for (std::size_t offset = 0; offset < slice.size(); offset += 2) {
    *target++ = static_cast<float>(numberAt<std::uint16_t>(slice, offset, std::endian::big));
  }
}

ReadHead CtfMriVolume::finish() {
  const auto size = static_cast<std::ptrdiff_t>(m_mri.size);
  if (m_places.isMirrored) {
    // From here on every volume runs from the left to the right.
    const std::ptrdiff_t slice = size * size;
    for (std::ptrdiff_t low = 0, high = size - 1; low < high; ++low, --high) {
      std::swap_ranges(m_voxels.begin() + low * slice, m_voxels.begin() + (low + 1) * slice,
                       m_voxels.begin() + high * slice);
    }
  }
  return {Volume({m_mri.size, m_mri.size, m_mri.size}, std::move(m_voxels), ctfToScanner(m_mri),
                 m_places.sidesKnown),
          std::move(m_places.source), m_places.fiducials};
}

}  // namespace host
