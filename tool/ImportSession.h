// One or more dipole files as one set: each imported by itself, their dipoles one after the other.
#pragma once

#include <string>
#include <vector>

#include "host/exchange/JoinedSet.h"
#include "module/dipole.h"
#include "tool/InputFile.h"
#include "tool/TerminalOperator.h"

namespace tool {

class ImportSession {
 public:
  // Imports the files in order; at least one. What the module says goes to standard error, as do warnings of
  // the program: about dipoles that were in a file and did not arrive, files of different patients, moments
  // in different units. Throws std::runtime_error when memory runs out.
  ImportSession(const std::vector<InputFile>& files, Answers answers);

  // See host/exchange/JoinedSet.h. Locations mm in the host's head frame (x to the left ear, y up, z to the
  // nose), latencies ms.
  CDipoleFace9File& collection() { return m_joined.set(); }
  const CDipoleFace9File& collection() const { return m_joined.set(); }

  // By a key of host/dipoles/SortSet.h.
  void sort(int key);

  // By slot of the collection.
  const host::UnknownValues& unknown() const { return m_unknown; }

  // What the audits of text files found; the files are named as the user wrote them.
  const std::vector<host::Finding>& findings() const { return m_joined.findings(); }

  // The module's messages and the program's own warnings.
  const std::vector<Message>& messages() const { return m_messages; }

  // Whether every file could be read to its end, the audit found no rows or sections lost but by the
  // user's answers, at least one dipole of each file arrived, and the set had room for all.
  bool isComplete() const { return m_isComplete; }

  // As the first file that gave dipoles names them; the patient's name or number is empty unless all files
  // give the same.
  const std::string& patient() const { return m_patient; }
  std::string version() const;

  // Whether all files say that their moments are nAm.
  bool isMomentInNAm() const { return m_joined.set().m_momentInNAm != 0; }

 private:
  void add(const InputFile& file);
  void warn(const std::string& text);
  void checkPatients();

  host::JoinedSet m_joined;
  host::UnknownValues m_unknown;
  std::vector<Message> m_messages;
  std::vector<std::string> m_patients;  // of each file that could be read
  std::string m_patient;
  bool m_isComplete = true;
};

}  // namespace tool
