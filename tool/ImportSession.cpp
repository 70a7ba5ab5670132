#include "tool/ImportSession.h"

#include <iterator>
#include <utility>

#include "host/dipoles/HeaderText.h"
#include "host/dipoles/NamedMri.h"
#include "host/exchange/ImportFile.h"
#include "host/text/PathText.h"
#include "tool/FileNames.h"
#include "tool/FindingTexts.h"
#include "tool/Output.h"

namespace tool {

ImportSession::ImportSession(const std::vector<InputFile>& files, ImportChoices choices)
    : m_choices(std::move(choices)) {
  TerminalOperator op(m_choices.answers);
  const OperatorInCharge inCharge(op);
  for (const InputFile& file : files) {
    import(file, op);
  }
  m_unknown = m_joined.unknown();
  for (const std::string& warning : m_joined.warnings()) {
    warn(warning);
  }
  if (m_joined.leftOut() > 0) {
    m_failures.push_back("a set has no room for all dipoles");
  }
  if (m_joined.hasMixedUnits()) {
    warn("not all files say that their moments are nAm: they may differ in unit");
  }
  takePatient();
  add(m_joined.findings());
  add(host::findingsBetween(m_joined.parts()));
}

void ImportSession::import(const InputFile& file, TerminalOperator& op) {
  op.nameFile(file.name);
  host::ImportedFile import =
      host::importFile(host::textOf(file.path()), file.format, file.name, m_choices.repairs, m_choices.head);
  m_messages.insert(m_messages.end(), import.messages.begin(), import.messages.end());
  if (!import.failure.empty()) {
    fail(file.name, import.failure);
  } else {
    m_patients.push_back(host::patientOf(*import.set));
    takeMri(file, import.set->m_mriFile);
    if (import.dipoles() == 0) {
      fail(file.name, "it brought no dipole");
    }
  }
  for (const std::string& text : import.repaired) {
    tell(file.name + ": repaired: " + text);
    m_repaired.push_back({file.name, text});
  }
  m_joined.add(std::move(import));
}

void ImportSession::add(std::vector<host::Finding> findings) {
  for (const host::Finding& finding : findings) {
    if (!m_choices.tellsFindings) {
      continue;
    }
    if (finding.severity == host::Severity::note) {
      tellNote(findingLine(finding));
    } else {
      tell("warning: " + findingLine(finding));
    }
  }
  m_findings.insert(m_findings.end(), std::make_move_iterator(findings.begin()),
                    std::make_move_iterator(findings.end()));
}

std::string ImportSession::standing() const {
  std::string text;
  for (const host::Finding& finding : m_findings) {
    if (finding.severity != host::Severity::wrong || m_choices.accepts(finding)) {
      continue;
    }
    const std::string one =
        std::string(nameOf(finding.code)) + (finding.file.empty() ? "" : " in " + finding.file);
    if (text.find(one) == std::string::npos) {
      text += (text.empty() ? "" : ", ") + one;
    }
  }
  return text;
}

int ImportSession::exitCode() const {
  return hasFailed() || !standing().empty() ? exitFailure : exitDone;
}

void ImportSession::sort(int key, host::SortOrder order) {
  host::sortSet(m_joined.set(), key, m_unknown, order);
}

std::string ImportSession::version() const {
  return host::versionOf(m_joined.set());
}

void ImportSession::takeMri(const InputFile& file, const CString& name) {
  const CString part = host::lastPartOf(name);
  if (file.format == host::DipoleFormat::ctf && !file.copy && !part.IsEmpty()) {
    m_namedMris.push_back({file.name, host::utf8Of(part), host::findNamedMri(pathOf(file.name), name)});
  }
}

void ImportSession::takePatient() {
  const std::set<std::string> patients(m_patients.begin(), m_patients.end());
  if (patients.size() == 1) {
    m_patient = *patients.begin();
  }
}

void ImportSession::warn(const std::string& text) {
  m_messages.push_back(warningOf(text));
}

void ImportSession::fail(const std::string& file, const std::string& cause) {
  warn(file + ": " + cause);
  m_failures.push_back(cause);
}

}  // namespace tool
