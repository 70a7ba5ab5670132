#include "host/head/NiftiWriter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/head/Gzip.h"
#include "host/head/NiftiBytes.h"
#include "host/text/PathText.h"
#include "host/text/SafeFile.h"

namespace host {

namespace {

NiftiLayout layoutOf(const Volume& volume, VoxelType type, MriSpace space) {
  NiftiLayout layout{volume.dimensions(), volume.toScanner(), type};
  layout.space = space;
  layout.areSidesKnown = volume.sidesStated();
  return layout;
}

template <typename Number>
void writeVoxels(const AddBytes& add, const std::vector<float>& voxels) {
  constexpr std::size_t blockSize = std::size_t{1} << 18U;
  std::vector<Number> block;
  for (std::size_t done = 0; done < voxels.size(); done += block.size()) {
    block.resize((std::min)(blockSize, voxels.size() - done));
    std::transform(voxels.begin() + static_cast<std::ptrdiff_t>(done),
                   voxels.begin() + static_cast<std::ptrdiff_t>(done + block.size()), block.begin(),
                   [](float value) { return static_cast<Number>(value); });
    add(std::as_bytes(std::span(block)));
  }
}

}  // namespace

void writeNifti(const CString& path, const Volume& volume, MriSpace space) {
  const VoxelType type = smallestVoxelType(volume.voxels());
  const std::vector<std::byte> header = niftiHeader(layoutOf(volume, type, space));
  writeSafely(path, [&](CFile& file) {
    const AddBytes toFile = [&](std::span<const std::byte> bytes) {
      file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    };
    std::optional<Gzip> packed;
    if (hasEnding(path, ".gz")) {
      packed.emplace(Gzip::quick, toFile);
    }
    const AddBytes add =
        packed ? AddBytes([&](std::span<const std::byte> bytes) { packed->add(bytes); }) : toFile;
    add(header);
    if (type == VoxelType::uint16) {
      writeVoxels<std::uint16_t>(add, volume.voxels());
    } else if (type == VoxelType::int16) {
      writeVoxels<std::int16_t>(add, volume.voxels());
    } else {
      writeVoxels<float>(add, volume.voxels());
    }
    if (packed) {
      packed->finish();
    }
  });
}

}  // namespace host
