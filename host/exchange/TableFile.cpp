#include "host/exchange/TableFile.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "host/dipoles/HeaderText.h"
#include "host/exchange/SetFile.h"
#include "host/exchange/SetJson.h"
#include "host/text/PathText.h"

namespace host {

namespace {

constexpr std::size_t mostBytes = std::size_t{256} << 20U;

std::runtime_error failure(const std::string& name, const std::string& cause) {
  return std::runtime_error((name.empty() ? "" : name + ": ") + cause);
}

std::string causeNow() {
  return errno == 0 ? "it cannot be read" : std::generic_category().message(errno);
}

}  // namespace

// Piece by piece: a device has no size, and may have no end.
std::string textOfFile(const std::filesystem::path& path, const std::string& name) {
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw failure(name, causeNow());
  }
  std::string text;
  std::array<char, 65536> piece{};
  while (file.read(piece.data(), piece.size()) || file.gcount() > 0) {
    text.append(piece.data(), static_cast<std::size_t>(file.gcount()));
    if (text.size() > mostBytes) {
      throw failure(name, "it is larger than 256 MiB");
    }
  }
  if (file.bad()) {
    throw failure(name, causeNow());
  }
  return text;
}

std::optional<TableFormat> tableFormatOf(DipoleFormat format) {
  switch (format) {
    case DipoleFormat::csv:
      return TableFormat::csv;
    case DipoleFormat::tsv:
      return TableFormat::tsv;
    case DipoleFormat::json:
      return TableFormat::json;
    default:
      return std::nullopt;
  }
}

TableSet readTableText(std::string_view text, TableFormat format, const std::string& name) {
  return format == TableFormat::json ? readSetJson(text, name)
                                     : readTable(text, format == TableFormat::csv ? ',' : '\t', name);
}

TableSet readTableFile(const std::filesystem::path& path, TableFormat format, const std::string& name) {
  return readTableText(textOfFile(path, name), format, name);
}

void writeTable(const CDipoleFace& set, const UnknownValues& unknown, const CString& path) {
  const std::optional<DipoleFormat> known = dipoleFormatOf(path);
  const TableFormat format = (known ? tableFormatOf(*known) : std::nullopt).value_or(TableFormat::csv);
  const bool isInNAm = set.m_momentInNAm != 0;
  if (format == TableFormat::json) {
    const SetTexts texts{{}, headerText(set.m_fileVersion, "VERSION:"), patientOf(set), isInNAm};
    return writeText(indented(setDocument(set, unknown, texts)), path);
  }
  writeText(tableOf(set, unknown, isInNAm, format == TableFormat::csv ? ',' : '\t'), path);
}

}  // namespace host
