#include "tool/SetWriter.h"

#include <stdexcept>

#include "host/dipoles/DipoleColumns.h"
#include "host/exchange/SetFile.h"
#include "host/text/PathText.h"
#include "tool/DipoleJson.h"

namespace tool {

ImportSession importToWrite(const ImportOptions& input, const OutputOptions& output) {
  const std::vector<InputFile> files = input.knownFiles();
  (void)output.format();
  ImportSession session(files, input.answers());
  if (!session.isComplete()) {
    throw std::runtime_error(output.target() + " was not written: not every dipole of every file arrived");
  }
  return session;
}

Json setDocument(const ImportSession& session, const std::vector<std::string>& files) {
  return {{"files", files},
          {"version", jsonText(session.version())},
          {"patient", jsonText(session.patient())},
          {"frame", "head: x left, y up, z front"},
          {"moment_unit", jsonText(session.isMomentInNAm() ? "nAm" : "")},
          {"dipoles", dipoleList(session.collection(), session.isMomentInNAm())}};
}

void writeSet(ImportSession& session, const std::vector<std::string>& files, const OutputOptions& output) {
  CDipoleFace9File& set = session.collection();
  const CString target = host::textOf(output.target());
  const bool isInNAm = session.isMomentInNAm();
  switch (output.format()) {
    case OutputFormat::dipset:
      return host::writeSet(set, target);
    case OutputFormat::text:
      return host::writeSpreadsheetText(set, target);
    case OutputFormat::csv:
      return host::writeText(host::dipoleTable(set, isInNAm, ','), target);
    case OutputFormat::tsv:
      return host::writeText(host::dipoleTable(set, isInNAm, '\t'), target);
    case OutputFormat::json:
      return writeJson(setDocument(session, files), output.target());
  }
}

void writeJson(const Json& json, const std::string& target) {
  constexpr int indent = 2;
  host::writeText(json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n", host::textOf(target));
}

}  // namespace tool
