#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/head/ByteReader.h"
#include "host/head/CtfMriReader.h"
#include "host/head/CtfMriVolume.h"

namespace host {

namespace {

constexpr std::size_t headerSize = 1028;
constexpr std::string_view mark = "CTF_MRI_FORMAT VER ";

// Places in the header, bytes.
constexpr std::size_t sizeAt = 32;
constexpr std::size_t bytesAt = 34;
constexpr std::size_t orientationAt = 38;
constexpr std::size_t spacingAt = 40;
constexpr std::size_t nasionAt = 52;
constexpr std::size_t leftEarAt = 58;
constexpr std::size_t rightEarAt = 64;
constexpr std::size_t matrixAt = 760;

using Bytes = std::span<const std::byte>;

std::string textAt(Bytes bytes, std::size_t offset, std::size_t size) {
  std::string text(reinterpret_cast<const char*>(bytes.data() + offset), size);
  text.resize((std::min)(text.find('\0'), size));
  text.resize(text.find_last_not_of(' ') + 1);
  return text;
}

std::string versionOf(Bytes bytes, const HeadReading& reading) {
  constexpr std::size_t identifierSize = 32;
  std::string version = textAt(bytes, mark.size(), identifierSize - mark.size());
  if (version == "2.1" && !reading.takesCtf21) {
    throw std::runtime_error(
        "a CTF MRI of version 2.1, whose layout is known less well; it is read only when asked for "
        "(--ctf-2.1)");
  }
  if (version != "2.2" && version != "2.1") {
    throw std::runtime_error("a CTF MRI of version " + (version.empty() ? "?" : version) +
                             ", whose layout is not known; 2.2 and 4.x can be read");
  }
  return version;
}

CtfMri headerOf(Bytes bytes, const HeadReading& reading) {
  const auto small = [&](std::size_t offset) {
    return numberAt<std::int16_t>(bytes, offset, std::endian::big);
  };
  CtfMri mri;
  mri.version = versionOf(bytes, reading);
  mri.size = small(sizeAt);
  if (const auto swapped = numberAt<std::int16_t>(bytes, sizeAt, std::endian::little);
      mri.size < CtfMri::fewest && swapped >= CtfMri::fewest && swapped <= CtfMri::most) {
    throw std::runtime_error("the numbers of this CTF MRI stand in the other byte order (image size " +
                             std::to_string(mri.size) + ")");
  }
  mri.bytesPerVoxel = small(bytesAt);
  mri.orientation = small(orientationAt);
  mri.spacing = tripleAt<float>(bytes, spacingAt, std::endian::big);
  mri.points = Fiducials{tripleAt<std::int16_t>(bytes, nasionAt, std::endian::big),
                         tripleAt<std::int16_t>(bytes, leftEarAt, std::endian::big),
                         tripleAt<std::int16_t>(bytes, rightEarAt, std::endian::big)};
  if (mri.version == "2.2") {
    mri.matrix.emplace();
    for (std::size_t i = 0; i < mri.matrix->size(); ++i) {
      (*mri.matrix)[i] =
          static_cast<double>(numberAt<float>(bytes, matrixAt + i * sizeof(float), std::endian::big));
    }
  }
  checkCtfPicture(mri);
  return mri;
}

[[noreturn]] void throwCutOff(std::uint64_t found, std::uint64_t wanted) {
  throw std::runtime_error("the file is cut off: " + std::to_string(found) + " of " + std::to_string(wanted) +
                           " bytes are there");
}

}  // namespace

ReadHead readCtfMri2(ByteSource& source, const HeadReading& reading) {
  std::vector<std::byte> header(headerSize);
  if (const std::size_t found = source.read(header); found < headerSize) {
    throwCutOff(found, headerSize);
  }
  const CtfMri mri = headerOf(header, reading);
  const std::size_t sliceBytes = CtfMriVolume::sliceBytes(mri);
  const std::uint64_t wanted = headerSize + sliceBytes * static_cast<std::uint64_t>(mri.size);
  if (const auto plain = source.plainSize(); plain && *plain < wanted) {
    throwCutOff(*plain, wanted);
  }
  CtfMriVolume volume(mri, ctfPlaces(mri));
  std::vector<std::byte> slice(sliceBytes);
  for (int i = 0; i < mri.size; ++i) {
    if (const std::size_t found = source.read(slice); found < sliceBytes) {
      throwCutOff(headerSize + sliceBytes * static_cast<std::uint64_t>(i) + found, wanted);
    }
    volume.append(slice);
  }
  source.finish();
  return volume.finish();
}

}  // namespace host
