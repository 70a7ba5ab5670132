#include "host/head/FifFile.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>
#include <stdexcept>
#include <vector>

#include "host/head/ByteReader.h"
#include "host/head/ByteSource.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"

namespace host {

namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t headerSize = 16;
constexpr std::size_t mostBytes = 1048576;
constexpr double metre = 1000.0;  // mm

// Kinds of tags, and what is said by numbers in them.
constexpr std::int32_t fileId = 100;
constexpr std::int32_t blockStart = 104;
constexpr std::int32_t blockEnd = 105;
constexpr std::int32_t digitisation = 107;  // a block
constexpr std::int32_t point = 213;
constexpr std::int32_t transform = 222;
constexpr std::int32_t pointFrame = 3506;
constexpr std::int32_t cardinal = 1;  // of the kinds of points

constexpr std::int32_t typeOfNumber = 3;
constexpr std::int32_t typeOfId = 31;
constexpr std::int32_t typeOfPoint = 33;
constexpr std::int32_t typeOfTransform = 35;
constexpr std::size_t sizeOfId = 20;
constexpr std::size_t sizeOfPoint = 20;
constexpr std::size_t sizeOfTransform = 104;

constexpr std::int32_t headFrame = 4;
constexpr std::int32_t surfaceFrame = 5;
constexpr std::int32_t scannerFrame = 2002;

[[noreturn]] void refuse(const std::string& cause) {
  throw std::invalid_argument(cause);
}

std::string nameOfFrame(std::int32_t frame) {
  constexpr std::array<std::pair<std::int32_t, const char*>, 14> names = {
      {{0, "unknown"},
       {1, "the MEG device"},
       {2, "the digitiser"},
       {3, "the head coils"},
       {headFrame, "the head"},
       {surfaceFrame, "the MRI's surface RAS"},
       {6, "slices of the MRI"},
       {7, "the MRI's display"},
       {1001, "the CTF device"},
       {1004, "the CTF head"},
       {2001, "voxels of the MRI"},
       {scannerFrame, "the scanner's RAS"},
       {2003, "MNI Talairach"},
       {2004, "FreeSurfer Talairach"}}};
  for (const auto& [number, name] : names) {
    if (number == frame) {
      return name;
    }
  }
  return "frame " + std::to_string(frame);
}

std::int32_t numberAt(Bytes bytes, std::size_t offset) {
  return host::numberAt<std::int32_t>(bytes, offset, std::endian::big);
}

struct Tag {
  std::int32_t kind = 0;
  std::int32_t type = 0;
  Bytes value;
};

// A tag has to have the type and size that its kind has.
void expect(const Tag& tag, std::int32_t type, std::size_t size, const char* what) {
  if (tag.type != type || tag.value.size() != size) {
    refuse(std::string(what) + " of type " + std::to_string(tag.type) + " with " +
           std::to_string(tag.value.size()) + " bytes, where " + std::to_string(size) + " of type " +
           std::to_string(type) + " belong");
  }
}

// All tags of a file, which have to stand one behind the other.
std::vector<Tag> tagsOf(std::string_view text) {
  const Bytes bytes = std::as_bytes(std::span(text));
  std::vector<Tag> tags;
  std::size_t at = 0;
  for (std::int32_t next = 0; next == 0;) {
    if (at == bytes.size() && !tags.empty()) {
      return tags;  // some writers leave out that a tag is the last
    }
    const Bytes rest = bytes.subspan(at);
    if (rest.size() < headerSize) {
      refuse("it is cut off");
    }
    const std::int32_t size = numberAt(rest, 8);
    if (size < 0 || static_cast<std::size_t>(size) > rest.size() - headerSize) {
      refuse("a tag has " + std::to_string(size) + " bytes, and the file " +
             std::to_string(rest.size() - headerSize) + " more");
    }
    next = numberAt(rest, 12);
    const auto length = headerSize + static_cast<std::size_t>(size);
    if (next > 0) {
      if (static_cast<std::size_t>(next) != at + length) {
        refuse("its tags do not stand one behind the other");
      }
      next = 0;
    }
    tags.push_back({numberAt(rest, 0), numberAt(rest, 4), rest.subspan(headerSize, length - headerSize)});
    at += length;
  }
  return tags;
}

// Points of a digitisation block, as they come.
class PointBlock {
 public:
  void take(const Tag& tag) {
    if (tag.kind == pointFrame) {
      expect(tag, typeOfNumber, sizeof(std::int32_t), "the frame of the points is a tag");
      setFrame(numberAt(tag.value, 0));
    } else if (tag.kind == point) {
      expect(tag, typeOfPoint, sizeOfPoint, "a point is a tag");
      if (numberAt(tag.value, 0) == cardinal) {
        setPoint(numberAt(tag.value, 4), tripleAt<float>(tag.value, 8, std::endian::big));
      }
    }
  }

  FramedPoints result() const {
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (!m_points.at(i)) {
        refuse("it does not give " + std::string(names.at(i)));
      }
    }
    if (!m_frame) {
      refuse("it does not name the frame of its points");
    }
    return {{*m_points[1], *m_points[0], *m_points[2]}, known()};
  }

 private:
  // In the order of their numbers.
  static constexpr std::array<const char*, 3> names = {"the left ear", "the nasion", "the right ear"};

  void setFrame(std::int32_t frame) {
    if (m_frame) {
      refuse("it names the frame of its points twice");
    }
    m_frame = frame;
  }

  void setPoint(std::int32_t identity, const Vector3& metres) {
    if (identity < 1 || identity > static_cast<std::int32_t>(names.size())) {
      refuse("a cardinal point has the number " + std::to_string(identity) + ", where there are 1 to 3");
    }
    const auto index = static_cast<std::size_t>(identity - 1);
    if (m_points.at(index)) {
      refuse("it gives " + std::string(names.at(index)) + " twice");
    }
    if (!isFinite(metres)) {
      refuse(std::string(names.at(index)) + " is not a number");
    }
    m_points.at(index) = metres * metre;
  }

  PointFrame known() const {
    switch (*m_frame) {
      case headFrame:
        return PointFrame::head;
      case surfaceFrame:
        return PointFrame::surface;
      case scannerFrame:
        return PointFrame::scanner;
      default:
        refuse("its points are in a frame that says nothing about an MRI: " + nameOfFrame(*m_frame));
    }
  }

  std::optional<std::int32_t> m_frame;
  std::array<std::optional<Vector3>, 3> m_points;
};

struct Transform {
  std::int32_t from = 0;
  std::int32_t to = 0;
  Affine map;  // mm
};

Transform transformOf(const Tag& tag) {
  expect(tag, typeOfTransform, sizeOfTransform, "a transform is a tag");
  std::array<Vector3, 4> rows;  // the last one is the shift
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rows.at(i) = tripleAt<float>(tag.value, 8 + i * 3 * sizeof(float), std::endian::big);
  }
  const Affine turn({rows[0].x, rows[1].x, rows[2].x}, {rows[0].y, rows[1].y, rows[2].y},
                    {rows[0].z, rows[1].z, rows[2].z}, rows[3] * metre);
  return {numberAt(tag.value, 0), numberAt(tag.value, 4), turn};
}

// A turn and a shift alone: nothing is stretched, sheared or mirrored.
void checkRigid(const Affine& map) {
  constexpr double most = 1e-3;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j <= i; ++j) {
      const double expected = i == j ? 1.0 : 0.0;
      if (!(std::abs(dot(map.column(i), map.column(j)) - expected) <= most)) {
        refuse("its transform stretches or shears: the product of columns " + std::to_string(j + 1) +
               " and " + std::to_string(i + 1) + " is " + shortest(dot(map.column(i), map.column(j))));
      }
    }
  }
  if (!(dot(map.column(0), cross(map.column(1), map.column(2))) > 0.0)) {
    refuse("its transform mirrors: left and right would be exchanged");
  }
  if (!isFinite(map.shift())) {
    refuse("the shift of its transform is not a number");
  }
}

}  // namespace

bool isFif(std::string_view bytes) {
  const Bytes start = std::as_bytes(std::span(bytes));
  return start.size() >= headerSize && numberAt(start, 0) == fileId && numberAt(start, 4) == typeOfId &&
         numberAt(start, 8) == static_cast<std::int32_t>(sizeOfId);
}

FramedPoints fifPoints(std::string_view bytes) {
  bool isInside = false;
  std::optional<PointBlock> block;
  for (const Tag& tag : tagsOf(bytes)) {
    if (tag.kind == blockStart || tag.kind == blockEnd) {
      expect(tag, typeOfNumber, sizeof(std::int32_t), "a block is a tag");
      if (numberAt(tag.value, 0) == digitisation) {
        isInside = tag.kind == blockStart;
        if (isInside && block) {
          refuse("it holds points twice");
        }
        block = block ? block : PointBlock();
      }
    } else if (isInside) {
      block->take(tag);
    }
  }
  if (!block) {
    refuse("it holds no fiducial points");
  }
  return block->result();
}

Affine fifHeadToSurface(std::string_view bytes) {
  std::optional<Transform> found;
  std::string others;
  for (const Tag& tag : tagsOf(bytes)) {
    if (tag.kind != transform) {
      continue;
    }
    const Transform one = transformOf(tag);
    const bool isForth = one.from == headFrame && one.to == surfaceFrame;
    if (!isForth && !(one.from == surfaceFrame && one.to == headFrame)) {
      others += "; it leads from " + nameOfFrame(one.from) + " to " + nameOfFrame(one.to);
      continue;
    }
    if (found) {
      refuse("it holds two transforms between the head and the MRI");
    }
    found = one;
  }
  if (!found) {
    refuse("it holds no transform between the head and the MRI's surface RAS" + others);
  }
  checkRigid(found->map);
  return found->from == headFrame ? found->map : found->map.inverse().value();
}

Affine readHeadToSurface(const std::filesystem::path& path) {
  const auto named = [&](const std::string& cause) {
    return std::runtime_error("transform " + utf8Of(textOf(path)) + ": " + cause);
  };
  std::string bytes;
  try {
    bytes = unpackedBytesOf(path, mostBytes);
  } catch (const std::runtime_error& error) {
    throw named(std::string("cannot be opened (") + error.what() + ")");
  }
  if (bytes.size() > mostBytes) {
    throw named("there is more than 1 MiB of it");
  }
  try {
    if (!isFif(bytes)) {
      refuse("not a .fif file");
    }
    return fifHeadToSurface(bytes);
  } catch (const std::invalid_argument& error) {
    throw named(error.what());
  }
}

}  // namespace host
