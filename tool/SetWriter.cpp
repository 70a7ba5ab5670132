#include "tool/SetWriter.h"

#include <stdexcept>

#include "host/dipoles/DipoleColumns.h"
#include "host/text/Failure.h"
#include "platform/Utf.h"
#include "tool/DipoleJson.h"
#include "tool/ReplacingFile.h"
#include "tool/TerminalOperator.h"
#include "tool/Text.h"

namespace tool {
namespace {

[[noreturn]] void fail(const std::string& target, const std::string& cause) {
  throw std::runtime_error("cannot write " + target + ": " + cause);
}

// Lets `write` write the file of a name, which then takes the target's place, and turns the module's way to
// fail into the program's.
template <typename Write>
void replace(const std::string& target, Write write) {
  ReplacingFile replacing(target);
  try {
    write(fromUtf8(replacing.path()));
  } catch (CException* exception) {
    const std::string cause = host::causeOf(*exception);
    exception->Delete();
    fail(target, cause);
  }
  replacing.takePlace();
}

// Opens the archive and lets `store` fill it.
template <typename Store>
void writeArchive(const std::string& target, Store store) {
  TerminalOperator op({}, Answers::no);
  const OperatorInCharge inCharge(op);
  replace(target, [&](const CString& path) {
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    CArchive archive(&file, CArchive::store);
    const int result = store(archive);
    if (result == 0 || !op.messages().empty()) {
      archive.Abort();
      fail(target, "the module could not write the set");
    }
    archive.Close();
    file.Close();
  });
}

}  // namespace

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
  switch (output.format()) {
    case OutputFormat::dipset:
      return writeArchive(output.target(), [&](CArchive& to) { return set.serializeDipolesFace(to); });
    case OutputFormat::text:
      return replace(output.target(), [&](const CString& path) { set.exportExelFileX(path); });
    case OutputFormat::csv:
      return writeText(host::dipoleTable(set, session.isMomentInNAm(), ','), output.target());
    case OutputFormat::tsv:
      return writeText(host::dipoleTable(set, session.isMomentInNAm(), '\t'), output.target());
    case OutputFormat::json:
      return writeJson(setDocument(session, files), output.target());
  }
}

void writeOldSet(CDipoleFace9File& set, const std::string& target) {
  writeArchive(target, [&](CArchive& to) { return set.serializeObsolete20050630(to); });
}

void writeText(const std::string& text, const std::string& target) {
  ReplacingFile file(target);
  file.write(text);
  file.takePlace();
}

void writeJson(const Json& json, const std::string& target) {
  constexpr int indent = 2;
  writeText(json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n", target);
}

}  // namespace tool
