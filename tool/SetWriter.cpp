#include "tool/SetWriter.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <utility>

#include "host/exchange/ForeignFile.h"
#include "host/exchange/SetFile.h"
#include "host/exchange/SetJson.h"
#include "host/exchange/SetTable.h"
#include "host/text/PathText.h"
#include "host/text/TemporaryFolder.h"
#include "tool/FileNames.h"

namespace tool {
namespace {

// What only files can be written of goes to standard output by way of one.
template <typename Write>
void writeTo(const OutputOptions& output, Write write) {
  if (!output.isStandardOutput()) {
    return write(pathTextOf(output.target()));
  }
  const host::TemporaryFolder folder;
  const std::filesystem::path path = folder.path() / "output";
  write(host::textOf(path));
  std::ifstream file(path, std::ios::binary);
  writeResult(std::string(std::istreambuf_iterator<char>(file), {}));
}

const host::SetPlaces* pointerTo(const std::optional<host::SetPlaces>& places) {
  return places ? &*places : nullptr;
}

void writeForeign(const ImportSession& session, host::ForeignFormat format, const OutputOptions& output,
                  const FrameOptions& frame, const std::optional<host::SetPlaces>& places) {
  const host::ForeignFile file = host::foreignFile(format, session.collection(), session.unknown(),
                                                   frame.head(), frame.name(), pointerTo(places));
  for (const std::string& text : file.told) {
    tell("warning: " + output.target() + ": " + text);
  }
  writeText(output, file.bytes);
}

}  // namespace

ImportSession importToWrite(const ImportOptions& input, const OutputOptions& output, const HeadFor& headFor) {
  output.check();
  const std::vector<InputFile> files = input.knownFiles();
  ImportChoices choices = input.choices();
  choices.head = headFor(files);
  ImportSession session(files, std::move(choices));
  if (session.hasFailed()) {
    throw std::runtime_error(output.target() + " was not written: not every file arrived");
  }
  refuseWrong(session, output);
  return session;
}

void refuseWrong(const ImportSession& session, const OutputOptions& output) {
  const std::string standing = session.standing();
  if (!standing.empty()) {
    throw std::runtime_error(output.target() +
                             " was not written: wrong, and neither repaired nor accepted: " + standing +
                             " (--repair, --unit, --accept)");
  }
}

std::optional<host::SetPlaces> placesOf(const ImportSession& session,
                                        const std::optional<host::PlaceNames>& names) {
  return names ? std::optional<host::SetPlaces>(std::in_place, session.collection(), *names) : std::nullopt;
}

std::string jsonOf(const ImportSession& session, const std::vector<std::string>& files,
                   const host::SetFrame& frame, const std::optional<host::SetPlaces>& places,
                   const Json& beside) {
  const bool isHost = frame.prefix.empty();
  const std::unique_ptr<CDipoleFace9File> turned =
      isHost ? nullptr : host::inFrame(session.collection(), frame);
  return host::setJson(turned ? *turned : session.collection(), session.unknown(),
                       {files, session.version(), session.patient(), session.isMomentInNAm(),
                        isHost ? std::string() : frame.description, frame.titles(), frame.points,
                        pointerTo(places), beside, frame.pointsTitle()});
}

std::string tableOf(const ImportSession& session, char separator, const host::SetFrame& frame,
                    const std::optional<host::SetPlaces>& places) {
  const std::unique_ptr<CDipoleFace9File> turned =
      frame.prefix.empty() ? nullptr : host::inFrame(session.collection(), frame);
  return host::tableOf(turned ? *turned : session.collection(), session.unknown(), session.isMomentInNAm(),
                       separator, frame.titles(), pointerTo(places));
}

void writeSet(ImportSession& session, const std::vector<std::string>& files, const OutputOptions& output,
              const FrameOptions& frame, const std::optional<host::PlaceNames>& names) {
  CDipoleFace9File& set = session.collection();
  const std::string loss = host::lossOf(session.unknown());
  session.add(frame.findings(session.joined()));
  refuseWrong(session, output);
  const bool isModules = output.format() == OutputFormat::dipset || output.format() == OutputFormat::text;
  if (isModules && !frame.isHost()) {
    throw std::runtime_error(output.target() +
                             ": this format is in the head frame of the host, no other --frame");
  }
  if (isModules && names) {
    throw std::runtime_error(output.target() + ": " + host::noRoomForPlaces);
  }
  if (isModules && !loss.empty()) {
    tell("warning: " + output.target() + ": " + loss);
  }
  const std::optional<host::SetPlaces> places = placesOf(session, names);
  switch (output.format()) {
    case OutputFormat::dipset:
      return writeTo(output, [&](const CString& path) { host::writeSet(set, path); });
    case OutputFormat::text:
      return writeTo(output, [&](const CString& path) { host::writeSpreadsheetText(set, path); });
    case OutputFormat::csv:
      return writeText(output, tableOf(session, ',', frame.frame(), places));
    case OutputFormat::tsv:
      return writeText(output, tableOf(session, '\t', frame.frame(), places));
    case OutputFormat::json:
      return writeText(output, jsonOf(session, files, frame.frame(), places));
    case OutputFormat::neuromag:
      return writeForeign(session, host::ForeignFormat::neuromag, output, frame, places);
    case OutputFormat::bdip:
      return writeForeign(session, host::ForeignFormat::bdip, output, frame, places);
    case OutputFormat::ctf:
      return writeForeign(session, host::ForeignFormat::ctf, output, frame, places);
    case OutputFormat::slicer:
      return writeForeign(session, host::ForeignFormat::slicer, output, frame, places);
    case OutputFormat::slicerArrows:
      return writeForeign(session, host::ForeignFormat::slicerArrows, output, frame, places);
    case OutputFormat::vtp:
      return writeForeign(session, host::ForeignFormat::vtp, output, frame, places);
  }
}

void writeOldSet(CDipoleFace9File& set, const OutputOptions& output) {
  writeTo(output, [&](const CString& path) { host::writeOldSet(set, path); });
}

void writeText(const OutputOptions& output, const std::string& text) {
  if (output.isStandardOutput()) {
    writeResult(text);
  } else {
    host::writeText(text, pathTextOf(output.target()));
  }
}

}  // namespace tool
