#include "host/exchange/NeuromagBinary.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <span>

#include "host/exchange/DelimitedText.h"
#include "host/head/ByteReader.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

constexpr double millimetres = 1000.0;
constexpr double milliseconds = 1000.0;
constexpr double nanoamperemetres = 1e9;
constexpr double percent = 100.0;
constexpr double farthest = 0.3;  // m: no dipole of a head lies beyond

enum Offset : std::size_t {
  atIndex = 0,
  atBegin = 4,
  atEnd = 8,
  atOrigin = 12,
  atPlace = 24,
  atMoment = 36,
  atGoodness = 48,
  atHasErrors = 52,
  atChiSquare = 184
};

class Record {
 public:
  explicit Record(std::string_view bytes) : m_bytes(std::as_bytes(std::span(bytes))) {}

  std::int32_t whole(std::size_t offset) const {
    return numberAt<std::int32_t>(m_bytes, offset, std::endian::big);
  }
  float real(std::size_t offset) const { return numberAt<float>(m_bytes, offset, std::endian::big); }
  // As the decimal number that was meant: nobody fits to a millionth.
  double decimal(std::size_t offset) const { return withShortestDigits(static_cast<double>(real(offset))); }
  Vector3 triple(std::size_t offset) const { return tripleAt<float>(m_bytes, offset, std::endian::big); }

 private:
  std::span<const std::byte> m_bytes;
};

void addWhole(std::string& bytes, std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  for (unsigned shift = 32; shift > 0; shift -= 8) {
    bytes += static_cast<char>(bits >> (shift - 8) & 0xFFU);
  }
}

void addReal(std::string& bytes, double value) {
  addWhole(bytes, std::bit_cast<std::int32_t>(static_cast<float>(value)));
}

void addTriple(std::string& bytes, const Vector3& values) {
  for (int axis = 0; axis < 3; ++axis) {
    addReal(bytes, values[axis]);
  }
}

// Numbers that no fit gives; what is no number at all may be a dipole that was not fitted.
bool isImpossible(const Record& record) {
  const double goodness = static_cast<double>(record.real(atGoodness));
  return length(record.triple(atPlace)) > farthest || goodness < 0.0 || goodness > 1.0;
}

NeuromagDipole dipoleOf(const Record& record) {
  NeuromagDipole dipole;
  dipole.index = record.whole(atIndex);
  dipole.begin = record.decimal(atBegin) * milliseconds;
  dipole.end = record.decimal(atEnd) * milliseconds;
  dipole.place = record.triple(atPlace) * millimetres;
  dipole.moment = record.triple(atMoment) * nanoamperemetres;
  dipole.amplitude = length(dipole.moment);
  dipole.goodness = record.decimal(atGoodness) * percent;
  return dipole;
}

}  // namespace

NeuromagDipoles readNeuromagBinary(std::string_view bytes) {
  if (bytes.size() % neuromagRecordBytes != 0) {
    throw TableFault(0, 0,
                     "it is no binary file of dipoles: its size is no multiple of " +
                         std::to_string(neuromagRecordBytes) + " bytes");
  }
  NeuromagDipoles file;
  file.isBinary = true;
  int spheres = 0;
  int errors = 0;
  int chiSquares = 0;
  file.dipoles.reserve(bytes.size() / neuromagRecordBytes);
  for (; !bytes.empty(); bytes.remove_prefix(neuromagRecordBytes)) {
    const Record record(bytes);
    if (isImpossible(record)) {
      throw TableFault(0, 0,
                       "it is no binary file of dipoles: record " + std::to_string(file.dipoles.size() + 1) +
                           " has a place beyond 0.3 m, or a goodness of fit outside of 0 to 1");
    }
    file.dipoles.push_back(dipoleOf(record));
    spheres += record.triple(atOrigin) == Vector3() ? 0 : 1;
    errors += record.whole(atHasErrors) != 0 ? 1 : 0;
    chiSquares += record.real(atChiSquare) != 0.0F ? 1 : 0;
  }
  for (const auto& [name, count] :
       {std::pair("origin of the sphere", spheres), std::pair("errors of the fit", errors),
        std::pair("chi-square", chiSquares)}) {
    if (count > 0) {
      file.leftOut.emplace_back(name, count);
    }
  }
  return file;
}

std::string neuromagBinary(const NeuromagDipoles& dipoles) {
  std::string bytes;
  bytes.reserve(dipoles.dipoles.size() * neuromagRecordBytes);
  for (const NeuromagDipole& dipole : dipoles.dipoles) {
    const std::size_t start = bytes.size();
    addWhole(bytes, dipole.index);
    addReal(bytes, dipole.begin / milliseconds);
    addReal(bytes, dipole.end / milliseconds);
    addTriple(bytes, {});
    addTriple(bytes, dipole.place * (1.0 / millimetres));
    addTriple(bytes, dipole.moment * (1.0 / nanoamperemetres));
    addReal(bytes, dipole.goodness / percent);
    bytes.resize(start + neuromagRecordBytes);
  }
  return bytes;
}

}  // namespace host
