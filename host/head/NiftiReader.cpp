#include "host/head/NiftiReader.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "host/head/ByteSource.h"
#include "host/text/PathText.h"

namespace host {

namespace {

namespace fs = std::filesystem;

NiftiHeader readHeader(ByteSource& source) {
  std::array<std::byte, nifti2HeaderSize> bytes{};
  const std::span all(bytes);
  if (source.read(all.first(4)) < 4) {
    throw std::runtime_error("not a NIfTI file: it ends before its header");
  }
  const std::size_t size = niftiHeaderSize(all.first<4>());
  if (size == 0) {
    throw std::runtime_error("not a NIfTI file: it does not begin with the size of a header");
  }
  if (source.read(all.subspan(4, size - 4)) < size - 4) {
    throw std::runtime_error("the file is cut off within its header");
  }
  return parseNiftiHeader(all.first(size));
}

// The file of the same name with another ending, which may be packed too, in the letters of the first one.
fs::path beside(const fs::path& path, const char* from, const char* to) {
  fs::path name = path;
  if (hasEnding(textOf(name), ".gz")) {
    name.replace_extension();
  }
  if (!hasEnding(textOf(name), from)) {
    return {};
  }
  std::string upper(to);
  for (char& letter : upper) {
    letter = letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
  }
  std::error_code error;
  for (const std::string& ending : {std::string(to), upper}) {
    name.replace_extension(ending);
    for (const char* packed : {"", ".gz", ".GZ"}) {
      fs::path whole = name;
      whole += packed;
      if (fs::exists(whole, error)) {
        return whole;
      }
    }
  }
  return {};
}

std::vector<float> voxelsOf(ByteSource& source, const NiftiHeader& header, std::uint64_t before) {
  goToVoxels(source, before, header.voxelOffset - before, header.format);
  std::vector<float> voxels = readVoxels(source, header.format);
  if (!header.series) {
    source.finish();
  }
  return voxels;
}

std::vector<float> voxelsOfPair(const fs::path& path, const NiftiHeader& header) {
  const fs::path image = beside(path, ".hdr", ".img");
  if (image.empty()) {
    throw std::runtime_error("a NIfTI header without voxels: no .img file of the same name is beside it");
  }
  ByteSource source(image);
  return voxelsOf(source, header, 0);
}

HeadSource sourceOf(const NiftiHeader& header) {
  HeadSource result;
  result.format = "NIfTI-" + std::to_string(header.version);
  result.format += header.isPair ? " pair" : "";
  switch (header.map) {
    case NiftiMap::sform:
      result.sides = "the file's sform";
      result.spaceCode = "sform code ";
      break;
    case NiftiMap::qform:
      result.sides = "the file's qform";
      result.spaceCode = "qform code ";
      break;
    case NiftiMap::spacing:
      result.sides = "nothing: the file has neither sform nor qform, so sides are assumed";
      break;
  }
  result.space = header.isAroundMiddle ? MriSpace::middle : static_cast<MriSpace>(header.mapCode);
  if (header.mapCode != 0) {
    result.spaceCode += std::to_string(header.mapCode);
  }
  if (header.series) {
    result.remarks.push_back({Doubt::note, "The file holds several volumes; the first one is shown"});
  }
  return result;
}

}  // namespace

NiftiImage readNiftiImage(const fs::path& path, const NiftiCheck& check) {
  ByteSource source(path);
  const NiftiHeader header = readHeader(source);
  if (check) {
    check(header);
  }
  const std::size_t size = header.version == 1 ? nifti1HeaderSize : nifti2HeaderSize;
  return {header, header.isPair ? voxelsOfPair(path, header) : voxelsOf(source, header, size)};
}

ReadHead readNifti(const fs::path& path) {
  auto [header, voxels] = readNiftiImage(path);
  return {
      Volume(header.format.dimensions, std::move(voxels), header.toScanner, header.map != NiftiMap::spacing),
      sourceOf(header), std::nullopt};
}

fs::path niftiHeaderBeside(const fs::path& voxels) {
  return beside(voxels, ".img", ".hdr");
}

}  // namespace host
