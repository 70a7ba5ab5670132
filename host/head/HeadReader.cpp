#include "host/head/HeadReader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "host/head/ByteReader.h"
#include "host/head/ByteSource.h"
#include "host/head/CtfMriReader.h"
#include "host/head/DicomFolder.h"
#include "host/head/MghReader.h"
#include "host/head/NiftiHeader.h"
#include "host/head/NiftiReader.h"
#include "host/text/PathText.h"

namespace host {

namespace {

namespace fs = std::filesystem;

enum class Kind { unknown, nifti, ctf2, ctf4, mgh, dicom };

constexpr std::size_t startSize = 132;
constexpr std::size_t dicomMarkAt = 128;

bool hasText(std::span<const std::byte> bytes, std::size_t offset, std::string_view text) {
  return bytes.size() >= offset + text.size() &&
         std::equal(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset),
                    [](char letter, std::byte byte) { return std::byte(letter) == byte; });
}

// The first bytes of a file, unpacked.
class Start {
 public:
  explicit Start(const fs::path& path) {
    ByteSource source(path);
    m_size = source.read(m_buffer);
  }
  std::span<const std::byte> bytes() const { return std::span<const std::byte>(m_buffer).first(m_size); }

 private:
  std::array<std::byte, startSize> m_buffer{};
  std::size_t m_size = 0;
};

Kind kindOf(std::span<const std::byte> bytes) {
  if (bytes.size() < sizeof(std::int32_t)) {
    return Kind::unknown;
  }
  if (niftiHeaderSize(bytes.first<4>()) != 0) {
    return Kind::nifti;
  }
  if (hasText(bytes, 0, "CTF_MRI_FORMAT VER ")) {
    return Kind::ctf2;
  }
  if (hasText(bytes, 0, "WS1_")) {
    return Kind::ctf4;
  }
  if (hasText(bytes, dicomMarkAt, "DICM")) {
    return Kind::dicom;
  }
  // An MGH file has nothing to tell it by but the number of its version, which others add to from above.
  const auto version = numberAt<std::uint32_t>(bytes, 0, std::endian::big);
  return (version & 0xFFU) == 1 && version <= 0xFFFFU ? Kind::mgh : Kind::unknown;
}

ReadHead readKnown(const fs::path& path, const HeadReading& reading) {
  std::error_code error;
  if (fs::is_directory(path, error)) {
    return readDicomFolder(path);
  }
  Kind kind = kindOf(Start(path).bytes());
  // The first voxels of a pair may happen to be numbers that an MGH file begins with.
  if (kind == Kind::mgh && !niftiHeaderBeside(path).empty()) {
    kind = Kind::unknown;
  }
  switch (kind) {
    case Kind::nifti:
      return readNifti(path);
    case Kind::ctf2: {
      ByteSource source(path);
      return readCtfMri2(source, reading);
    }
    case Kind::ctf4: {
      ByteSource source(path);
      return readCtfMri4(source);
    }
    case Kind::mgh: {
      ByteSource source(path);
      return readMgh(source);
    }
    case Kind::dicom:
      throw std::runtime_error("a DICOM file: open the folder of its series instead");
    case Kind::unknown:
      break;
  }
  // The voxels of a pair say nothing themselves.
  if (const fs::path header = niftiHeaderBeside(path); !header.empty()) {
    return readNifti(header);
  }
  throw std::runtime_error(
      "not an MRI that can be read: neither a NIfTI file, a CTF MRI (.mri), MGH nor MGZ");
}

// What `answer` makes of the first bytes of a file; false when it cannot be read.
template <typename Answer>
bool ofStart(const fs::path& path, Answer answer) {
  try {
    const Start start(path);
    return answer(start.bytes());
  } catch (const std::runtime_error&) {
    return false;
  }
}

}  // namespace

bool isHead(const fs::path& path) {
  return ofStart(path, [](std::span<const std::byte> bytes) {
    const Kind kind = kindOf(bytes);
    return kind != Kind::unknown && kind != Kind::dicom;
  });
}

bool isCtf21(const fs::path& path) {
  return ofStart(
      path, [](std::span<const std::byte> bytes) { return hasText(bytes, 0, "CTF_MRI_FORMAT VER 2.1"); });
}

ReadHead readHead(const fs::path& path, const HeadReading& reading) {
  const auto named = [&](const std::string& cause) { return utf8Of(textOf(path)) + ": " + cause; };
  try {
    return readKnown(path, reading);
  } catch (const std::bad_alloc&) {
    throw std::runtime_error(named("there is not enough memory for the volume"));
  } catch (const std::exception& error) {
    throw std::runtime_error(named(error.what()));
  }
}

}  // namespace host
