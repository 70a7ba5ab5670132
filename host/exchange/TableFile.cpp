#include "host/exchange/TableFile.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

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

// What the file does not name stays as it was.
void takeText(CString& text, const CString& ofFile) {
  constexpr LPCTSTR unnamed = _T("non");  // as in a new set
  if (ofFile != unnamed) {
    text = ofFile;
  }
}

}  // namespace

std::optional<TableFormat> tableFormatOf(const CString& path) {
  constexpr std::array<std::pair<LPCTSTR, TableFormat>, 3> formats{
      {{_T(".csv"), TableFormat::csv}, {_T(".tsv"), TableFormat::tsv}, {_T(".json"), TableFormat::json}}};
  for (const auto& [ending, format] : formats) {
    if (path.Right(CString(ending).GetLength()).CompareNoCase(ending) == 0) {
      return format;
    }
  }
  return std::nullopt;
}

TableSet readTableText(std::string_view text, TableFormat format, const std::string& name) {
  return format == TableFormat::json ? readSetJson(text, name)
                                     : readTable(text, format == TableFormat::csv ? ',' : '\t', name);
}

TableSet readTableFile(const std::filesystem::path& path, TableFormat format, const std::string& name) {
  return readTableText(textOfFile(path, name), format, name);
}

int addTable(CDipoleFace9File& set, const CString& path, UnknownValues& unknown) {
  TableSet table = readTableFile(pathOf(path), tableFormatOf(path).value_or(TableFormat::csv), {});
  const int first = set.m_totalDipoles;
  const int count = table.dipoles->m_totalDipoles;
  if (count > DipoleTable::capacity - first) {
    throw std::runtime_error("the set has room for " + std::to_string(DipoleTable::capacity - first) +
                             " more dipoles, the file holds " + std::to_string(count));
  }
  std::vector<std::unique_ptr<CDipoleszq>> copies;
  copies.reserve(static_cast<std::size_t>(count));
  for (int slot = 0; slot < count; ++slot) {
    copies.push_back(std::make_unique<CDipoleszq>(*table.dipoles->m_dipoles[slot]));
    unknown.markAll(first + slot, table.unknown.of(slot));
  }
  for (int slot = 0; slot < count; ++slot) {
    set.m_dipoles.store(first + slot, std::move(copies[static_cast<std::size_t>(slot)]));
  }
  set.m_totalDipoles = first + count;
  set.m_importFirst = first;
  set.m_importEnd = set.m_totalDipoles;
  set.m_momentInNAm = table.dipoles->m_momentInNAm;
  takeText(set.m_patient, table.dipoles->m_patient);
  takeText(set.m_fileVersion, table.dipoles->m_fileVersion);
  return count;
}

void writeTable(const CDipoleFace& set, const UnknownValues& unknown, const CString& path) {
  const TableFormat format = tableFormatOf(path).value_or(TableFormat::csv);
  const bool isInNAm = set.m_momentInNAm != 0;
  if (format == TableFormat::json) {
    const SetTexts texts{{}, headerText(set.m_fileVersion, "VERSION:"), patientOf(set), isInNAm};
    return writeText(indented(setDocument(set, unknown, texts)), path);
  }
  writeText(tableOf(set, unknown, isInNAm, format == TableFormat::csv ? ',' : '\t'), path);
}

}  // namespace host
