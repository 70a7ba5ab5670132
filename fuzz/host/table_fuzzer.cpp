// Reads the input as a table of dipoles: refused with a text that names a line, or a set that is written and
// read again to the same bytes.
//
// The first byte decides the format.
#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "fuzz/Check.h"
#include "host/exchange/SetJson.h"
#include "host/exchange/TableFile.h"

namespace {

std::string written(const host::TableSet& table, host::TableFormat format) {
  const bool isInNAm = table.dipoles->m_momentInNAm != 0;
  if (format == host::TableFormat::json) {
    return host::setJson(*table.dipoles, table.unknown, {{}, "", "", isInNAm});
  }
  return host::tableOf(*table.dipoles, table.unknown, isInNAm, format == host::TableFormat::csv ? ',' : '\t');
}

void checkSet(const host::TableSet& table, host::TableFormat format) {
  const CDipoleFace& set = *table.dipoles;
  check(set.m_totalDipoles >= 0 && set.m_totalDipoles <= DipoleTable::capacity, "the count is one");
  check(table.unknown.end() <= set.m_totalDipoles, "only dipoles have unknown values");
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    check(set.m_dipoles[slot] != nullptr, "every slot is filled");
  }
  const std::string text = written(table, format);
  const host::TableSet again = host::readTableText(text, format, "again");
  check(again.unknown == table.unknown, "what is unknown comes back");
  check(written(again, format) == text, "what was read is written, and read to the same text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  constexpr std::array<host::TableFormat, 3> formats{host::TableFormat::csv, host::TableFormat::tsv,
                                                     host::TableFormat::json};
  const host::TableFormat format = formats.at(data[0] % formats.size());
  const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  try {
    checkSet(host::readTableText(text, format, "input"), format);
  } catch (const std::runtime_error& error) {
    check(std::string(error.what()).starts_with("input, line "), "a refusal names the line");
  }
  return 0;
}
