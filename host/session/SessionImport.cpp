// Imports into the session's set, what is found about the files, and its remedies.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/dipoles/HeaderText.h"
#include "host/dipoles/SetFiducials.h"
#include "host/exchange/ImportFile.h"
#include "host/exchange/JoinedSet.h"
#include "host/session/Session.h"
#include "host/text/Failure.h"
#include "host/text/PathText.h"
#include "host/undo/SetBackup.h"

namespace host {

Session::ImportResult Session::importFiles(const std::vector<CString>& paths, const Progress& progress) {
  noteChange();
  CString name;
  ImportResult result = withinMemory([&] {
    name = _T("Import");
    return importAll(paths, progress);
  });
  noteChange(name);
  return result;
}

Session::ImportResult Session::importAll(const std::vector<CString>& paths, const Progress& progress) {
  ImportResult result;
  JoinedSet joined(m_dipoles.m_totalDipoles);
  std::vector<AuditedFile> files;
  const int total = static_cast<int>(paths.size());
  for (int done = 0; done < total && !result.cancelled; ++done) {
    const CString& path = paths[static_cast<std::size_t>(done)];
    if (progress && !progress(done, total, path)) {
      result.cancelled = true;
    } else {
      importNext(path, joined, files, result);
    }
  }
  result.files = static_cast<int>(joined.parts().size());
  result.dipoles = joined.set().m_totalDipoles;
  for (const std::string& warning : joined.warnings()) {
    result.told.push_back(warning);
  }
  if (m_dipoles.m_totalDipoles > 0) {
    addPatient(result.patients, patientOf(m_dipoles));
  }
  for (const std::string& patient : joined.patients()) {
    addPatient(result.patients, patient);
  }
  result.mixesPatients = result.patients.size() > 1;
  takeOver(joined, std::move(files));
  return result;
}

void Session::importNext(const CString& path, JoinedSet& joined, std::vector<AuditedFile>& files,
                         ImportResult& result) {
  const std::optional<DipoleFormat> format = dipoleFormatOfFile(path);
  if (!format || *format == DipoleFormat::set) {
    result.failed.push_back({path, "its name ends neither in .dip, .bdip, .txt, .csv, .tsv nor .json"});
    return;
  }
  const std::optional<Fiducials> points = m_head.isPhantom ? std::nullopt : m_head.fiducials;
  ImportedFile file = importFile(path, *format, utf8Of(fileNameOf(path)), {}, points);
  for (const ModuleMessage& message : file.messages) {
    if (!message.isQuestion && !message.text.starts_with("Total imported dipoles")) {
      result.told.push_back(utf8Of(fileNameOf(path)) + ": " + message.text);
    }
  }
  AuditedFile audited = auditedFileOf(file);
  if (file.dipoles() == 0) {
    result.failed.push_back({path, file.failure.empty() ? "it holds no dipoles" : file.failure});
    if (audited.own) {  // a repair may bring some
      files.push_back(std::move(audited));
    }
    return;
  }
  if (file.set->m_totalDipoles > joined.room()) {
    result.failed.push_back({path, "the set has room for " + std::to_string(joined.room()) +
                                       " more dipoles, the file holds " +
                                       std::to_string(file.set->m_totalDipoles)});
    return;
  }
  if (result.headMismatch.empty() && m_head.isRegistered() && !m_head.isPhantom) {
    result.headMismatch = host::headMismatch(*file.set, *m_head.fiducials);
  }
  joined.add(std::move(file));
  audited.takePart(joined.parts().back());
  files.push_back(std::move(audited));
}

// All of it, or by an exception nothing.
template <typename Change>
void Session::changeWhole(Change change) {
  SetBackup before(m_dipoles);
  m_findings.reset();
  try {
    change();
  } catch (...) {
    before.restore();
    m_audited.noteMove(m_history);
    throw;
  }
}

void Session::takeOver(const JoinedSet& joined, std::vector<AuditedFile> files) {
  changeWhole([&] {
    if (!joined.parts().empty()) {
      appendTo(m_dipoles, joined.set());
      m_history.unknown().mark(m_dipoles, joined.unknown());
    }
    for (AuditedFile& file : files) {
      m_audited.add(std::move(file));
    }
  });
}

const std::vector<StandingFinding>& Session::findings() const {
  if (!m_findings) {
    withinMemory([&] {
      std::vector<StandingFinding> findings = m_audited.findings();
      for (StandingFinding& finding : m_audited.findingsIn(m_head)) {
        findings.push_back(std::move(finding));
      }
      m_findings = std::move(findings);
    });
  }
  return *m_findings;
}

std::vector<Finding> Session::shownFindings() const {
  std::vector<Finding> shown;
  for (const StandingFinding& standing : findings()) {
    if (standing.isShown) {
      shown.push_back(standing.finding);
    }
  }
  return shown;
}

std::vector<std::string> Session::repair(std::size_t file, const Repairs& repairs) {
  noteChange();
  CString name;
  RepairReport report;
  withinMemory([&] {
    name = _T("Repair");
    changeWhole([&] {
      report = m_audited.repair(file, repairs);
      m_history.unknown().mark(m_dipoles, report.left.unknown);
    });
  });
  if (!noteChange(name)) {
    m_audited.noteState(m_history);  // an answer alone changes no dipole
  }
  return report.told;
}

}  // namespace host
