// The voxels of a CTF MRI, slice by slice.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "host/head/CtfMri.h"
#include "host/head/HeadReader.h"

namespace host {

class CtfMriVolume {
 public:
  // The mri was checked.
  CtfMriVolume(const CtfMri& mri, CtfPlaces places) : m_mri(mri), m_places(std::move(places)) {}

  static std::size_t sliceBytes(const CtfMri& mri);
  // The next sagittal slice, as stored.
  void append(std::span<const std::byte> slice);
  // Behind the last slice.
  ReadHead finish();

 private:
  CtfMri m_mri;
  CtfPlaces m_places;
  std::vector<float> m_voxels;
};

}  // namespace host
