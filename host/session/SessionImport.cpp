// Imports into the session's set, what is found about the files, and its remedies.
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/audit/HeadChecks.h"
#include "host/dipoles/HeaderText.h"
#include "host/dipoles/NamedMri.h"
#include "host/exchange/DipContent.h"
#include "host/exchange/ImportFile.h"
#include "host/exchange/JoinedSet.h"
#include "host/head/HeadReader.h"
#include "host/session/NextHead.h"
#include "host/text/Failure.h"
#include "host/text/PathText.h"
#include "host/undo/SetBackup.h"

namespace host {

namespace {

// What a file is that brought no dipoles.
std::string whatElse(const CString& path) {
  if (isNeuromag(dipContentOfFile(path))) {
    return "it is a Neuromag (Xfit, MNE) file of dipoles; give it a name that ends in .dip";
  }
  if (isHead(pathOf(path))) {
    return "it is an MRI: File, Open MRI takes it";
  }
  return dipoleFormatOf(path) ? "it holds no dipoles"
                              : "its name ends neither in .dip, .bdip, .txt, .csv, .tsv, .json nor .dipset";
}

// Whether a file is of another head than the one that is open, and not wanted on it.
bool isDeclined(const ImportedFile& file, const Head& head, Answers& answers, const Ask& ask) {
  if (!head.isRegistered() || head.isPhantom) {
    return false;
  }
  const std::optional<Finding> other = findOtherHead(partOf(file, 0, file.set->m_totalDipoles), head);
  return other && other->severity == Severity::wrong &&
         !answers.ask(utf8Of(fullPath(file.path)), otherHeadQuestion(file.name + ": " + other->sentence),
                      ask);
}

}  // namespace

// What an import has gathered; none of it is the session's yet.
struct Session::Importing {
  JoinedSet joined;
  std::vector<AuditedFile> files;
  ImportResult result;
  std::optional<NextHead> next;   // the MRI that a file names
  std::set<std::string> missing;  // MRIs that are not beside their files
  Answers& answers;               // about the head that is open
  const Ask& ask;

  Answers& answersNow() { return next ? next->answers : answers; }
};

const Head& Session::headOf(const Importing& import) const {
  return import.next ? import.next->head : m_head;
}

Session::ImportResult Session::importFiles(const std::vector<CString>& paths, const Progress& progress,
                                           const Ask& ask) {
  noteChange();
  CString name;
  ImportResult result = withinMemory([&] {
    name = _T("Import");
    return importAll(paths, progress, ask);
  });
  noteChange(name);
  return result;
}

Session::ImportResult Session::importAll(const std::vector<CString>& paths, const Progress& progress,
                                         const Ask& ask) {
  Importing import{JoinedSet(m_dipoles.m_totalDipoles), {}, {}, {}, {}, m_answers, ask};
  ImportResult& result = import.result;
  const int total = static_cast<int>(paths.size());
  for (int done = 0; done < total && !result.cancelled; ++done) {
    const CString& path = paths[static_cast<std::size_t>(done)];
    if (progress && !progress(done, total, path)) {
      result.cancelled = true;
    } else {
      importNext(path, import);
    }
  }
  const JoinedSet& joined = import.joined;
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
  result.openedMri = import.next.has_value();
  takeOver(joined, std::move(import.files));
  if (import.next) {
    setHead(std::move(*import.next));
  }
  return std::move(result);
}

void Session::importNext(const CString& path, Importing& import) {
  ImportResult& result = import.result;
  const std::string name = utf8Of(fileNameOf(path));
  const std::optional<DipoleFormat> format = dipoleFormatOfFile(path);
  if (!format) {
    result.failed.push_back({path, whatElse(path)});
    return;
  }
  const Head& head = headOf(import);
  const std::optional<Fiducials> points = head.isPhantom ? std::nullopt : head.fiducials;
  ImportedFile file = importFile(path, *format, name, {}, points);
  for (const ModuleMessage& message : file.messages) {
    if (!message.isQuestion && !message.text.starts_with("Total imported dipoles")) {
      result.told.push_back(name + ": " + message.text);
    }
  }
  AuditedFile audited = auditedFileOf(file);
  if (file.dipoles() == 0) {
    result.failed.push_back({path, !file.failure.empty() ? file.failure : whatElse(path)});
    if (audited.own) {  // a repair may bring some
      import.files.push_back(std::move(audited));
    }
    return;
  }
  if (file.set->m_totalDipoles > import.joined.room()) {
    result.failed.push_back({path, "the set has room for " + std::to_string(import.joined.room()) +
                                       " more dipoles, the file holds " +
                                       std::to_string(file.set->m_totalDipoles)});
    return;
  }
  followMri(file, import);
  if (isDeclined(file, headOf(import), import.answersNow(), import.ask)) {
    result.failed.push_back({path, "its fiducial points are those of another head than this MRI's"});
    return;
  }
  import.joined.add(std::move(file));
  audited.takePart(import.joined.parts().back());
  import.files.push_back(std::move(audited));
}

// Opens the MRI that a CTF file names when no head is open, or the user wants it.
void Session::followMri(const ImportedFile& file, Importing& import) const {
  const std::string name = utf8Of(lastPartOf(file.set->m_mriFile));
  if (file.format != DipoleFormat::ctf || name.empty()) {
    return;
  }
  const CString& open = import.next ? import.next->path : m_headPath;
  const std::filesystem::path found = findNamedMri(pathOf(fullPath(file.path)), file.set->m_mriFile);
  if (found.empty()) {
    if (open.IsEmpty() && import.missing.insert(name).second) {
      import.result.notes.push_back("The MRI " + name + " that " + file.name + " names is not beside it.");
    }
    return;
  }
  const CString path = textOf(found);
  if (isSameFile(path, open)) {
    return;
  }
  if (!open.IsEmpty() &&
      !import.answersNow().ask(utf8Of(path),
                               file.name + " names the MRI " + name + ", which lies beside it, but " +
                                   headOf(import).name + " is open. Open " + name + " instead?",
                               import.ask)) {
    return;
  }
  try {
    std::optional<NextHead> next = readHead(path, import.ask, &import.joined);
    if (next) {
      import.next = std::move(next);
      import.result.notes.push_back("The MRI " + name + " was opened, which " + file.name + " names.");
    }
  } catch (const std::runtime_error& problem) {
    import.result.told.push_back(file.name + " names an MRI that cannot be opened: " + problem.what());
  }
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
      if (m_head.isRegistered() && !m_head.isPhantom) {
        for (Finding& finding : findingsOf(m_head, m_head.name)) {
          findings.push_back({std::move(finding), StandingFinding::none, true});
        }
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
