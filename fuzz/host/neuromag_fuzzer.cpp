// Reads the input as Neuromag's dipoles, in text or binary, or as a transform to MNI: refused by a fault, or
// dipoles that are written, read and written again to the same bytes, and that come into a set and out of it,
// all of them.
//
// The first byte decides which. One input in sixteen becomes a set, whatever it holds: a set has room for
// 30000 dipoles, and making a dozen of them takes twenty times as long as reading.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "fuzz/Check.h"
#include "host/exchange/DelimitedText.h"
#include "host/exchange/DipContent.h"
#include "host/exchange/ForeignFile.h"
#include "host/exchange/NeuromagBinary.h"
#include "host/exchange/NeuromagSet.h"

namespace {

const host::Fiducials points{{5, 100, 0}, {-75, -5, 0}, {75, 5, 0}};

void checkSet(const host::NeuromagDipoles& file) {
  const host::NeuromagImport import = host::importNeuromag(file, "input", points);
  const CDipoleFace9File& set = *import.set.dipoles;
  check(static_cast<std::size_t>(set.m_totalDipoles) == file.dipoles.size(), "every row is a dipole");
  check(import.set.unknown.end() <= set.m_totalDipoles, "only dipoles have unknown values");
  for (const bool isBinary : {false, true}) {
    check(
        exportNeuromag(set, import.set.unknown, points, isBinary).file.dipoles.size() == file.dipoles.size(),
        "every dipole goes out");
  }
  const host::KnownHead head{points, {}};
  for (const auto format :
       {host::ForeignFormat::ctf, host::ForeignFormat::slicer, host::ForeignFormat::vtp}) {
    check(!foreignFile(format, set, import.set.unknown, head).bytes.empty(), "every format has something");
  }
}

void readText(std::string_view text, bool makesSet) {
  (void)host::dipContentOf(text);
  const host::NeuromagDipoles file = host::readNeuromagText(text);
  const std::string written = neuromagText(file);
  check(neuromagText(host::readNeuromagText(written)) == written, "text comes back");
  check(host::dipContentOf(written) == host::DipContent::neuromag, "what is written is known again");
  if (makesSet) {
    checkSet(file);
  }
}

void readBinary(std::string_view bytes, bool makesSet) {
  const host::NeuromagDipoles file = host::readNeuromagBinary(bytes);
  const std::string written = neuromagBinary(file);
  check(written.size() == bytes.size(), "every record goes out");
  check(neuromagBinary(host::readNeuromagBinary(written)) == written, "records come back");
  if (makesSet) {
    checkSet(file);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const bool makesSet = std::hash<std::string_view>()(text) % 16 == 0;
  try {
    switch (data[0] % 3) {
      case 0:
        readText(text, makesSet);
        break;
      case 1:
        readBinary(text, makesSet);
        break;
      default:
        check(host::mniMapOf(text).fromScanner.inverse().has_value(), "a transform has an inverse");
    }
  } catch (const host::TableFault&) {
    return 0;
  } catch (const std::invalid_argument&) {
    return 0;
  }
  return 0;
}
