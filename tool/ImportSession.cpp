#include "tool/ImportSession.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <stdexcept>

#include "platform/Utf.h"
#include "tool/Text.h"

namespace tool {
namespace {

// The module asks and reports in fixed texts only; these tell the outcome of an import.
constexpr const char* movingQuestion = "This is moving dipoles";
constexpr const char* locationQuestion = "It seems the dipole location is wrong";
constexpr const char* cannotOpen = "Can't open file ";
constexpr const char* total = "Total imported dipoles:";

// Puts an operator in charge for a scope.
class OperatorInCharge {
 public:
  explicit OperatorInCharge(Operator& op) : m_previous(installOperator(&op)) {}
  ~OperatorInCharge() { installOperator(m_previous); }
  OperatorInCharge(const OperatorInCharge&) = delete;
  OperatorInCharge& operator=(const OperatorInCharge&) = delete;

 private:
  Operator* m_previous;
};

std::vector<CString> absolutePaths(const std::vector<std::string>& files) {
  std::vector<CString> paths;
  paths.reserve(files.size());
  for (const std::string& file : files) {
    paths.push_back(fromUtf8(std::filesystem::absolute(file).string()));
  }
  return paths;
}

std::vector<bool> movingAnswers(const std::vector<Message>& messages) {
  std::vector<bool> answers;
  for (const Message& message : messages) {
    if (message.isQuestion && message.text.starts_with(movingQuestion)) {
      answers.push_back(message.isYes);
    }
  }
  return answers;
}

// Rows that were left out because the answer said so.
int declinedRows(const std::vector<Message>& messages) {
  return static_cast<int>(std::count_if(messages.begin(), messages.end(), [](const Message& message) {
    return message.isQuestion && !message.isYes && message.text.starts_with(locationQuestion);
  }));
}

int movingSections(const FileScan& file) {
  const auto isMoving = [](const DipoleSection& section) { return section.isMoving; };
  return static_cast<int>(std::count_if(file.sections.begin(), file.sections.end(), isMoving));
}

}  // namespace

ImportSession::ImportSession(const std::vector<std::string>& files, Answers answers)
    : m_collection(std::make_unique<CDipoleFace8Import01_CTF>()) {
  TerminalOperator op(absolutePaths(files), answers);
  const OperatorInCharge inCharge(op);
  if (m_collection->importCTFDipoles() == 0) {
    throw std::runtime_error("the list of files was not accepted (too many, or names too long)");
  }
  m_messages = op.messages();
  m_isComplete = wasSaid(total) && !wasSaid(cannotOpen) && m_collection->m_totalDipoles > 0;

  Scans scans;
  for (const std::string& file : files) {
    scans.emplace_back(file);
  }
  checkSections(files, scans);
  checkCount(files, scans);
  checkPatients(scans);
}

bool ImportSession::wasSaid(const char* text) const {
  return std::any_of(m_messages.begin(), m_messages.end(),
                     [text](const Message& message) { return message.text.starts_with(text); });
}

void ImportSession::warn(const std::string& text) {
  m_messages.push_back({"warning: " + text, false, false});
  tell(m_messages.back().text);
}

void ImportSession::checkSections(const std::vector<std::string>& files, const Scans& scans) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (scans[i].isReadable && scans[i].sections.empty()) {
      warn(files[i] + ": no dipole section; this does not look like a CTF dipole file");
      m_isComplete = false;
    }
  }
}

void ImportSession::checkCount(const std::vector<std::string>& files, const Scans& scans) {
  const std::vector<bool> answers = movingAnswers(m_messages);
  std::size_t next = 0;
  int expected = 0;
  for (std::size_t i = 0; i < files.size(); ++i) {
    const auto firstAnswer = static_cast<std::ptrdiff_t>((std::min)(next, answers.size()));
    expected += expectedDipoles(scans[i], answers, next);
    const auto lastAnswer = static_cast<std::ptrdiff_t>((std::min)(next, answers.size()));
    if (std::count(answers.begin() + firstAnswer, answers.begin() + lastAnswer, true) > 1) {
      warn(files[i] + ": of its " + std::to_string(movingSections(scans[i])) +
           " moving-dipole sections only the last accepted one remains, each replaces the one before");
    }
  }
  const int imported = m_collection->m_totalDipoles;
  expected -= declinedRows(m_messages);
  if (imported < expected) {
    m_isComplete = false;
    warn(std::to_string(expected) + " dipole rows were in the files for this import, but " +
         std::to_string(imported) + " dipoles arrived");
  }
}

void ImportSession::checkPatients(const Scans& scans) {
  std::set<std::string> patients;
  for (const FileScan& scan : scans) {
    if (scan.isReadable) {
      patients.insert(scan.patient);
    }
  }
  if (patients.size() <= 1) {
    m_patient = headerText(m_collection->m_patient, "PATIENT:");
  }
  patients.erase(std::string());  // a file that names nobody does not contradict the others
  if (patients.size() > 1) {
    warn("the files name different patients");
  }
}

}  // namespace tool
