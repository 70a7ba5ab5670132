#include "tool/ImportSession.h"

#include <set>
#include <utility>

#include "host/dipoles/HeaderText.h"
#include "host/dipoles/SortSet.h"
#include "host/exchange/ImportFile.h"
#include "host/text/PathText.h"

namespace tool {

ImportSession::ImportSession(const std::vector<InputFile>& files, Answers answers) {
  TerminalOperator op(answers);
  const OperatorInCharge inCharge(op);
  for (const InputFile& file : files) {
    add(file);
  }
  m_unknown = m_joined.unknown();
  for (const std::string& warning : m_joined.warnings()) {
    warn(warning);
  }
  m_isComplete = m_isComplete && m_joined.leftOut() == 0;
  checkPatients();
  if (m_joined.hasMixedUnits()) {
    warn("not all files say that their moments are nAm: they may differ in unit");
  }
}

void ImportSession::add(const InputFile& file) {
  host::ImportedFile import = host::importFile(host::textOf(file.path()), file.format, file.name);
  m_messages.insert(m_messages.end(), import.messages.begin(), import.messages.end());
  m_isComplete = m_isComplete && import.isComplete();
  if (!import.failure.empty()) {
    warn(file.name + ": " + import.failure);
  } else {
    m_patients.push_back(host::patientOf(*import.set));
  }
  for (const host::Finding& finding : import.report.findings) {
    if (isLoss(finding) || (finding.isAnswered && finding.severity == host::Severity::wrong)) {
      warn(lineOf(finding));
    }
  }
  m_joined.add(std::move(import));
}

void ImportSession::sort(int key) {
  host::sortSet(m_joined.set(), key, m_unknown);
}

std::string ImportSession::version() const {
  return host::versionOf(m_joined.set());
}

void ImportSession::checkPatients() {
  std::set<std::string> patients(m_patients.begin(), m_patients.end());
  if (patients.size() == 1) {
    m_patient = *patients.begin();
  }
  patients.erase(std::string());  // a file that names nobody does not contradict the others
  if (patients.size() > 1) {
    warn("the files name different patients");
  }
}

void ImportSession::warn(const std::string& text) {
  m_messages.push_back(warningOf(text));
}

}  // namespace tool
