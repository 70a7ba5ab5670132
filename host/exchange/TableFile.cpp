#include "host/exchange/TableFile.h"

#include <stdexcept>

#include "host/dipoles/HeaderText.h"
#include "host/exchange/SetFile.h"
#include "host/exchange/SetJson.h"
#include "host/text/FileBytes.h"
#include "host/text/PathText.h"

namespace host {

namespace {

[[noreturn]] void fail(const std::string& name, const std::string& cause) {
  throw std::runtime_error((name.empty() ? "" : name + ": ") + cause);
}

}  // namespace

std::string textOfFile(const std::filesystem::path& path, const std::string& name) {
  std::string text;
  try {
    text = bytesOfFile(path);
  } catch (const std::runtime_error& error) {
    fail(name, error.what());
  }
  if (text.size() > mostFileBytes) {
    fail(name, "it is larger than 256 MiB");
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

void writeTable(const CDipoleFace& set, const UnknownValues& unknown, TableFormat format,
                const CString& path) {
  const bool isInNAm = set.m_momentInNAm != 0;
  if (format == TableFormat::json) {
    const SetTexts texts{{}, headerText(set.m_fileVersion, "VERSION:"), patientOf(set), isInNAm};
    return writeText(setJson(set, unknown, texts), path);
  }
  writeText(tableOf(set, unknown, isInNAm, format == TableFormat::csv ? ',' : '\t'), path);
}

}  // namespace host
