#include "tool/SetWriter.h"

#include <stdexcept>

#include "host/exchange/SetFile.h"
#include "host/exchange/SetJson.h"
#include "host/text/PathText.h"

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

Json documentOf(const ImportSession& session, const std::vector<std::string>& files) {
  return host::setDocument(session.collection(), session.unknown(),
                           {files, session.version(), session.patient(), session.isMomentInNAm()});
}

void writeSet(ImportSession& session, const std::vector<std::string>& files, const OutputOptions& output) {
  CDipoleFace9File& set = session.collection();
  const CString target = host::textOf(output.target());
  const bool isInNAm = session.isMomentInNAm();
  const std::string loss = host::lossOf(session.unknown());
  const bool isLossy = output.format() == OutputFormat::dipset || output.format() == OutputFormat::text;
  if (isLossy && !loss.empty()) {
    tell("warning: " + output.target() + ": " + loss);
  }
  switch (output.format()) {
    case OutputFormat::dipset:
      return host::writeSet(set, target);
    case OutputFormat::text:
      return host::writeSpreadsheetText(set, target);
    case OutputFormat::csv:
      return host::writeText(host::tableOf(set, session.unknown(), isInNAm, ','), target);
    case OutputFormat::tsv:
      return host::writeText(host::tableOf(set, session.unknown(), isInNAm, '\t'), target);
    case OutputFormat::json:
      return writeJson(documentOf(session, files), output.target());
  }
}

void writeJson(const Json& json, const std::string& target) {
  host::writeText(host::indented(json), host::textOf(target));
}

}  // namespace tool
