#include "tool/FileImport.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/exchange/TableFile.h"
#include "host/text/Failure.h"
#include "platform/Utf.h"
#include "tool/Text.h"

namespace tool {
namespace {

// The module asks and reports in fixed texts only; these tell the outcome of an import.
constexpr const char* movingQuestion = "This is moving dipoles";
constexpr const char* locationQuestion = "It seems the dipole location is wrong";
constexpr const char* cannotOpen = "Can't open file ";
constexpr const char* total = "Total imported dipoles:";

// The importer of 4D/MSI tables stands behind an ending of the file's name; the user may have said otherwise.
class MsiImporter : public CDipoleFace9File {
 public:
  using CDipoleFace9File::import4DMSIDipolesX;
};

// The current folder is what it was after a scope.
class FolderKept {
 public:
  FolderKept() : m_folder(std::filesystem::current_path()) {}
  ~FolderKept() {
    std::error_code error;
    std::filesystem::current_path(m_folder, error);
  }
  FolderKept(const FolderKept&) = delete;
  FolderKept& operator=(const FolderKept&) = delete;

 private:
  std::filesystem::path m_folder;
};

// What an import was asked about the file's rows.
host::ImportAnswers answersIn(const std::vector<Message>& messages) {
  host::ImportAnswers answers;
  for (const Message& message : messages) {
    if (message.isQuestion && message.text.starts_with(movingQuestion)) {
      answers.moving.push_back(message.isYes);
    } else if (message.isQuestion && message.text.starts_with(locationQuestion)) {
      answers.distant.push_back(message.isYes);
    }
  }
  return answers;
}

// Whether dipoles of the file are missing, other than by what the user answered.
bool isLoss(const host::Finding& finding) {
  const bool isOfRows =
      finding.code == host::FindingCode::lostRows || finding.code == host::FindingCode::sections;
  return isOfRows && finding.severity == host::Severity::wrong && !finding.isAnswered;
}

// Why a file cannot be imported, as far as that can be told without opening it; empty when nothing is wrong.
std::string whyUnreadable(const std::string& path) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) {
    return error ? error.message() : "No such file or directory";
  }
  return std::filesystem::is_directory(status) ? "it is a folder, not a file" : "";
}

// The set files of 2001 begin with one of these numbers, later ones with a text.
bool isHeaderlessSet(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  unsigned char bytes[4] = {};
  file.read(reinterpret_cast<char*>(bytes), sizeof bytes);
  std::uint32_t number = 0;
  for (unsigned i = 0; i < 4; ++i) {
    number |= std::uint32_t{bytes[i]} << 8U * i;
  }
  return file && (number <= 1 || number == 20010901 || number == 20011118);
}

}  // namespace

int countDipoles(const CDipoleFace& set) {
  int count = 0;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    count += set.m_dipoles[slot] != nullptr ? 1 : 0;
  }
  return count;
}

FileImport::FileImport(const InputFile& file, Answers answers)
    : m_file(file),
      m_path(std::filesystem::absolute(file.name).string()),
      m_collection(std::make_unique<MsiImporter>()) {
  const FolderKept folderKept;
  const std::string cause = whyUnreadable(m_path);
  if (!cause.empty()) {
    m_isReadable = false;
    warnOfLoss(m_file.name + ": " + cause);
  }
  if (m_file.format == InputFormat::ctf) {
    importCtf(answers);
  } else if (m_isReadable && m_file.format == InputFormat::msi) {
    importMsi(answers);
  } else if (m_isReadable && m_file.format == InputFormat::dipset) {
    loadDipset();
  } else if (m_isReadable) {
    loadTable();
  }
  m_isComplete = m_isComplete && countDipoles(*m_collection) > 0;
}

void FileImport::importCtf(Answers answers) {
  TerminalOperator op({fromUtf8(m_path)}, answers);
  const OperatorInCharge inCharge(op);
  if (m_collection->importCTFDipoles() == 0) {
    throw std::runtime_error(m_file.name + ": the name was not accepted (too long)");
  }
  m_messages.insert(m_messages.end(), op.messages().begin(), op.messages().end());
  checkOutcome();
  checkText(host::DipoleTextFormat::ctf);
}

void FileImport::importMsi(Answers answers) {
  if (m_file.name.find_first_of("*?") != std::string::npos) {
    throw std::runtime_error(m_file.name +
                             ": * and ? in the name of a 4D/MSI table cannot be told from a pattern");
  }
  TerminalOperator op({}, answers);
  const OperatorInCharge inCharge(op);
  CString path = fromUtf8(m_path);
  (void)static_cast<MsiImporter&>(*m_collection).import4DMSIDipolesX(path, false);
  m_messages = op.messages();
  checkOutcome();
  checkText(host::DipoleTextFormat::msi);
}

// A set is taken whole or not at all: one that breaks off does not say whose dipoles it holds, nor in which
// unit, and must not be mixed with those of other files.
void FileImport::loadDipset() {
  TerminalOperator op({}, Answers::no);
  const OperatorInCharge inCharge(op);
  try {
    auto set = std::make_unique<CDipoleFace9File>();
    CFile file(fromUtf8(m_path), CFile::modeRead | CFile::shareDenyWrite);
    CArchive archive(&file, CArchive::load);
    const bool isOld = isHeaderlessSet(m_path);
    const int result = isOld ? set->serializeObsolete20050630(archive) : set->serializeDipolesFace(archive);
    m_messages = op.messages();
    archive.Close();
    if (result == 0 && m_messages.empty()) {
      warnOfLoss(m_file.name + ": this is no dipole set");
    } else if (result == 0 || !m_messages.empty()) {
      warnOfLoss(m_file.name + ": the set could not be read");
    } else {
      m_collection = std::move(set);
    }
  } catch (CException* exception) {
    const std::string cause = host::causeOf(*exception);
    exception->Delete();
    m_messages = op.messages();
    warnOfLoss(m_file.name + ": the set could not be read to its end and is left out: " + cause);
  }
}

// Whole or not at all, as a set.
void FileImport::loadTable() {
  try {
    const auto format = m_file.format == InputFormat::csv   ? host::TableFormat::csv
                        : m_file.format == InputFormat::tsv ? host::TableFormat::tsv
                                                            : host::TableFormat::json;
    host::TableSet table = host::readTableFile(m_path, format, m_file.name);
    m_collection = std::move(table.dipoles);
    m_unknown = std::move(table.unknown);
  } catch (const std::runtime_error& problem) {
    warnOfLoss(problem.what());
  }
}

// The messages of the module that every import ends with, or fails with.
void FileImport::checkOutcome() {
  m_isComplete = m_isComplete && wasSaid(total) && !wasSaid(cannotOpen);
}

void FileImport::checkText(host::DipoleTextFormat format) {
  std::error_code error;
  std::ifstream file(m_path, std::ios::binary);
  if (!std::filesystem::is_regular_file(m_path, error) || !file.is_open()) {
    return;
  }
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  host::ImportedText imported{m_file.name, text, format, answersIn(m_messages), 0, std::nullopt};
  m_findings = host::audit(imported, *m_collection).findings;
  for (const host::Finding& finding : m_findings) {
    if (isLoss(finding)) {
      warnOfLoss(lineOf(finding));
    } else if (finding.isAnswered && finding.severity == host::Severity::wrong) {
      warn(lineOf(finding));
    }
  }
}

bool FileImport::wasSaid(const char* text) const {
  return std::any_of(m_messages.begin(), m_messages.end(),
                     [text](const Message& message) { return message.text.starts_with(text); });
}

void FileImport::warn(const std::string& text) {
  m_messages.push_back(warningOf(text));
}

void FileImport::warnOfLoss(const std::string& text) {
  m_isComplete = false;
  warn(text);
}

}  // namespace tool
