#include "host/head/NiftiHeader.h"

#include <cmath>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

#include "host/head/ByteReader.h"

namespace host {

namespace {

using namespace std::string_view_literals;

// Both versions hold the same fields in different widths and places.
struct Fields {
  std::endian order = std::endian::native;
  bool isPair = false;
  bool isAroundMiddle = false;
  std::array<std::int64_t, 8> dim{};
  int type = 0;
  std::array<double, 8> pixdim{};
  double voxelOffset = 0.0;
  double slope = 0.0;
  double intercept = 0.0;
  int units = 0;
  int qformCode = 0;
  int sformCode = 0;
  std::array<double, 3> quaternion{};
  std::array<double, 3> qoffset{};
  std::array<double, 12> srow{};
};

[[noreturn]] void refuse(const std::string& cause) {
  throw std::runtime_error(cause);
}

std::endian orderOf(std::span<const std::byte> bytes, std::size_t headerSize) {
  const auto size = numberAt<std::int32_t>(bytes, 0, std::endian::little);
  return size == static_cast<std::int32_t>(headerSize) ? std::endian::little : std::endian::big;
}

bool textAt(std::span<const std::byte> bytes, std::size_t offset, std::string_view text) {
  return std::memcmp(bytes.data() + offset, text.data(), text.size()) == 0;
}

template <typename Number, std::size_t count, typename Result>
void take(std::span<const std::byte> bytes, std::size_t offset, std::endian order,
          std::array<Result, count>& target) {
  for (std::size_t i = 0; i < count; ++i) {
    target[i] = static_cast<Result>(numberAt<Number>(bytes, offset + i * sizeof(Number), order));
  }
}

Fields fieldsOfVersion1(std::span<const std::byte> bytes) {
  Fields fields;
  fields.isPair = textAt(bytes, 344, "ni1\0"sv);
  if (!fields.isPair && !textAt(bytes, 344, "n+1\0"sv)) {
    refuse("not a NIfTI file: the header does not end with the mark n+1 or ni1");
  }
  const std::endian order = fields.order = orderOf(bytes, nifti1HeaderSize);
  take<std::int16_t>(bytes, 40, order, fields.dim);
  fields.type = numberAt<std::int16_t>(bytes, 70, order);
  take<float>(bytes, 76, order, fields.pixdim);
  fields.voxelOffset = static_cast<double>(numberAt<float>(bytes, 108, order));
  fields.slope = static_cast<double>(numberAt<float>(bytes, 112, order));
  fields.intercept = static_cast<double>(numberAt<float>(bytes, 116, order));
  fields.units = numberAt<std::uint8_t>(bytes, 123, order);
  fields.isAroundMiddle = textAt(bytes, 148, std::string_view(niftiAroundMiddle));
  fields.qformCode = numberAt<std::int16_t>(bytes, 252, order);
  fields.sformCode = numberAt<std::int16_t>(bytes, 254, order);
  take<float>(bytes, 256, order, fields.quaternion);
  take<float>(bytes, 268, order, fields.qoffset);
  take<float>(bytes, 280, order, fields.srow);
  return fields;
}

Fields fieldsOfVersion2(std::span<const std::byte> bytes) {
  Fields fields;
  fields.isPair = textAt(bytes, 4, "ni2\0\r\n\x1A\n"sv);
  if (!fields.isPair && !textAt(bytes, 4, "n+2\0\r\n\x1A\n"sv)) {
    refuse("not a NIfTI file: the header does not bear the mark n+2 or ni2");
  }
  const std::endian order = fields.order = orderOf(bytes, nifti2HeaderSize);
  fields.type = numberAt<std::int16_t>(bytes, 12, order);
  take<std::int64_t>(bytes, 16, order, fields.dim);
  take<double>(bytes, 104, order, fields.pixdim);
  fields.voxelOffset = static_cast<double>(numberAt<std::int64_t>(bytes, 168, order));
  fields.slope = numberAt<double>(bytes, 176, order);
  fields.intercept = numberAt<double>(bytes, 184, order);
  fields.qformCode = numberAt<std::int32_t>(bytes, 344, order);
  fields.sformCode = numberAt<std::int32_t>(bytes, 348, order);
  take<double>(bytes, 352, order, fields.quaternion);
  take<double>(bytes, 376, order, fields.qoffset);
  take<double>(bytes, 400, order, fields.srow);
  fields.units = numberAt<std::int32_t>(bytes, 500, order);
  return fields;
}

void takeDimensions(const Fields& fields, NiftiHeader& header) {
  const std::int64_t count = fields.dim[0];
  if (count < 3 || count > 7) {
    refuse("not a volume: the file names " + std::to_string(count) + " dimensions");
  }
  std::uint64_t voxels = 1;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const std::int64_t extent = fields.dim[axis + 1];
    countVoxels(voxels, extent);
    header.format.dimensions[axis] = static_cast<int>(extent);
  }
  for (std::size_t axis = 4; axis <= static_cast<std::size_t>(count); ++axis) {
    if (fields.dim[axis] < 0) {
      refuse("an extent of " + std::to_string(fields.dim[axis]) + " volumes");
    }
    header.series = header.series || fields.dim[axis] > 1;
  }
}

VoxelType typeOf(int code) {
  switch (static_cast<VoxelType>(code)) {
    case VoxelType::uint8:
    case VoxelType::int8:
    case VoxelType::int16:
    case VoxelType::uint16:
    case VoxelType::int32:
    case VoxelType::uint32:
    case VoxelType::int64:
    case VoxelType::uint64:
    case VoxelType::float32:
    case VoxelType::float64:
      return static_cast<VoxelType>(code);
  }
  constexpr int rgb = 128;
  constexpr int rgba = 2304;
  if (code == rgb || code == rgba) {
    refuse("the voxels are colours (type " + std::to_string(code) + "), not grey values");
  }
  refuse("the voxel type " + std::to_string(code) + " cannot be read");
}

// mm per unit of length of the file; an unnamed unit is taken as mm.
double unitScale(int units) {
  constexpr int spaceBits = 7;
  constexpr int metre = 1;
  constexpr int micrometre = 3;
  switch (units & spaceBits) {
    case metre:
      return 1000.0;
    case micrometre:
      return 0.001;
    default:
      return 1.0;
  }
}

Affine sform(const std::array<double, 12>& row) {
  return {{row[0], row[4], row[8]},
          {row[1], row[5], row[9]},
          {row[2], row[6], row[10]},
          {row[3], row[7], row[11]}};
}

double positiveOrOne(double spacing) {
  return spacing > 0.0 ? spacing : 1.0;
}

// The rotation of the unit quaternion (a, b, c, d), whose a is the root of what the other three leave.
Affine qform(const Fields& fields) {
  auto [b, c, d] = fields.quaternion;
  double a = 1.0 - (b * b + c * c + d * d);
  if (a < 1e-7) {
    // A half turn, where rounding may leave less than nothing.
    const double scale = 1.0 / std::sqrt(b * b + c * c + d * d);
    b *= scale;
    c *= scale;
    d *= scale;
    a = 0.0;
  } else {
    a = std::sqrt(a);
  }
  const double third = positiveOrOne(fields.pixdim[3]) * (fields.pixdim[0] < 0.0 ? -1.0 : 1.0);
  const Vector3 x{a * a + b * b - c * c - d * d, 2 * (b * c + a * d), 2 * (b * d - a * c)};
  const Vector3 y{2 * (b * c - a * d), a * a + c * c - b * b - d * d, 2 * (c * d + a * b)};
  const Vector3 z{2 * (b * d + a * c), 2 * (c * d - a * b), a * a + d * d - b * b - c * c};
  return {x * positiveOrOne(fields.pixdim[1]),
          y * positiveOrOne(fields.pixdim[2]),
          z * third,
          {fields.qoffset[0], fields.qoffset[1], fields.qoffset[2]}};
}

void takeMap(const Fields& fields, NiftiHeader& header) {
  Affine map;
  if (fields.sformCode > 0) {
    header.map = NiftiMap::sform;
    header.mapCode = fields.sformCode;
    map = sform(fields.srow);
  } else if (fields.qformCode > 0) {
    header.map = NiftiMap::qform;
    header.mapCode = fields.qformCode;
    map = qform(fields);
  } else {
    map = Affine({fields.pixdim[1], 0, 0}, {0, fields.pixdim[2], 0}, {0, 0, fields.pixdim[3]}, {});
  }
  const double scale = unitScale(fields.units);
  header.toScanner =
      Affine(map.column(0) * scale, map.column(1) * scale, map.column(2) * scale, map.shift() * scale);
  if (!header.toScanner.inverse()) {
    refuse("the map from voxels to mm cannot be inverted");
  }
}

void takeOffset(const Fields& fields, std::size_t headerSize, NiftiHeader& header) {
  // Extensions may stand between header and voxels; nobody's are this long.
  constexpr double longest = 268435456.0;
  const double first = fields.isPair ? 0.0 : static_cast<double>(headerSize);
  if (!(fields.voxelOffset >= first) || fields.voxelOffset > longest) {
    refuse("the place of the voxels in the file makes no sense");
  }
  header.voxelOffset = static_cast<std::uint64_t>(fields.voxelOffset);
}

void takeScale(const Fields& fields, NiftiHeader& header) {
  // A slope of 0 says that the values are not scaled.
  if (fields.slope == 0.0 || !std::isfinite(fields.slope) || !std::isfinite(fields.intercept)) {
    return;
  }
  header.format.slope = fields.slope;
  header.format.intercept = fields.intercept;
}

}  // namespace

std::size_t niftiHeaderSize(std::span<const std::byte, 4> start) {
  for (const std::endian order : {std::endian::little, std::endian::big}) {
    const auto size = numberAt<std::int32_t>(start, 0, order);
    if (size == static_cast<std::int32_t>(nifti1HeaderSize) ||
        size == static_cast<std::int32_t>(nifti2HeaderSize)) {
      return static_cast<std::size_t>(size);
    }
  }
  return 0;
}

NiftiHeader parseNiftiHeader(std::span<const std::byte> bytes) {
  const Fields fields = bytes.size() == nifti1HeaderSize ? fieldsOfVersion1(bytes) : fieldsOfVersion2(bytes);
  NiftiHeader header;
  header.version = bytes.size() == nifti1HeaderSize ? 1 : 2;
  header.isPair = fields.isPair;
  header.isAroundMiddle = fields.isAroundMiddle && fields.sformCode == 2;
  header.format.order = fields.order;
  takeDimensions(fields, header);
  header.format.type = typeOf(fields.type);
  takeMap(fields, header);
  takeOffset(fields, bytes.size(), header);
  takeScale(fields, header);
  return header;
}

}  // namespace host
