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

// What an import was answered about the files' rows, in order.
struct RowAnswers {
  std::vector<MovingAnswer> moving;
  int declinedAfter = 0;  // static rows that answers left out after the last question about moving dipoles

  explicit RowAnswers(const std::vector<Message>& messages) {
    for (const Message& message : messages) {
      if (!message.isQuestion) {
        continue;
      }
      if (message.text.starts_with(movingQuestion)) {
        moving.push_back({message.isYes, declinedAfter});
        declinedAfter = 0;
      } else if (!message.isYes && message.text.starts_with(locationQuestion)) {
        ++declinedAfter;
      }
    }
  }
};

int movingSections(const FileScan& file, bool acceptedOnly) {
  return static_cast<int>(
      std::count_if(file.sections.begin(), file.sections.end(), [&](const DipoleSection& section) {
        return section.isMoving && (section.answer.isYes || !acceptedOnly);
      }));
}

std::size_t allMovingSections(const std::vector<FileScan>& files) {
  int sections = 0;
  for (const FileScan& file : files) {
    sections += movingSections(file, false);
  }
  return static_cast<std::size_t>(sections);
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

  const RowAnswers given(m_messages);
  std::size_t next = 0;
  Scans scans;
  for (const std::string& file : files) {
    scans.emplace_back(file, given.moving, next);
  }
  if (next != given.moving.size() || allMovingSections(scans) != next) {
    warnOfLoss("not every section of moving dipoles was asked about");
  }
  checkSections(files, scans);
  checkCount(scans, given.declinedAfter);
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

void ImportSession::warnOfLoss(const std::string& text) {
  m_isComplete = false;
  warn(text);
}

void ImportSession::checkSections(const std::vector<std::string>& files, const Scans& scans) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    const FileScan& scan = scans[i];
    if (scan.isReadable && scan.sections.empty()) {
      warnOfLoss(files[i] + ": no dipole section; this does not look like a CTF dipole file");
    }
    for (const std::string& name : scan.swallowed) {
      std::string text = files[i];
      text.append(": the section before ").append(name).append(" has no end, so ");
      warnOfLoss(text.append(name).append(" was not read"));
    }
    if (scan.endsInside) {
      warnOfLoss(files[i] + ": the file ends inside a section; its end may be missing");
    }
    if (movingSections(scan, true) > 1) {
      warn(files[i] + ": of its " + std::to_string(movingSections(scan, false)) +
           " moving-dipole sections only the last accepted one remains, each replaces the one before");
    }
  }
}

void ImportSession::checkCount(const Scans& scans, int declinedAfter) {
  int declined = 0;
  int expected = 0;
  for (const FileScan& scan : scans) {
    expected += expectedDipoles(scan, declined);
  }
  expected -= declined + declinedAfter;
  const int imported = m_collection->m_totalDipoles;
  if (imported != expected) {
    warnOfLoss(std::to_string(expected) + " dipole rows were in the files for this import, but " +
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
