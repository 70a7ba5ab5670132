// One or more dipole files as one set: each imported by itself, their dipoles one after the other.
#pragma once

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/dipoles/SortSet.h"
#include "host/exchange/JoinedSet.h"
#include "module/dipole.h"
#include "tool/InputFile.h"
#include "tool/TerminalOperator.h"

namespace tool {

// What the user wants done on the way.
struct ImportChoices {
  Answers answers = Answers::ask;
  host::Repairs repairs;
  std::set<host::FindingCode> accepted;
  host::CarryingHead head;    // for files in the Neuromag head frame
  bool tellsFindings = true;  // on standard error

  // Whether the user knows: said so, or brought it about by an answer to the module's question.
  bool accepts(const host::Finding& finding) const {
    return finding.isAnswered || accepted.contains(finding.code);
  }
};

class ImportSession {
 public:
  // Imports the files in order; at least one. What the module says goes to standard error, with the file's
  // name, as do findings of the audit, what was repaired, and warnings of the program: about files that
  // brought nothing, dipoles without room, moments in different units. Throws std::runtime_error when
  // memory runs out.
  ImportSession(const std::vector<InputFile>& files, ImportChoices choices);

  // See host/exchange/JoinedSet.h. Locations mm in the host's head frame (x to the left ear, y up, z to the
  // nose), latencies ms.
  CDipoleFace9File& collection() { return m_joined.set(); }
  const CDipoleFace9File& collection() const { return m_joined.set(); }
  const host::JoinedSet& joined() const { return m_joined; }

  // By a key of host/dipoles/SortSet.h. Findings keep the slots that were.
  void sort(int key, host::SortOrder order);

  // By slot of the collection.
  const host::UnknownValues& unknown() const { return m_unknown; }

  // What the audits of the files found, what the files say of each other, and what was added; the files are
  // named as the user wrote them.
  const std::vector<host::Finding>& findings() const { return m_findings; }
  void add(std::vector<host::Finding> findings);
  bool accepts(const host::Finding& finding) const { return m_choices.accepts(finding); }

  // What repairs changed in which file, a sentence each, and why files brought nothing.
  const std::vector<host::FileText>& repaired() const { return m_repaired; }
  const std::vector<std::string>& failures() const { return m_failures; }

  // The MRI that a file names, and where it lies: beside that file, or nowhere.
  struct NamedMri {
    std::string file;
    std::string name;
    std::filesystem::path path;  // empty: it is not there
  };
  const std::vector<NamedMri>& namedMris() const { return m_namedMris; }
  bool accepts(host::FindingCode code) const { return m_choices.accepted.contains(code); }

  // The module's messages and the program's own warnings.
  const std::vector<Message>& messages() const { return m_messages; }

  // Whether a file could not be read to its end or brought no dipole, or the set had no room for all.
  bool hasFailed() const { return !m_failures.empty(); }
  // What is wrong and neither repaired nor accepted: "unit in a.dip, row-order in a.dip"; empty when
  // nothing is.
  std::string standing() const;
  // exitDone when all came and nothing wrong stands.
  int exitCode() const;

  // As the first file that gave dipoles names them; the patient's name or number is empty unless all files
  // give the same.
  const std::string& patient() const { return m_patient; }
  std::string version() const;

  // Whether all files say that their moments are nAm.
  bool isMomentInNAm() const { return m_joined.set().m_momentInNAm != 0; }

 private:
  void import(const InputFile& file, TerminalOperator& op);
  void warn(const std::string& text);
  void fail(const std::string& file, const std::string& cause);
  void takePatient();

  void takeMri(const InputFile& file, const CString& name);

  ImportChoices m_choices;
  host::JoinedSet m_joined;
  host::UnknownValues m_unknown;
  std::vector<host::Finding> m_findings;
  std::vector<host::FileText> m_repaired;
  std::vector<std::string> m_failures;
  std::vector<Message> m_messages;
  std::vector<NamedMri> m_namedMris;
  std::vector<std::string> m_patients;  // of each file that could be read
  std::string m_patient;
};

}  // namespace tool
