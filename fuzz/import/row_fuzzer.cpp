// Scans one row as RowScanner and as the C library does; the two must agree.
//
// The first byte chooses the format. Its highest bit says how the rest becomes text: one byte or two bytes
// for a unit.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/Check.h"
#include "tests/import/ScanfOracle.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const wchar_t* format = ctfFormats[(data[0] & 0x7FU) % ctfFormats.size()];
  const std::size_t unitSize = (data[0] & 0x80U) != 0 ? 2 : 1;
  std::u16string row;
  for (std::size_t i = 1; i + unitSize <= size && row.size() < AnsiLine::capacity; i += unitSize) {
    const unsigned high = unitSize == 2 ? data[i + 1] : 0U;
    const auto unit = static_cast<char16_t>(data[i] | high << 8U);
    if (unit == 0) {
      break;  // the line reader gives no zeros
    }
    row += unit;
  }
  check(scanByLibrary(format, row) == scanByScanner(format, row), "a row is scanned as the C library does");
  return 0;
}
