#include "host/exchange/ImportAudit.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <ios>
#include <system_error>

#include "host/text/PathText.h"

namespace host {

namespace {

// What the module asked about the file's rows; it asks in fixed texts only.
ImportAnswers answersIn(const std::vector<ModuleMessage>& messages) {
  ImportAnswers answers;
  for (const ModuleMessage& message : messages) {
    if (message.isQuestion && message.text.starts_with("This is moving dipoles")) {
      answers.moving.push_back(message.isYes);
    } else if (message.isQuestion && message.text.starts_with("It seems the dipole location is wrong")) {
      answers.distant.push_back(message.isYes);
    }
  }
  return answers;
}

std::string bytesOf(const CString& path) {
  std::ifstream stream(pathOf(path), std::ios::binary);
  std::string bytes;
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(pathOf(path), error);
  bytes.resize(error ? 0 : static_cast<std::size_t>(size));
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>((std::max)(stream.gcount(), std::streamsize{0})));
  return bytes;
}

ImportedText importedText(const ImportSource& source, int firstSlot, std::optional<LengthUnit> unit) {
  return {source.name, source.text, source.format, source.answers, firstSlot, unit};
}

}  // namespace

bool isAudited(DipoleFormat format) {
  return format == DipoleFormat::ctf || format == DipoleFormat::msi;
}

ImportSource sourceOf(const CString& path, DipoleFormat format, const std::vector<ModuleMessage>& messages,
                      const std::string& name) {
  const auto textFormat = format == DipoleFormat::ctf ? DipoleTextFormat::ctf : DipoleTextFormat::msi;
  return {name, bytesOf(path), textFormat, answersIn(messages)};
}

AuditReport auditImport(const ImportSource& source, const CDipoleFace9File& set, int firstSlot) {
  return audit(importedText(source, firstSlot, std::nullopt), set);
}

RepairReport repairImport(const ImportSource& source, CDipoleFace9File& set, int firstSlot,
                          const Repairs& repairs) {
  std::set<FindingCode> codes = repairs.codes;
  if (repairs.unit) {
    codes.insert(FindingCode::unit);
  }
  return repair(importedText(source, firstSlot, repairs.unit), set, codes);
}

}  // namespace host
